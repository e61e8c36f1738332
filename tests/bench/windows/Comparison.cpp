#include "windows/Comparison.h"

#include "core/ids.h"
#include "driver/Input.h"
#include "floor/Contract.h"
#include "windows/Table.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace vextrel::bench {

using namespace driver;

namespace {

constexpr const wchar_t* formClass = L"VextrelForm";
constexpr DWORD settleMs = 1000;
constexpr int leftShift = ids::firstKey + 41;

LRESULT LengthOf(HWND edit) {
    return Ask(edit, WM_GETTEXTLENGTH);
}

/// Time from a posted message until an edit control's text has another length. No pause between two looks: the answer
/// must not wait for this program.
double TimeUntilLonger(HWND edit, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT before = LengthOf(edit);
    const double begun = Now();
    PostMessageW(window, message, wParam, lParam);
    while (LengthOf(edit) == before)
        if (Now() - begun > 10000)
            throw Failure("no character came");
    return Now() - begun;
}

void FillBox(const Subject& program, int count) {
    const HWND box = program.Control(ids::txtPassword);
    const LRESULT wanted = LengthOf(box) + count;
    for (int n = 0; n < count; ++n)
        PostMessageW(box, WM_CHAR, L'a', 0);
    Await("the box is full", [&] { return LengthOf(box) == wanted; });
}

HWND FindKey(const Subject& program, wchar_t caption) {
    for (int id = ids::firstKey; id <= ids::lastKey; ++id)
        if (const HWND key = program.Control(id); IsWindowVisible(key) && TextOf(key) == std::wstring(1, caption))
            return key;
    throw Failure("no such key");
}

LPARAM MiddleOf(HWND part, HWND whole) {
    POINT place = CentreOf(part);
    ScreenToClient(whole, &place);
    return MAKELPARAM(place.x, place.y);
}

} // namespace

Subject StartProgram(const Sandbox& sandbox) {
    return {sandbox.Program(), {formClass, L"Vextrel", formClass}};
}

Subject StartFloor() {
    return {OwnFolder() / L"vextrel_floor.exe", {floor::windowClass, L"Floor", floor::layerClass}};
}

void CompareStarts(const Extent& extent) {
    const Sandbox sandbox(Sandbox::Others::Refused); // as users have it
    const auto timed = [](const Subject& subject, std::vector<double>& into) {
        into.push_back(subject.StartMs());
        subject.Close();
    };
    Row start{"start to shown and painted", "ms", {}, {}, 1.05};
    for (int pair = 0; pair < extent.starts; ++pair) {
        if (pair % 2 == 0)
            timed(StartProgram(sandbox), start.program);
        timed(StartFloor(), start.floor);
        if (pair % 2 != 0)
            timed(StartProgram(sandbox), start.program);
    }
    Write(start);
}

void CompareResources(const Extent& extent) {
    Row privateKb{"private memory", "KB", {}, {}, 1.15};
    Row residentKb{"resident memory", "KB", {}, {}, 1.15};
    Row idle{"processor while idle", "% of a core", {}, {}, 2.0, {}, 0.5};
    for (int pair = 0; pair < extent.idles; ++pair) {
        const Sandbox sandbox(Sandbox::Others::Refused);
        const Subject program = StartProgram(sandbox);
        const Subject floor = StartFloor();
        Sleep(settleMs);
        const auto remember = [&](double(programs), double(floors), Row& row) {
            row.program.push_back(programs);
            row.floor.push_back(floors);
        };
        remember(program.Memory().own, floor.Memory().own, privateKb);
        remember(program.Memory().resident, floor.Memory().resident, residentKb);
        const double programUsed = program.ProcessorMs();
        const double floorUsed = floor.ProcessorMs();
        Sleep(extent.idleMs);
        const auto percent = [&](double ms) { return ms * 100 / extent.idleMs; };
        remember(percent(program.ProcessorMs() - programUsed), percent(floor.ProcessorMs() - floorUsed), idle);
        program.Close();
        floor.Close();
    }
    Write(privateKb);
    Write(residentKb);
    Write(idle);
}

void CompareClicks(const Extent& extent) {
    const Sandbox sandbox;
    const Subject program = StartProgram(sandbox);
    const Subject floor = StartFloor();
    std::vector<double> clicks;
    std::vector<double> posts;
    const HWND box = program.Control(ids::txtPassword);
    for (int n = 0; n < extent.clicks; ++n) {
        const LPARAM place = MiddleOf(FindKey(program, L"qwertyuiop"[n % 10]), program.Layer());
        Ask(program.Layer(), WM_LBUTTONDOWN, MK_LBUTTON, place);
        clicks.push_back(TimeUntilLonger(box, program.Layer(), WM_LBUTTONUP, 0, place));
        const HWND edit = floor.Control(floor::textField);
        posts.push_back(TimeUntilLonger(edit, edit, WM_CHAR, L'a', 0));
    }
    Write({"click to character", "ms", clicks, posts, {}, 2.0});
}

void CompareOperations(const Extent& extent) {
    const Sandbox sandbox;
    const Subject program = StartProgram(sandbox);
    const Subject floor = StartFloor();
    const auto compare = [&](const char* name, HWND window, UINT message, WPARAM wParam, UINT bare) {
        Row row{name, "ms", {}, {}, 1.5};
        for (int n = 0; n < extent.operations; ++n) {
            row.program.push_back(program.Time(window, message, wParam));
            row.floor.push_back(floor.Time(floor.Main(), bare));
        }
        Write(row);
    };
    compare("captions of 47 keys (Shift)", program.Control(leftShift), BM_CLICK, 0, floor::setCaptions);
    FillBox(program, floor::longText);
    compare("mask switch, 1,000 characters", program.Main(), WM_COMMAND, ids::mnuViewPasswordMask, floor::setText);
    compare("random size and place", program.Main(), WM_COMMAND, ids::toolRefresh, floor::place);
}

void CompareInjection(const Extent& extent) {
    constexpr int count = floor::longText;
    const Sandbox sandbox;
    const Subject floor = StartFloor();
    const Subject program = StartProgram(sandbox);
    const HWND edit = floor.Control(floor::typingField);
    SetWindowPos(floor.Main(), nullptr, 0, GetSystemMetrics(SM_CYSCREEN) - 430, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowPos(program.Main(), nullptr, GetSystemMetrics(SM_CXSCREEN) / 2, 0, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    const auto rate = [&] {
        Await(
            "all characters arrive", [&] { return LengthOf(edit) == count; }, Milliseconds(60000));
        return (count - 1) * 1e6 / static_cast<double>(Ask(floor.Main(), floor::typingTime));
    };
    Ask(program.Main(), WM_COMMAND, ids::mnuOptionsInjectMode);
    Ask(program.Main(), WM_COMMAND, ids::mnuOptionsKeepPasswordAfterDragDrop);
    FillBox(program, count);
    Row row{"injection, after its wait", "characters/s", {}, {}, 1.5};
    row.isRate = true;
    Pointer pointer;
    for (int n = 0; n < extent.injections; ++n) {
        BringToFront(program.Main());
        pointer.Drag(CentreOf(program.Control(ids::txtPassword)), CentreOf(edit));
        row.program.push_back(rate());
        for (int character = 0; character < count; ++character)
            PostMessageA(edit, WM_CHAR, 'a', 0);
        row.floor.push_back(rate());
    }
    Write(row);
}

void CompareDlls() {
    const Sandbox sandbox(Sandbox::Others::Refused);
    const auto program = StartProgram(sandbox).Dlls();
    const auto floor = StartFloor().Dlls();
    std::vector<std::wstring> different;
    std::ranges::set_symmetric_difference(program, floor, std::back_inserter(different));
    for (const std::wstring& name : different)
        std::printf("note: only one of the two loads %s\n", Narrow(name).c_str());
}

} // namespace vextrel::bench
