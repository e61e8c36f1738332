#include "transfer/TextDataObject.h"

#include "win32/SystemLibrary.h"
#include "win32/handles.h"

#include <rpc.h>
#include <shlobj.h>

#include <cstring>
#include <iterator>
#include <vector>

namespace vextrel {

namespace {

/// Memory with a piece of the password that a receiver of a drag reads. Whoever has the medium releases this object
/// instead of freeing the memory; with the last reference the memory is wiped and freed.
class HandedMemory final : public ComObject<IUnknown> {
  public:
    /// @param fill gets the memory, which is zeroed, so that the terminator is there. @return null when there is none.
    [[nodiscard]] static HandedMemory* Create(std::size_t byteCount, auto&& fill) noexcept {
        const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, byteCount);
        if (memory == nullptr) {
            return nullptr;
        }
        HandedMemory* handed = nullptr;
        try {
            handed = new HandedMemory(memory);
        } catch (...) {
            ::GlobalFree(memory);
            return nullptr;
        }
        fill(::GlobalLock(memory));
        ::GlobalUnlock(memory);
        return handed;
    }

    [[nodiscard]] HGLOBAL Get() const noexcept { return memory_; }
    /// Wipes all that receivers have not released yet.
    static void WipeAll() noexcept {
        const LockScope lock(All().lock);
        for (HandedMemory* memory : All().living) {
            memory->Wipe();
        }
    }

  private:
    /// Receivers release it when they like, on any thread: it has no owner who could keep the list.
    struct List {
        SRWLOCK lock = SRWLOCK_INIT;
        std::vector<HandedMemory*> living;
    };
    static List& All() noexcept {
        static List list;
        return list;
    }

    explicit HandedMemory(HGLOBAL memory)
        : memory_(memory) {
        const LockScope lock(All().lock);
        All().living.push_back(this);
    }
    ~HandedMemory() override {
        const LockScope lock(All().lock);
        std::erase(All().living, this);
        Wipe();
        ::GlobalFree(memory_);
    }
    void Wipe() noexcept {
        if (void* bytes = ::GlobalLock(memory_); bytes != nullptr) {
            WipeMemory(bytes, ::GlobalSize(memory_));
            ::GlobalUnlock(memory_);
        }
    }

    HGLOBAL memory_;
};

constexpr FORMATETC TextFormat(CLIPFORMAT format) noexcept {
    return {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

constexpr FORMATETC offeredFormats[] = {TextFormat(CF_UNICODETEXT), TextFormat(CF_TEXT)};

bool IsOffered(const FORMATETC& format) noexcept {
    return (format.cfFormat == CF_TEXT || format.cfFormat == CF_UNICODETEXT) && format.dwAspect == DVASPECT_CONTENT &&
           (format.tymed & TYMED_HGLOBAL) != 0;
}

/// The process whose call is being handled. @return 0 for a call from within this process, or where the system does not
/// tell.
DWORD CallingProcess() noexcept {
    static const SystemLibrary rpc(L"rpcrt4.dll");
    unsigned long process = 0;
    const auto inquire =
        rpc.Find<RPC_STATUS(RPC_ENTRY*)(RPC_BINDING_HANDLE, unsigned long*)>("I_RpcBindingInqLocalClientPID");
    return inquire != nullptr && inquire(nullptr, &process) == RPC_S_OK ? process : 0;
}

HandedMemory* CopyWide(std::wstring_view text) noexcept {
    return HandedMemory::Create((text.size() + 1) * sizeof(wchar_t),
                                [text](void* to) { std::memcpy(to, text.data(), text.size() * sizeof(wchar_t)); });
}

HandedMemory* CopyNarrow(std::wstring_view text) noexcept {
    const int length = static_cast<int>(text.size());
    const int size =
        length == 0 ? 0 : ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    return HandedMemory::Create(static_cast<std::size_t>(size) + 1, [&](void* to) {
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
    if (format == nullptr || medium == nullptr) {
        return E_POINTER;
    }
    if (!IsOffered(*format)) {
        return DV_E_FORMATETC;
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
    const std::wstring_view text = text_.View();
    HandedMemory* const memory = format->cfFormat == CF_UNICODETEXT ? CopyWide(text) : CopyNarrow(text);
    if (memory == nullptr) {
        return E_OUTOFMEMORY;
    }
    medium->hGlobal = memory->Get();
    // Our reference goes along.
    medium->pUnkForRelease = memory;
    return S_OK;
}

HRESULT TextDataObject::QueryGetData(FORMATETC* format) noexcept {
    if (format == nullptr) {
        return E_POINTER;
    }
    return IsOffered(*format) ? S_OK : DV_E_FORMATETC;
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
