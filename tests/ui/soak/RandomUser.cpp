#include "soak/RandomUser.h"

#include "core/Captions.h"

#include <numeric>
#include <sstream>

namespace vextrel::driver {

namespace {

constexpr RECT restingPlace{100, 80, 100 + 800, 80 + 460};

Layout SavedLayout() {
    const Layout builtIn;
    Layout written;
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        const KeyCaption& opposite = builtIn.captions.At(characterKeyCount - 1 - slot);
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
            return CharacterKeyCaption(layout_->captions.At(slot), model_.s.modifiers);
        }
    }
    return button == keys::space ? L" " : L"";
}

std::wstring RandomUser::BoxText() const {
    std::array<wchar_t, 1024> text{}; // more than the model ever has
    const LRESULT length = Ask(Box(), WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return {text.data(), static_cast<std::size_t>(length)};
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

std::string RandomUser::Words(const std::wstring& text) {
    std::ostringstream out;
    for (const wchar_t c : text) {
        out << (c > L' ' && c < 0x7F ? std::string(1, static_cast<char>(c)) : "<" + std::to_string(c) + ">");
    }
    return out.str();
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

} // namespace vextrel::driver
