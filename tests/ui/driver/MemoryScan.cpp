#include "driver/MemoryScan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <bitset>
#include <cstring>
#include <random>
#include <sstream>

namespace vextrel::driver {

namespace {

constexpr std::size_t shortestPiece = 8;

/// The secret as bytes in one of the forms that are looked for.
struct Form {
    const char* name;
    std::size_t width; ///< bytes per character
    std::string bytes;
};

std::vector<Form> FormsOf(const std::wstring& secret) {
    const std::string narrow = Narrow(secret);
    const std::string wide(reinterpret_cast<const char*>(secret.data()), secret.size() * sizeof(wchar_t));
    return {{"UTF-16", 2, wide},
            {"code page", 1, narrow},
            {"UTF-16 reversed", 2, {wide.rbegin(), wide.rend()}},
            {"code page reversed", 1, {narrow.rbegin(), narrow.rend()}}};
}

/// Finds pieces in one pass over the memory: any piece begins with eight bytes that one of few starts matches.
class Finder {
  public:
    explicit Finder(const std::wstring& secret)
        : forms_(FormsOf(secret)) {
        for (const Form& form : forms_)
            for (std::size_t at = 0; at + shortestPiece * form.width <= form.bytes.size(); at += form.width)
                starts_.push_back({Word(form.bytes.data() + at), &form, at});
        for (const Start& start : starts_)
            likely_.set(Hash(start.word));
    }

    void Search(const std::string& memory, std::uintptr_t address, std::vector<Trace>& found) const {
        for (std::size_t i = 0; i + sizeof(std::uint64_t) <= memory.size(); ++i) {
            const std::uint64_t word = Word(memory.data() + i);
            if (!likely_.test(Hash(word)))
                continue;
            for (const Start& start : starts_) {
                const std::size_t length = start.word == word ? Match(memory, i, start) : 0;
                if (length < shortestPiece)
                    continue;
                found.push_back({address + i, length, start.form->name});
                i += length * start.form->width - 1;
                break;
            }
        }
    }

  private:
    struct Start {
        std::uint64_t word;
        const Form* form;
        std::size_t at;
    };

    static std::uint64_t Word(const char* bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }
    static std::size_t Hash(std::uint64_t word) { return static_cast<std::size_t>(word * 0x9E3779B97F4A7C15U >> 48); }

    static std::size_t Match(const std::string& memory, std::size_t i, const Start& start) {
        const std::string& bytes = start.form->bytes;
        std::size_t same = 0;
        while (i + same < memory.size() && start.at + same < bytes.size() && memory[i + same] == bytes[start.at + same])
            ++same;
        return same / start.form->width;
    }

    std::vector<Form> forms_;
    std::vector<Start> starts_;
    std::bitset<0x10000> likely_;
};

bool IsReadable(const MEMORY_BASIC_INFORMATION& region) {
    return region.State == MEM_COMMIT && (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) == 0;
}

/// Where a process ends itself. The system's libraries lie at the same address in every process.
std::array<std::uintptr_t, 2> Exits() {
    const auto address = [](const wchar_t* library, const char* function) {
        return std::bit_cast<std::uintptr_t>(GetProcAddress(GetModuleHandleW(library), function));
    };
    return {address(L"kernel32.dll", "ExitProcess"), address(L"ntdll.dll", "RtlExitUserProcess")};
}

} // namespace

std::vector<Trace> FindTraces(const Process& process, const std::wstring& secret) {
    const Finder finder(secret);
    std::vector<Trace> found;
    MEMORY_BASIC_INFORMATION region{};
    std::size_t total = 0;
    for (std::uintptr_t at = 0;
         VirtualQueryEx(process.Handle(), reinterpret_cast<const void*>(at), &region, sizeof region) == sizeof region;
         at += region.RegionSize) {
        if (!IsReadable(region))
            continue;
        std::string memory(region.RegionSize, '\0');
        SIZE_T got = 0;
        ReadProcessMemory(process.Handle(), region.BaseAddress, memory.data(), memory.size(), &got);
        memory.resize(got);
        total += got;
        finder.Search(memory, std::bit_cast<std::uintptr_t>(region.BaseAddress), found);
    }
    if (total == 0)
        throw Failure("no memory of the process could be read");
    return found;
}

std::string Describe(const std::vector<Trace>& traces) {
    std::ostringstream text;
    text << traces.size() << " traces";
    for (const Trace& trace : traces)
        text << "; " << trace.characters << " characters, " << trace.encoding << ", at " << std::hex << trace.address
             << std::dec;
    return text.str();
}

std::wstring RandomSecret(std::size_t length) {
    std::wstring characters = L"abcdefghijklmnopqrstuvwxyz0123456789";
    std::shuffle(characters.begin(), characters.end(), std::mt19937(std::random_device{}()));
    return characters.substr(0, length);
}

void StopAtExit(const Process& process) {
    constexpr std::array<unsigned char, 2> jumpToItself{0xEB, 0xFE};
    for (const std::uintptr_t address : Exits()) {
        auto* const code = reinterpret_cast<void*>(address);
        DWORD protection = 0;
        Check(VirtualProtectEx(process.Handle(), code, jumpToItself.size(), PAGE_EXECUTE_READWRITE, &protection) !=
                  FALSE,
              "VirtualProtectEx");
        Check(WriteProcessMemory(process.Handle(), code, jumpToItself.data(), jumpToItself.size(), nullptr) != FALSE,
              "WriteProcessMemory");
        VirtualProtectEx(process.Handle(), code, jumpToItself.size(), protection, &protection);
    }
}

void AwaitStop(const Process& process) {
    Await("the program stands at its exit", [&] {
        if (!process.Runs())
            throw Failure("the program ended instead of stopping at its exit");
        SuspendThread(process.MainThread());
        alignas(16) CONTEXT context{};
        context.ContextFlags = CONTEXT_CONTROL;
        const bool known = GetThreadContext(process.MainThread(), &context) != FALSE;
        ResumeThread(process.MainThread());
        const auto exits = Exits();
        return known && std::find(exits.begin(), exits.end(), context.Rip) != exits.end();
    });
    // From here on it only burns time.
    SuspendThread(process.MainThread());
}

} // namespace vextrel::driver
