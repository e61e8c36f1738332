#include "win32/FreedMemory.h"

#include "core/Pinned.h"
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

/// Blocks that are held to be overwritten, and freed together.
class Taken : private Pinned {
  public:
    explicit Taken(HANDLE heap) noexcept
        : heap_(heap) {}
    ~Taken() {
        while (last_ != nullptr) {
            void* const before = *static_cast<void**>(last_);
            ::HeapFree(heap_, 0, last_);
            last_ = before;
        }
    }

    void Take(SIZE_T size) noexcept {
        if (void* block = ::HeapAlloc(heap_, HEAP_ZERO_MEMORY, std::max(size, sizeof(void*)))) {
            *static_cast<void**>(block) = last_;
            last_ = block;
        }
    }
    /// Of every size between the two, from the largest down: a group may serve several, and the largest overwrites the
    /// most of a block.
    void TakeGrouped(SIZE_T least, SIZE_T most) noexcept {
        for (SIZE_T size = most; size >= least; size -= grain) {
            for (int i = 0; i < ofEachSize; ++i) {
                Take(size);
            }
        }
    }

  private:
    HANDLE heap_;
    void* last_ = nullptr; ///< linked through their own first bytes: a list of them would need memory, too
};

void OverwriteFreedMemoryOf(HANDLE heap) noexcept {
    const bool locked = ::HeapLock(heap) != FALSE; // against other threads
    {
        Taken taken(heap);
        try {
            std::ranges::for_each(SizesOfFreeBlocks(heap), [&](SIZE_T size) { taken.Take(size); });
        } catch (...) {
            // Without room for the list, there is hardly a free block to overwrite.
        }
        // Over the edge of what the heap has committed: what it gave back there before may have left a few bytes.
        taken.Take(growth);
        taken.TakeGrouped(grain, largestGrouped);
    }
    if (locked) {
        ::HeapUnlock(heap);
    }
}

template <typename Use>
void ForEachHeap(Use use) noexcept {
    use(::GetProcessHeap());
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
            use(heap);
        }
    }
}

} // namespace

void OverwriteFreedMemory() noexcept {
    ForEachHeap(OverwriteFreedMemoryOf);
}

void OverwriteFreedMemoryOfThread(std::size_t size) noexcept {
    constexpr SIZE_T around = 256; // more than a transport puts before and behind it
    if (size <= largestGrouped) {
        ForEachHeap([&](HANDLE heap) { Taken(heap).TakeGrouped(std::max<SIZE_T>(size, grain), size + around); });
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
