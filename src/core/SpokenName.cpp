#include "core/SpokenName.h"

#include "core/CaptionText.h"
#include "core/KeyTable.h"

#include <algorithm>
#include <iterator>

namespace vextrel {

namespace {

struct Sign {
    wchar_t character;
    const wchar_t* name;
};

/// The signs of ASCII, and those of the Latin layouts beyond it.
constexpr Sign signs[] = {
    {L' ', L"Space"},
    {L'!', L"Exclamation mark"},
    {L'"', L"Quotation mark"},
    {L'#', L"Number sign"},
    {L'$', L"Dollar sign"},
    {L'%', L"Percent sign"},
    {L'&', L"Ampersand"},
    {L'\'', L"Apostrophe"},
    {L'(', L"Left parenthesis"},
    {L')', L"Right parenthesis"},
    {L'*', L"Asterisk"},
    {L'+', L"Plus sign"},
    {L',', L"Comma"},
    {L'-', L"Hyphen"},
    {L'.', L"Full stop"},
    {L'/', L"Slash"},
    {L':', L"Colon"},
    {L';', L"Semicolon"},
    {L'<', L"Less than"},
    {L'=', L"Equals sign"},
    {L'>', L"Greater than"},
    {L'?', L"Question mark"},
    {L'@', L"At sign"},
    {L'[', L"Left square bracket"},
    {L'\\', L"Backslash"},
    {L']', L"Right square bracket"},
    {L'^', L"Circumflex"},
    {L'_', L"Underscore"},
    {L'`', L"Grave accent"},
    {L'{', L"Left brace"},
    {L'|', L"Vertical bar"},
    {L'}', L"Right brace"},
    {L'~', L"Tilde"},
    {L'\u00A1', L"Inverted exclamation mark"},
    {L'\u00A3', L"Pound sign"},
    {L'\u00A4', L"Currency sign"},
    {L'\u00A6', L"Broken bar"},
    {L'\u00A7', L"Section sign"},
    {L'\u00A8', L"Diaeresis"},
    {L'\u00AC', L"Not sign"},
    {L'\u00B0', L"Degree sign"},
    {L'\u00B4', L"Acute accent"},
    {L'\u00B7', L"Middle dot"},
    {L'\u00B8', L"Cedilla"},
    {L'\u00BF', L"Inverted question mark"},
    {L'\u20AC', L"Euro sign"},
};

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
    const auto* const sign = std::ranges::find(signs, text.front(), &Sign::character);
    return text.size() == 1 && sign != std::end(signs) ? sign->name : nullptr;
}

} // namespace vextrel
