// A second program for the tests: a field to drop text on, a field to type into, and a record of what came. It keeps
// everything in its window and writes nothing to disk.

#include "target/Contract.h"

#include <ole2.h>

#include <cstdio>
#include <string>
#include <utility>

namespace vextrel::target {
namespace {

bool Has(const wchar_t* option) noexcept {
    return std::wcsstr(GetCommandLineW(), option) != nullptr;
}

std::wstring TextFrom(IDataObject& data) {
    FORMATETC format{CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium{};
    if (const HRESULT result = data.GetData(&format, &medium); FAILED(result))
        return L"<no text: " + std::to_wstring(static_cast<unsigned long>(result)) + L">";
    std::wstring text = static_cast<const wchar_t*>(GlobalLock(medium.hGlobal));
    GlobalUnlock(medium.hGlobal);
    ReleaseStgMedium(&medium);
    return text;
}

/// Takes text by drag-and-drop. It lives as long as the program; nobody's references count.
class TextDropTarget final : public IDropTarget {
  public:
    explicit TextDropTarget(HWND window)
        : window_(window) {}

    void ReadNow() {
        if (kept_)
            SetDlgItemTextW(window_, dropField, TextFrom(*kept_).c_str());
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override {
        const bool known = id == IID_IUnknown || id == IID_IDropTarget;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return 2; }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return 1; }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL place, DWORD* effect) noexcept override {
        if (Has(L"--read="))
            Keep(data);
        SetDlgItemInt(window_, enterCount, ++entries_, FALSE);
        return DragOver(keys, place, effect);
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD /*keys*/, POINTL /*place*/, DWORD* effect) noexcept override {
        ReadNow();
        *effect &= DROPEFFECT_COPY;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DragLeave() noexcept override {
        // Wine 8 takes the data of a later drag for the same object as long as this is held.
        if (!Has(L"--keep"))
            Keep(nullptr);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL place, DWORD* effect) noexcept override {
        DragOver(keys, place, effect);
        Keep(nullptr);
        if (*effect == DROPEFFECT_NONE)
            return S_OK;
        // The count follows the text, so that who sees the new count finds the text in place.
        SetDlgItemTextW(window_, dropField, TextFrom(*data).c_str());
        SetDlgItemInt(window_, dropCount, ++drops_, FALSE);
        return S_OK;
    }

  private:
    void Keep(IDataObject* data) noexcept {
        if (data)
            data->AddRef();
        if (IDataObject* const before = std::exchange(kept_, data))
            before->Release();
    }

    HWND window_;
    UINT entries_ = 0;
    UINT drops_ = 0;
    IDataObject* kept_ = nullptr;
};

TextDropTarget* dropTarget = nullptr;

void Append(HWND window, int id, const wchar_t* format, WPARAM value) noexcept {
    wchar_t entry[8];
    std::swprintf(entry, std::size(entry), format, static_cast<unsigned>(value));
    SendDlgItemMessageW(window, id, EM_SETSEL, 0x7FFF, 0x7FFF);
    SendDlgItemMessageW(window, id, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(entry));
}

/// What editField gets. @return whether that is all there is to it.
bool Record(HWND window, UINT message, WPARAM value) noexcept {
    const bool isSystemKey = message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
    if (message == WM_CHAR)
        Append(window, charRecord, L"%04X ", value);
    else if (message == WM_KEYDOWN || message == WM_KEYUP || isSystemKey)
        Append(window, keyRecord, message == WM_KEYDOWN || message == WM_SYSKEYDOWN ? L"+%02X " : L"-%02X ", value);
    // Left alone, a system key would open the window's menu, which takes the keys that follow.
    return isSystemKey;
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == readNow)
        dropTarget->ReadNow();
    if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND CreateTarget() {
    WNDCLASSW definition{};
    definition.lpfnWndProc = WindowProcedure;
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    definition.lpszClassName = windowClass;
    RegisterClassW(&definition);
    const HWND window =
        CreateWindowExW(Has(L"--topmost") ? WS_EX_TOPMOST : 0, windowClass, L"Drop target",
                        WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU, 40, 40, 480, 235, nullptr, nullptr, nullptr, nullptr);
    const auto add = [window](const wchar_t* kind, const wchar_t* text, RECT place, int id = 0, DWORD style = 0) {
        CreateWindowExW(id != 0 ? WS_EX_CLIENTEDGE : 0, kind, text, WS_CHILD | WS_VISIBLE | style, place.left,
                        place.top, place.right, place.bottom, window, reinterpret_cast<HMENU>(INT_PTR{id}), nullptr,
                        nullptr);
    };
    int top = 10;
    for (const wchar_t* label : {L"Drop here:", L"Type here:", L"Characters:", L"Drops:", L"Keys:"}) {
        const int id = dropField + top / 35;
        add(L"STATIC", label, {10, top + 4, 90, 20});
        add(L"EDIT", id == dropCount ? L"0" : L"", {110, top, 340, 26}, id,
            id > editField ? ES_AUTOHSCROLL | ES_READONLY : ES_AUTOHSCROLL);
        top += 35;
    }
    add(L"STATIC", L"0", {}, enterCount);
    return window;
}

} // namespace
} // namespace vextrel::target

int wmain() {
    using namespace vextrel::target;
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    OleInitialize(nullptr);
    const HWND window = CreateTarget();
    TextDropTarget target(window);
    dropTarget = &target;
    if (FAILED(RegisterDragDrop(GetDlgItem(window, dropField), &target)))
        return 2;
    const HWND typed = GetDlgItem(window, editField);
    ShowWindow(window, SW_SHOW);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        if (message.hwnd != typed || !Record(window, message.message, message.wParam))
            DispatchMessageW(&message);
    }
    OleUninitialize();
    return 0;
}
