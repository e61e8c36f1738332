#pragma once

namespace vextrel::driver {

/// What tests have to know of the machine. On somebody's Windows they leave alone what is not theirs, and a test that
/// types as on one keyboard, or reads Windows' own words, is not for all of them.
[[nodiscard]] bool UnderWine();
[[nodiscard]] bool HasAmericanKeyboard();
[[nodiscard]] bool SpeaksEnglish();

} // namespace vextrel::driver
