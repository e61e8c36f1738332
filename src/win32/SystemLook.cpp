#include "win32/SystemLook.h"

#include "win32/Windows.h"

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

} // namespace vextrel
