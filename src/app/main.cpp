#include "app/Program.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    return vextrel::Program::Main(instance);
}
