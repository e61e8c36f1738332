#include "win32/Hardening.h"

#include "win32/handles.h"

#include <array>
#include <cstddef>

// As werapi.h has it, which does not compile on its own.
extern "C" DECLSPEC_IMPORT HRESULT WINAPI WerSetFlags(DWORD flags);

namespace vextrel {

namespace {

/// "Do not collect heap information".
constexpr DWORD noHeapInReports = 1;

/// What other programs of the same user may still do: see that the process exists, wait for its end, end it.
constexpr DWORD rightsOfTheUser = PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE | PROCESS_TERMINATE;

/// @param policy one of the system's PROCESS_MITIGATION_..._POLICY records.
template <typename Policy>
bool SetPolicy(PROCESS_MITIGATION_POLICY kind, Policy policy) noexcept {
    return ::SetProcessMitigationPolicy(kind, &policy, sizeof policy) != FALSE;
}

bool KeepForeignHooksOut() noexcept {
    PROCESS_MITIGATION_EXTENSION_POINT_DISABLE_POLICY policy{};
    policy.DisableExtensionPoints = 1;
    return SetPolicy(ProcessExtensionPointDisablePolicy, policy);
}

bool RestrictImages() noexcept {
    PROCESS_MITIGATION_IMAGE_LOAD_POLICY policy{};
    policy.NoRemoteImages = 1;
    policy.NoLowMandatoryLabelImages = 1;
    policy.PreferSystem32Images = 1;
    return SetPolicy(ProcessImageLoadPolicy, policy);
}

bool TakeSignedLibrariesOnly() noexcept {
    // What it keeps out would be told in a message box of the system's.
    ::SetErrorMode(::GetErrorMode() | SEM_FAILCRITICALERRORS);
    PROCESS_MITIGATION_BINARY_SIGNATURE_POLICY policy{};
    policy.MicrosoftSignedOnly = 1;
    return SetPolicy(ProcessSignaturePolicy, policy);
}

bool SearchSystemFolderOnly() noexcept {
    // Without the current folder, too, for whoever searches the old way.
    ::SetDllDirectoryW(L"");
    return ::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32) != FALSE;
}

/// @param ofUser what other programs of the same user may do; what no entry of the list grants is refused.
bool CloseTo(HANDLE object, DWORD all, DWORD ofUser) noexcept {
    SID system{SID_REVISION, 1, SECURITY_NT_AUTHORITY, {SECURITY_LOCAL_SYSTEM_RID}};
    // An owner may change an access list whatever it says, unless it has an entry for the owner's rights.
    SID ownerRights{SID_REVISION, 1, SECURITY_CREATOR_SID_AUTHORITY, {SECURITY_CREATOR_OWNER_RIGHTS_RID}};
    alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
    alignas(ACL) std::array<std::byte, 512> memory{};
    const auto list = reinterpret_cast<PACL>(memory.data());
    DWORD size = 0;
    SECURITY_DESCRIPTOR descriptor{};
    const auto allow = [list](PSID who, DWORD rights) {
        return ::AddAccessAllowedAce(list, ACL_REVISION, rights, who) != FALSE;
    };
    return ::GetTokenInformation(::GetCurrentProcessToken(), TokenUser, user.data(), static_cast<DWORD>(user.size()),
                                 &size) != FALSE &&
           ::InitializeAcl(list, static_cast<DWORD>(memory.size()), ACL_REVISION) != FALSE &&
           allow(&ownerRights, READ_CONTROL) && allow(&system, all) &&
           allow(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, ofUser) &&
           ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) != FALSE &&
           ::SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE) != FALSE &&
           ::SetSecurityDescriptorControl(&descriptor, SE_DACL_PROTECTED, SE_DACL_PROTECTED) != FALSE &&
           ::SetKernelObjectSecurity(object, DACL_SECURITY_INFORMATION, &descriptor) != FALSE;
}

bool CloseMemory() noexcept {
    if (!CloseTo(::GetCurrentProcess(), PROCESS_ALL_ACCESS, rightsOfTheUser)) {
        return false;
    }
    // Asked by number, the process's own request is checked as that of any program of the same user is.
    return !UniqueKernelHandle(::OpenProcess(PROCESS_VM_READ, FALSE, ::GetCurrentProcessId()));
}

} // namespace

Hardening HardenProcess() noexcept {
    return {.switchedOff = false,
            .foreignHooksOut = KeepForeignHooksOut(),
            .imagesRestricted = RestrictImages(),
            .signedLibrariesOnly = TakeSignedLibrariesOnly(),
            .systemFolderOnly = SearchSystemFolderOnly(),
            .endsOnCorruption = ::HeapSetInformation(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0) != FALSE,
            .heapNotReported = SUCCEEDED(::WerSetFlags(noHeapInReports)),
            .memoryClosed = CloseMemory(),
            .threadsClosed = CloseThread(::GetCurrentThread())};
}

bool CloseThread(HANDLE thread) noexcept {
    return CloseTo(thread, THREAD_ALL_ACCESS, THREAD_QUERY_LIMITED_INFORMATION | SYNCHRONIZE);
}

std::vector<ProtectionLine> HardeningLines(const Hardening& hardening) {
    if (hardening.switchedOff) {
        return {{false, L"", L"Process not hardened: switched off in the settings file"}};
    }
    return {
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
}

} // namespace vextrel
