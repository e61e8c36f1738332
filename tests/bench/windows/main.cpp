// Measures the real program against the floor, and how its cost grows with length. --quick: a first impression.

#include "core/ids.h"
#include "driver/Sandbox.h"
#include "driver/Target.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

using namespace vextrel;
using namespace vextrel::driver;

double Now() {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Milliseconds from an action until a condition holds. No pause between two looks: the answer must not wait for us.
double Time(const std::function<void()>& action, const std::function<bool()>& condition) {
    const double begun = Now();
    action();
    while (!condition())
        Check(Now() - begun < 60000, "an action");
    return Now() - begun;
}

std::string BytesOf(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

/// A program under measurement, shown and painted: the real one or the floor. Closed when it goes.
struct Subject {
    explicit Subject(const std::filesystem::path& program = OwnFolder() / L"vextrel_floor.exe")
        : process(program)
        , main(process.AwaitWindow(L"VextrelForm", L"Vextrel"))
        , layer(process.AwaitWindow(L"VextrelForm", L"")) {
        Ask(main, WM_NULL); // it has come to its message loop
        Await("the program has painted its windows", [&] { return IsPainted(); });
        startMs += Now();
        // Wine does not know the memory and the processor time of another process; the system below it does.
        Await("the one before has gone", [&, path = program.string()] {
            int found = 0;
            for (const auto& entry : std::filesystem::directory_iterator(L"Z:\\proc"))
                if (BytesOf(entry.path() / L"cmdline").find(path) != std::string::npos && ++found == 1)
                    system = entry.path();
            return found == 1;
        });
        SettleInForeground(main);
    }
    ~Subject() {
        PostMessageW(main, WM_CLOSE, 0, 0);
        WaitForSingleObject(process.Handle(), 10000);
    }

    HWND Control(int id) const { return GetDlgItem(main, id); }
    bool IsPainted() const {
        return std::ranges::none_of(Process::AllBeside(main), [](HWND window) {
            return IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE);
        });
    }
    /// How long it takes to carry a message out and to paint what that changes.
    double TimeOf(HWND window, UINT message, WPARAM wParam = 0) const {
        return Time([&] { Ask(window, message, wParam); }, [&] { return IsPainted(); });
    }
    double TimeOf(int command) const { return TimeOf(main, WM_COMMAND, static_cast<WPARAM>(command)); }
    LRESULT Length() const { return Ask(Control(ids::txtPassword), WM_GETTEXTLENGTH); }
    double TimeUntilLonger(int characters, const std::function<void()>& action) const {
        return Time(action, [&, length = Length() + characters] { return Length() == length; });
    }
    double MemoryKb(const std::string& name) const {
        const std::string lines = BytesOf(system / L"smaps_rollup"); // "name:   123 kB"
        return std::stod(lines.substr(lines.find(name) + name.size()));
    }
    double ProcessorMs() const {
        double nanoseconds = 0;
        for (const auto& thread : std::filesystem::directory_iterator(system / L"task"))
            nanoseconds += std::stod(BytesOf(thread.path() / L"schedstat"));
        return nanoseconds / 1e6;
    }

    double startMs = -Now();
    Process process;
    HWND main;
    HWND layer;
    std::filesystem::path system;
};

using Measure = std::function<double(const Subject&)>;

bool isQuick = false;

/// Measures one thing and another in turn, and writes a line of a table: medians and quartiles. The ratios are those of
/// the pairs, so that a busy moment hits both.
void Compare(const std::string& name, const char* target, int pairs, const std::function<double(bool)>& measure) {
    std::array<std::vector<double>, 3> columns;
    for (int pair = 0; pair < (isQuick ? (pairs + 4) / 5 : pairs); ++pair) {
        columns[0].push_back(measure(false));
        columns[1].push_back(measure(true));
        columns[2].push_back(columns[0].back() / columns[1].back());
    }
    std::printf("| %s ", name.c_str());
    for (auto& column : columns) {
        std::ranges::sort(column);
        const auto at = [&](std::size_t quarter) { return column[(column.size() - 1) * quarter / 4]; };
        std::printf("| %.2f (%.2f .. %.2f) ", at(2), at(1), at(3));
    }
    std::printf("| %s |\n", target);
    std::fflush(stdout);
}

void CompareAtRest() {
    const Sandbox sandbox(L"measured", {}, Sandbox::Others::Refused); // closed, as users have it
    Compare("start to shown and painted, ms", "at most 1.05 x", 30,
            [&](bool floor) { return floor ? Subject().startMs : Subject(sandbox.Program()).startMs; });
    const Subject program(sandbox.Program());
    const Subject floor;
    Sleep(1000); // for what a start leaves to be done
    const auto compare = [&](const char* name, const char* target, const Measure& measure) {
        Compare(name, target, 3, [&](bool isFloor) { return measure(isFloor ? floor : program); });
    };
    compare("private memory, KB", "at most 1.15 x",
            [](const Subject& of) { return of.MemoryKb("Private_Clean:") + of.MemoryKb("Private_Dirty:"); });
    compare("resident memory, KB", "at most 1.15 x", [](const Subject& of) { return of.MemoryKb("Rss:"); });
    compare("processor while idle, % of a core", "at most 2 x, under 0.5", [](const Subject& of) {
        const double used = of.ProcessorMs();
        Sleep(10000);
        return (of.ProcessorMs() - used) / 100;
    });
}

double Paste(const Subject& program, int count) {
    SetClipboard(std::wstring(static_cast<std::size_t>(count), L'a'));
    SettleInForeground(program.main);
    return program.TimeUntilLonger(count, [] { Keys::Stroke('V', {VK_CONTROL}); });
}

/// Milliseconds from the first to the last of so many characters that come to the floor's typing field.
double TimeTyped(const Subject& floor, LRESULT count) {
    LRESULT us = 0;
    Await("all", [&] { return (us = Ask(floor.main, WM_APP, static_cast<WPARAM>(count))) != 0; });
    return static_cast<double>(us) / 1000;
}

double Inject(const Subject& program, const Subject& floor) {
    SettleInForeground(program.main);
    Pointer().Drag(CentreOf(program.Control(ids::txtPassword)), CentreOf(floor.Control(ids::txtText)));
    return TimeTyped(floor, program.Length());
}

/// Changes captions many times by a posted message, and looks at one of ten keys as they change. A look that finds
/// neither the picture before the change nor the one after it has seen flicker.
void LookForFlicker(const char* who, const Subject& subject) {
    constexpr int size = 20; // pixels in the middle of a key
    using Picture = std::array<DWORD, std::size_t{size} * size>;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, size, size);
    SelectObject(memory, bitmap);
    std::ptrdiff_t looks = 0;
    std::ptrdiff_t flickers = 0;
    Pointer().MoveTo({0, 0}); // away from what is looked at
    for (int n = 0; n < (isQuick ? 10 : 50); ++n) {
        SettleInForeground(subject.main);
        const POINT key = CentreOf(subject.Control(ids::firstKey + 16 + n % 10));
        std::vector<Picture> seen;
        const auto look = [&] {
            BitBlt(memory, 0, 0, size, size, screen, key.x - size / 2, key.y - size / 2, SRCCOPY | CAPTUREBLT);
            GetBitmapBits(bitmap, sizeof(Picture), &seen.emplace_back());
        };
        look();
        Time([&] { PostMessageW(subject.Control(ids::firstKey + 41), BM_CLICK, 0, 0); },
             [&] { return look(), seen.front() != seen.back(); });
        for (const double begun = Now(); Now() - begun < 150;)
            look();
        looks += std::ssize(seen);
        flickers += std::ranges::count_if(seen, [&](auto& it) { return it != seen.front() && it != seen.back(); });
    }
    std::printf("flicker of %s: %td looks at changing captions, %td at neither\n", who, looks, flickers);
}

void CompareOperations() {
    const Sandbox sandbox(L"measured");
    const Subject program(sandbox.Program());
    const Subject floor;
    SetWindowPos(program.main, nullptr, 960, 0, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE); // beside the others
    LookForFlicker("Vextrel", program);
    LookForFlicker("the floor", floor);
    std::puts("| median (quartiles) of | Vextrel | floor | ratio | target |\n|---|---|---|---|---|");
    const auto compare = [&](const char* name, const char* target, int pairs, const Measure& measure) {
        Compare(name, target, pairs, [&](bool isFloor) { return measure(isFloor ? floor : program); });
    };
    compare("click to character, ms", "under 2 more", 200, [n = 0](const Subject& of) mutable {
        // The ten letters from q to p.
        POINT place = CentreOf(of.Control(ids::firstKey + 16 + n++ / 2 % 10));
        ScreenToClient(of.layer, &place);
        const LPARAM at = MAKELPARAM(place.x, place.y);
        Ask(of.layer, WM_LBUTTONDOWN, MK_LBUTTON, at);
        return of.TimeUntilLonger(1, [&] { PostMessageW(of.layer, WM_LBUTTONUP, 0, at); });
    });
    compare("captions of 47 keys (Shift), ms", "at most 1.5 x", 50,
            [](const Subject& of) { return of.TimeOf(of.Control(ids::firstKey + 41), BM_CLICK); });
    program.TimeOf(ids::toolClear);
    Paste(program, 1000);
    compare("mask switch, 1,000 characters, ms", "at most 1.5 x", 50,
            [](const Subject& of) { return of.TimeOf(ids::mnuViewPasswordMask); });
    program.TimeOf(ids::mnuOptionsKeepPasswordAfterDragDrop);
    program.TimeOf(ids::mnuOptionsInjectMode);
    compare("injection of 1,000 characters, after its wait, ms", "at most 1.5 x", 10, [&](const Subject& of) {
        if (&of == &program)
            return Inject(program, floor);
        for (int n = 0; n < 1000; ++n)
            PostMessageA(floor.Control(ids::txtText), WM_CHAR, 'a', 0);
        return TimeTyped(floor, 1000);
    });
    compare("random size and place, ms", "at most 1.5 x", 50,
            [](const Subject& of) { return of.TimeOf(ids::toolRefresh); });
}

void MeasureGrowth() {
    const Sandbox sandbox(L"measured");
    sandbox.SetSetting(L"Save Settings in INI", L"False"); // so that the layout's file is only read
    const Subject program(sandbox.Program());
    const Subject floor;
    const Target target;
    SetWindowPos(program.main, nullptr, 960, 0, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE); // beside the others
    program.TimeOf(ids::mnuOptionsKeepPasswordAfterDragDrop);
    const HWND box = program.Control(ids::txtPassword);
    const auto choose = [&](int command) {
        Await("a transfer's end",
              [&] { return Ask(program.Control(ids::tbToolbar), TB_ISBUTTONENABLED, ids::toolToggleMask) != 0; });
        return program.TimeOf(command);
    };
    std::puts("\n| median (quartiles) of | so much, ms | a tenth, ms | ratio | linear |\n|---|---|---|---|---|");
    const auto grow = [](const std::string& name, int amount, const std::function<double(int)>& measure) {
        Compare(name, "10 x", 3, [&](bool tenth) { return measure(tenth ? amount / 10 : amount); });
    };
    for (const int most : {3277, 32767}) {
        double pasted = 0;
        double typed = 0;
        const auto step = [&](const char* name, const std::function<double()>& measure) {
            grow(std::to_string(most) + " characters " + name, most, [&](int count) {
                if (!IsWindowVisible(box))
                    choose(ids::mnuViewPasswordMask);
                choose(ids::toolClear);
                pasted = Paste(program, count - 20);
                typed = program.TimeUntilLonger(20, [] { Keys::Type(std::wstring(20, L'a')); });
                Ask(box, EM_SETSEL, 0, 0); // a caret behind them all lies further to the right than Wine can say
                return measure();
            });
        };
        step("pasted, but for 20", [&] { return pasted; });
        step("complete: the last 20 typed", [&] { return typed; });
        step("shown", [&] { return choose(ids::mnuViewPasswordMask); });
        step("masked again", [&] {
            choose(ids::mnuViewPasswordMask);
            return choose(ids::mnuViewPasswordMask);
        });
        step("dragged, from the release", [&] {
            choose(ids::mnuOptionsDragDrop);
            const int drops = target.Drops();
            Pointer pointer;
            target.PullHere(pointer, CentreOf(box));
            return Time([&] { pointer.Release(); }, [&] { return target.Drops() > drops; });
        });
        step("injected, after its wait", [&] {
            choose(ids::mnuOptionsInjectMode);
            return Inject(program, floor);
        });
    }
    for (const int kilobytes : {5000, 50000})
        grow("layout loaded from " + std::to_string(kilobytes) + " KB", kilobytes, [&](int amount) {
            const std::string caption = std::to_string(amount);
            std::string text = "[Other]\r\n";
            while (text.size() < static_cast<std::size_t>(amount) * 1000)
                text += "Line=a value that nobody asks for\r\n";
            text += "[Row 1 Lower Case]\r\nKey 2=" + caption + "\r\n";
            std::ofstream(sandbox.Folder() / Sandbox::settingsName, std::ios::binary) << text;
            Sleep(2500); // a file that is younger, Wine reads anew for each of its values
            const double ms = choose(ids::mnuKeyboardLayoutLastSaved);
            Check(Narrow(TextOf(program.Control(ids::firstKey + 1))) == caption, "loading the layout");
            return ms;
        });
}

} // namespace

int main(int argc, char** /*argv*/) {
    isQuick = argc > 1;
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    try {
        const Target other; // so that nobody is charged for what the first program with a window costs
        CompareOperations();
        CompareAtRest();
        if (!isQuick)
            MeasureGrowth();
    } catch (const std::exception& error) {
        std::printf("not measured: %s\n", error.what());
        return 1;
    }
}
