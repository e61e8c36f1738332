#include "ui/StatusBar.h"

#include "core/ids.h"
#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/SubclassedWindow.h"
#include "win32/SystemLook.h"

#include <algorithm>
#include <numeric>

namespace vextrel {

namespace {

constexpr int paddingTwips = 180;
constexpr int gripTwips = 240;
constexpr int lowestTwips = 330;
constexpr int bordersTwips = 90;

int Sum(const std::vector<int>& widths) noexcept {
    return std::accumulate(widths.begin(), widths.end(), 0);
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

void StatusBar::Create(HWND parent) {
    handle_ = CreateControl(parent,
                            {.windowClass = STATUSCLASSNAMEW,
                             .style = WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP | CCS_NOPARENTALIGN | CCS_NORESIZE,
                             .id = ids::StatusBar1});
}

void StatusBar::SetFont(HFONT font, int dpi) noexcept {
    font_ = font;
    dpi_ = dpi;
    vextrel::SetFont(handle_, font, true);
    TEXTMETRICW metrics{};
    WithFont(font, [&](HDC screen) { ::GetTextMetricsW(screen, &metrics); });
    heightPx_ = std::max(PixelsFromTwips(lowestTwips, dpi),
                         static_cast<int>(metrics.tmHeight) + PixelsFromTwips(bordersTwips, dpi));
}

void StatusBar::SetTexts(StatusTexts texts) {
    if (texts != texts_) {
        texts_ = std::move(texts);
        Show();
    }
}

void StatusBar::SetNotice(std::wstring notice) {
    if (notice == notice_) {
        return;
    }
    Change(notice_, std::move(notice));
    const bool shown = !notice_.empty();
    // Whole, where the pane has room for a part of it only.
    SetAccessibleNames({{handle_, shown ? notice_.c_str() : nullptr}});
    if (shown) {
        ::NotifyWinEvent(EVENT_SYSTEM_ALERT, handle_, OBJID_CLIENT, CHILDID_SELF);
    }
}

void StatusBar::Change(std::wstring& text, std::wstring to) {
    if (text != to) {
        text = std::move(to);
        Show();
    }
}

std::vector<int> StatusBar::WidthsOf(const std::vector<std::wstring>& texts) const {
    std::vector<int> widths;
    WithFont(font_, [&](HDC screen) {
        for (const std::wstring& text : texts) {
            SIZE size{};
            ::GetTextExtentPoint32W(screen, text.c_str(), static_cast<int>(text.size()), &size);
            widths.push_back(static_cast<int>(size.cx));
        }
    });
    return widths;
}

void StatusBar::Show() {
    const std::wstring& usual = remark_.empty() ? texts_.inputMode : remark_;
    std::vector<std::wstring> texts{notice_.empty() ? usual : notice_, texts_.transferMode, texts_.layout};
    if (!texts_.warning.empty()) {
        texts.push_back(texts_.warning);
    }
    const int padding = PixelsFromTwips(paddingTwips, dpi_);
    const auto room = [&] {
        return static_cast<int>(ClientArea(handle_).right) - static_cast<int>(texts.size()) * padding -
               PixelsFromTwips(gripTwips, dpi_);
    };
    std::vector<int> widths = WidthsOf(texts);
    if (Sum(widths) > room()) {
        std::ranges::transform(texts, texts.begin(), BriefStatus);
        widths = WidthsOf(texts);
    }
    if (Sum(widths) > room() && texts.front() != BriefStatus(texts_.inputMode)) {
        texts.erase(texts.begin() + 1, texts.begin() + 3); // what happened now is worth more than what stays as it is
        widths = WidthsOf(texts);
    }
    const int panes = static_cast<int>(texts.size());
    const int roomPx = room();
    if (const int missing = Sum(widths) - roomPx; missing > 0) {
        const auto longest = static_cast<std::size_t>(std::ranges::max_element(widths) - widths.begin());
        widths[longest] = std::max(0, widths[longest] - missing);
        texts[longest] = EndedInDots(texts[longest], font_, widths[longest]);
    }
    const int around = padding + (roomPx - Sum(widths)) / panes;
    std::vector<int> edges(widths.size()); // where each pane ends
    std::transform_inclusive_scan(widths.begin(), widths.end(), edges.begin(), std::plus(),
                                  [around](int width) { return width + around; });
    edges.back() = -1;
    Tell(handle_, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    for (std::size_t pane = 0; pane < texts.size(); ++pane) {
        Tell(handle_, SB_SETTEXTW, pane, reinterpret_cast<LPARAM>(texts[pane].c_str()));
    }
}

} // namespace vextrel
