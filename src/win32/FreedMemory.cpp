#include "win32/FreedMemory.h"

#include "win32/Windows.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

namespace vextrel {

namespace {

/// Small blocks come out of groups that a walk over the heap shows as one: some of each size are taken on top.
constexpr SIZE_T largestGrouped = 1024;
constexpr SIZE_T grain = 16;
constexpr int ofEachSize = 32;
constexpr SIZE_T headerOfTaken = 16;
constexpr SIZE_T growth = 65536;

template <typename Use>
void ForEachFreeBlock(HANDLE heap, Use use) {
    PROCESS_HEAP_ENTRY entry{};
    while (::HeapWalk(heap, &entry) != FALSE) {
        constexpr WORD notFree = PROCESS_HEAP_ENTRY_BUSY | PROCESS_HEAP_REGION | PROCESS_HEAP_UNCOMMITTED_RANGE;
        if ((entry.wFlags & notFree) == 0) {
            // What a free block needs for itself is more than what a taken one does.
            use(entry.cbData + std::max<SIZE_T>(entry.cbOverhead, headerOfTaken) - headerOfTaken);
        }
    }
}

/// The sizes of the free blocks, largest first: a small one must not be cut out of a large one.
std::vector<SIZE_T> SizesOfFreeBlocks(HANDLE heap) {
    std::size_t count = 0;
    ForEachFreeBlock(heap, [&](SIZE_T) { ++count; });
    // The list's own memory comes out of the same heap, zeroed like the rest, and must not grow meanwhile.
    std::vector<SIZE_T> sizes(count + 64);
    auto next = sizes.begin();
    ForEachFreeBlock(heap, [&](SIZE_T size) {
        if (next != sizes.end()) {
            *next++ = size;
        }
    });
    sizes.erase(next, sizes.end());
    std::ranges::sort(sizes, std::greater());
    return sizes;
}

void OverwriteFreedMemoryOf(HANDLE heap) noexcept {
    const bool locked = ::HeapLock(heap) != FALSE; // against other threads
    // Linked through their own first bytes: a list of them would need memory, too.
    void* taken = nullptr;
    const auto take = [&](SIZE_T size) {
        if (void* block = ::HeapAlloc(heap, HEAP_ZERO_MEMORY, std::max(size, sizeof(void*)))) {
            *static_cast<void**>(block) = taken;
            taken = block;
        }
    };
    try {
        std::ranges::for_each(SizesOfFreeBlocks(heap), take);
    } catch (...) {
        // Without room for the list, there is hardly a free block to overwrite.
    }
    // Over the edge of what the heap has committed: what it gave back there before may have left a few bytes.
    take(growth);
    // A group may serve several sizes: the largest overwrites the most of a block.
    for (SIZE_T size = largestGrouped; size >= grain; size -= grain) {
        for (int i = 0; i < ofEachSize; ++i) {
            take(size);
        }
    }
    while (taken != nullptr) {
        void* const next = *static_cast<void**>(taken);
        ::HeapFree(heap, 0, taken);
        taken = next;
    }
    if (locked) {
        ::HeapUnlock(heap);
    }
}

} // namespace

void OverwriteFreedMemory() noexcept {
    OverwriteFreedMemoryOf(::GetProcessHeap());
    // Where a C library has a heap of its own, the system's libraries that are written in C have it, too: so does OLE's
    // transport under Wine.
    for (const wchar_t* library : {L"ucrtbase.dll", L"msvcrt.dll"}) {
        const HMODULE module = ::GetModuleHandleW(library);
        const FARPROC found = module != nullptr ? ::GetProcAddress(module, "_get_heap_handle") : nullptr;
        if (found == nullptr) {
            continue;
        }
        const auto heapOf = reinterpret_cast<std::intptr_t(__cdecl*)()>(reinterpret_cast<void*>(found));
        if (const auto heap = reinterpret_cast<HANDLE>(heapOf()); heap != ::GetProcessHeap()) {
            OverwriteFreedMemoryOf(heap);
        }
    }
}

void GiveBackUnusedStack() noexcept {
    constexpr ULONG_PTR inUse = 16384; // by this call and by what the system does for it
    constexpr ULONG_PTR page = 4096;
    const ULONG_PTR top = (reinterpret_cast<ULONG_PTR>(__builtin_frame_address(0)) - inUse) & ~(page - 1);
    ULONG_PTR low = 0;
    ULONG_PTR high = 0;
    ::GetCurrentThreadStackLimits(&low, &high);
    MEMORY_BASIC_INFORMATION part{};
    for (; low < top && ::VirtualQuery(reinterpret_cast<void*>(low), &part, sizeof part) != 0; low += part.RegionSize) {
        if (part.State == MEM_COMMIT && part.Protect == PAGE_READWRITE) {
            ::VirtualAlloc(part.BaseAddress, std::min(part.RegionSize, top - low), MEM_RESET, PAGE_READWRITE);
        }
    }
}

} // namespace vextrel
