// How cost grows with length: of the password, and of the file that a layout comes from.

#include "core/ids.h"
#include "driver/Target.h"
#include "floor/Contract.h"
#include "windows/Comparison.h"

#include <commctrl.h>

#include <array>
#include <cstdio>

namespace vextrel::bench {

using namespace driver;

namespace {

constexpr std::array passwordLengths{327, 3277, 32767}; // the last is the longest there is
constexpr std::array fileMegabytes{0.5, 5.0, 50.0};

void WriteTimes(const char* name, const std::array<double, 3>& ms) {
    std::printf("| %s | %.1f | %.1f | %.1f | %.1f, %.1f |\n", name, ms[0], ms[1], ms[2], ms[1] / ms[0], ms[2] / ms[1]);
    std::fflush(stdout);
}

double TimeUntil(const char* what, const std::function<bool()>& condition) {
    const double begun = Now();
    while (!condition())
        if (Now() - begun > 60000)
            throw Failure(what);
    return Now() - begun;
}

void Type(HWND box, int count) {
    for (int typed = 0; typed < count; typed += 1000) { // more than a queue holds
        const int until = std::min(count, typed + 1000);
        for (int n = typed; n < until; ++n)
            PostMessageW(box, WM_CHAR, L'a', 0);
        static_cast<void>(TimeUntil("the box is full", [&] { return Ask(box, WM_GETTEXTLENGTH) == until; }));
    }
}

bool IsDragging() {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, L"VextrelForm", L"")) != nullptr;)
        if (GetDlgItem(window, ids::dragNoteText))
            return true;
    return false;
}

/// Pulls the password out of its box and lets go, however busy the program is with what was before.
void DragTo(const Subject& program, Pointer& pointer, int mode, POINT place) {
    const HWND toolbar = program.Control(ids::tbToolbar);
    Await("commands are taken", [&] { return Ask(toolbar, TB_ISBUTTONENABLED, ids::toolToggleMask) != 0; });
    Ask(program.Main(), WM_COMMAND, static_cast<WPARAM>(mode));
    SettleInForeground(program.Main());
    pointer.Pull(CentreOf(program.Control(ids::txtPassword)), place);
    Await("the drag begins", IsDragging, Milliseconds(60000));
    for (const LONG shift : {1, 0, 1})
        pointer.MoveTo({place.x + shift, place.y}, 1, Milliseconds(100));
    pointer.Release();
}

} // namespace

void CompareLengths() {
    std::puts("| of a password with | 327 characters | 3,277 | 32,767 | ten times as much takes times "
              "|\n|---|---|---|---|---|");
    const Sandbox sandbox;
    const Subject program = StartProgram(sandbox);
    const Subject floor = StartFloor();
    const Target target(L"--read=drop");
    const HWND masked = program.Control(ids::txtPassword);
    const HWND typed = floor.Control(floor::typingField);
    Ask(typed, EM_SETLIMITTEXT, 2 * passwordLengths.back());
    const auto park = [](HWND window, int x, int y) {
        SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    };
    park(program.Main(), GetSystemMetrics(SM_CXSCREEN) / 2, 0);
    park(floor.Main(), 0, GetSystemMetrics(SM_CYSCREEN) - 430);
    park(target.Window(), 0, 0);
    Ask(program.Main(), WM_COMMAND, ids::mnuOptionsKeepPasswordAfterDragDrop);
    std::array<double, 3> typing{};
    std::array<double, 3> plain{};
    std::array<double, 3> mask{};
    std::array<double, 3> drag{};
    std::array<double, 3> injection{};
    Pointer pointer;
    for (std::size_t row = 0; row < passwordLengths.size(); ++row) {
        const int count = passwordLengths.at(row);
        const double begun = Now();
        Type(masked, count);
        typing.at(row) = Now() - begun;
        plain.at(row) = program.Time(program.Main(), WM_COMMAND, ids::mnuViewPasswordMask);
        mask.at(row) = program.Time(program.Main(), WM_COMMAND, ids::mnuViewPasswordMask);

        const int drops = target.Drops();
        DragTo(program, pointer, ids::mnuOptionsDragDrop, CentreOf(target.Field(target::dropField)));
        drag.at(row) = TimeUntil("the drop arrives", [&] { return target.Drops() > drops; });

        DragTo(program, pointer, ids::mnuOptionsInjectMode, CentreOf(typed));
        static_cast<void>(TimeUntil("all characters arrive", [&] { return Ask(typed, WM_GETTEXTLENGTH) == count; }));
        injection.at(row) = static_cast<double>(Ask(floor.Main(), floor::typingTime)) / 1000;
        Await("the end", [] { return !IsDragging(); });
        Ask(program.Main(), WM_COMMAND, ids::toolClear);
    }
    WriteTimes("typing it, ms", typing);
    WriteTimes("showing it", plain);
    WriteTimes("masking it", mask);
    WriteTimes("dragging it, from the release to the drop", drag);
    WriteTimes("injecting it, from the first to the last character", injection);
    program.Close();
    floor.Close();

    std::puts(
        "| of a settings file with | 0.5 MB | 5 MB | 50 MB | ten times as much takes times |\n|---|---|---|---|---|");
    std::array<double, 3> start{};
    for (std::size_t row = 0; row < fileMegabytes.size(); ++row) {
        const Sandbox full;
        std::string file = "[Settings]\r\nKeyboard Layout=Config\r\n[Row 1 Lower Case]\r\nKey 2=x\r\n[Other]\r\n";
        for (int line = 0; static_cast<double>(file.size()) < fileMegabytes.at(row) * 1e6; ++line)
            file += "Line " + std::to_string(line) + "=a value that nobody asks for\r\n";
        full.Write(file);
        const Subject started = StartProgram(full);
        start.at(row) = started.StartMs();
        started.Close();
    }
    WriteTimes("a start with the layout in it, ms", start);
}

} // namespace vextrel::bench
