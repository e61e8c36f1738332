#include "transfer/TextDataObject.h"

#include "win32/FreedMemory.h"
#include "win32/SystemLibrary.h"
#include "win32/handles.h"

#include <rpc.h>
#include <shlobj.h>

#include <cstring>
#include <new>
#include <vector>

namespace vextrel {

namespace {

/// Memory with a piece of the password that a receiver of a drag reads. Whoever has the medium releases this object
/// instead of freeing the memory; with the last reference the memory is wiped and freed.
class HandedMemory final : public ComObject<IUnknown> {
  public:
    /// @param fill gets the memory, which is zeroed, so that the terminator is there. @throws std::bad_alloc
    HandedMemory(std::size_t byteCount, auto&& fill)
        : memory_(::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, byteCount)) {
        if (!memory_) {
            throw std::bad_alloc();
        }
        const LockScope lock(lock_);
        living_.push_back(this);
        fill(::GlobalLock(memory_.get()));
        ::GlobalUnlock(memory_.get());
    }

    [[nodiscard]] HGLOBAL Get() const noexcept { return memory_.get(); }
    /// Wipes all that receivers have not released yet.
    static void WipeAll() noexcept {
        const LockScope lock(lock_);
        for (HandedMemory* memory : living_) {
            memory->Wipe();
        }
    }

  private:
    ~HandedMemory() override {
        {
            const LockScope lock(lock_);
            std::erase(living_, this);
            Wipe();
        }
        // The receiver lets go on the thread of the transport that copied the text for it.
        OverwriteFreedMemoryOfThread(::GlobalSize(memory_.get()));
    }
    void Wipe() noexcept {
        if (void* bytes = ::GlobalLock(memory_.get()); bytes != nullptr) {
            WipeMemory(bytes, ::GlobalSize(memory_.get()));
            ::GlobalUnlock(memory_.get());
        }
    }

    struct Free {
        void operator()(HGLOBAL memory) const noexcept { ::GlobalFree(memory); }
    };
    std::unique_ptr<void, Free> memory_;

    /// Receivers release it when they like, on any thread: it has no owner who could keep the list.
    static inline std::vector<HandedMemory*> living_;
    static inline SRWLOCK lock_ = SRWLOCK_INIT; ///< of the list
};

constexpr FORMATETC TextFormat(CLIPFORMAT format) noexcept {
    return {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

constexpr FORMATETC offeredFormats[] = {TextFormat(CF_UNICODETEXT), TextFormat(CF_TEXT)};

/// The process whose call is being handled. @return 0 for a call from within this process, or where the system does not
/// tell.
DWORD CallingProcess() noexcept {
    static const SystemLibrary rpc(L"rpcrt4.dll");
    unsigned long process = 0;
    const auto inquire =
        rpc.Find<RPC_STATUS(RPC_ENTRY*)(RPC_BINDING_HANDLE, unsigned long*)>("I_RpcBindingInqLocalClientPID");
    return inquire != nullptr && inquire(nullptr, &process) == RPC_S_OK ? process : 0;
}

HandedMemory* CopyWide(std::wstring_view text) {
    return new HandedMemory((text.size() + 1) * sizeof(wchar_t),
                            [text](void* to) { std::memcpy(to, text.data(), text.size() * sizeof(wchar_t)); });
}

HandedMemory* CopyNarrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size =
        length == 0 ? 0 : ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    return new HandedMemory(static_cast<std::size_t>(size) + 1, [&](void* to) {
        ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, static_cast<char*>(to), size, nullptr, nullptr);
    });
}

} // namespace

void TextDataObject::SetText(std::wstring_view text) {
    const LockScope lock(lock_);
    text_.Assign(text);
}

void TextDataObject::Open(DWORD process) noexcept {
    const LockScope lock(lock_);
    receiver_ = process;
}

void TextDataObject::Discard() noexcept {
    const LockScope lock(lock_);
    text_.Clear();
    HandedMemory::WipeAll();
}

HRESULT TextDataObject::GetData(FORMATETC* format, STGMEDIUM* medium) noexcept {
    if (medium == nullptr) {
        return E_POINTER;
    }
    if (const HRESULT offered = QueryGetData(format); offered != S_OK) {
        return offered;
    }
    const LockScope lock(lock_);
    if (const DWORD caller = CallingProcess(); receiver_ != 0 && caller != 0 && caller != receiver_) {
        return E_ACCESSDENIED;
    }
    medium->tymed = TYMED_HGLOBAL;
    medium->pUnkForRelease = nullptr;
    if (receiver_ == 0) {
        // One terminator of either width. Nothing to wipe: the receiver may free it by itself.
        medium->hGlobal = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(wchar_t));
        return medium->hGlobal != nullptr ? S_OK : E_OUTOFMEMORY;
    }
    try {
        const bool isWide = format->cfFormat == CF_UNICODETEXT;
        HandedMemory* const memory = isWide ? CopyWide(text_.View()) : CopyNarrow(text_.View());
        medium->hGlobal = memory->Get();
        medium->pUnkForRelease = memory; // our reference goes along
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

HRESULT TextDataObject::QueryGetData(FORMATETC* format) noexcept {
    if (format == nullptr) {
        return E_POINTER;
    }
    const bool isText = format->cfFormat == CF_TEXT || format->cfFormat == CF_UNICODETEXT;
    const bool isOffered = isText && format->dwAspect == DVASPECT_CONTENT && (format->tymed & TYMED_HGLOBAL) != 0;
    return isOffered ? S_OK : DV_E_FORMATETC;
}

HRESULT TextDataObject::GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) noexcept {
    if (out == nullptr) {
        return E_POINTER;
    }
    out->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

HRESULT TextDataObject::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept {
    if (formats == nullptr) {
        return E_POINTER;
    }
    *formats = nullptr;
    if (direction != DATADIR_GET) {
        return E_NOTIMPL;
    }
    // The object that it makes lives in the system's code: the library stays.
    static const SystemLibrary shell(L"shell32.dll");
    const auto enumerate = shell.Find<decltype(&::SHCreateStdEnumFmtEtc)>("SHCreateStdEnumFmtEtc");
    return enumerate != nullptr ? enumerate(UINT{std::size(offeredFormats)}, offeredFormats, formats) : E_NOTIMPL;
}

} // namespace vextrel
