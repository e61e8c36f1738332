#include "transfer/CharacterCodes.h"

#include "core/Wipe.h"
#include "win32/Windows.h"

namespace vextrel {

namespace {

/// Set on the family of Windows that knows the ANSI calls only.
constexpr DWORD singleByteFamily = 0x80000000;

} // namespace

std::optional<std::uint8_t> KeyCode(std::wstring_view text) noexcept {
    if (text.empty()) {
        return std::nullopt;
    }
    SHORT scan = -1;
    if ((::GetVersion() & singleByteFamily) != 0) {
        const AnsiCharacter character(text);
        if (character.begin() != character.end()) {
            scan = ::VkKeyScanA(static_cast<CHAR>(*character.begin()));
        }
    } else {
        scan = ::VkKeyScanW(text.front());
    }
    if (scan == -1) {
        return std::nullopt;
    }
    return LOBYTE(scan);
}

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
