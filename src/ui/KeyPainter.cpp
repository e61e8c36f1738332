#include "ui/KeyPainter.h"

#include "core/Geometry.h"

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

/// The largest font, from the wanted height downwards, in which the caption fits the key's width.
HFONT FittingFont(HDC context, const RECT& area, const KeyLook& look, int wantedPx, FontCache& fonts) {
    constexpr int smallestPx = 6;
    const LONG room = std::max<LONG>(1, area.right - area.left);
    const auto widthAt = [&](int heightPx) {
        const SelectScope selected(context, fonts.Sized(look.dpi, heightPx));
        SIZE size{};
        ::GetTextExtentPoint32W(context, look.caption.data(), static_cast<int>(look.caption.size()), &size);
        return size.cx;
    };
    int heightPx = std::max(wantedPx, smallestPx);
    while (heightPx > smallestPx && widthAt(heightPx) > room) {
        --heightPx;
    }
    return fonts.Sized(look.dpi, heightPx);
}

void PaintCaption(HDC context, RECT area, const KeyLook& look, COLORREF colour, FontCache& fonts) {
    const int keyHeight = area.bottom - area.top;
    ::InflateRect(&area, -::MulDiv(2, look.dpi, USER_DEFAULT_SCREEN_DPI), 0);
    // Single characters are read one by one and want to be large; the words on the action keys are landmarks.
    // On small keys both take more of the height, to remain readable.
    const auto share = [&](int usual, int most, int readable96) {
        return std::max(usual, std::min(most, ::MulDiv(readable96, look.dpi, USER_DEFAULT_SCREEN_DPI)));
    };
    const int wantedPx = look.isCharacterKey && look.caption.size() == 1
                             ? share(keyHeight / 2, keyHeight * 3 / 4, 13)
                             : share(keyHeight * 2 / 5, keyHeight * 3 / 5, 11);
    const SelectScope font(context, FittingFont(context, area, look, wantedPx, fonts));
    ::SetBkMode(context, TRANSPARENT);
    ::SetTextColor(context, colour);
    ::DrawTextW(context, look.caption.data(), static_cast<int>(look.caption.size()), &area,
                DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void PaintInto(HDC context, const RECT& area, const KeyLook& look, FontCache& fonts) {
    const KeyColours colours = ColoursOf(look);
    const int gap = std::max(1, ::MulDiv(1, look.dpi, USER_DEFAULT_SCREEN_DPI));
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
