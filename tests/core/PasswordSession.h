#pragma once

// A session with the password box, played twice: through the rules, and through a plain model that handles whole texts,
// written from what the user is told. Shared by the random walk and the fuzzer.

#include "core/Error.h"
#include "core/KeyTable.h"
#include "core/PasswordView.h"
#include "core/TextEdit.h"

#include "HeapText.h"

#include <algorithm>
#include <string>

namespace vextrel::session {

inline bool IsZeroBehindItsEnd(const SecretText& text) {
    return std::all_of(text.CString() + text.Size(), text.CString() + SecretText::capacity + 1,
                       [](wchar_t c) { return c == 0; });
}

/// What both sides show after a step. The caret is what the box makes of it: never behind the text.
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

/// A part of a text, as far as the text goes.
inline std::wstring Part(const std::wstring& text, std::size_t at, std::size_t count = std::wstring::npos) {
    return text.substr(std::min(at, text.size()), count);
}

/// With a part replaced, as far as the text goes.
inline std::wstring With(const std::wstring& text, std::size_t at, std::size_t count, const std::wstring& piece = {}) {
    return Part(text, 0, at) + piece + Part(text, at + count);
}

inline std::wstring WithoutBreaks(std::wstring text) {
    std::erase_if(text, [](wchar_t c) { return c == L'\t' || c == L'\r' || c == L'\n'; });
    return text;
}

/// What a paste brings into the masked box: the clipboard is read as far as a password could reach, and only then
/// cleaned. Where nothing is left, it is no paste.
inline std::wstring PastedText(const std::wstring& clipboard) {
    std::wstring text = Part(clipboard, 0, SecretText::capacity);
    std::erase_if(text, [](wchar_t c) { return c < 32 || (c >= 127 && c < 160); });
    return text;
}

/// The box shows the password anew, as far as it may be seen; the selection stays, as far as the text goes.
inline void Show(Session& s, const std::wstring& password) {
    s.box = s.masked ? std::wstring(password.size(), L'*') : password;
    s.caret = std::min(s.caret, s.box.size());
    s.selected = std::min(s.selected, s.box.size() - s.caret);
}

/// The plain model: texts before and behind the selection, put together anew.
struct Model {
    Session s;
    void EnterIntoBox(const std::wstring& text) {
        s.box = With(s.box, s.caret, s.selected, text);
        PutCaret(s, s.caret + text.size());
    }
    void Enter(const std::wstring& text) {
        s.password = With(s.password, s.caret, s.selected, text);
        EnterIntoBox(s.masked ? std::wstring(text.size(), L'*') : text);
    }
    void Backspace() {
        const bool behindBreak = s.selected == 0 && s.caret > 0 && s.box[s.caret - 1] == L'\n';
        const std::size_t back = std::min<std::size_t>(s.caret, behindBreak ? 2 : 1);
        if (s.selected > 0) {
            s.box = With(s.box, s.caret, s.selected);
        } else {
            if (!behindBreak && back > 0 && !s.password.empty()) {
                s.password.erase(std::min(s.caret, s.password.size()) - 1, 1);
            }
            s.box = With(s.box, s.caret - back, back);
        }
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
        } else if ((button < 54 || button > 56) && button != 58) {
            Enter(caption == L"&&" ? L"&" : caption.empty() || caption == L"space" ? L" " : caption);
            s.modifiers.shiftIsDown = s.modifiers.shiftIsDown && !s.modifiers.shiftLatched;
        }
    }
    void Delete() {
        if (s.caret < s.box.size()) {
            const std::size_t count = std::max<std::size_t>(s.selected, 1);
            s.box = With(s.box, s.caret, count);
            s.password = With(s.password, s.caret, count);
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
            s.password = With(s.password, start, removed.size(), WithoutBreaks(added));
        }
    }
    void PasteMasked(const std::wstring& text) {
        if (const std::wstring clean = PastedText(text); !clean.empty()) {
            Enter(clean);
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
        Show(s, s.password);
    }
    std::wstring Carry(bool takesAway) {
        const std::size_t start = s.selected == 0 ? 0 : s.caret;
        const std::size_t count = s.selected == 0 ? s.password.size() : s.selected;
        std::wstring carried = Part(s.password, start, count);
        if (takesAway) {
            s.password = With(s.password, start, count);
            Show(s, s.password);
        }
        PutCaret(s, s.caret);
        return carried;
    }
};

/// The same session through the rules, with a text that stands in for the box. What throws changes nothing.
struct Ruled {
    Session s; ///< without the password until it is compared
    HeapText password;
    [[nodiscard]] std::wstring Password() const { return std::wstring(password.View()); }
    [[nodiscard]] BoxState State() const {
        return {s.masked ? PasswordBoxView::Masked : PasswordBoxView::Plain,
                {static_cast<std::int16_t>(s.caret), static_cast<std::int16_t>(s.selected)},
                s.box.size(),
                s.caret > 0 ? s.box[s.caret - 1] : L'\0',
                password.Size()};
    }
    void Apply(const TextEdit& edit) {
        ApplyToPassword(edit, password);
        if (edit.box) {
            s.box.replace(edit.box->range.start, edit.box->range.count, edit.box->text);
        }
        PutCaret(s, static_cast<std::size_t>(edit.caret));
    }
    void Press(int button, const std::wstring& caption) {
        const KeyPressOutcome outcome = PressKey(button, caption, State(), s.modifiers);
        if (outcome.edit) {
            Apply(*outcome.edit);
        }
        s.modifiers = outcome.modifiers;
    }
    void Delete() { Apply(EraseForwards(State())); }
    void PasteMasked(const std::wstring& text) {
        if (const std::wstring clean = PastedText(text); !clean.empty()) {
            Apply(EnterText(State(), clean));
        }
    }
    void BoxReplacedSelection(const std::wstring& text) {
        const std::wstring after = With(s.box, s.caret, s.selected, text);
        if (after.size() > SecretText::capacity) {
            throw Error(ErrorNumber::Overflow); // the box has this limit
        }
        if (const auto splice = FollowPlainBox(s.box, after, password.Size())) {
            password.Replace(splice->range, splice->text);
        }
        s.box = after;
        PutCaret(s, s.caret + text.size());
    }
    void SwitchMask() {
        if (!s.masked) {
            ReadPlainBox(s.box, password);
        }
        s.masked = !s.masked;
        Show(s, Password());
    }
    std::wstring Carry(bool takesAway) {
        const TransferPlan plan = PlanTransfer(State().selection, password.Size());
        std::wstring carried(password.View(plan.carried));
        if (takesAway) {
            password.Replace(plan.carried, {});
            Show(s, Password());
        }
        PutCaret(s, static_cast<std::size_t>(plan.savedCaret));
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
        side.s.masked ? side.PasteMasked(action.text) : side.BoxReplacedSelection(action.text);
        break;
    case Action::Kind::SwitchMask: side.SwitchMask(); break;
    case Action::Kind::Carry: return side.Carry(action.takesAway);
    }
    return {};
}

struct Comparison {
    Model model;
    Ruled ruled;

    /// Plays one action on both sides. What 16 bits cannot hold is refused, and then nothing changes.
    /// @return whether they agree afterwards.
    bool Agrees(const Action& action) {
        using enum Action::Kind;
        const Session& s = model.s;
        // For these, caret and selection are added up in 16 bits, whatever is then done with them.
        const bool adds = action.kind == Press || action.kind == Carry ||
                          (action.kind == Paste && s.masked && !PastedText(action.text).empty());
        Model next = model;
        const std::wstring carried = Play(next, action);
        const bool refused = std::max(next.s.box.size(), next.s.password.size()) > SecretText::capacity ||
                             (adds && s.caret + s.selected + 1 > SecretText::capacity);
        try {
            if (Play(ruled, action) != carried || refused) {
                return false;
            }
            model = std::move(next);
        } catch (const Error& error) {
            if (!refused || error.Number() != static_cast<int>(ErrorNumber::Overflow)) {
                return false;
            }
        }
        ruled.s.password = ruled.Password();
        return model.s == ruled.s;
    }
};

/// Chooses an action that is possible in the session. @param pick gives a number from 0 up to below its argument.
template <typename Pick>
Action ChooseAction(const Session& s, Pick pick) {
    static const std::wstring captions[] = {L"a",     L"b",     L"a",  L"&&", L"",
                                            L"space", L"Space", L"\\", L"ij", L"\xD83D\xDE00"};
    static const std::wstring pastes[] = {L"",     L"a",      L"ba",    L"\t",         L"a\tb",
                                          L"\r\n", L"b\r\na", L"\nb\r", L"\x7Fq\x9Fr", L"\r\n\r\n"};
    constexpr int editing[] = {keys::backspace, keys::backspace, keys::tab, keys::enter};
    Action action;
    const std::size_t kind = pick(20);
    if (kind < 12) {
        action.button = kind < 8 ? static_cast<int>(1 + pick(keyButtonCount)) : editing[kind - 8];
        action.text = captions[pick(std::size(captions))];
    } else if (kind < 15) {
        action.kind = Action::Kind::Select;
        action.caret = pick(s.box.size() + 1);
        action.selected = kind == 12 ? 0 : pick(s.box.size() - action.caret + 1);
    } else if (kind == 15 && s.masked) {
        action.kind = Action::Kind::Delete;
    } else if (kind <= 17) {
        action.kind = Action::Kind::Paste;
        action.text = kind == 15 ? std::wstring() : pastes[pick(std::size(pastes))]; // cut or paste
    } else if (kind == 18) {
        action.kind = Action::Kind::SwitchMask;
    } else {
        action.kind = Action::Kind::Carry;
        action.takesAway = pick(3) != 0;
    }
    return action;
}

} // namespace vextrel::session
