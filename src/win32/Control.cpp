#include "win32/Control.h"

#include "win32/Com.h"
#include "win32/SubclassedWindow.h"
#include "win32/SystemLibrary.h"
#include "win32/Text.h"

#include <initguid.h>
#include <oleacc.h>

namespace vextrel {

namespace {

// Written out, because the import libraries at hand do not carry them.
constexpr CLSID classOfAccPropServices{0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr IID interfaceOfAccPropServices{0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr GUID propertyName{0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};
constexpr GUID propertyValue{0x123fe443, 0x211a, 0x4615, {0x95, 0x27, 0xc4, 0x5a, 0x7e, 0x93, 0x71, 0x7a}};

/// @return null where the system has none.
IAccPropServices* NewPropertyServices() noexcept {
    // From the system's folder, not from wherever the user's part of the registry says that the class lives.
    static const SystemLibrary library(L"oleacc.dll");
    const auto getClass = library.Find<LPFNGETCLASSOBJECT>("DllGetClassObject");
    ComPtr<IClassFactory> factory;
    void* services = nullptr;
    if (getClass == nullptr ||
        FAILED(getClass(classOfAccPropServices, __uuidof(IClassFactory), reinterpret_cast<void**>(factory.Out()))) ||
        FAILED(factory->CreateInstance(nullptr, interfaceOfAccPropServices, &services))) {
        return nullptr;
    }
    return static_cast<IAccPropServices*>(services);
}

void Annotate(const GUID& property, std::initializer_list<AccessibleName> texts) noexcept {
    static IAccPropServices* const services = NewPropertyServices(); // for as long as there are windows
    if (services == nullptr) {
        return;
    }
    for (const auto& [control, text] : texts) {
        constexpr auto object = static_cast<DWORD>(OBJID_CLIENT);
        if (text != nullptr) {
            services->SetHwndPropStr(control, object, CHILDID_SELF, property, text);
        } else {
            services->ClearHwndProps(control, object, CHILDID_SELF, &property, 1);
        }
    }
}

} // namespace

HWND CreateControl(HWND parent, const ControlArgs& args) {
    const Rect& place = args.placePx;
    const HWND control =
        ::CreateWindowExW(args.exStyle | WS_EX_NOPARENTNOTIFY, args.windowClass, args.text, args.style | WS_CHILD,
                          place.left, place.top, place.Width(), place.Height(), parent,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(args.id)), ::GetModuleHandleW(nullptr), nullptr);
    if (control == nullptr) {
        ThrowLastError();
    }
    GateWindow(control, args.isSecret ? GatedWindow::SecretBox : GatedWindow::Control);
    return control;
}

void SetAccessibleNames(std::initializer_list<AccessibleName> names) noexcept {
    Annotate(propertyName, names);
}

void SetAccessibleValue(HWND control, const wchar_t* value) noexcept {
    Annotate(propertyValue, {{control, value}});
}

} // namespace vextrel
