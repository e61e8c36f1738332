#include "ui/StatusBar.h"

#include "core/Commands.h"
#include "core/WindowGeometry.h"
#include "win32/FontCache.h"

#include <algorithm>

namespace vextrel {

namespace {

constexpr int paddingTwips = 180;
constexpr int gripTwips = 240;

std::array<int, 3> WidthsOf(const std::array<std::wstring, 3>& texts, HFONT font) noexcept {
    std::array<int, 3> widths{};
    WithFont(font, [&](HDC screen) {
        for (std::size_t pane = 0; pane < texts.size(); ++pane) {
            SIZE size{};
            ::GetTextExtentPoint32W(screen, texts[pane].c_str(), static_cast<int>(texts[pane].size()), &size);
            widths[pane] = static_cast<int>(size.cx);
        }
    });
    return widths;
}

int Sum(const std::array<int, 3>& widths) noexcept {
    return widths[0] + widths[1] + widths[2];
}

std::wstring EndedInDots(std::wstring text, HFONT font, int widthPx) {
    constexpr std::size_t dots = 4; // as many characters more the system may write
    RECT room{0, 0, widthPx, 1};
    text.resize(text.size() + dots);
    WithFont(font, [&](HDC screen) {
        ::DrawTextW(screen, text.data(), static_cast<int>(text.size() - dots), &room,
                    DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT);
    });
    return text.c_str();
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

void ShowStatusTexts(HWND statusBar, HFONT font, int dpi, std::array<std::wstring, 3> texts) {
    RECT area{};
    ::GetClientRect(statusBar, &area);
    const int padding = PixelsFromTwips(paddingTwips, dpi);
    const int roomPx = static_cast<int>(area.right) - 3 * padding - PixelsFromTwips(gripTwips, dpi);
    std::array<int, 3> widths = WidthsOf(texts, font);
    if (Sum(widths) > roomPx) {
        std::transform(texts.begin(), texts.end(), texts.begin(), BriefStatus);
        widths = WidthsOf(texts, font);
    }
    if (const int missing = Sum(widths) - roomPx; missing > 0) {
        const auto longest = static_cast<std::size_t>(std::max_element(widths.begin(), widths.end()) - widths.begin());
        widths[longest] = std::max(0, widths[longest] - missing);
        texts[longest] = EndedInDots(texts[longest], font, widths[longest]);
    }
    const int spare = (roomPx - Sum(widths)) / 3;
    const int first = widths[0] + padding + spare;
    const std::array<int, 3> edges{first, first + widths[1] + padding + spare, -1};
    ::SendMessageW(statusBar, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    for (std::size_t pane = 0; pane < texts.size(); ++pane) {
        ::SendMessageW(statusBar, SB_SETTEXTW, pane, reinterpret_cast<LPARAM>(texts[pane].c_str()));
    }
}

} // namespace vextrel
