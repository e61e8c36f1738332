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
#include <unordered_set>

namespace vextrel::driver {

/// A piece of a secret in another process's memory.
struct Trace {
    std::uintptr_t address;
    std::size_t bytes;
};

/// The eight bytes from every place on, in the forms that are looked for: UTF-16 and the code page, both also with
/// their bytes in reverse.
class Pieces {
  public:
    explicit Pieces(const std::wstring& secret) {
        const std::string wide(reinterpret_cast<const char*>(secret.data()), secret.size() * sizeof(wchar_t));
        for (std::string form : {wide, Narrow(secret)})
            for (int turn = 0; turn < 2; ++turn, std::ranges::reverse(form))
                for (std::size_t at = 0; at + 8 <= form.size(); ++at) {
                    words_.insert(WordAt(&form[at]));
                    beginnings_.set(WordAt(&form[at]) & 0xFFFF);
                }
    }
    /// How many bytes from here on are of the secret; 0 if fewer than eight characters.
    [[nodiscard]] std::size_t LengthAt(const char* memory, const char* end) const {
        const char* at = memory;
        while (at + 8 <= end && beginnings_.test(WordAt(at) & 0xFFFF) && words_.contains(WordAt(at)))
            ++at;
        if (at == memory)
            return 0;
        const std::size_t length = static_cast<std::size_t>(at - memory) + 7;
        const bool isWide = memory[0] == 0 || memory[1] == 0;
        return length >= (isWide ? 16 : 8) ? length : 0;
    }

  private:
    static std::uint64_t WordAt(const char* bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }

    std::unordered_set<std::uint64_t> words_;
    std::bitset<0x10000> beginnings_; ///< sorts most of the memory out, quickly
};

/// Reads all readable memory of a process and looks for pieces of the secret, which repeats no character.
[[nodiscard]] inline std::vector<Trace> FindTraces(const Process& process, const std::wstring& secret) {
    const Pieces pieces(secret);
    std::vector<Trace> found;
    std::size_t total = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (const char* at = nullptr; VirtualQueryEx(process.Handle(), at, &region, sizeof region) == sizeof region;
         at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State != MEM_COMMIT || (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) != 0)
            continue;
        std::string memory(region.RegionSize, '\0');
        SIZE_T got = 0;
        ReadProcessMemory(process.Handle(), region.BaseAddress, memory.data(), memory.size(), &got);
        total += got;
        for (std::size_t i = 0; i < got; ++i)
            if (const std::size_t bytes = pieces.LengthAt(&memory[i], &memory[0] + got)) {
                found.push_back({std::bit_cast<std::uintptr_t>(region.BaseAddress) + i, bytes});
                i += bytes - 1;
            }
    }
    Check(total != 0, "reading the memory of the process");
    return found;
}

/// The traces in words, for a test's output.
[[nodiscard]] inline std::string Describe(const std::vector<Trace>& traces) {
    std::ostringstream text;
    text << traces.size() << " traces";
    for (const Trace& trace : traces)
        text << "; " << std::dec << trace.bytes << " bytes at " << std::hex << trace.address;
    return text.str();
}

/// Letters and digits that stand on keys and need no Shift, all different.
[[nodiscard]] inline std::wstring RandomSecret(std::size_t length) {
    std::wstring characters = L"abcdefghijklmnopqrstuvwxyz0123456789";
    std::shuffle(characters.begin(), characters.end(), std::mt19937(std::random_device{}()));
    return characters.substr(0, length);
}

/// Closes the program and waits until it stands behind the end of its main function, where a process ends itself: with
/// all of its memory still there. For processes that this one started: their handles have all rights.
inline void StopAtExit(const Process& process, HWND main) {
    // The system's libraries lie at the same address in every process.
    const FARPROC exit = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlExitUserProcess");
    auto* const code = reinterpret_cast<void*>(exit);
    constexpr std::array<unsigned char, 2> jumpToItself{0xEB, 0xFE};
    DWORD protection = 0;
    Check(VirtualProtectEx(process.Handle(), code, 2, PAGE_EXECUTE_READWRITE, &protection) != FALSE &&
              WriteProcessMemory(process.Handle(), code, jumpToItself.data(), 2, nullptr) != FALSE,
          "writing to the code of the program's exit");
    PostMessageW(main, WM_CLOSE, 0, 0);
    Await("the program stands at its exit", [&] {
        SuspendThread(process.MainThread());
        alignas(16) CONTEXT context{};
        context.ContextFlags = CONTEXT_CONTROL;
        GetThreadContext(process.MainThread(), &context);
        const bool stands = context.Rip == std::bit_cast<std::uintptr_t>(exit);
        if (!stands) // otherwise it would only burn time from here on
            ResumeThread(process.MainThread());
        return stands;
    });
}

} // namespace vextrel::driver
