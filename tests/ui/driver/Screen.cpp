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

#include <memory>

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

} // namespace

void TakeScreenshot(const std::filesystem::path& file) {
    const GdiPlus gdiPlus;
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    const std::unique_ptr<std::remove_pointer_t<HDC>, void (*)(HDC)> screen(GetDC(nullptr),
                                                                            [](HDC dc) { ReleaseDC(nullptr, dc); });
    const std::unique_ptr<std::remove_pointer_t<HDC>, BOOL (*)(HDC)> memory(CreateCompatibleDC(screen.get()), DeleteDC);
    const std::unique_ptr<std::remove_pointer_t<HBITMAP>, BOOL (*)(HGDIOBJ)> bitmap(
        CreateCompatibleBitmap(screen.get(), width, height), DeleteObject);
    const HGDIOBJ before = SelectObject(memory.get(), bitmap.get());
    const bool copied = BitBlt(memory.get(), 0, 0, width, height, screen.get(), 0, 0, SRCCOPY | CAPTUREBLT) != FALSE;
    SelectObject(memory.get(), before);
    Check(copied, "copying the screen");
    Gdiplus::Bitmap picture(bitmap.get(), nullptr);
    if (picture.Save(file.c_str(), &pngEncoder, nullptr) != Gdiplus::Ok)
        throw Failure("could not write " + Narrow(file.wstring()));
}

} // namespace vextrel::driver
