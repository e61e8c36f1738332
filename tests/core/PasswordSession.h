#pragma once

// A session with the password box in a plain model that handles whole texts, written from what the user is told. It
// goes along with the rules, and with the real window.

#include "core/KeyTable.h"
#include "core/SecretText.h"

#include <algorithm>
#include <string>

namespace vextrel::session {

/// What shows after a step. The caret is what the box makes of it: never behind the text.
struct Session {
    std::wstring box;
    std::wstring password;
    bool masked = true;
    std::size_t caret = 0;
    std::size_t selected = 0;
    Modifiers modifiers;
    friend bool operator==(const Session&, const Session&) = default;
};

inline void PutCaret(Session& s, std::size_t caret) {
    s.caret = std::min(caret, s.box.size());
    s.selected = 0;
}

/// Replaces a part of a text, as far as the text goes.
inline void Replace(std::wstring& text, std::size_t at, std::size_t count, const std::wstring& piece = {}) {
    text.replace(std::min(at, text.size()), count, piece);
}

inline std::wstring WithoutBreaks(std::wstring text) {
    std::erase_if(text, [](wchar_t c) { return c == L'\t' || c == L'\r' || c == L'\n'; });
    return text;
}

/// What a paste brings into the masked box: the clipboard is read as far as a password could reach, and only then
/// cleaned. Where nothing is left, it is no paste.
inline std::wstring PastedText(const std::wstring& clipboard) {
    std::wstring text = clipboard.substr(0, SecretText::capacity);
    std::erase_if(text, [](wchar_t c) { return c < 32 || (c >= 127 && c < 160); });
    return text;
}

/// The box shows the password anew, as far as it may be seen; the selection stays, as far as the text goes.
inline void Show(Session& s) {
    s.box = s.masked ? std::wstring(s.password.size(), L'*') : s.password;
    s.caret = std::min(s.caret, s.box.size());
    s.selected = std::min(s.selected, s.box.size() - s.caret);
}

struct Model {
    Session s;
    void EnterIntoBox(const std::wstring& text) {
        Replace(s.box, s.caret, s.selected, text);
        PutCaret(s, s.caret + text.size());
    }
    void Enter(const std::wstring& text) {
        Replace(s.password, s.caret, s.selected, text);
        EnterIntoBox(s.masked ? std::wstring(text.size(), L'*') : text);
    }
    void Backspace() {
        const bool behindBreak = s.selected == 0 && s.caret > 0 && s.box[s.caret - 1] == L'\n';
        const std::size_t back = std::min<std::size_t>(s.caret, behindBreak ? 2 : 1);
        if (s.selected == 0 && back > 0 && !behindBreak && !s.password.empty()) {
            s.password.erase(std::min(s.caret, s.password.size()) - 1, 1);
        }
        s.selected > 0 ? Replace(s.box, s.caret, s.selected) : Replace(s.box, s.caret - back, back);
        PutCaret(s, s.caret - back);
    }
    void Press(int button, const std::wstring& caption) {
        if (button == keys::backspace) {
            Backspace();
        } else if (button == keys::tab || button == keys::enter) {
            if (!s.masked) {
                EnterIntoBox(button == keys::tab ? L"\t" : L"\r\n");
            }
        } else if (button == keys::capsLock) {
            s.modifiers.capsLockIsDown = !s.modifiers.capsLockIsDown;
        } else if (button == keys::leftShift || button == keys::rightShift) {
            s.modifiers.shiftLatched = true;
            s.modifiers.shiftIsDown = !s.modifiers.shiftIsDown;
            s.modifiers.shiftIsPhysical = false;
        } else if ((button < 54 || button > 56) && button != 58) {
            Enter(caption == L"&&" ? L"&" : caption.empty() || caption == L"space" ? L" " : caption);
            s.modifiers.shiftIsDown = s.modifiers.shiftIsDown && !s.modifiers.shiftLatched;
        }
    }
    void Delete() {
        if (s.caret < s.box.size()) {
            const std::size_t count = std::max<std::size_t>(s.selected, 1);
            Replace(s.box, s.caret, count);
            Replace(s.password, s.caret, count);
        }
        PutCaret(s, s.caret);
    }
    /// The box replaced its selection by itself. Where the same text results from a replacement that lies further
    /// back, the furthest one counts; that matters only once box and password are out of step.
    void BoxReplacedSelection(const std::wstring& text) {
        const std::wstring old = s.box;
        EnterIntoBox(text);
        const auto first = std::ranges::mismatch(old, s.box);
        const auto last = std::mismatch(old.rbegin(), std::make_reverse_iterator(first.in1), s.box.rbegin(),
                                        std::make_reverse_iterator(first.in2));
        const std::wstring removed(first.in1, last.first.base()), added(first.in2, last.second.base());
        if (!WithoutBreaks(added + removed).empty()) { // breaks the password has none of
            const auto start = static_cast<std::size_t>(first.in1 - old.begin());
            Replace(s.password, start, removed.size(), WithoutBreaks(added));
        }
    }
    void SwitchMask() {
        s.masked = !s.masked;
        if (s.masked) {
            s.password.clear();
            for (const wchar_t c : s.box.substr(0, s.box.find(L"\r\n"))) {
                s.password += c == L'\t' ? L"\r\n" : std::wstring(1, c);
            }
        }
        Show(s);
    }
    std::wstring Carry(bool takesAway) {
        const std::size_t start = s.selected == 0 ? 0 : s.caret;
        const std::size_t count = s.selected == 0 ? s.password.size() : s.selected;
        std::wstring carried = s.password.substr(std::min(start, s.password.size()), count);
        if (takesAway) {
            Replace(s.password, start, count);
            Show(s);
        }
        PutCaret(s, s.caret);
        return carried;
    }
};

/// One thing that the user does.
struct Action {
    enum class Kind { Press, Select, Delete, Paste, SwitchMask, Carry };
    Kind kind = Kind::Press;
    int button = 0;
    std::wstring text{}; ///< the key's caption, or what is pasted
    std::size_t caret = 0;
    std::size_t selected = 0;
    bool takesAway = false;
};

/// @return what was carried away, if anything was.
template <typename Side>
std::wstring Play(Side& side, const Action& action) {
    switch (action.kind) {
    case Action::Kind::Press: side.Press(action.button, action.text); break;
    case Action::Kind::Select:
        side.s.caret = action.caret;
        side.s.selected = action.selected;
        break;
    case Action::Kind::Delete: side.Delete(); break;
    case Action::Kind::Paste:
        if (!side.s.masked) {
            side.BoxReplacedSelection(action.text);
        } else if (const std::wstring clean = PastedText(action.text); !clean.empty()) {
            side.Enter(clean);
        }
        break;
    case Action::Kind::SwitchMask: side.SwitchMask(); break;
    case Action::Kind::Carry: return side.Carry(action.takesAway);
    }
    return {};
}

/// Chooses an action that is possible in the session. @param pick gives a number from 0 up to below its argument.
template <typename Pick>
Action ChooseAction(const Session& s, Pick pick) {
    static const std::wstring captions[] = {L"a", L"b", L"&&", L"", L"space", L"\\", L"ij", L"\xD83D\xDE00"};
    static const std::wstring pastes[] = {L"", L"a", L"ba", L"a\tb", L"\r\n", L"b\r\na", L"\nb\r", L"\x7Fq\x9Fr"};
    constexpr int editing[] = {keys::backspace, keys::backspace, keys::tab, keys::enter};
    using enum Action::Kind;
    const std::size_t kind = pick(20);
    if (kind < 12) {
        const int button = kind < 8 ? static_cast<int>(1 + pick(keyButtonCount)) : editing[kind - 8];
        return {.kind = Press, .button = button, .text = captions[pick(std::size(captions))]};
    }
    if (kind < 15) {
        const std::size_t caret = pick(s.box.size() + 1);
        return {.kind = Select, .caret = caret, .selected = kind == 12 ? 0 : pick(s.box.size() - caret + 1)};
    }
    switch (kind) {
    case 15: return {.kind = s.masked ? Delete : Paste}; // of nothing: cut
    case 16:
    case 17: return {.kind = Paste, .text = pastes[pick(std::size(pastes))]};
    case 18: return {.kind = SwitchMask};
    default: return {.kind = Carry, .takesAway = pick(3) != 0};
    }
}

} // namespace vextrel::session
