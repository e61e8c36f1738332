// Windows answers three calls. Wine answers two of them with zero; there, the tables that these calls would read are
// counted instead.

#include "soak/Resources.h"

#include <psapi.h>
#include <winternl.h>

namespace vextrel::driver {

namespace {

/// The table of a process's GDI objects, which it holds in its own memory.
std::size_t EntriesOfGdiTable(HANDLE process) {
    struct Entry {
        std::uint64_t object;
        std::uint8_t owner[6];
        std::uint8_t type; ///< zero where the entry is free
        std::uint8_t flags;
        std::uint64_t userData;
    };
    constexpr std::size_t tableInEnvironmentBlock = 0xF8;
    constexpr std::size_t entryCount = 0x4000;
    PROCESS_BASIC_INFORMATION information{};
    Check(NtQueryInformationProcess(process, ProcessBasicInformation, &information, sizeof information, nullptr) == 0,
          "NtQueryInformationProcess");
    const void* table = nullptr;
    std::vector<Entry> entries(entryCount);
    Check(ReadProcessMemory(process,
                            reinterpret_cast<const char*>(information.PebBaseAddress) + tableInEnvironmentBlock,
                            static_cast<void*>(&table), sizeof table, nullptr) != FALSE &&
              ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(Entry), nullptr) != FALSE,
          "reading the table of GDI objects");
    std::size_t used = 0;
    for (const Entry& entry : entries) {
        used += entry.type != 0 ? 1U : 0U;
    }
    return used;
}

/// Wine has one table of USER objects for all programs and uses freed entries first. Objects of our own fill these, up
/// to the first entry that was never used: what lies below and is not ours is in use.
std::size_t EntriesOfUserTable() {
    constexpr WORD firstHandle = 0x20;
    std::vector<HMENU> fillers;
    WORD index = 0;
    WORD generation = 0;
    do {
        fillers.push_back(CreateMenu());
        const auto handle = static_cast<DWORD>(reinterpret_cast<UINT_PTR>(fillers.back()));
        Check(handle != 0, "CreateMenu");
        index = static_cast<WORD>((LOWORD(handle) - firstHandle) / 2);
        generation = HIWORD(handle);
    } while (generation != 1);
    for (const HMENU menu : fillers) {
        DestroyMenu(menu);
    }
    return std::size_t{index} + 1 - fillers.size();
}

/// Handles are multiples of four; one that can be duplicated exists.
std::size_t HandlesThatExist(HANDLE process) {
    constexpr UINT_PTR end = 4 * 2048;
    std::size_t count = 0;
    for (UINT_PTR value = 4; value < end; value += 4) {
        HANDLE copy = nullptr;
        if (DuplicateHandle(process, reinterpret_cast<HANDLE>(value), GetCurrentProcess(), &copy, 0, FALSE,
                            DUPLICATE_SAME_ACCESS) != FALSE) {
            CloseHandle(copy);
            ++count;
        }
    }
    return count;
}

} // namespace

Resources ResourcesOf(const Process& process) {
    DWORD handles = 0;
    GetProcessHandleCount(process.Handle(), &handles);
    const DWORD gdi = GetGuiResources(process.Handle(), GR_GDIOBJECTS);
    const DWORD user = GetGuiResources(process.Handle(), GR_USEROBJECTS);
    PROCESS_MEMORY_COUNTERS memory{};
    Check(GetProcessMemoryInfo(process.Handle(), &memory, sizeof memory) != FALSE, "GetProcessMemoryInfo");
    return {.gdi = gdi != 0 ? gdi : EntriesOfGdiTable(process.Handle()),
            .user = user != 0 ? user : EntriesOfUserTable(),
            .handles = handles != 0 ? handles : HandlesThatExist(process.Handle()),
            .kilobytes = memory.PagefileUsage / 1024};
}

std::string Describe(const Resources& resources) {
    return std::to_string(resources.gdi) + " GDI, " + std::to_string(resources.user) + " USER, " +
           std::to_string(resources.handles) + " handles, " + std::to_string(resources.kilobytes) + " KB";
}

} // namespace vextrel::driver
