#pragma once

#include "core/Pinned.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vextrel {

/// Overwrites memory with zeros in a way that the optimiser may not drop, however dead the memory looks to it.
void WipeMemory(void* memory, std::size_t byteCount) noexcept;

/// A piece of text. Positions and counts are in UTF-16 units.
struct TextRange {
    std::size_t start = 0;
    std::size_t count = 0;
    friend constexpr bool operator==(TextRange, TextRange) = default;
    [[nodiscard]] constexpr std::size_t End() const noexcept { return start + count; }
    /// What of it lies in a text of that length.
    [[nodiscard]] constexpr TextRange CutAt(std::size_t length) const noexcept {
        const std::size_t cutStart = std::min(start, length);
        return {cutStart, std::min(count, length - cutStart)};
    }
};

/// Where a SecretText lives: what the core asks of the platform, which has pages that are locked against paging, say.
class SecretPages {
  public:
    /// @return zeroed memory of at least byteCount bytes. @throws Error "Out of memory".
    [[nodiscard]] virtual void* Allocate(std::size_t byteCount) const = 0;
    /// Wipes the memory and gives it back. A null pointer is left alone.
    virtual void Release(void* pages, std::size_t byteCount) const noexcept = 0;

  protected:
    ~SecretPages() = default;
};

/// The password and whatever is cut from it: text in fixed memory of its own, never reallocated, wiped wherever a
/// character leaves it. Not copyable, so that no second copy comes about by accident.
class SecretText : private Pinned {
  public:
    /// What 16-bit caret positions can reach.
    static constexpr std::size_t capacity = 32767;

    /// @param pages where it lives; they outlive it. @throws Error "Out of memory".
    explicit SecretText(const SecretPages& pages);
    ~SecretText();

    [[nodiscard]] std::size_t Size() const noexcept { return size_; }
    /// Valid until the next change.
    [[nodiscard]] std::wstring_view View() const noexcept { return {characters_, size_}; }
    /// The same with a terminator behind it.
    [[nodiscard]] const wchar_t* CString() const noexcept { return characters_; }
    /// A part of it, cut at the end.
    [[nodiscard]] std::wstring_view View(TextRange range) const noexcept {
        return View().substr(std::min(range.start, size_), range.count);
    }

    void Clear() noexcept { SetSize(0); }
    /// @throws Error "Overflow" when the result would exceed the capacity; the text is unchanged then.
    void Assign(std::wstring_view text);
    /// Replaces the characters in the range (cut at the end) by the text, which must not lie in this object.
    /// @throws Error "Overflow" when the result would exceed the capacity; the text is unchanged then.
    void Replace(TextRange range, std::wstring_view text);
    /// For system calls that fill a buffer: room for capacity characters and a terminator. The filler says afterwards
    /// through SetSize how many it wrote; what lies behind is wiped.
    [[nodiscard]] wchar_t* Buffer() noexcept { return characters_; }
    void SetSize(std::size_t size) noexcept;

  private:
    const SecretPages& pages_;
    wchar_t* characters_;
    std::size_t size_ = 0;
};

} // namespace vextrel
