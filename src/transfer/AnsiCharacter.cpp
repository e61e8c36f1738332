#include "transfer/AnsiCharacter.h"

#include "core/Wipe.h"
#include "win32/Windows.h"

namespace vextrel {

AnsiCharacter::AnsiCharacter(std::wstring_view text) noexcept {
    if (text.empty()) {
        return;
    }
    unitCount_ = text.size() > 1 && IS_SURROGATE_PAIR(text[0], text[1]) ? 2 : 1;
    const int written = ::WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(unitCount_),
                                              reinterpret_cast<char*>(bytes_.data()), static_cast<int>(bytes_.size()),
                                              nullptr, nullptr);
    byteCount_ = static_cast<std::size_t>(written);
}

AnsiCharacter::~AnsiCharacter() {
    WipeMemory(bytes_.data(), bytes_.size());
}

} // namespace vextrel
