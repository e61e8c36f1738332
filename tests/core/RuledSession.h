#pragma once

// The session through the rules themselves, to be played beside the plain model.

#include "core/Error.h"
#include "core/PasswordView.h"

#include "PasswordSession.h"

#include <stdexcept>

namespace vextrel::session {

/// Ordinary memory in place of the pages that the program has from the system.
struct HeapPages final : SecretPages {
    [[nodiscard]] void* Allocate(std::size_t byteCount) const override { return new std::byte[byteCount](); }
    void Release(void* pages, std::size_t) const noexcept override { delete[] static_cast<std::byte*>(pages); }
};
inline constexpr HeapPages heapPages;
inline constexpr std::size_t full = SecretText::capacity;

inline bool IsZeroBehindItsEnd(const SecretText& text) {
    return std::all_of(text.CString() + text.Size(), text.CString() + full + 1, [](wchar_t c) { return c == 0; });
}

/// The session through the rules, with a text that stands in for the box. What throws changes nothing.
struct Ruled {
    Session s; ///< its password is a copy that only the box and the comparison see
    SecretText password{heapPages};
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
        if (outcome.showLeftover != (button == keys::messageLeftover)) {
            throw std::logic_error("the left-over message");
        }
    }
    void Delete() { Apply(EraseForwards(State())); }
    void Enter(const std::wstring& text) { Apply(EnterText(State(), text)); }
    void BoxReplacedSelection(const std::wstring& text) {
        std::wstring after = s.box;
        Replace(after, s.caret, s.selected, text);
        if (after.size() > full) {
            throw Error(ErrorNumber::Overflow); // the box has this limit
        }
        if (const auto splice = FollowPlainBox(s.box, after, password.Size())) {
            password.Replace(splice->range, splice->text);
        }
        s.box = after;
        PutCaret(s, s.caret + text.size());
    }
    void ShowPassword() {
        s.password = password.View();
        Show(s);
    }
    void SwitchMask() {
        if (!s.masked) {
            ReadPlainBox(s.box, password);
        }
        s.masked = !s.masked;
        ShowPassword();
    }
    std::wstring Carry(bool takesAway) {
        const TransferPlan plan = PlanTransfer(State().selection, password.Size());
        std::wstring carried(password.View(plan.carried));
        if (takesAway) {
            password.Replace(plan.carried, {});
            ShowPassword();
        }
        PutCaret(s, static_cast<std::size_t>(plan.savedCaret));
        return carried;
    }
};

} // namespace vextrel::session
