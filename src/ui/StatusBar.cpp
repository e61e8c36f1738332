#include "ui/StatusBar.h"

#include "ui/WindowLayout.h"
#include "win32/handles.h"

#include <algorithm>

namespace vextrel {

namespace {

constexpr int paddingTwips = 180;
constexpr int gripTwips = 240;

/// Calls a function with a screen context in which a font is selected.
template <typename Use>
void WithFont(HFONT font, Use use) {
    const HDC screen = ::GetDC(nullptr);
    {
        const SelectScope selected(screen, font);
        use(screen);
    }
    ::ReleaseDC(nullptr, screen);
}

} // namespace

int StatusBarHeightFor(HFONT font, int dpi) noexcept {
    constexpr int lowestTwips = 330;
    constexpr int bordersTwips = 90;
    TEXTMETRICW metrics{};
    WithFont(font, [&](HDC screen) { ::GetTextMetricsW(screen, &metrics); });
    return std::max(PixelsFromTwips(lowestTwips, dpi),
                    static_cast<int>(metrics.tmHeight) + PixelsFromTwips(bordersTwips, dpi));
}

void ShowStatusTexts(HWND statusBar, HFONT font, int dpi, const std::array<const wchar_t*, 3>& texts) noexcept {
    std::array<int, 3> widths{};
    WithFont(font, [&](HDC screen) {
        for (std::size_t pane = 0; pane < texts.size(); ++pane) {
            SIZE size{};
            ::GetTextExtentPoint32W(screen, texts[pane], ::lstrlenW(texts[pane]), &size);
            widths[pane] = static_cast<int>(size.cx) + PixelsFromTwips(paddingTwips, dpi);
        }
    });
    widths.back() += PixelsFromTwips(gripTwips, dpi);
    RECT area{};
    ::GetClientRect(statusBar, &area);
    const int spare = (static_cast<int>(area.right) - widths[0] - widths[1] - widths[2]) / 3;
    const std::array<int, 3> edges{widths[0] + spare, widths[0] + widths[1] + 2 * spare, -1};
    ::SendMessageW(statusBar, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    for (std::size_t pane = 0; pane < texts.size(); ++pane) {
        ::SendMessageW(statusBar, SB_SETTEXTW, pane, reinterpret_cast<LPARAM>(texts[pane]));
    }
}

} // namespace vextrel
