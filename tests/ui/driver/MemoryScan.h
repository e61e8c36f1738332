#pragma once

#include "driver/Process.h"

#include <algorithm>
#include <array>
#include <bit>
#include <random>
#include <utility>

namespace vextrel::driver {

/// A piece of a secret in another process's memory.
struct Trace {
    std::uintptr_t address;
    std::size_t width; ///< bytes per character
};

/// Reads all readable memory of a process and looks for eight characters or more of the secret in a row, in UTF-16 and
/// in the code page, both also with their bytes in reverse. The secret repeats no character.
[[nodiscard]] inline std::vector<Trace> FindTraces(const Process& process, const std::wstring& secret) {
    constexpr std::pair<std::size_t, int> forms[] = {{1, 1}, {1, -1}, {2, 1}, {2, -1}}; // width and direction
    std::array<int, 256> places{};
    for (int place = 1; const wchar_t c : secret)
        places.at(c) = ++place; // 0 of all other characters is no step away from any
    std::vector<Trace> found;
    std::size_t total = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (const char* at = nullptr; VirtualQueryEx(process.Handle(), at, &region, sizeof region) == sizeof region;
         at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State != MEM_COMMIT || (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) != 0)
            continue;
        std::vector<unsigned char> memory(region.RegionSize);
        SIZE_T got = 0;
        ReadProcessMemory(process.Handle(), region.BaseAddress, memory.data(), memory.size(), &got);
        total += got;
        for (const auto& [width, step] : forms) {
            std::array<int, 2> rows{1, 1}; // at even and at odd places
            for (std::size_t i = width; i < got; ++i) {
                int& length = rows[i % width];
                const bool follows = places[memory[i]] == places[memory[i - width]] + step;
                length = follows && (width == 1 || memory[i - 1] == 0) ? length + 1 : 1;
                if (length == 8)
                    found.push_back({std::bit_cast<std::uintptr_t>(region.BaseAddress) + i - 7 * width, width});
            }
        }
    }
    Check(total != 0, "reading the memory of the process");
    return found;
}

/// The traces in words, for a test's output.
[[nodiscard]] inline std::string Describe(const std::vector<Trace>& traces) {
    std::string text = std::to_string(traces.size()) + " traces";
    for (const Trace& trace : traces)
        text += "; of width " + std::to_string(trace.width) + " at " + std::to_string(trace.address);
    return text;
}

/// Letters and digits that stand on keys and need no Shift, all different.
[[nodiscard]] inline std::wstring RandomSecret(std::size_t length) {
    std::wstring characters = L"abcdefghijklmnopqrstuvwxyz0123456789";
    std::shuffle(characters.begin(), characters.end(), std::mt19937(std::random_device{}()));
    return characters.substr(0, length);
}

/// From now on the process stays where it would leave its own code for good: behind the end of its main function, with
/// all of its memory still there. For processes that this one started: their handles have all rights.
inline void StopAtExit(const Process& process) {
    // The system's libraries lie at the same address in every process.
    auto* const exit = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlExitUserProcess"));
    constexpr std::array<unsigned char, 2> jumpToItself{0xEB, 0xFE};
    DWORD protection = 0;
    Check(VirtualProtectEx(process.Handle(), exit, 2, PAGE_EXECUTE_READWRITE, &protection) != FALSE &&
              WriteProcessMemory(process.Handle(), exit, jumpToItself.data(), 2, nullptr) != FALSE,
          "writing to the code of the program's exit");
}

} // namespace vextrel::driver
