#pragma once

#include "driver/Process.h"

#include <algorithm>
#include <array>
#include <bit>
#include <bitset>
#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <unordered_map>

namespace vextrel::driver {

/// A piece of a secret in another process's memory.
struct Trace {
    std::uintptr_t address;
    std::size_t characters;
    const char* encoding;
};

inline constexpr std::size_t shortestPiece = 8;

/// The secret from some character on, as bytes in one of the forms that are looked for.
struct Start {
    const char* form;
    std::size_t width; ///< bytes per character
    std::string bytes;
};

inline std::uint64_t WordAt(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// By the eight bytes with which they begin.
inline std::unordered_map<std::uint64_t, Start> StartsOf(const std::wstring& secret) {
    std::unordered_map<std::uint64_t, Start> starts;
    const auto add = [&](const char* form, std::size_t width, const std::string& bytes) {
        for (std::size_t at = 0; at + shortestPiece * width <= bytes.size(); at += width)
            starts.emplace(WordAt(bytes.data() + at), Start{form, width, bytes.substr(at)});
    };
    const std::string narrow = Narrow(secret);
    const std::string wide(reinterpret_cast<const char*>(secret.data()), secret.size() * sizeof(wchar_t));
    add("UTF-16", 2, wide);
    add("code page", 1, narrow);
    add("UTF-16 reversed", 2, {wide.rbegin(), wide.rend()});
    add("code page reversed", 1, {narrow.rbegin(), narrow.rend()});
    return starts;
}

/// Reads all readable memory of a process and looks for pieces of the secret of 8 characters or more, in UTF-16 and in
/// the code page, both also with their bytes in reverse. The secret repeats no character.
[[nodiscard]] inline std::vector<Trace> FindTraces(const Process& process, const std::wstring& secret) {
    const auto starts = StartsOf(secret);
    const auto hash = [](std::uint64_t word) { return static_cast<std::size_t>(word * 0x9E3779B97F4A7C15U >> 48); };
    std::bitset<0x10000> likely;
    for (const auto& [word, start] : starts)
        likely.set(hash(word));
    std::vector<Trace> found;
    std::size_t total = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (std::uintptr_t at = 0;
         VirtualQueryEx(process.Handle(), reinterpret_cast<const void*>(at), &region, sizeof region) == sizeof region;
         at += region.RegionSize) {
        if (region.State != MEM_COMMIT || (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) != 0)
            continue;
        std::string memory(region.RegionSize, '\0');
        SIZE_T got = 0;
        ReadProcessMemory(process.Handle(), region.BaseAddress, memory.data(), memory.size(), &got);
        memory.resize(got);
        total += got;
        for (std::size_t i = 0; i + sizeof(std::uint64_t) <= got; ++i) {
            const std::uint64_t word = WordAt(memory.data() + i);
            const auto start = likely.test(hash(word)) ? starts.find(word) : starts.end();
            if (start == starts.end())
                continue;
            const auto& [form, width, bytes] = start->second;
            std::size_t same = sizeof word;
            while (i + same < got && same < bytes.size() && memory[i + same] == bytes[same])
                ++same;
            if (same / width < shortestPiece)
                continue;
            found.push_back({std::bit_cast<std::uintptr_t>(region.BaseAddress) + i, same / width, form});
            i += same - 1;
        }
    }
    if (total == 0)
        throw Failure("no memory of the process could be read");
    return found;
}

/// The traces in words, for a test's output.
[[nodiscard]] inline std::string Describe(const std::vector<Trace>& traces) {
    std::ostringstream text;
    text << traces.size() << " traces";
    for (const Trace& trace : traces)
        text << "; " << std::dec << trace.characters << " characters, " << trace.encoding << ", at " << std::hex
             << trace.address;
    return text.str();
}

/// Letters and digits that stand on keys and need no Shift, all different.
[[nodiscard]] inline std::wstring RandomSecret(std::size_t length) {
    std::wstring characters = L"abcdefghijklmnopqrstuvwxyz0123456789";
    std::shuffle(characters.begin(), characters.end(), std::mt19937(std::random_device{}()));
    return characters.substr(0, length);
}

/// Where a process ends itself. The system's libraries lie at the same address in every process.
inline std::array<std::uintptr_t, 2> Exits() {
    const auto address = [](const wchar_t* library, const char* function) {
        return std::bit_cast<std::uintptr_t>(GetProcAddress(GetModuleHandleW(library), function));
    };
    return {address(L"kernel32.dll", "ExitProcess"), address(L"ntdll.dll", "RtlExitUserProcess")};
}

/// From now on the process stops where it would leave its own code for good: behind the end of its main function, with
/// all of its memory still there. For processes that this one started: their handles have all rights.
inline void StopAtExit(const Process& process) {
    constexpr std::array<unsigned char, 2> jumpToItself{0xEB, 0xFE};
    for (const std::uintptr_t address : Exits()) {
        auto* const code = reinterpret_cast<void*>(address);
        DWORD protection = 0;
        Check(VirtualProtectEx(process.Handle(), code, 2, PAGE_EXECUTE_READWRITE, &protection) != FALSE &&
                  WriteProcessMemory(process.Handle(), code, jumpToItself.data(), 2, nullptr) != FALSE,
              "writing to the code of the program's exit");
        VirtualProtectEx(process.Handle(), code, 2, protection, &protection);
    }
}

/// Waits until the process stands there.
inline void AwaitStop(const Process& process) {
    Await("the program stands at its exit", [&] {
        SuspendThread(process.MainThread());
        alignas(16) CONTEXT context{};
        context.ContextFlags = CONTEXT_CONTROL;
        const bool known = GetThreadContext(process.MainThread(), &context) != FALSE;
        const bool stands = known && std::ranges::count(Exits(), context.Rip) > 0;
        if (!stands) // otherwise it would only burn time from here on
            ResumeThread(process.MainThread());
        return stands;
    });
}

} // namespace vextrel::driver
