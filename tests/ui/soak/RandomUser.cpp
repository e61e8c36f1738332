#include "soak/RandomUser.h"

#include "keyboard/Captions.h"

#include <commctrl.h>

#include <cstring>
#include <numeric>
#include <sstream>

namespace vextrel::driver {

namespace {

/// A key that does nothing and is not shown: its pushed state marks how far posted messages have been taken.
constexpr int fenceKey = 56;

/// Long enough for edits to meet, short enough for them to meet often.
constexpr std::size_t longText = 40;

constexpr RECT restingPlace{100, 80, 100 + 800, 80 + 460};

Layout SavedLayout() {
    Layout written;
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        const KeyCaption& opposite = Layout{}.captions.At(characterKeyCount - 1 - slot);
        KeyCaption& key = written.captions.At(slot);
        key.lower = opposite.upper;
        key.upper = slot % 5 == 0 ? opposite.lower + L"\u00E4" : opposite.lower;
    }
    return written;
}

/// What the program makes of it, which is not quite the same.
Layout AsReadBack(const Layout& written) {
    const std::vector<LayoutEntry> entries = LayoutEntries(written);
    Layout read;
    ReadLayoutEntries(
        [&](std::wstring_view section, std::wstring_view key) {
            for (const LayoutEntry& entry : entries) {
                if (entry.section == section && entry.key == key) {
                    return entry.value;
                }
            }
            return std::wstring();
        },
        read);
    return read;
}

void SetClipboard(const std::wstring& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(memory), text.c_str(), bytes);
    GlobalUnlock(memory);
    Await("the clipboard opens", [] { return OpenClipboard(nullptr) != FALSE; });
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

/// Readable, with the codes of what cannot be read.
std::string Words(const std::wstring& text) {
    std::ostringstream out;
    for (const wchar_t c : text) {
        out << (c > L' ' && c < 0x7F ? std::string(1, static_cast<char>(c)) : "<" + std::to_string(c) + ">");
    }
    return out.str();
}

/// Whether a field of one line shows it, and the code page, in which characters are injected, has it.
bool CanBeShown(const std::wstring& text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return (c >= L' ' && c < 0x7F) || c == 0xE4; });
}

} // namespace

// The weights: what takes long comes rarely, for more than sixty actions a second.
const std::array<RandomUser::Kind, 13> RandomUser::kinds{{
    {"edit", 560, &RandomUser::EditPassword},
    {"press", 300, &RandomUser::Press},
    {"real click", 30, &RandomUser::ClickForReal},
    {"double click", 4, &RandomUser::DoubleClickForReal},
    {"real typing", 12, &RandomUser::TypeForReal},
    {"hover", 10, &RandomUser::Hover},
    {"menu", 10, &RandomUser::OpenMenu},
    {"dialog", 8, &RandomUser::AnswerDialog},
    {"option", 20, &RandomUser::ChangeOption},
    {"layout", 15, &RandomUser::ChangeLayout},
    {"capture", 1, &RandomUser::CaptureLayout},
    {"window", 20, &RandomUser::ChangeWindow},
    {"minimise", 1, &RandomUser::MinimiseAndRestore},
}};

RandomUser::PreparedSandbox::PreparedSandbox(const Layout& saved) {
    for (const LayoutEntry& entry : LayoutEntries(saved)) {
        SetSetting(entry.key, entry.value, entry.section);
    }
    SetSetting(L"Hover Timer Interval", L"40");
}

RandomUser::RandomUser(unsigned seed)
    : saved_(AsReadBack(SavedLayout()))
    , random_(seed)
    , sandbox_(SavedLayout())
    , app_(sandbox_)
    , suggestedPlace_(app_.Running(), sizeof(RECT))
    , layer_(app_.Layer())
    , maskedBox_(app_.Control(ids::txtPassword))
    , plainBox_(app_.Control(ids::txtText)) {
    for (int button = 1; button <= keyButtonCount; ++button) {
        keys_.at(static_cast<std::size_t>(button)) = app_.Key(button);
    }
    ComeToRest();
    // Each kind once, so that it is not left to chance when the system loads what it takes for it.
    Toggle(ids::toolBeep);
    for (const Kind& kind : kinds) {
        (this->*kind.act)();
        AwaitModel(kind.name);
    }
    Drag(false);
}

void RandomUser::Act() {
    if (IsIconic(app_.Main()) != FALSE) { // the window manager's answer to an earlier request, come late
        Note("restored once more");
        Post(app_.Main(), WM_SYSCOMMAND, SC_RESTORE);
        MakeReady();
    }
    std::size_t all = 0;
    for (const Kind& kind : kinds) {
        all += kind.weight;
    }
    std::size_t drawn = Pick(all);
    const Kind* chosen = kinds.data();
    while (drawn >= chosen->weight) {
        drawn -= chosen->weight;
        ++chosen;
    }
    Note(chosen->name);
    (this->*chosen->act)();
    AwaitModel(chosen->name);
}

void RandomUser::Remember(const std::string& what) {
    recent_.push_back(what);
    if (recent_.size() > 10) {
        recent_.pop_front();
    }
}

void RandomUser::Note(const std::string& what) {
    ++tally_[what];
    Remember(what);
}

std::string RandomUser::Tally() const {
    std::ostringstream text;
    for (const auto& [name, count] : tally_) {
        text << (text.tellp() > 0 ? ", " : "") << name << ' ' << count;
    }
    return text.str();
}

void RandomUser::ComeToRest() {
    Command(ids::mnuModeStandard);
    Command(ids::mnuKeyboardLayoutEnglish);
    layout_ = &english_;
    for (const auto& [id, changed] : std::map(toggled_)) {
        if (changed) {
            Toggle(id);
        }
    }
    if (!model_.s.masked) {
        Command(ids::mnuViewPasswordMask);
        model_.SwitchMask();
    }
    Clear();
    suggestedPlace_.Write(&restingPlace, sizeof restingPlace);
    Ask(app_.Main(), WM_DPICHANGED, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(suggestedPlace_.Address()));
    if (flashed_ != 0) {
        Await("the flash ends", [this] { return !IsPushed(flashed_); });
        flashed_ = 0;
    }
    MakeReady();
    AwaitModel("coming to rest");
    AwaitCaptions("coming to rest");
}

std::wstring RandomUser::CaptionOf(int button) const {
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        if (StandardButtonOfSlot(slot) == button) {
            const PressModifiers& modifiers = model_.s.modifiers;
            return CharacterKeyCaption(layout_->captions.At(slot), {.shiftIsDown = modifiers.shiftIsDown,
                                                                    .capsLockIsDown = modifiers.capsLockIsDown});
        }
    }
    return button == keys::space ? L" " : L"";
}

LPARAM RandomUser::OnLayer(int button) const {
    POINT place = CentreOf(Key(button));
    ScreenToClient(layer_, &place);
    return MAKELPARAM(place.x, place.y);
}

std::wstring RandomUser::BoxText() const {
    std::array<wchar_t, 1024> text{}; // more than the model ever has
    const LRESULT length = Ask(Box(), WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return {text.data(), static_cast<std::size_t>(length)};
}

HWND RandomUser::Hint() const {
    for (const HWND window : app_.Running().Windows(formClass, L"")) {
        if (GetDlgItem(window, ids::dragNoteHeader) != nullptr) {
            return window;
        }
    }
    return nullptr;
}

bool RandomUser::HintFollows(POINT place) const {
    RECT bounds{};
    constexpr LONG reach = 200;
    return GetWindowRect(Hint(), &bounds) != FALSE && std::abs(bounds.left - place.x) < reach &&
           std::abs(bounds.top - place.y) < reach;
}

void RandomUser::Toggle(int id) {
    Command(id);
    toggled_[id] = !toggled_[id];
}

void RandomUser::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    fence_ = !fence_;
    Check(PostMessageW(window, message, wParam, lParam) != FALSE &&
              PostMessageW(Key(fenceKey), BM_SETSTATE, fence_ ? TRUE : FALSE, 0) != FALSE,
          "posting a message");
    Await("a posted message is taken", [this] { return IsPushed(fenceKey) == fence_; });
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

void RandomUser::MakeReady() {
    const RECT own = BoundsOf(app_.Main());
    const RECT other = BoundsOf(target_.Window());
    RECT common{};
    if (IntersectRect(&common, &own, &other) != FALSE) {
        target_.KeepClearOf(own);
    }
    if (GetForegroundWindow() != app_.Main()) {
        BringToFront(app_.Main());
    }
    Await("the layer takes clicks", [this] { return IsWindowVisible(layer_) && app_.LayerAlpha() > 0; });
    Await("the layer lies above the keys", [this] { return WindowFromPoint(CentreOf(Key(1))) == layer_; });
}

std::string RandomUser::Difference() const {
    const App::Selection shown = App::SelectionOf(Box());
    std::ostringstream text;
    text << "the " << (app_.IsMasked() ? "masked" : "plain") << " box shows \"" << Words(app_.Shown()) << "\", "
         << shown.start << " to " << shown.end << "; the model says " << (model_.s.masked ? "masked" : "plain") << " \""
         << Words(model_.s.box) << "\", " << model_.s.caret << " to " << model_.s.caret + model_.s.selected;
    return text.str();
}

bool RandomUser::Agrees() const {
    const session::Session& s = model_.s;
    const App::Selection selected{static_cast<int>(s.caret), static_cast<int>(s.caret + s.selected)};
    return IsWindowVisible(Box()) && BoxText() == s.box && App::SelectionOf(Box()) == selected;
}

void RandomUser::AwaitModel(const char* after) const {
    if (!WaitFor([this] { return Agrees(); })) {
        throw Failure(
            std::string(after) + ": " + Difference() + ", after" +
            std::accumulate(recent_.begin(), recent_.end(), std::string(),
                            [](const std::string& all, const std::string& one) { return all + " | " + one; }));
    }
}

bool RandomUser::CaptionsAgree() const {
    for (std::size_t slot = 0; slot < characterKeyCount; slot += 7) {
        const int button = StandardButtonOfSlot(slot);
        if (TextOf(Key(button)) != CaptionOf(button)) {
            return false;
        }
    }
    return true;
}

void RandomUser::AwaitCaptions(const char* after) const {
    Await(std::string("the captions after ") + after, [this] { return CaptionsAgree(); });
}

void RandomUser::Clear() {
    Command(ids::toolClear);
    model_.s.box.clear();
    model_.s.password.clear();
    session::PutCaret(model_.s, 0);
}

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
    case Action::Kind::Select:
        Ask(Box(), EM_SETSEL, action.caret, static_cast<LPARAM>(action.caret + action.selected));
        session::Play(model_, action);
        break;
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

void RandomUser::ClickForReal() {
    MakeReady();
    const int button = PickCharacterKey();
    const std::wstring caption = CaptionOf(button);
    pointer_.Click(Key(button));
    model_.Press(button, caption);
    if (!WaitFor([this] { return Agrees(); }, Milliseconds(3000))) {
        Note("real click once more"); // lost between the display and Wine; if it was merely late, now it is one too
                                      // many
        pointer_.Click(Key(button));
    }
}

void RandomUser::DoubleClickForReal() {
    MakeReady();
    const int button = PickCharacterKey();
    pointer_.DoubleClick(CentreOf(Key(button)));
    model_.Press(button, CaptionOf(button));
    model_.Press(button, CaptionOf(button));
    flashed_ = button;
}

void RandomUser::TypeForReal() {
    MakeReady();
    Await("the box has the focus", [this] { return app_.Focus() == Box(); });
    const auto letter = static_cast<wchar_t>(L'a' + Pick(26));
    Keys::Stroke(static_cast<WORD>(L'A' + (letter - L'a')));
    // The captions tell when all keys have been taken, the release of Shift last. Held, it repeats, as on any keyboard:
    // under Wine a program may take it for up within 50 ms of another key. The letter is not typed meanwhile, since
    // Wine lets go of keys that its display does not know of whenever it looks.
    model_.s.modifiers.shiftIsDown = true;
    Await("the captions follow Shift", [this] {
        Keys::Down(VK_SHIFT);
        return CaptionsAgree();
    });
    Keys::Up(VK_SHIFT);
    model_.s.modifiers.shiftIsDown = false;
    AwaitCaptions("Shift");
    model_.Enter(std::wstring(1, letter));
}

void RandomUser::Park() {
    const RECT own = BoundsOf(app_.Main());
    pointer_.MoveTo({own.left > 20 ? own.left - 10 : own.right + 10, own.top + 10});
}

void RandomUser::Hover() {
    Park(); // a key on which it rested from earlier would be entered first
    const bool hidesPointer = Pick(3) == 0;
    CommandThatMayAsk(hidesPointer ? ids::mnuModeHiddenMouseAndHover : ids::mnuModeHover, IDOK);
    MakeReady();
    int button = PickCharacterKey();
    while (CaptionOf(button) == lastHovered_ || CaptionOf(button).empty()) {
        button = PickCharacterKey();
    }
    const POINT place = CentreOf(Key(button));
    model_.Press(button, CaptionOf(button));
    lastHovered_ = CaptionOf(button); // a key that Shift let go shows another one now
    LONG shift = 0;
    static_cast<void>(WaitFor([&] {
        shift = 1 - shift;
        pointer_.MoveTo({place.x + shift, place.y});
        return Agrees();
    }));
    AwaitModel("hover");
    Park();
    Command(ids::mnuModeStandard);
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

void RandomUser::CaptureLayout() {
    MakeReady();
    Command(ids::mnuKeyboardLayoutLastSaved);
    Post(app_.Main(), WM_COMMAND, ids::mnuKeyboardLayoutDefault);
    layout_ = &english_; // what the test bed's keyboard has
    AwaitCaptions("a capture");
    Await("the capture ends", [this] { return sandbox_.Setting(L"Keyboard Layout") == L"Default"; });
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

void RandomUser::MinimiseAndRestore() {
    Post(app_.Main(), WM_SYSCOMMAND, SC_MINIMIZE);
    Await("the layer hides", [this] { return !IsWindowVisible(layer_); });
    Post(app_.Main(), WM_SYSCOMMAND, SC_RESTORE);
    MakeReady();
}

void RandomUser::Drag(bool takesAway) {
    if (toggled_[ids::toolKeepPassword] == takesAway) {
        Toggle(ids::toolKeepPassword);
    }
    const bool injects = toggled_[ids::toolInject];
    const bool escapes = Pick(5) == 0;
    MakeReady();
    // Escape goes up over the box or not; either way Shift then follows the physical keys.
    Ask(Box(), WM_KEYUP, VK_ESCAPE, 1);
    model_.s.modifiers.shiftIsDown = false;
    for (const int id : {target::dropField, target::editField, target::charRecord, target::keyRecord}) {
        Ask(target_.Field(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
    }
    const HWND field = target_.Field(injects ? target::editField : target::dropField);
    const POINT to = CentreOf(field);
    const int entries = target_.Entries();
    const int drops = target_.Drops();
    pointer_.MoveTo(CentreOf(Box()));
    Await("the box lies under the pointer", [this] { return WindowFromPoint(Pointer::Place()) == Box(); });
    pointer_.Press();
    LONG shift = 0;
    Await("a drag begins and reaches the target", [&] {
        shift = 1 - shift;
        pointer_.MoveTo({to.x + shift, to.y}, 2, Milliseconds(20));
        return HintFollows(to) && (injects || target_.Entries() > entries);
    });
    if (escapes) {
        Keys::Stroke(VK_ESCAPE);
    } else {
        pointer_.Release();
    }
    const std::wstring carried = model_.Carry(takesAway && !escapes);
    Await(std::string("the hint goes after ") + (escapes   ? "Escape"
                                                 : injects ? "an injection"
                                                           : "a drop"),
          [this, escapes, polls = 0]() mutable {
              if (Hint() == nullptr) {
                  return true;
              }
              if (++polls % 100 == 0) { // Wine has lost it, as the target was just being asked
                  Note("release once more");
                  escapes ? Keys::Stroke(VK_ESCAPE) : SendButton(MOUSEEVENTF_LEFTUP);
              }
              return false;
          });
    if (escapes) {
        pointer_.Release();
    } else {
        const auto came = [&] { return injects ? target_.TypedCharacters() : target_.Text(); };
        Await("the drop arrives", [&] { return injects || target_.Drops() == drops + 1; });
        // Where the field or the code page cannot have a character, an injection's length alone is compared.
        const bool shown = CanBeShown(carried);
        const auto arrived = [&] { return shown ? came() == carried : !injects || came().size() == carried.size(); };
        // The rounds of an injection's wait take as long as the machine makes them.
        if (!WaitFor(arrived, Milliseconds(60000))) {
            throw Failure("not what was carried: " + Words(came()) + " instead of " + Words(carried));
        }
    }
    Await("commands are taken again", [this] {
        Command(ids::toolScrambleAll); // has the buttons brought up to date, and does nothing else
        return (app_.ToolState(ids::toolClear) & TBSTATE_ENABLED) != 0;
    });
}

} // namespace vextrel::driver
