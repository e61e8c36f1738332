#include "win32/Hardening.h"

#include "win32/SystemLibrary.h"
#include "win32/handles.h"

#include <array>
#include <cstddef>

namespace vextrel {

namespace {

/// From werapi.h: "do not collect heap information".
constexpr DWORD noHeapInReports = 1;

/// What other programs of the same user may still do: see that the process exists, wait for its end, end it.
constexpr DWORD rightsOfTheUser = PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE | PROCESS_TERMINATE;

class Kernel {
  public:
    template <typename Function>
    [[nodiscard]] Function Find(const char* name) const noexcept {
        return library_.Find<Function>(name);
    }

  private:
    SystemLibrary library_{L"kernel32.dll"};
};

/// @param policy one of the system's PROCESS_MITIGATION_..._POLICY records.
template <typename Policy>
bool SetPolicy(const Kernel& kernel, PROCESS_MITIGATION_POLICY kind, Policy policy) noexcept {
    const auto set = kernel.Find<BOOL(WINAPI*)(PROCESS_MITIGATION_POLICY, PVOID, SIZE_T)>("SetProcessMitigationPolicy");
    return set != nullptr && set(kind, &policy, sizeof policy) != FALSE;
}

bool KeepForeignHooksOut(const Kernel& kernel) noexcept {
    PROCESS_MITIGATION_EXTENSION_POINT_DISABLE_POLICY policy{};
    policy.DisableExtensionPoints = 1;
    return SetPolicy(kernel, ProcessExtensionPointDisablePolicy, policy);
}

bool RestrictImages(const Kernel& kernel) noexcept {
    PROCESS_MITIGATION_IMAGE_LOAD_POLICY policy{};
    policy.NoRemoteImages = 1;
    policy.NoLowMandatoryLabelImages = 1;
    policy.PreferSystem32Images = 1;
    return SetPolicy(kernel, ProcessImageLoadPolicy, policy);
}

bool TakeSignedLibrariesOnly(const Kernel& kernel) noexcept {
    // What it keeps out would be told in a message box of the system's.
    ::SetErrorMode(::GetErrorMode() | SEM_FAILCRITICALERRORS);
    PROCESS_MITIGATION_BINARY_SIGNATURE_POLICY policy{};
    policy.MicrosoftSignedOnly = 1;
    return SetPolicy(kernel, ProcessSignaturePolicy, policy);
}

bool SearchSystemFolderOnly(const Kernel& kernel) noexcept {
    // Without the current folder, too, for whoever searches the old way.
    if (const auto setFolder = kernel.Find<BOOL(WINAPI*)(LPCWSTR)>("SetDllDirectoryW")) {
        setFolder(L"");
    }
    const auto set = kernel.Find<BOOL(WINAPI*)(DWORD)>("SetDefaultDllDirectories");
    return set != nullptr && set(LOAD_LIBRARY_SEARCH_SYSTEM32) != FALSE;
}

bool EndOnCorruption(const Kernel& kernel) noexcept {
    const auto set = kernel.Find<decltype(&::HeapSetInformation)>("HeapSetInformation");
    return set != nullptr && set(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0) != FALSE;
}

bool KeepHeapOutOfReports(const Kernel& kernel) noexcept {
    const auto set = kernel.Find<HRESULT(WINAPI*)(DWORD)>("WerSetFlags");
    return set != nullptr && SUCCEEDED(set(noHeapInReports));
}

/// The account that the process runs as.
class CurrentUser {
  public:
    CurrentUser() noexcept {
        HANDLE opened = nullptr;
        if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened) == FALSE) {
            return;
        }
        const UniqueKernelHandle token(opened);
        DWORD size = 0;
        known_ = ::GetTokenInformation(token.Get(), TokenUser, memory_.data(), static_cast<DWORD>(memory_.size()),
                                       &size) != FALSE;
    }
    /// Null when the system does not tell.
    [[nodiscard]] PSID Sid() noexcept {
        return known_ ? reinterpret_cast<const TOKEN_USER*>(memory_.data())->User.Sid : nullptr;
    }

  private:
    alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> memory_{};
    bool known_ = false;
};

/// An access list with a few entries that grant something; what no entry grants is refused.
class AccessList {
  public:
    AccessList() noexcept
        : valid_(::InitializeAcl(Get(), static_cast<DWORD>(memory_.size()), ACL_REVISION) != FALSE) {}
    void Allow(PSID who, DWORD rights) noexcept {
        valid_ = valid_ && who != nullptr && ::AddAccessAllowedAce(Get(), ACL_REVISION, rights, who) != FALSE;
    }
    [[nodiscard]] bool PutOn(HANDLE object) noexcept {
        SECURITY_DESCRIPTOR descriptor{};
        return valid_ && ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) != FALSE &&
               ::SetSecurityDescriptorDacl(&descriptor, TRUE, Get(), FALSE) != FALSE &&
               ::SetSecurityDescriptorControl(&descriptor, SE_DACL_PROTECTED, SE_DACL_PROTECTED) != FALSE &&
               ::SetKernelObjectSecurity(object, DACL_SECURITY_INFORMATION, &descriptor) != FALSE;
    }

  private:
    [[nodiscard]] PACL Get() noexcept { return reinterpret_cast<PACL>(memory_.data()); }

    alignas(ACL) std::array<std::byte, 512> memory_{};
    bool valid_;
};

/// Whether a program of the same user is refused now. Asked by number, the process's own request is checked as anybody
/// else's is.
bool IsMemoryClosed() noexcept {
    const UniqueKernelHandle opened(::OpenProcess(PROCESS_VM_READ, FALSE, ::GetCurrentProcessId()));
    return !opened;
}

/// @param ofUser what other programs of the same user may do.
bool CloseTo(HANDLE object, DWORD all, DWORD ofUser) noexcept {
    SID system{SID_REVISION, 1, SECURITY_NT_AUTHORITY, {SECURITY_LOCAL_SYSTEM_RID}};
    // An owner may change an access list whatever it says, unless it has an entry for the owner's rights.
    SID ownerRights{SID_REVISION, 1, SECURITY_CREATOR_SID_AUTHORITY, {SECURITY_CREATOR_OWNER_RIGHTS_RID}};
    CurrentUser user;
    AccessList list;
    list.Allow(&ownerRights, READ_CONTROL);
    list.Allow(&system, all);
    list.Allow(user.Sid(), ofUser);
    return list.PutOn(object);
}

bool CloseMemory() noexcept {
    return CloseTo(::GetCurrentProcess(), PROCESS_ALL_ACCESS, rightsOfTheUser) && IsMemoryClosed();
}

} // namespace

Hardening HardenProcess() noexcept {
    const Kernel kernel;
    return {.switchedOff = false,
            .foreignHooksOut = KeepForeignHooksOut(kernel),
            .imagesRestricted = RestrictImages(kernel),
            .signedLibrariesOnly = TakeSignedLibrariesOnly(kernel),
            .systemFolderOnly = SearchSystemFolderOnly(kernel),
            .endsOnCorruption = EndOnCorruption(kernel),
            .heapNotReported = KeepHeapOutOfReports(kernel),
            .memoryClosed = CloseMemory(),
            .threadsClosed = CloseThread(::GetCurrentThread())};
}

bool CloseThread(HANDLE thread) noexcept {
    return CloseTo(thread, THREAD_ALL_ACCESS, THREAD_QUERY_LIMITED_INFORMATION | SYNCHRONIZE);
}

std::vector<std::wstring> HardeningLines(const Hardening& hardening) {
    if (hardening.switchedOff) {
        return {L"Process not hardened: switched off in the settings file"};
    }
    struct Line {
        bool inForce;
        const wchar_t* yes;
        const wchar_t* no;
    };
    const Line lines[] = {
        {hardening.memoryClosed, L"Other programs cannot read this program's memory",
         L"Other programs of yours can read this program's memory"},
        {hardening.threadsClosed, L"Other programs cannot steer this program's threads",
         L"Other programs of yours can steer this program's threads"},
        {hardening.signedLibrariesOnly, L"No DLLs but Microsoft's", L"DLLs of anybody's are not kept out"},
        {hardening.foreignHooksOut, L"Other programs' hook DLLs are kept out",
         L"Other programs' hook DLLs are not kept out"},
        {hardening.imagesRestricted, L"No DLLs from the network or of low trust",
         L"DLLs from the network are not refused"},
        {hardening.systemFolderOnly, L"DLLs are taken from the system folder only",
         L"DLLs are searched as Windows does by default"},
        {hardening.endsOnCorruption, L"A damaged heap ends the program", L"A damaged heap does not end the program"},
        {hardening.heapNotReported, L"No heap memory in error reports", L"Error reports may contain heap memory"},
    };
    std::vector<std::wstring> texts;
    for (const Line& line : lines) {
        texts.emplace_back(line.inForce ? line.yes : line.no);
    }
    return texts;
}

} // namespace vextrel
