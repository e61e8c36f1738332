#pragma once

#include "win32/Com.h"
#include "win32/LockedText.h"

#include <objidl.h>

namespace vextrel {

/// The data of a drag: text as CF_TEXT and CF_UNICODETEXT. It says all along that it has text, but gives the characters
/// only once it has been opened for a process, and to that one alone: a window which the pointer merely crosses learns
/// nothing, whenever it asks. Before that the text is empty. It may be called on any thread.
class TextDataObject final : public ComObject<IDataObject> {
  public:
    /// What the object carries from now on; the empty text is text, too.
    void SetText(std::wstring_view text);
    /// The user has let go over a window of that process: from now on it is given the text.
    void Open(DWORD process) noexcept;
    /// There is nothing to give any more, and what was given is wiped, whoever still holds it.
    void Discard() noexcept;

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
    ~TextDataObject() override = default;

    static constexpr HRESULT notAdvised = OLE_E_ADVISENOTSUPPORTED;

    SRWLOCK lock_ = SRWLOCK_INIT;
    LockedText text_;
    DWORD receiver_ = 0; ///< the process that is given the text; 0: nobody yet
};

} // namespace vextrel
