#include "ui/KeyPainter.h"

#include "core/KeyText.h"

namespace vextrel {

namespace {

/// Part of a colour's way to another, 0 to 256.
COLORREF Mix(COLORREF from, COLORREF to, int part) noexcept {
    const auto channel = [part](int a, int b) { return static_cast<BYTE>(a + (b - a) * part / 256); };
    return RGB(channel(GetRValue(from), GetRValue(to)), channel(GetGValue(from), GetGValue(to)),
               channel(GetBValue(from), GetBValue(to)));
}

struct KeyColours {
    COLORREF face;
    COLORREF edge;
    COLORREF text;
};

KeyColours ColoursOf(const KeyLook& look) noexcept {
    const COLORREF ground = ::GetSysColor(COLOR_3DFACE);
    if (!look.enabled) {
        const COLORREF grey = ::GetSysColor(COLOR_GRAYTEXT);
        return {ground, IsHighContrast() ? grey : Mix(ground, grey, 128), grey};
    }
    if (look.pushed || look.lit) {
        const COLORREF highlight = ::GetSysColor(COLOR_HIGHLIGHT);
        if (look.pushed || IsHighContrast()) {
            return {highlight, highlight, ::GetSysColor(COLOR_HIGHLIGHTTEXT)};
        }
        return {Mix(::GetSysColor(COLOR_WINDOW), highlight, 56), highlight, ::GetSysColor(COLOR_WINDOWTEXT)};
    }
    if (IsHighContrast()) {
        return {::GetSysColor(COLOR_BTNFACE), ::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_BTNTEXT)};
    }
    const COLORREF edge = Mix(ground, ::GetSysColor(COLOR_WINDOWTEXT), 96);
    if (look.isCharacterKey) {
        return {::GetSysColor(COLOR_WINDOW), edge, ::GetSysColor(COLOR_WINDOWTEXT)};
    }
    return {Mix(ground, ::GetSysColor(COLOR_WINDOWTEXT), 16), edge, ::GetSysColor(COLOR_BTNTEXT)};
}

int GapPx(int dpi) noexcept {
    return std::max(1, ::MulDiv(1, dpi, USER_DEFAULT_SCREEN_DPI));
}

/// Between a key's edge and its text.
int PaddingPx(int dpi) noexcept {
    return ::MulDiv(2, dpi, USER_DEFAULT_SCREEN_DPI);
}

int WidthPx(HDC context, std::wstring_view text) noexcept {
    SIZE size{};
    ::GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

void PaintCaption(HDC context, RECT area, const KeyLook& look, COLORREF colour, FontCache& fonts) {
    const int keyHeight = area.bottom - area.top;
    ::InflateRect(&area, -PaddingPx(look.dpi), 0);
    int heightPx = look.characterHeightPx;
    if (look.caption.size() != 1) {
        heightPx =
            FittingTextHeight(WantedTextHeight(keyHeight, look.dpi, false), area.right - area.left, [&](int height) {
                const SelectScope selected(context, fonts.Sized(look.dpi, height));
                return WidthPx(context, look.caption);
            });
    }
    const SelectScope font(context, fonts.Sized(look.dpi, heightPx));
    ::SetBkMode(context, TRANSPARENT);
    ::SetTextColor(context, colour);
    ::DrawTextW(context, look.caption.data(), static_cast<int>(look.caption.size()), &area,
                DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void PaintInto(HDC context, const RECT& area, const KeyLook& look, FontCache& fonts) {
    const KeyColours colours = ColoursOf(look);
    const int gap = GapPx(look.dpi);
    const int rounding = ::MulDiv(5, look.dpi, USER_DEFAULT_SCREEN_DPI);

    // The context's own brush and pen need no objects, which the system may have run out of.
    const HGDIOBJ brush = ::GetStockObject(DC_BRUSH);
    ::SetDCBrushColor(context, ::GetSysColor(COLOR_3DFACE));
    ::FillRect(context, &area, static_cast<HBRUSH>(brush));

    // The gap between two keys is drawn, not laid out: the buttons touch, so that no click falls between them.
    const RECT face{area.left + gap, area.top + gap, area.right - gap, area.bottom - gap};
    const UniquePen edge(::CreatePen(PS_SOLID, gap, colours.edge));
    ::SetDCBrushColor(context, colours.face);
    ::SetDCPenColor(context, colours.edge);
    {
        const SelectScope filled(context, brush);
        const SelectScope drawn(context, edge ? edge.Get() : ::GetStockObject(DC_PEN));
        ::RoundRect(context, face.left, face.top, face.right, face.bottom, rounding, rounding);
    }
    PaintCaption(context, face, look, colours.text, fonts);
}

/// What a key is painted on before it is shown. Kept from one key to the next: to make it takes as long as to paint.
class Canvas {
  public:
    /// @return a context of at least this size to paint on, or null when the system has no room for one.
    HDC Get(HDC like, int width, int height) noexcept {
        if (width > size_.width || height > size_.height) {
            const Size wanted{std::max(width, size_.width), std::max(height, size_.height)};
            size_ = {};
            context_.Reset(); // lets go of the bitmap that it draws on
            bitmap_.Reset(::CreateCompatibleBitmap(like, wanted.width, wanted.height));
            UniqueMemoryContext context(::CreateCompatibleDC(like));
            if (bitmap_ && context && ::SelectObject(context.Get(), bitmap_.Get()) != nullptr) {
                context_ = std::move(context);
                size_ = wanted;
            }
        }
        return context_.Get();
    }

  private:
    UniqueBitmap bitmap_;
    UniqueMemoryContext context_;
    Size size_;
};

} // namespace

int CharacterHeightPx(Size key, int dpi, std::wstring_view characters, FontCache& fonts) {
    const int gaps = 2 * GapPx(dpi);
    const int wantedPx = WantedTextHeight(key.height - gaps, dpi, true);
    return FittingTextHeight(wantedPx, key.width - gaps - 2 * PaddingPx(dpi), [&](int heightPx) {
        int widest = 0;
        WithFont(fonts.Sized(dpi, heightPx), [&](HDC screen) {
            for (std::size_t place = 0; place < characters.size(); ++place) {
                widest = std::max(widest, WidthPx(screen, characters.substr(place, 1)));
            }
        });
        return widest;
    });
}

void PaintKey(HDC context, const RECT& area, const KeyLook& look, FontCache& fonts) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (width <= 0 || height <= 0) {
        return;
    }
    // One for all keys, which are painted one after another.
    static Canvas sharedCanvas;
    if (const HDC canvas = sharedCanvas.Get(context, width, height); canvas != nullptr) {
        PaintInto(canvas, {0, 0, width, height}, look, fonts);
        ::BitBlt(context, area.left, area.top, width, height, canvas, 0, 0, SRCCOPY);
    } else {
        // A key that flickers is better than one that is not seen.
        PaintInto(context, area, look, fonts);
    }
}

} // namespace vextrel
