#include "core/SpokenName.h"

#include "core/CaptionText.h"
#include "core/KeyTable.h"

#include <algorithm>
#include <array>

namespace vextrel {

namespace {

struct Sign {
    wchar_t character;
    const wchar_t* name;
};

/// The signs of ASCII, and those of the Latin layouts beyond it.
constexpr auto signs =
    [](auto... all) {
        return std::array{all...};
    }(Sign{L' ', L"Space"}, Sign{L'!', L"Exclamation mark"}, Sign{L'"', L"Quotation mark"}, Sign{L'#', L"Number sign"},
      Sign{L'$', L"Dollar sign"}, Sign{L'%', L"Percent sign"}, Sign{L'&', L"Ampersand"}, Sign{L'\'', L"Apostrophe"},
      Sign{L'(', L"Left parenthesis"}, Sign{L')', L"Right parenthesis"}, Sign{L'*', L"Asterisk"},
      Sign{L'+', L"Plus sign"}, Sign{L',', L"Comma"}, Sign{L'-', L"Hyphen"}, Sign{L'.', L"Full stop"},
      Sign{L'/', L"Slash"}, Sign{L':', L"Colon"}, Sign{L';', L"Semicolon"}, Sign{L'<', L"Less than"},
      Sign{L'=', L"Equals sign"}, Sign{L'>', L"Greater than"}, Sign{L'?', L"Question mark"}, Sign{L'@', L"At sign"},
      Sign{L'[', L"Left square bracket"}, Sign{L'\\', L"Backslash"}, Sign{L']', L"Right square bracket"},
      Sign{L'^', L"Circumflex"}, Sign{L'_', L"Underscore"}, Sign{L'`', L"Grave accent"}, Sign{L'{', L"Left brace"},
      Sign{L'|', L"Vertical bar"}, Sign{L'}', L"Right brace"}, Sign{L'~', L"Tilde"},
      Sign{L'\u00A1', L"Inverted exclamation mark"}, Sign{L'\u00A3', L"Pound sign"}, Sign{L'\u00A4', L"Currency sign"},
      Sign{L'\u00A6', L"Broken bar"}, Sign{L'\u00A7', L"Section sign"}, Sign{L'\u00A8', L"Diaeresis"},
      Sign{L'\u00AC', L"Not sign"}, Sign{L'\u00B0', L"Degree sign"}, Sign{L'\u00B4', L"Acute accent"},
      Sign{L'\u00B7', L"Middle dot"}, Sign{L'\u00B8', L"Cedilla"}, Sign{L'\u00BF', L"Inverted question mark"},
      Sign{L'\u20AC', L"Euro sign"});

} // namespace

const wchar_t* SpokenName(int button, std::wstring_view caption, bool lit) noexcept {
    switch (button) {
    case keys::backspace: return L"Backspace";
    case keys::tab: return L"Tab";
    case keys::enter: return L"Enter";
    case keys::capsLock: return lit ? L"Caps Lock, on" : L"Caps Lock, off";
    case keys::leftShift:
    case keys::rightShift: return lit ? L"Shift, on" : L"Shift, off";
    default: break;
    }
    const std::wstring_view text = TextOfCaption(caption);
    const auto sign = std::ranges::find(signs, text.front(), &Sign::character);
    return text.size() == 1 && sign != signs.end() ? sign->name : nullptr;
}

} // namespace vextrel
