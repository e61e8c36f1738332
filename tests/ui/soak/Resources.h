#pragma once

#include "driver/Process.h"

#include <algorithm>
#include <array>

#include <psapi.h>
#include <winternl.h>

namespace vextrel::driver {

/// What a program holds, counted from outside. Where the system has no number for GDI objects and handles, as Wine has
/// none, what it would count is counted instead.
struct Resources {
    std::size_t gdi;       ///< GDI objects
    std::size_t windows;   ///< of its main thread
    std::size_t handles;   ///< handles of files, events and the like
    std::size_t kilobytes; ///< memory of its own
};

/// A process holds the table of its GDI objects in its own memory.
inline std::size_t EntriesOfGdiTable(HANDLE process) {
    constexpr std::size_t tableInEnvironmentBlock = 0xF8;
    PROCESS_BASIC_INFORMATION information{};
    NtQueryInformationProcess(process, ProcessBasicInformation, &information, sizeof information, nullptr);
    const auto* const place = reinterpret_cast<const char*>(information.PebBaseAddress) + tableInEnvironmentBlock;
    const void* table = nullptr;
    std::vector<std::array<char, 24>> entries(0x4000);
    Check(ReadProcessMemory(process, place, static_cast<void*>(&table), sizeof table, nullptr) != FALSE &&
              ReadProcessMemory(process, table, entries.data(), entries.size() * 24, nullptr) != FALSE,
          "reading the table of GDI objects");
    // Where an entry is free, its type is zero.
    return static_cast<std::size_t>(std::ranges::count_if(entries, [](const auto& entry) { return entry[14] != 0; }));
}

/// Handles are multiples of four; one that can be duplicated exists.
inline std::size_t HandlesThatExist(HANDLE process) {
    std::size_t count = 0;
    for (UINT_PTR value = 4; value < 8192; value += 4) {
        HANDLE copy = nullptr;
        if (DuplicateHandle(process, reinterpret_cast<HANDLE>(value), GetCurrentProcess(), &copy, 0, FALSE,
                            DUPLICATE_SAME_ACCESS) != FALSE) {
            CloseHandle(copy);
            ++count;
        }
    }
    return count;
}

inline Resources ResourcesOf(HANDLE process, HWND main) {
    DWORD handles = 0;
    GetProcessHandleCount(process, &handles);
    const DWORD gdi = GetGuiResources(process, GR_GDIOBJECTS);
    PROCESS_MEMORY_COUNTERS memory{};
    Check(GetProcessMemoryInfo(process, &memory, sizeof memory) != FALSE, "GetProcessMemoryInfo");
    return {.gdi = gdi != 0 ? gdi : EntriesOfGdiTable(process),
            .windows = Process::AllBeside(main).size(),
            .handles = handles != 0 ? handles : HandlesThatExist(process),
            .kilobytes = memory.PagefileUsage / 1024};
}

} // namespace vextrel::driver
