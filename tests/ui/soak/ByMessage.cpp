// What the random user does by messages.

#include "soak/RandomUser.h"

#include <commctrl.h>

namespace vextrel::driver {

namespace {

/// A key that does nothing and is not shown: its pushed state marks how far posted messages have been taken.
constexpr int fenceKey = 56;

/// Long enough for edits to meet, short enough for them to meet often.
constexpr std::size_t longText = 40;

} // namespace

void RandomUser::EditPassword() {
    if (model_.s.box.size() > longText) {
        Clear();
        return;
    }
    const Action action = session::ChooseAction(model_.s, [this](std::size_t below) { return Pick(below); });
    if (action.kind != Action::Kind::Carry) {
        EditByMessage(action);
    } else if (Pick(12) == 0 && !model_.s.password.empty()) {
        Note("drag");
        Drag(action.takesAway);
    } else {
        TypeByMessage(static_cast<wchar_t>(L' ' + Pick(95)));
    }
}

void RandomUser::EditByMessage(const Action& action) {
    static constexpr std::array names{"key", "select", "delete", "paste", "switch mask", "carry"};
    Remember(names.at(static_cast<std::size_t>(action.kind)));
    switch (action.kind) {
    case Action::Kind::Press: PressByMessage(action.button); break;
    case Action::Kind::Select: Select(action.caret, action.selected); break;
    case Action::Kind::Delete: DeleteByMessage(); break;
    case Action::Kind::Paste: PasteByMessage(action.text); break;
    case Action::Kind::SwitchMask:
        Command(ids::mnuViewPasswordMask);
        model_.SwitchMask();
        for (const int button : {keys::tab, keys::enter}) {
            if ((IsWindowEnabled(Key(button)) == FALSE) != model_.s.masked) {
                throw Failure("Tab and Enter are for the plain box");
            }
        }
        break;
    case Action::Kind::Carry: break;
    }
}

void RandomUser::Select(std::size_t caret, std::size_t count) {
    Ask(Box(), EM_SETSEL, caret, static_cast<LPARAM>(caret + count));
    model_.s.caret = caret;
    model_.s.selected = count;
}

void RandomUser::Press() {
    PressByMessage(static_cast<int>(1 + Pick(keyButtonCount)));
}

void RandomUser::PressByMessage(int button) {
    const std::wstring caption = CaptionOf(button);
    if (button == keys::messageLeftover) {
        Post(Key(button), BM_CLICK);
        EndDialog(IDOK);
    } else if (!IsKeyShown(button) || Pick(8) == 0) {
        Ask(Key(button), BM_CLICK); // as an assistive program does
    } else if (Pick(4) == 0) {
        Ask(layer_, WM_RBUTTONDOWN, MK_RBUTTON, OnLayer(PickCharacterKey())); // pressed elsewhere and drawn here
        Ask(layer_, WM_MOUSEMOVE, MK_RBUTTON, OnLayer(button));
        Ask(layer_, WM_RBUTTONUP, 0, OnLayer(button));
    } else {
        Ask(layer_, WM_LBUTTONDOWN, MK_LBUTTON, OnLayer(button));
        Ask(layer_, WM_LBUTTONUP, 0, OnLayer(button));
    }
    model_.Press(button, caption);
}

void RandomUser::TypeByMessage(wchar_t character) {
    Ask(Box(), WM_KEYDOWN, VK_PACKET, 1);
    Ask(Box(), WM_CHAR, character, 1);
    Ask(Box(), WM_KEYUP, VK_PACKET, 1);
    model_.s.modifiers.shiftIsDown = false; // it follows the physical keys, of which none is down
    model_.Enter(std::wstring(1, character));
}

void RandomUser::DeleteByMessage() {
    Ask(Box(), WM_KEYDOWN, VK_DELETE, 1);
    Ask(Box(), WM_KEYUP, VK_DELETE, 1);
    model_.s.modifiers.shiftIsDown = false;
    model_.Delete();
}

void RandomUser::PasteByMessage(const std::wstring& text) {
    const bool masked = model_.s.masked;
    if (text.empty() && !masked) {
        Ask(Box(), WM_CLEAR);
        model_.BoxReplacedSelection(text);
        return;
    }
    if (!clipboard_ || Pick(8) == 0) { // a new text takes its time
        SetClipboard(text);
        clipboard_ = text;
    }
    Ask(Box(), WM_PASTE);
    masked ? model_.PasteMasked(*clipboard_) : model_.BoxReplacedSelection(*clipboard_);
}

void RandomUser::OpenMenu() {
    const auto menu = [this] { return app_.Running().Window(L"#32768"); };
    if (Pick(3) == 0) {
        const POINT place = CentreOf(Box());
        Post(Box(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Box()), MAKELPARAM(place.x, place.y));
    } else {
        Post(app_.Main(), WM_SYSCOMMAND, SC_KEYMENU, L"fmvok"[Pick(5)]);
    }
    Await("a menu opens", [&] { return menu() != nullptr; });
    Ask(app_.Main(), WM_CANCELMODE);
    Await("the menu goes", [&] { return menu() == nullptr; });
    Post(app_.Main(), WM_NULL);
}

void RandomUser::AnswerDialog() {
    switch (Pick(4)) {
    case 0: CommandThatMayAsk(ids::mnuHelpAbout, IDCANCEL); break;
    case 1: CommandThatMayAsk(ids::mnuViewProtectiveLayer, Pick(2) == 0 ? IDOK : IDCANCEL); break;
    case 2: CommandThatMayAsk(ids::mnuModeHiddenMouseAndHover, IDCANCEL); break;
    default:
        CommandThatMayAsk(ids::mnuOptionsSaveSettingsInINI, IDNO);
        Command(ids::mnuOptionsSaveSettingsInINI);
        break;
    }
}

void RandomUser::ChangeOption() {
    constexpr int switches[] = {ids::toolBeep,         ids::toolKeepPassword, ids::toolInject,
                                ids::mnuFileKeepOnTop, ids::mnuViewToolbar,   ids::toolKeepOnTop};
    Toggle(switches[Pick(std::size(switches))]);
}

void RandomUser::ChangeLayout() {
    layout_ = Pick(2) == 0 ? &english_ : &saved_;
    Command(layout_ == &english_ ? ids::mnuKeyboardLayoutEnglish : ids::mnuKeyboardLayoutLastSaved);
    AwaitCaptions("a change of the layout");
}

void RandomUser::ChangeWindow() {
    const auto number = [this](int from, int to) { return from + static_cast<int>(Pick(std::size_t(to - from))); };
    switch (Pick(7)) {
    case 0:
    case 1: {
        constexpr UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
        const int width = number(500, 900);
        const int height = number(300, 600);
        SetWindowPos(app_.Main(), nullptr, number(0, 1920 - width), number(0, 1000 - height), width, height, flags);
        break;
    }
    case 2: Command(ids::toolRefresh); break;
    case 3: {
        const int dpi = number(96, 160);
        const RECT place{60, 60, 60 + number(500, 900), 60 + number(400, 600)};
        suggestedPlace_.Write(&place, sizeof place);
        Ask(app_.Main(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
            reinterpret_cast<LPARAM>(suggestedPlace_.Address()));
        break;
    }
    case 4: Ask(app_.Main(), WM_THEMECHANGED); break;
    case 5: {
        const HWND slider = app_.Control(ids::sldTransparency);
        Ask(slider, TBM_SETPOS, TRUE, number(60, 101));
        Ask(app_.Main(), WM_HSCROLL, SB_ENDSCROLL, reinterpret_cast<LPARAM>(slider));
        break;
    }
    default: ClickLayerOfNoSize(); break;
    }
}

void RandomUser::ClickLayerOfNoSize() {
    SetWindowPos(layer_, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (const int message : {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
        Ask(layer_, static_cast<UINT>(message), MK_LBUTTON, 0);
    }
    const RECT own = BoundsOf(app_.Main());
    SetWindowPos(app_.Main(), nullptr, own.left + 1, own.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Await("the layer is back on the keys", [&] {
        const RECT key = BoundsOf(Key(1));
        const RECT now = BoundsOf(layer_);
        return now.left == key.left && now.top == key.top && now.right > key.right && now.bottom > key.bottom;
    });
}

LPARAM RandomUser::OnLayer(int button) const {
    POINT place = CentreOf(Key(button));
    ScreenToClient(layer_, &place);
    return MAKELPARAM(place.x, place.y);
}

void RandomUser::CommandThatMayAsk(int id, WPARAM answer) {
    Post(app_.Main(), WM_COMMAND, static_cast<WPARAM>(id));
    EndDialog(answer);
}

void RandomUser::EndDialog(WPARAM answer) {
    HWND dialog = app_.Running().Window(dialogClass);
    for (const HWND form : app_.Running().Windows(formClass)) {
        if (form != app_.Main() && form != layer_) {
            dialog = form;
        }
    }
    if (dialog == nullptr) {
        return;
    }
    if (const HWND error = GetDlgItem(dialog, ids::txtError); error != nullptr) {
        throw Failure("the program reports: " + Narrow(TextOf(error)));
    }
    PostMessageW(dialog, WM_COMMAND, answer, 0);
    Await("the dialog goes", [&] { return !IsWindow(dialog) && IsWindowEnabled(app_.Main()) != FALSE; });
}

void RandomUser::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    fence_ = !fence_;
    Check(PostMessageW(window, message, wParam, lParam) != FALSE &&
              PostMessageW(Key(fenceKey), BM_SETSTATE, fence_ ? TRUE : FALSE, 0) != FALSE,
          "posting a message");
    Await("a posted message is taken", [this] { return IsPushed(fenceKey) == fence_; });
}

void RandomUser::Toggle(int id) {
    Command(id);
    toggled_[id] = !toggled_[id];
}

void RandomUser::Clear() {
    Command(ids::toolClear);
    model_.s.box.clear();
    model_.s.password.clear();
    session::PutCaret(model_.s, 0);
}

} // namespace vextrel::driver
