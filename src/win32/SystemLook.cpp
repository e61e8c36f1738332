#include "win32/SystemLook.h"

#include <cstdlib>

namespace vextrel {

bool IsHighContrast() noexcept {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

bool PicturesFollowTextColour() noexcept {
    const COLORREF ground = ::GetSysColor(COLOR_3DFACE);
    // Weights of the channels in perceived brightness, in percent; dark is what is nearer to black than to white.
    const int brightness = (30 * GetRValue(ground) + 59 * GetGValue(ground) + 11 * GetBValue(ground)) / 100;
    return IsHighContrast() || brightness < 128;
}

int CharacterHeightOf(HFONT font) noexcept {
    LOGFONTW wanted{};
    ::GetObjectW(font, sizeof wanted, &wanted);
    return static_cast<int>(std::abs(wanted.lfHeight));
}

HFONT FontCache::Get(int dpi, int heightPx) {
    UniqueFont& font = fonts_[{dpi, heightPx}];
    if (!font) {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        ::SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi));
        LOGFONTW& wanted = metrics.lfMessageFont;
        if (heightPx != 0) {
            wanted.lfHeight = -std::abs(heightPx);
        }
        if (heightPx < 0) {
            wanted.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
            ::lstrcpyW(wanted.lfFaceName, L"Consolas");
        }
        font.Reset(::CreateFontIndirectW(&wanted));
    }
    // Out of graphics objects: the system's own font, until one can be made.
    return font ? font.Get() : static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
}

} // namespace vextrel
