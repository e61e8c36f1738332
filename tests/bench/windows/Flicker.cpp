#include "core/ids.h"
#include "driver/Input.h"
#include "floor/Contract.h"
#include "windows/Comparison.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace vextrel::bench {

using namespace driver;

namespace {

constexpr int leftShift = ids::firstKey + 41;
constexpr DWORD longestChangeMs = 150;

/// A part of the screen, looked at again and again.
class Eye {
  public:
    explicit Eye(const RECT& part)
        : part_(part)
        , screen_(GetDC(nullptr), [](HDC context) { ReleaseDC(nullptr, context); })
        , memory_(CreateCompatibleDC(screen_.get()), DeleteDC) {
        BITMAPINFO format{};
        format.bmiHeader = {sizeof format.bmiHeader, Width(), -Height(), 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        bitmap_.reset(CreateDIBSection(screen_.get(), &format, DIB_RGB_COLORS, &bits_, nullptr, 0));
        Check(bitmap_ != nullptr, "CreateDIBSection");
        SelectObject(memory_.get(), bitmap_.get());
    }
    [[nodiscard]] const RECT& Part() const { return part_; }
    [[nodiscard]] std::vector<std::uint32_t> Look() const {
        BitBlt(memory_.get(), 0, 0, Width(), Height(), screen_.get(), part_.left, part_.top, SRCCOPY | CAPTUREBLT);
        GdiFlush();
        const auto* first = static_cast<const std::uint32_t*>(bits_);
        return {first, first + std::ptrdiff_t{Width()} * Height()};
    }
    /// Whether two pictures show the same in a part of the screen.
    [[nodiscard]] bool Same(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b,
                            const RECT& where) const {
        for (LONG y = where.top - part_.top; y < where.bottom - part_.top; ++y) {
            const std::ptrdiff_t line = std::ptrdiff_t{y} * Width() - part_.left;
            if (!std::equal(a.begin() + line + where.left, a.begin() + line + where.right,
                            b.begin() + line + where.left))
                return false;
        }
        return true;
    }

  private:
    [[nodiscard]] int Width() const { return part_.right - part_.left; }
    [[nodiscard]] int Height() const { return part_.bottom - part_.top; }

    RECT part_;
    std::unique_ptr<std::remove_pointer_t<HDC>, void (*)(HDC)> screen_;
    std::unique_ptr<std::remove_pointer_t<HDC>, BOOL (*)(HDC)> memory_;
    void* bits_ = nullptr;
    std::unique_ptr<std::remove_pointer_t<HBITMAP>, BOOL (*)(HGDIOBJ)> bitmap_{nullptr, DeleteObject};
};

struct Seen {
    int looks = 0;    ///< at a key while the captions changed
    int changes = 0;  ///< of them, keys that showed something else than before
    int flickers = 0; ///< of them, keys that showed neither what they had shown nor what they then stayed with
};

/// Where the buttons lie that can be seen.
std::vector<RECT> PlacesOfButtons(HWND window) {
    std::vector<RECT> places;
    EnumChildWindows(
        window,
        [](HWND child, LPARAM found) noexcept -> BOOL {
            wchar_t name[8] = {};
            GetClassNameW(child, name, 8);
            if (lstrcmpW(name, WC_BUTTONW) == 0 && IsWindowVisible(child))
                reinterpret_cast<std::vector<RECT>*>(found)->push_back(BoundsOf(child));
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&places));
    return places;
}

/// Posts a message that changes captions, many times, and looks at the keys as they change.
Seen WatchCaptions(const Subject& subject, HWND window, UINT message, int times) {
    const std::vector<RECT> places = PlacesOfButtons(subject.Main());
    RECT all{};
    for (const RECT& place : places)
        UnionRect(&all, &all, &place);
    const Eye eye(all);
    Seen seen;
    for (int n = 0; n < times; ++n) {
        BringToFront(subject.Main());
        std::vector<std::vector<std::uint32_t>> pictures{eye.Look()};
        PostMessageW(window, message, 0, 0);
        for (const double begun = Now(); Now() - begun < longestChangeMs;)
            pictures.push_back(eye.Look());
        for (const RECT& place : places)
            for (const auto& picture : pictures) {
                const bool asBefore = eye.Same(picture, pictures.front(), place);
                ++seen.looks;
                seen.changes += asBefore ? 0 : 1;
                seen.flickers += asBefore || eye.Same(picture, pictures.back(), place) ? 0 : 1;
            }
    }
    return seen;
}

void Report(const char* who, const Seen& seen) {
    std::printf("flicker of %s: %d looks at a key, %d after its change, %d at neither picture\n", who, seen.looks,
                seen.changes, seen.flickers);
}

} // namespace

void LookForFlicker(const Extent& extent) {
    Pointer pointer;
    pointer.MoveTo({0, 0}); // away from what is looked at
    {
        const Sandbox sandbox;
        const Subject program = StartProgram(sandbox);
        Report("Vextrel", WatchCaptions(program, program.Control(leftShift), BM_CLICK, extent.operations));
    }
    const Subject floor = StartFloor();
    Report("the floor", WatchCaptions(floor, floor.Main(), floor::setCaptions, extent.operations));
}

} // namespace vextrel::bench
