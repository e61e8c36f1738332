#include "ui/PasswordBox.h"

#include "core/Numbers.h"
#include "core/PasswordView.h"
#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/EventGuard.h"
#include "win32/Gate.h"
#include "win32/InputState.h"
#include "win32/Touch.h"

#include <imm.h>

#include <array>

namespace vextrel {

namespace {

/// What an edit control makes of the control characters that Ctrl+letter types.
enum ControlCharacter : wchar_t {
    ctrlA = 1,
    ctrlC = 3,
    ctrlV = 22,
    ctrlX = 24,
    ctrlZ = 26,
};

/// In the context menu, beside the messages that the edit control knows.
constexpr UINT clearText = WM_APP;

/// A piece of masked text. Longer ones are put together from it: where a secret is overwritten, no memory may be asked
/// for.
constexpr auto maskPiece = [] {
    std::array<wchar_t, 1025> piece{};
    std::fill_n(piece.begin(), piece.size() - 1, maskCharacter);
    return piece;
}();

} // namespace

void PasswordBox::Create(HWND parent, int id, PasswordBoxView view, BoxEvents& events) {
    view_ = view;
    events_ = &events;
    const bool plain = view == PasswordBoxView::Plain;
    Attach(CreateControl(parent, {.windowClass = WC_EDITW,
                                  .style = WS_TABSTOP | WS_CLIPSIBLINGS | ES_AUTOHSCROLL |
                                           (plain ? ES_MULTILINE | DWORD{ES_AUTOVSCROLL} : WS_VISIBLE),
                                  .exStyle = WS_EX_CLIENTEDGE,
                                  .id = id,
                                  .isSecret = true}));
    TakeTouchAsMouse(Handle());
    ToWindow(EM_SETLIMITTEXT, SecretText::capacity, 0);
    // An input method would keep and show what is composed, and put it into the box by ways of its own.
    ::ImmAssociateContextEx(Handle(), nullptr, 0);
    if (!plain) {
        ToWindow(EM_SETPASSWORDCHAR, maskCharacter, 0);
    }
}

BoxSelection PasswordBox::Selection() const {
    DWORD start = 0;
    DWORD end = 0;
    ToWindow(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {ToInt16(start), ToInt16(static_cast<std::int64_t>(end) - start)};
}

void PasswordBox::Select(BoxSelection selection) noexcept {
    ToWindow(EM_SETSEL, static_cast<WPARAM>(selection.start), static_cast<LPARAM>(selection.start) + selection.length);
    ToWindow(EM_SCROLLCARET, 0, 0);
}

void PasswordBox::ReadText(SecretText& text) const {
    const LRESULT length = ToWindow(WM_GETTEXT, SecretText::capacity + 1, reinterpret_cast<LPARAM>(text.Buffer()));
    text.SetSize(static_cast<std::size_t>(length));
}

void PasswordBox::Changed() noexcept {
    // The undo would keep what was there before.
    ToWindow(EM_EMPTYUNDOBUFFER, 0, 0);
    longest_ = std::max(longest_, Length());
    // The control paints what has changed of its text only.
    if (std::exchange(showsCue_, Length() == 0) != showsCue_) {
        ::InvalidateRect(Handle(), nullptr, TRUE);
    }
}

void PasswordBox::SetText(const wchar_t* text) noexcept {
    ToWindow(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    Changed();
}

void PasswordBox::SetMask(std::size_t count) noexcept {
    constexpr std::size_t longestPiece = maskPiece.size() - 1;
    const auto piece = [](std::size_t length) { return maskPiece.data() + longestPiece - length; };
    const std::size_t first = std::min(count, longestPiece);
    ToWindow(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(piece(first)));
    for (std::size_t shown = first; shown < count; shown += longestPiece) {
        ToWindow(EM_SETSEL, 0, 0); // behind a long text, Wine's control takes longer for each piece than for the last
        ToWindow(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(piece(std::min(count - shown, longestPiece))));
    }
    Changed();
}

void PasswordBox::Apply(const TextEdit& edit) noexcept {
    if (edit.box) {
        ToWindow(EM_SETSEL, edit.box->range.start, static_cast<LPARAM>(edit.box->range.End()));
        ToWindow(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(edit.box->text.c_str()));
        Changed();
    }
    Select({edit.caret, 0});
}

void PasswordBox::OverwriteAndEmpty() noexcept {
    // Behind a text that has become shorter, the control keeps what was there.
    SetMask(std::max(longest_, Length()));
    // Deleted so that it can be undone: what was to be undone before is overwritten with it.
    ToWindow(EM_SETSEL, 0, -1);
    ToWindow(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L""));
    Changed();
    longest_ = 0;
}

LRESULT PasswordBox::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    LRESULT result = 0;
    GuardEvent(::GetParent(Handle()), view_ == PasswordBoxView::Masked ? L"txtPassword" : L"txtText",
               [&] { result = OnMessage(message, wParam, lParam); });
    return result;
}

LRESULT PasswordBox::ToEditAndFollow(UINT message, WPARAM wParam, LPARAM lParam) {
    // A key may make the control send itself a message that stands for it: the outer of the two is followed.
    if (view_ == PasswordBoxView::Masked || following_) {
        return ToWindow(message, wParam, lParam);
    }
    if (!events_->PlainBoxWillChange()) {
        return 0;
    }
    longest_ = std::max(longest_, Length());
    following_ = true;
    const LRESULT result = ToWindow(message, wParam, lParam);
    following_ = false;
    longest_ = std::max(longest_, Length());
    events_->PlainBoxHasChanged();
    return result;
}

LRESULT PasswordBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CHAR: return OnChar(wParam, lParam);
    case WM_KEYDOWN: return OnKeyDown(wParam, lParam);
    case WM_KEYUP: events_->KeyUp(static_cast<UINT>(wParam)); return ToWindow(message, wParam, lParam);
    case WM_GETDLGCODE: return DialogCodeFor(reinterpret_cast<const MSG*>(lParam));
    // Alt+Backspace undoes.
    case WM_SYSKEYDOWN:
    case WM_SYSCHAR:
        return wParam == VK_BACK ? ToEditAndFollow(message, wParam, lParam) : ToWindow(message, wParam, lParam);
    case WM_CONTEXTMENU: OnContextMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); return 0;
    case WM_PASTE:
    case WM_CUT:
    case WM_COPY:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO: return OnClipboard(message, wParam, lParam);
    // From outside, as assistive technology does. What asterisks would stand for nobody else can say.
    case WM_SETTEXT:
    case EM_REPLACESEL: return view_ == PasswordBoxView::Masked ? 0 : ToEditAndFollow(message, wParam, lParam);
    // The balloon that warns of Caps Lock tells whoever watches that a password is being entered.
    case EM_SHOWBALLOONTIP: return TRUE;
    // The second press of two may begin a drag as well.
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: return OnButtonDown(message, wParam, lParam);
    case WM_MOUSEMOVE: return OnMouseMove(wParam, lParam);
    case WM_LBUTTONUP: return OnButtonUp(wParam, lParam);
    case WM_SETCURSOR:
        if (LOWORD(lParam) == HTCLIENT && IsDraggedFromHere()) {
            ::SetCursor(::LoadCursorW(nullptr, IDC_SIZEALL));
            return TRUE;
        }
        return ToWindow(message, wParam, lParam);
    case WM_PAINT: {
        const LRESULT result = ToWindow(message, wParam, lParam);
        if (showsCue_ && view_ == PasswordBoxView::Masked) {
            PaintCue(Handle(), cueFont_, L"Click the keys; then drag the password out of this box");
        }
        return result;
    }
    case WM_TABLET_QUERYSYSTEMGESTURESTATUS: return pressesAtOnce;
    case WM_CAPTURECHANGED: gesture_.Cancel(); return ToWindow(message, wParam, lParam);
    default: return ToWindow(message, wParam, lParam);
    }
}

LRESULT PasswordBox::OnChar(WPARAM wParam, LPARAM lParam) {
    const auto code = static_cast<wchar_t>(wParam);
    // A program that presses keys must not get at the password by way of the clipboard.
    if ((code == ctrlC || code == ctrlX) && !Gate::IsUsersOwnInput()) {
        return 0;
    }
    switch (code) {
    case ctrlA: ToWindow(EM_SETSEL, 0, -1); return 0;
    case ctrlC: return OnClipboard(WM_COPY, 0, 0);
    case ctrlV: return OnClipboard(WM_PASTE, 0, 0);
    case ctrlX: return OnClipboard(WM_CUT, 0, 0);
    case ctrlZ: return OnClipboard(WM_UNDO, 0, 0);
    default: break;
    }
    if (!events_->KeyPress(code)) {
        return 0;
    }
    // What is left to the plain box; of the control characters it has a use for tabs and line breaks only.
    const bool taken = !IsControlCharacter(code) || code == L'\t' || code == L'\r' || code == L'\n';
    return taken ? ToEditAndFollow(WM_CHAR, wParam, lParam) : 0;
}

LRESULT PasswordBox::OnKeyDown(WPARAM wParam, LPARAM lParam) {
    const auto key = static_cast<UINT>(wParam);
    if (key == VK_DELETE && WasDown(VK_CONTROL)) {
        events_->ClearText();
        return 0;
    }
    const bool mayAct = events_->KeyDown(key);
    const bool copies = (key == VK_INSERT && WasDown(VK_CONTROL)) || (key == VK_DELETE && WasDown(VK_SHIFT));
    if (key == VK_ESCAPE || !mayAct || (copies && !Gate::IsUsersOwnInput())) {
        return 0;
    }
    if (view_ == PasswordBoxView::Masked) {
        if (key == VK_INSERT && WasDown(VK_SHIFT)) {
            return OnClipboard(WM_PASTE, 0, 0);
        }
        const bool refused = key == VK_DELETE || (key == VK_INSERT && WasDown(VK_CONTROL));
        return refused ? 0 : ToWindow(WM_KEYDOWN, wParam, lParam);
    }
    const bool changesText = key == VK_DELETE || key == VK_INSERT || key == VK_BACK || key == VK_RETURN;
    return changesText ? ToEditAndFollow(WM_KEYDOWN, wParam, lParam) : ToWindow(WM_KEYDOWN, wParam, lParam);
}

LRESULT PasswordBox::DialogCodeFor(const MSG* message) const noexcept {
    const bool taken =
        message != nullptr && message->message == WM_KEYDOWN &&
        (message->wParam == VK_ESCAPE || (message->wParam == VK_RETURN && view_ == PasswordBoxView::Plain));
    // Not DLGC_HASSETSEL: arriving by Tab must keep caret and selection.
    return DLGC_WANTCHARS | DLGC_WANTARROWS | (taken ? DLGC_WANTMESSAGE : 0);
}

LRESULT PasswordBox::OnClipboard(UINT message, WPARAM wParam, LPARAM lParam) {
    if (view_ == PasswordBoxView::Plain) {
        return message == WM_COPY ? ToWindow(message, wParam, lParam) : ToEditAndFollow(message, wParam, lParam);
    }
    if (message == WM_PASTE) {
        events_->PasteIntoMaskedBox();
    } else if (message == WM_CLEAR && Selection().length > 0) {
        events_->KeyDown(VK_DELETE);
    }
    return 0;
}

void PasswordBox::OnContextMenu(POINT screen) {
    // Not the edit's own, which offers things (control characters among them) that go by other ways than messages.
    ::SetFocus(Handle());
    const bool plain = view_ == PasswordBoxView::Plain;
    const bool selected = Selection().length > 0;
    const struct {
        UINT message; ///< sent to the box when chosen; 0: a separator
        const wchar_t* caption;
        bool enabled;
    } items[] = {
        {WM_UNDO, L"&Undo", plain && ToWindow(EM_CANUNDO, 0, 0) != 0},
        {0, nullptr, false},
        {WM_CUT, L"Cu&t", plain && selected},
        {WM_COPY, L"&Copy", plain && selected},
        {WM_PASTE, L"&Paste", ::IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE},
        {WM_CLEAR, L"&Delete", selected},
        {0, nullptr, false},
        {EM_SETSEL, L"Select &All", Length() > 0},
        {0, nullptr, false},
        {clearText, L"Clear Pass&word\tCtrl+Delete", true},
    };
    const UniqueMenu menu(::CreatePopupMenu());
    for (const auto& item : items) {
        const UINT flags = item.message == 0 ? MF_SEPARATOR : item.enabled ? MF_STRING : MF_STRING | MF_GRAYED;
        ::AppendMenuW(menu.Get(), flags, item.message, item.caption);
    }
    // The keyboard asked for it.
    if (screen.x == -1 && screen.y == -1) {
        screen = {};
        ::GetCaretPos(&screen);
        ::ClientToScreen(Handle(), &screen);
    }
    // Its window's menu loop tells that a menu is open.
    const auto chosen = static_cast<UINT>(::TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x,
                                                           screen.y, 0, ::GetParent(Handle()), nullptr));
    const bool copies = chosen == WM_COPY || chosen == WM_CUT;
    if (chosen == clearText) {
        events_->ClearText();
    } else if (chosen != 0 && (!copies || Gate::IsUsersOwnMenuChoice())) {
        OnMessage(chosen, 0, chosen == EM_SETSEL ? -1 : 0);
    }
}

bool PasswordBox::IsOnSelection(LPARAM point) const {
    const BoxSelection selection = Selection();
    const int character = LOWORD(ToWindow(EM_CHARFROMPOS, 0, point));
    return character >= selection.start && character < selection.start + selection.length;
}

bool PasswordBox::IsDraggedFromHere() const {
    // Among asterisks there is little to select; in clear it is what the pointer in the shape of a beam is for.
    if (view_ == PasswordBoxView::Masked) {
        return !showsCue_;
    }
    POINT point{};
    ::GetCursorPos(&point);
    ::ScreenToClient(Handle(), &point);
    return IsOnSelection(MAKELPARAM(point.x, point.y));
}

LRESULT PasswordBox::OnButtonDown(UINT message, WPARAM wParam, LPARAM lParam) {
    selectionBeforePress_ = Selection();
    pressPoint_ = lParam;
    const RECT area = ClientArea(Handle());
    const bool onSelection = message == WM_LBUTTONDOWN && IsOnSelection(lParam);
    const auto verdict =
        gesture_.Press({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}, onSelection, {area.right, area.bottom},
                       {::GetSystemMetrics(SM_CXDRAG), ::GetSystemMetrics(SM_CYDRAG)});
    if (verdict == DragGesture::Verdict::Hold) {
        ::SetFocus(Handle());
        ::SetCapture(Handle());
        return 0;
    }
    return ToWindow(message, wParam, lParam);
}

LRESULT PasswordBox::OnMouseMove(WPARAM wParam, LPARAM lParam) {
    events_->MouseMoveInTextBox();
    if ((wParam & MK_LBUTTON) == 0) {
        gesture_.Cancel();
        return ToWindow(WM_MOUSEMOVE, wParam, lParam);
    }
    switch (gesture_.Move({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)})) {
    case DragGesture::Verdict::StartDrag: StartDrag(); return 0;
    case DragGesture::Verdict::Hold: return 0;
    default: return ToWindow(WM_MOUSEMOVE, wParam, lParam);
    }
}

LRESULT PasswordBox::OnButtonUp(WPARAM wParam, LPARAM lParam) {
    if (gesture_.Release() == DragGesture::Verdict::Click) {
        ::ReleaseCapture();
        ToWindow(WM_LBUTTONDOWN, wParam | MK_LBUTTON, pressPoint_);
    }
    return ToWindow(WM_LBUTTONUP, wParam, lParam);
}

void PasswordBox::StartDrag() {
    // Button already up, the pointer may be anywhere by now: a drop would land there. Nor does a drag begin that no
    // button began, whatever messages say.
    MSG release{};
    const bool isUp = !IsPrimaryButtonHeld() ||
                      ::PeekMessageW(&release, Handle(), WM_LBUTTONUP, WM_LBUTTONUP, PM_NOREMOVE | PM_NOYIELD) != FALSE;
    if (!isUp) {
        // The edit control tracks the mouse until its button goes up, and so does OLE: end the one before the other
        // starts.
        ToWindow(WM_LBUTTONUP, 0, pressPoint_);
    }
    if (::GetCapture() == Handle()) {
        ::ReleaseCapture();
    }
    if (!isUp) {
        Select(selectionBeforePress_);
        events_->DragPassword();
    }
}

} // namespace vextrel
