#include "core/SecretText.h"

#include "core/Error.h"

#include <cstring>

namespace vextrel {

namespace {

/// Read anew at every call, so that no compiler can know that it only stores zeros nobody will read.
void* (*const volatile fillMemory)(void*, int, std::size_t) = std::memset;

using Traits = std::char_traits<wchar_t>;

// One character more than can be stored: what stands behind the text is always zero and so ends it.
constexpr std::size_t roomCharacters = SecretText::capacity + 1;
constexpr std::size_t roomBytes = roomCharacters * sizeof(wchar_t);

} // namespace

void WipeMemory(void* memory, std::size_t byteCount) noexcept {
    if (byteCount > 0) {
        fillMemory(memory, 0, byteCount);
    }
}

SecretText::SecretText(const SecretPages& pages)
    : pages_(pages)
    , characters_(static_cast<wchar_t*>(pages.Allocate(roomBytes))) {}

SecretText::~SecretText() {
    pages_.Release(characters_, roomBytes);
}

void SecretText::Assign(std::wstring_view text) {
    if (text.size() > capacity) {
        throw Error(ErrorNumber::Overflow);
    }
    Traits::move(characters_, text.data(), text.size());
    SetSize(text.size());
}

void SecretText::Replace(TextRange range, std::wstring_view text) {
    const TextRange cut = range.CutAt(size_);
    const std::size_t kept = size_ - cut.count;
    if (text.size() > capacity - kept) {
        throw Error(ErrorNumber::Overflow);
    }
    Traits::move(characters_ + cut.start + text.size(), characters_ + cut.End(), size_ - cut.End());
    Traits::copy(characters_ + cut.start, text.data(), text.size());
    // Only what the text was shortened by can hold a character: behind it, all is zero already.
    const std::size_t newSize = kept + text.size();
    if (newSize < size_) {
        WipeMemory(characters_ + newSize, (size_ - newSize) * sizeof(wchar_t));
    }
    size_ = newSize;
}

void SecretText::SetSize(std::size_t size) noexcept {
    size_ = std::min(size, capacity);
    WipeMemory(characters_ + size_, (roomCharacters - size_) * sizeof(wchar_t));
}

} // namespace vextrel
