#include "target/TextDropTarget.h"

#include <utility>

namespace vextrel::target {

TextDropTarget::TextDropTarget(DropOptions options, std::function<void()> entered,
                               std::function<void(const std::wstring&)> received)
    : options_(options)
    , entered_(std::move(entered))
    , received_(std::move(received)) {}

TextDropTarget::~TextDropTarget() {
    Forget();
}

void TextDropTarget::Forget() {
    if (dropped_)
        std::exchange(dropped_, nullptr)->Release();
}

void TextDropTarget::Keep(IDataObject* data) {
    Forget();
    dropped_ = data;
    dropped_->AddRef();
}

void TextDropTarget::ReadNow() {
    if (dropped_)
        received_(TextFrom(*dropped_));
    if (options_.readAt == ReadAt::Later)
        Forget();
}

std::wstring TextDropTarget::TextFrom(IDataObject& data) const {
    FORMATETC format{static_cast<CLIPFORMAT>(options_.ansi ? CF_TEXT : CF_UNICODETEXT), nullptr, DVASPECT_CONTENT, -1,
                     TYMED_HGLOBAL};
    STGMEDIUM medium{};
    if (const HRESULT result = data.GetData(&format, &medium); FAILED(result))
        return L"<no text: " + std::to_wstring(static_cast<unsigned long>(result)) + L">";
    std::wstring text;
    if (const void* memory = GlobalLock(medium.hGlobal)) {
        if (options_.ansi)
            for (const char* c = static_cast<const char*>(memory); *c != '\0'; ++c)
                text += static_cast<wchar_t>(static_cast<unsigned char>(*c));
        else
            text = static_cast<const wchar_t*>(memory);
        GlobalUnlock(medium.hGlobal);
    }
    ReleaseStgMedium(&medium);
    return text;
}

HRESULT TextDropTarget::QueryInterface(REFIID id, void** object) noexcept {
    if (id != IID_IUnknown && id != IID_IDropTarget) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IDropTarget*>(this);
    AddRef();
    return S_OK;
}

ULONG TextDropTarget::AddRef() noexcept {
    return ++references_;
}

ULONG TextDropTarget::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT TextDropTarget::DragEnter(IDataObject* data, DWORD /*keys*/, POINTL /*place*/, DWORD* effect) noexcept {
    if (options_.readAt == ReadAt::Entry)
        readAtEntry_ = TextFrom(*data);
    if (options_.readAt == ReadAt::Crossed || options_.readAt == ReadAt::Always)
        Keep(data);
    entered_();
    return DragOver(0, {}, effect);
}

HRESULT TextDropTarget::DragOver(DWORD /*keys*/, POINTL /*place*/, DWORD* effect) noexcept {
    if (options_.readAt == ReadAt::Always && dropped_)
        readAtEntry_ = TextFrom(*dropped_);
    *effect = options_.refuse ? DROPEFFECT_NONE : *effect & DROPEFFECT_COPY;
    return S_OK;
}

HRESULT TextDropTarget::DragLeave() noexcept {
    readAtEntry_.clear();
    if (options_.readAt == ReadAt::Always)
        Forget();
    return S_OK;
}

HRESULT TextDropTarget::Drop(IDataObject* data, DWORD /*keys*/, POINTL /*place*/, DWORD* effect) noexcept {
    DragOver(0, {}, effect);
    if (*effect == DROPEFFECT_NONE)
        return S_OK;
    switch (options_.readAt) {
    case ReadAt::Entry: received_(readAtEntry_); break;
    case ReadAt::Always: Forget(); [[fallthrough]];
    case ReadAt::Drop: received_(TextFrom(*data)); break;
    case ReadAt::Later:
        Keep(data);
        received_(L"");
        break;
    case ReadAt::Crossed: break;
    }
    return S_OK;
}

} // namespace vextrel::target
