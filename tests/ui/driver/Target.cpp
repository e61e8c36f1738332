#include "driver/Target.h"

#include <sstream>

namespace vextrel::driver {

Target::Target(const std::wstring& options)
    : process_(OwnFolder() / L"vextrel_target.exe", options)
    , window_(process_.AwaitWindow(target::windowClass)) {
    SettleInForeground(window_);
}

HWND Target::Field(int id) const {
    const HWND field = GetDlgItem(window_, id);
    if (!field)
        throw Failure("the target has no field " + std::to_string(id));
    return field;
}

std::wstring Target::Text(int id) const {
    return TextOf(Field(id));
}

int Target::Drops() const {
    return std::stoi(Text(target::dropCount));
}

int Target::Entries() const {
    return std::stoi(Text(target::enterCount));
}

std::wstring Target::TypedCharacters() const {
    std::wistringstream record(Text(target::charRecord));
    std::wstring characters;
    unsigned unit = 0;
    while (record >> std::hex >> unit)
        characters += static_cast<wchar_t>(unit);
    return characters;
}

void Target::PullHere(Pointer& pointer, POINT from) const {
    const int entries = Entries();
    const POINT field = CentreOf(Field(target::dropField));
    pointer.Pull(from, field);
    LONG shift = 0;
    Await("the drag enters the target", [&] {
        shift = 1 - shift;
        pointer.MoveTo({field.x + shift, field.y}, 1, Milliseconds(40));
        return Entries() > entries;
    });
}

std::wstring Target::TakeDrag(Pointer& pointer, POINT from) const {
    const int drops = Drops();
    PullHere(pointer, from);
    pointer.Release();
    Await("the drop arrives", [&] { return Drops() > drops; });
    return Text();
}

void Target::ReadNow() const {
    Ask(window_, target::readNow);
}

void Target::KeepClearOf(const RECT& other) const {
    const RECT own = BoundsOf(window_);
    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const LONG right = GetSystemMetrics(SM_CXSCREEN) - width;
    const LONG bottom = GetSystemMetrics(SM_CYSCREEN) - height;
    for (const POINT corner : {POINT{0, 0}, POINT{right, 0}, POINT{0, bottom}, POINT{right, bottom}}) {
        const RECT there{corner.x, corner.y, corner.x + width, corner.y + height};
        RECT common{};
        if (IntersectRect(&common, &there, &other))
            continue;
        SetWindowPos(window_, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        Await("the target has moved", [&] {
            const RECT now = BoundsOf(window_);
            return !IntersectRect(&common, &now, &other);
        });
        return;
    }
    throw Failure("no corner of the screen is free for the target");
}

} // namespace vextrel::driver
