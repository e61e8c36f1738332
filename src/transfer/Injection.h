#pragma once

#include "core/SecretText.h"
#include "win32/Windows.h"

#include <cstdint>

namespace vextrel {

/// How an injection ended. None of these says that the characters arrived: nobody can know that.
struct InjectionOutcome {
    enum class Kind {
        Injected,  ///< every character was posted
        NoWindow,  ///< there was no window under the pointer to post to, or no pointer
        OwnWindow, ///< the pointer was over this program itself: nothing was clicked or posted
        Refused,   ///< Windows refused a character; those behind it were not posted
    };
    Kind kind = Kind::Injected;
    /// Of the refusal: 5 (access denied) where the target runs with higher rights.
    std::uint32_t errorCode = 0;
};

/// Brings the window under the pointer forward, clicks into it and posts the password to it character by character, as
/// bytes of the ANSI code page. Messages are processed before the first character goes, so the caller runs it as a
/// transfer. A target that does not answer is not waited for.
/// @param password read when the messages have been processed, which may wipe it.
[[nodiscard]] InjectionOutcome Inject(const SecretText& password);

} // namespace vextrel
