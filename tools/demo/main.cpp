// Plays the program's main job as a user would: clicks a password on the keys with the real pointer, looks at it in
// clear, and drags it out of the password box into another program's field. The first argument is the folder for the
// screenshots.

#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"
#include "pictures/Screen.h"

#include <iostream>

namespace {

using namespace vextrel;
using namespace vextrel::driver;

// Made up for this; the demonstration shows it on purpose.
constexpr const wchar_t* sample = L"Vextrel7";

bool Play(const std::filesystem::path& pictures) {
    const Sandbox sandbox;
    const App app(sandbox);
    const Target target(L"--topmost");
    target.KeepClearOf(BoundsOf(app.Main()));
    app.Activate();
    std::cout << "Vextrel is up\n";

    Pointer pointer;
    app.ClickPassword(pointer, sample);
    const std::wstring masked = app.Text(ids::txtPassword);
    std::cout << "clicked the keys of " << Narrow(sample) << "; the box shows " << Narrow(masked) << '\n';
    TakeScreenshot(pictures / L"1-masked.png");

    app.Command(ids::mnuViewPasswordMask);
    Await("the plain box is shown", [&] { return app.Visible(ids::txtText); });
    std::cout << "without the mask: " << Narrow(app.Text(ids::txtText)) << '\n';
    TakeScreenshot(pictures / L"2-plain.png");
    app.Command(ids::mnuViewPasswordMask);
    Await("the masked box is shown", [&] { return app.Visible(ids::txtPassword); });

    pointer.Pull(CentreOf(app.PasswordBox()), CentreOf(target.Field(target::dropField)));
    TakeScreenshot(pictures / L"3-dragging.png");
    pointer.Release();
    Await("the drop arrives", [&] { return target.Drops() == 1; });
    TakeScreenshot(pictures / L"4-dropped.png");
    const std::wstring arrived = target.Text();
    std::cout << "dropped into the other program: " << Narrow(arrived) << '\n';

    const bool right = arrived == sample && masked == std::wstring(std::wstring_view(sample).size(), L'*');
    const bool clean = app.Close() == 0;
    std::cout << (right && clean ? "as it should be\n" : "WRONG\n");
    return right && clean;
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    if (argc != 2) {
        std::cout << "usage: vextrel_demo FOLDER\n";
        return 2;
    }
    try {
        return Play(argv[1]) ? 0 : 1;
    } catch (const std::exception& error) {
        std::cout << "the demonstration failed: " << error.what() << '\n';
        try {
            TakeScreenshot(std::filesystem::path(argv[1]) / L"failed.png");
        } catch (const std::exception& second) {
            std::cout << "no screenshot: " << second.what() << '\n';
        }
        return 1;
    }
}
