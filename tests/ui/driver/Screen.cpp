#include "driver/Screen.h"

#include "driver/Process.h"

#include <objidl.h>
// GDI+'s header wants these two from the global namespace, where NOMINMAX has removed them.
#include <algorithm>
namespace Gdiplus {
using std::max; // NOLINT(misc-unused-using-decls)
using std::min; // NOLINT(misc-unused-using-decls)
} // namespace Gdiplus
#include <gdiplus.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace vextrel::driver {

namespace {

class GdiPlus {
  public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        Check(GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok, "GdiplusStartup");
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(token_); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

  private:
    ULONG_PTR token_ = 0;
};

// CLSID of the PNG encoder, as documented for GDI+.
constexpr CLSID pngEncoder{0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

// All of the screen, in the format's size and order.
std::vector<std::uint32_t> CopyScreen(const BITMAPINFO& format) {
    const int width = format.bmiHeader.biWidth;
    const int height = -format.bmiHeader.biHeight;
    const std::unique_ptr<std::remove_pointer_t<HDC>, void (*)(HDC)> screen(GetDC(nullptr),
                                                                            [](HDC dc) { ReleaseDC(nullptr, dc); });
    const std::unique_ptr<std::remove_pointer_t<HDC>, BOOL (*)(HDC)> memory(CreateCompatibleDC(screen.get()), DeleteDC);
    void* bits = nullptr;
    const std::unique_ptr<std::remove_pointer_t<HBITMAP>, BOOL (*)(HGDIOBJ)> bitmap(
        CreateDIBSection(screen.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0), DeleteObject);
    Check(bitmap != nullptr, "CreateDIBSection");
    const HGDIOBJ before = SelectObject(memory.get(), bitmap.get());
    const bool copied = BitBlt(memory.get(), 0, 0, width, height, screen.get(), 0, 0, SRCCOPY | CAPTUREBLT) != FALSE;
    GdiFlush();
    SelectObject(memory.get(), before);
    Check(copied, "copying the screen");
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    return {first, first + static_cast<std::ptrdiff_t>(width) * height};
}

} // namespace

void TakeScreenshot(const std::filesystem::path& file, std::optional<RECT> part) {
    const GdiPlus gdiPlus;
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    BITMAPINFO format{};
    format.bmiHeader = {sizeof format.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const auto unchanged = [&, before = std::vector<std::uint32_t>()]() mutable {
        before = std::exchange(pixels, CopyScreen(format));
        Sleep(100);
        return before == pixels;
    };
    // Text that a control has may not be drawn yet, and a compositor adds its own delay. A picture that never comes to
    // rest is taken as it is.
    static_cast<void>(WaitFor(unchanged, Milliseconds(2000)));
    Gdiplus::Bitmap picture(&format, pixels.data());
    const RECT area = part.value_or(RECT{0, 0, width, height});
    const std::unique_ptr<Gdiplus::Bitmap> taken(
        picture.Clone(static_cast<INT>(area.left), static_cast<INT>(area.top), static_cast<INT>(area.right - area.left),
                      static_cast<INT>(area.bottom - area.top), PixelFormat24bppRGB));
    if (!taken || taken->Save(file.c_str(), &pngEncoder, nullptr) != Gdiplus::Ok)
        throw Failure("could not write " + Narrow(file.wstring()));
}

} // namespace vextrel::driver
