#include "pictures/Screen.h"

#include "driver/Process.h"

#include <objidl.h>
// GDI+'s header wants these two from the global namespace, where NOMINMAX has removed them.
#include <algorithm>
namespace Gdiplus {
using std::max; // NOLINT(misc-unused-using-decls)
using std::min; // NOLINT(misc-unused-using-decls)
} // namespace Gdiplus
#include <gdiplus.h>

#include <utility>

namespace vextrel::driver {

void TakeScreenshot(const std::filesystem::path& file, std::optional<RECT> part) {
    const RECT area = part.value_or(RECT{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC screen = GetDC(nullptr);
    const HDC copy = CreateCompatibleDC(screen);
    BITMAPINFO format{};
    format.bmiHeader = {sizeof format.bmiHeader, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(screen, &format, DIB_RGB_COLORS, &pixels, nullptr, 0);
    SelectObject(copy, bitmap);
    // Text that a control has may not be drawn yet, and a compositor adds its own delay. A picture that never comes to
    // rest is taken as it is.
    static_cast<void>(WaitFor(
        [&, shown = std::string()]() mutable {
            BitBlt(copy, 0, 0, width, height, screen, area.left, area.top, SRCCOPY | CAPTUREBLT);
            GdiFlush();
            const std::size_t rowLength = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
            const std::string now(static_cast<const char*>(pixels), rowLength * static_cast<std::size_t>(height));
            Sleep(100);
            return now == std::exchange(shown, now);
        },
        Milliseconds(2000)));
    DeleteDC(copy);
    ReleaseDC(nullptr, screen);
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    GdiplusStartup(&token, &input, nullptr);
    // The PNG encoder, as documented.
    constexpr CLSID encoder{0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    const auto result = Gdiplus::Bitmap(bitmap, nullptr).Save(file.c_str(), &encoder, nullptr);
    Gdiplus::GdiplusShutdown(token);
    DeleteObject(bitmap);
    if (result != Gdiplus::Ok)
        throw Failure("could not write " + Narrow(file.wstring()));
}

} // namespace vextrel::driver
