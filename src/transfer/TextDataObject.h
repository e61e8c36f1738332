#pragma once

#include "win32/Com.h"
#include "win32/LockedText.h"

#include <objidl.h>

#include <string_view>

namespace vextrel {

/// The data of a drag: text as CF_TEXT and CF_UNICODETEXT. It says all along that it has text, but gives the characters
/// only once it has been opened, so that a window which the pointer merely crosses learns nothing; before that the text
/// is empty. It owns its characters and is counted by reference, since some targets read it only after the drag has
/// returned; the last reference wipes them.
class TextDataObject final : public ComObject<IDataObject> {
  public:
    TextDataObject();

    /// What the object carries from now on; the empty text is text, too.
    void SetText(std::wstring_view text) { text_.Assign(text); }
    /// The user has let go over a target: from now on the text is given to whoever asks.
    void Open() noexcept { open_ = true; }
    /// The drag is over and nobody took it: there is nothing to give any more.
    void Discard() noexcept { text_.Clear(); }
    /// Discards what any object of the program carries or has handed on, whoever still holds it.
    static void DiscardAll() noexcept;

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override;
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) noexcept override;
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) noexcept override;
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept override;

    // Nothing here can be set, filled in or watched.
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) noexcept override { return DV_E_FORMATETC; }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) noexcept override { return notAdvised; }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) noexcept override { return notAdvised; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) noexcept override { return notAdvised; }

  private:
    ~TextDataObject() override;

    static constexpr HRESULT notAdvised = OLE_E_ADVISENOTSUPPORTED;

    LockedText text_;
    bool open_ = false;
};

} // namespace vextrel
