// A long random session, played twice: through the rules, and through a plain model that handles whole texts, written
// from what the user is told. Box, caret and password must agree after every step.

#include "keyboard/KeyPress.h"
#include "keyboard/KeyTable.h"
#include "keyboard/PhysicalInput.h"
#include "transfer/PasswordView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace vextrel {
namespace {

/// What both sides show after a step. The caret is what the box makes of it: never behind the text.
struct Session {
    std::wstring box;
    std::wstring password;
    bool masked = true;
    std::size_t caret = 0;
    std::size_t selected = 0;
    PressModifiers modifiers;
};

void PutCaret(Session& s, std::size_t caret) {
    s.caret = std::min(caret, s.box.size());
    s.selected = 0;
}

std::wstring Left(const std::wstring& text, std::size_t count) {
    return text.substr(0, std::min(count, text.size()));
}

std::wstring From(const std::wstring& text, std::size_t position) {
    return position < text.size() ? text.substr(position) : L"";
}

std::wstring Keep(const std::wstring& text, bool (*wanted)(wchar_t)) {
    std::wstring kept;
    for (const wchar_t c : text) {
        if (wanted(c)) {
            kept += c;
        }
    }
    return kept;
}

bool IsNoBreak(wchar_t c) {
    return c != L'\t' && c != L'\r' && c != L'\n';
}

/// The plain model: texts before and behind the selection, put together anew.
struct Model {
    Session s;

    void Enter(const std::wstring& text) {
        const std::wstring before = Left(s.box, s.caret);
        const std::wstring after = From(s.box, s.caret + s.selected);
        s.password = Left(s.password, s.caret) + text + From(s.password, s.caret + s.selected);
        s.box = before + (s.masked ? std::wstring(text.size(), L'*') : text) + after;
        PutCaret(s, s.caret + text.size());
    }

    void EnterIntoPlainBox(const std::wstring& text) {
        if (!s.masked) {
            s.box = Left(s.box, s.caret) + text + From(s.box, s.caret + s.selected);
            PutCaret(s, s.caret + text.size());
        }
    }

    void Backspace() {
        std::wstring before = Left(s.box, s.caret);
        const std::wstring after = From(s.box, s.caret + s.selected);
        std::size_t caret = 0; // setting a text puts the caret there
        if (s.selected > 0) {
            s.box = before + after;
            caret = s.caret >= 2 ? s.caret - 1 : 0;
        } else if (!before.empty() && before.back() == L'\n') {
            s.box = Left(before, before.size() < 2 ? 0 : before.size() - 2) + after;
            caret = s.caret < 2 ? 0 : s.caret - 2;
        } else if (!before.empty()) {
            before.pop_back();
            s.box = before + after;
            if (!s.password.empty()) {
                std::wstring passwordBefore = Left(s.password, s.caret);
                passwordBefore.pop_back();
                s.password = passwordBefore + From(s.password, s.caret);
            }
            caret = s.caret - 1;
        }
        PutCaret(s, caret);
    }

    void Press(int button, const std::wstring& caption) {
        if (button == keys::backspace) {
            Backspace();
        } else if (button == keys::tab) {
            EnterIntoPlainBox(L"\t");
        } else if (button == keys::enter) {
            EnterIntoPlainBox(L"\r\n");
        } else if (button == keys::capsLock) {
            s.modifiers.capsLockIsDown = !s.modifiers.capsLockIsDown;
        } else if (button == keys::leftShift || button == keys::rightShift) {
            s.modifiers.shiftLatched = true;
            s.modifiers.shiftIsDown = !s.modifiers.shiftIsDown;
        } else if ((button < 54 || button > 56) && button != 58) {
            Enter(caption == L"&&" ? L"&" : caption.empty() || caption == L"space" ? L" " : caption);
            if (s.modifiers.shiftLatched) {
                s.modifiers.shiftIsDown = false;
            }
        }
    }

    void Delete() {
        const std::size_t count = s.selected > 0 ? s.selected : 1;
        if (s.caret < s.box.size()) {
            s.box = Left(s.box, s.caret) + From(s.box, s.caret + count);
            s.password = Left(s.password, s.caret) + From(s.password, s.caret + count);
        }
        PutCaret(s, s.caret);
    }

    /// The box replaced its selection by itself. Where the same text results from a replacement that lies further
    /// back, the furthest one counts; that matters only once box and password are out of step.
    void BoxReplacedSelection(const std::wstring& text) {
        const std::wstring old = s.box;
        s.box = Left(old, s.caret) + text + From(old, s.caret + s.selected);
        PutCaret(s, s.caret + text.size());
        std::size_t same = 0;
        while (same < old.size() && same < s.box.size() && old[same] == s.box[same]) {
            ++same;
        }
        std::size_t end = 0;
        while (end < old.size() - same && end < s.box.size() - same &&
               old[old.size() - 1 - end] == s.box[s.box.size() - 1 - end]) {
            ++end;
        }
        const std::wstring added = s.box.substr(same, s.box.size() - same - end);
        s.password = Left(s.password, same) + Keep(added, IsNoBreak) + From(s.password, old.size() - end);
    }

    void SwitchMask() {
        s.masked = !s.masked;
        if (s.masked) {
            s.password.clear();
            for (const wchar_t c : s.box.substr(0, s.box.find(L"\r\n"))) {
                s.password += c == L'\t' ? L"\r\n" : std::wstring(1, c);
            }
            s.box = std::wstring(s.password.size(), L'*');
        } else {
            s.box = s.password;
        }
    }

    std::wstring Carry(bool takesAway) {
        std::wstring carried = s.selected == 0 ? s.password : Left(From(s.password, s.caret), s.selected);
        if (takesAway) {
            s.password = s.selected == 0 ? L"" : Left(s.password, s.caret) + From(s.password, s.caret + s.selected);
            s.box = s.masked ? std::wstring(s.password.size(), L'*') : s.password;
        }
        PutCaret(s, s.caret);
        return carried;
    }
};

/// The same session through the rules, with a text that stands in for the box.
class Ruled {
  public:
    Session s; ///< without the password

    [[nodiscard]] std::wstring Password() const { return std::wstring(password_.View()); }

    [[nodiscard]] BoxSelection Selection() const {
        return {static_cast<std::int16_t>(s.caret), static_cast<std::int16_t>(s.selected)};
    }

    [[nodiscard]] BoxState State() const {
        return {.view = s.masked ? PasswordBoxView::Masked : PasswordBoxView::Plain,
                .selection = Selection(),
                .length = s.box.size(),
                .characterBeforeCaret = s.caret > 0 ? s.box[s.caret - 1] : L'\0',
                .passwordLength = password_.Size()};
    }

    void Apply(const TextEdit& edit) {
        ApplyToPassword(edit, password_);
        if (edit.box) {
            s.box.replace(edit.box->range.start, edit.box->range.count, edit.box->text);
        }
        PutCaret(s, static_cast<std::size_t>(edit.caret));
    }

    void Press(int button, const std::wstring& caption) {
        const KeyPressOutcome outcome = PressKey(button, caption, State(), s.modifiers);
        s.modifiers = outcome.modifiers;
        if (outcome.edit) {
            Apply(*outcome.edit);
        }
    }

    void BoxReplacedSelection(const std::wstring& text) {
        const std::wstring before = s.box;
        s.box.replace(s.caret, s.selected, text);
        PutCaret(s, s.caret + text.size());
        if (const auto splice = FollowPlainBox(before, s.box, password_.Size())) {
            password_.Replace(splice->range, splice->text);
        }
    }

    void SwitchMask() {
        s.masked = !s.masked;
        if (s.masked) {
            ReadPlainBox(s.box, password_);
            s.box.assign(password_.Size(), L'*');
        } else {
            s.box = Password();
        }
    }

    std::wstring Carry(TransferEnd end, bool keep) {
        const TransferPlan plan = PlanTransfer(Selection(), password_.Size());
        std::wstring carried(password_.View(plan.carried));
        if (TakesAway(end, keep)) {
            CutCarried(plan, password_);
            s.box = s.masked ? std::wstring(password_.Size(), L'*') : Password();
        }
        PutCaret(s, static_cast<std::size_t>(plan.savedCaret));
        return carried;
    }

  private:
    SecretText password_;
};

TEST(PasswordWalk, TenThousandStepsAgreeWithThePlainModel) {
    std::mt19937 random(20240229);
    const auto pick = [&random](std::size_t below) { return static_cast<std::size_t>(random()) % below; };
    const std::wstring captions[] = {L"a", L"b", L"a", L"&&", L"", L"space", L" ", L"\\", L"ij", L"\xD83D\xDE00"};
    const std::wstring pastes[] = {L"",     L"a",      L"ba",   L"\t",         L"a\tb",
                                   L"\r\n", L"b\r\na", L"aaaa", L"\x7Fq\x9Fr", L"\r\n\r\n"};
    Model model;
    Ruled ruled;
    for (int step = 0; step < 10000; ++step) {
        std::size_t kind = pick(20);
        if (model.s.box.size() > 40) {
            kind = 19; // keep it short enough for edits to meet
        }
        const std::wstring& caption = captions[pick(std::size(captions))];
        const std::wstring& pasted = pastes[pick(std::size(pastes))];
        if (kind < 8) {
            const int button = static_cast<int>(1 + pick(keyButtonCount));
            model.Press(button, caption);
            ruled.Press(button, caption);
        } else if (kind < 12) {
            const int editing[] = {keys::backspace, keys::backspace, keys::tab, keys::enter};
            model.Press(editing[kind - 8], caption);
            ruled.Press(editing[kind - 8], caption);
        } else if (kind < 15) {
            const std::size_t caret = pick(model.s.box.size() + 1);
            const std::size_t selected = kind == 12 ? 0 : pick(model.s.box.size() - caret + 1);
            model.s.caret = ruled.s.caret = caret;
            model.s.selected = ruled.s.selected = selected;
        } else if (kind == 15 && model.s.masked) {
            model.Delete();
            ruled.Apply(EraseForwards(ruled.State()));
        } else if (kind <= 17 && model.s.masked) {
            model.Enter(Keep(pasted, [](wchar_t c) { return c >= 32 && !(c >= 127 && c < 160); }));
            ruled.Apply(EnterText(ruled.State(), WithoutControlCharacters(pasted)));
        } else if (kind <= 17) {
            const std::wstring& text = kind == 15 ? std::wstring() : pasted; // cut or paste
            model.BoxReplacedSelection(text);
            ruled.BoxReplacedSelection(text);
        } else if (kind == 18) {
            model.SwitchMask();
            ruled.SwitchMask();
            PutCaret(model.s, model.s.caret);
            PutCaret(ruled.s, ruled.s.caret);
        } else {
            const bool keep = pick(2) == 0;
            const bool handedOver = pick(4) != 0;
            EXPECT_TRUE(model.Carry(handedOver && !keep) ==
                        ruled.Carry(handedOver ? TransferEnd::HandedOver : TransferEnd::NothingHandedOver, keep));
        }
        ASSERT_EQ(ruled.s.box, model.s.box) << "step " << step << ", kind " << kind;
        ASSERT_EQ(ruled.Password(), model.s.password) << "step " << step << ", kind " << kind;
        ASSERT_TRUE(ruled.s.caret == model.s.caret && ruled.s.selected == model.s.selected)
            << "step " << step << ", kind " << kind;
        ASSERT_EQ(ruled.s.modifiers, model.s.modifiers) << "step " << step << ", kind " << kind;
    }
}

} // namespace
} // namespace vextrel
