// The program without hooks, which only tests run.
#include "app/Program.h"

#include "win32/Windows.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    return vextrel::Main(true);
}
