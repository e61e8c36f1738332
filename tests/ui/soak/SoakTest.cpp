// Thousands of random actions in the real window: the boxes show what the plain model says after each, and the program
// holds no more at the end than after the first thousand. tests/ui/soak/run does it at length.

#include "PasswordSession.h"
#include "core/Captions.h"
#include "driver/Stage.h"
#include "soak/Resources.h"

#include <gtest/gtest.h>

#include <iostream>
#include <random>

namespace vextrel::driver {
namespace {

/// A user who does whatever comes to mind in the real window, and beside it the plain model of the rules, which says
/// what the boxes must show after each action.
class RandomUser {
  public:
    explicit RandomUser(unsigned seed)
        : random_(seed) {
        // Each once, so that it is not left to chance when the system loads what it takes.
        for (const auto act : rareActions)
            (this->*act)();
    }

    /// One action. Throws a Failure when the window does not come to show what the model says.
    void Act() {
        if (const std::size_t drawn = Pick(200); drawn < std::size(rareActions))
            (this->*rareActions[drawn])();
        else
            Edit();
        AwaitModel();
    }

    /// Back to the window of the start, with nothing in it; what the program then holds.
    Resources AtRest() {
        Clear();
        app_.Mask(true);
        if (!model_.s.masked)
            model_.SwitchMask();
        SetPlaceAndScale({100, 80, 900, 540}, 96);
        AwaitModel();
        const auto count = [this] { return ResourcesOf(app_.Running().Handle(), app_.Main()); };
        Resources held = count();
        Await("what the program holds stays the same", // what the last action left to paint has been painted
              [&] { return std::exchange(held, count()).gdi == held.gdi; });
        return held;
    }

  private:
    using Action = session::Action;

    void Edit() {
        if (model_.s.box.size() > 40) // long enough for edits to meet, short enough for them to meet often
            return Clear();
        const Action action = session::ChooseAction(model_.s, [this](std::size_t below) { return Pick(below); });
        switch (action.kind) {
        case Action::Kind::Press: return Press(action.button);
        case Action::Kind::Carry: return Type(static_cast<wchar_t>(L' ' + Pick(95))); // drags are among the rare ones
        case Action::Kind::Select:
            app_.Select(static_cast<int>(action.caret), static_cast<int>(action.caret + action.selected));
            break;
        case Action::Kind::Delete: Strike(VK_DELETE); break;
        case Action::Kind::Paste:
            if (!action.text.empty())
                SetClipboard(action.text);
            if (!action.text.empty() || !model_.s.masked)
                Ask(app_.PasswordBox(), action.text.empty() ? WM_CLEAR : WM_PASTE);
            break;
        case Action::Kind::SwitchMask: Command(ids::mnuViewPasswordMask); break;
        }
        session::Play(model_, action);
    }

    void Type(wchar_t character) {
        Strike(VK_PACKET, character);
        model_.Enter(std::wstring(1, character));
    }

    void Press(int button) {
        if (button == keys::messageLeftover) // shows a box
            return;
        const auto captions = Captions();
        const auto shown = std::ranges::find(captions, button, &ButtonCaption::button);
        if (shown == captions.end()) {
            Ask(app_.Key(button), BM_CLICK); // as an assistive program does
        } else {
            POINT place = CentreOf(app_.Key(button));
            ScreenToClient(app_.Layer(), &place);
            for (const UINT message : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONUP}})
                Ask(app_.Layer(), message, 0, MAKELPARAM(place.x, place.y));
        }
        model_.Press(button, shown != captions.end() ? shown->caption : L"");
    }

    /// A stroke on the physical keyboard, with the character that it types. Shift follows these keys, of which none is
    /// down.
    void Strike(WPARAM key, wchar_t character = 0) {
        Ask(app_.PasswordBox(), WM_KEYDOWN, key, 1);
        if (character != 0)
            Ask(app_.PasswordBox(), WM_CHAR, character, 1);
        Ask(app_.PasswordBox(), WM_KEYUP, key, 1);
        model_.s.modifiers.shiftIsDown = false;
    }

    void Clear() {
        Command(ids::toolClear);
        model_.s.box = model_.s.password = {};
        session::PutCaret(model_.s, 0);
    }

    void OpenMenuAndDialog() {
        PostMessageW(app_.Main(), WM_SYSCOMMAND, SC_KEYMENU, L"fmvok"[Pick(5)]);
        app_.AwaitMenu();
        Ask(app_.Main(), WM_CANCELMODE);
        Await("the menu goes", [this] { return !app_.OpenMenu() && (app_.Gui().flags & GUI_INMENUMODE) == 0; });
        app_.Command(ids::mnuHelpAbout);
        app_.Dismiss(app_.AwaitForm(L"About Vextrel"), IDCANCEL);
    }

    void ChangeOptions() {
        for (const int id : {ids::toolKeepPassword, ids::mnuKeyboardLayoutLastSaved, ids::mnuKeyboardLayoutEnglish})
            Command(id);
    }

    void ChangePlace() {
        const auto number = [this](int from, int to) { return from + static_cast<int>(Pick(std::size_t(to - from))); };
        SetPlaceAndScale({60, 60, 60 + number(500, 900), 60 + number(400, 600)}, number(96, 160));
    }

    void SetPlaceAndScale(const RECT& place, int dpi) {
        place_.Write(&place, sizeof place);
        Ask(app_.Main(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
            reinterpret_cast<LPARAM>(place_.Address()));
    }

    void Drag() {
        // What a field of one line shows.
        if (model_.s.password.empty() ||
            !std::ranges::all_of(model_.s.password, [](wchar_t c) { return c >= L' ' && c < 0x7F; }))
            return;
        stage_.target.KeepClearOf(BoundsOf(app_.Main()));
        const std::wstring carried = model_.Carry(!app_.Checked(ids::toolKeepPassword));
        if (const std::wstring arrived = stage_.Dragged(); arrived != carried)
            throw Failure("dragged out: " + Narrow(arrived) + " instead of " + Narrow(carried));
        app_.AwaitEndOfDrag();
    }

    std::size_t Pick(std::size_t below) { return static_cast<std::size_t>(random_()) % below; }
    void Command(int id) const { Ask(app_.Main(), WM_COMMAND, static_cast<WPARAM>(id)); }
    [[nodiscard]] std::vector<ButtonCaption> Captions() const {
        return RefreshedCaptions({}, defaultActionKeyCaptions, model_.s.modifiers, {});
    }

    /// The text and the selection, and as a sample one caption.
    void AwaitModel() {
        const auto& s = model_.s;
        const App::Selection selected{static_cast<int>(s.caret), static_cast<int>(s.caret + s.selected)};
        const auto captions = Captions();
        const ButtonCaption& key = captions[Pick(captions.size())];
        if (!WaitFor([&] {
                return app_.IsMasked() == s.masked && app_.Shown() == s.box && app_.Selected() == selected &&
                       TextOf(app_.Key(key.button)) == key.caption;
            }))
            throw Failure("the box shows " + Narrow(app_.Shown()) + ", the model says " + Narrow(s.box) + " with " +
                          std::to_string(s.selected) + " selected from " + std::to_string(s.caret) + " on; key " +
                          std::to_string(key.button) + " is " + Narrow(key.caption));
    }

    static constexpr void (RandomUser::*rareActions[])() = {&RandomUser::OpenMenuAndDialog, &RandomUser::ChangeOptions,
                                                            &RandomUser::ChangePlace, &RandomUser::Drag};
    std::mt19937 random_;
    session::Model model_;
    Stage stage_;
    const App& app_ = *stage_.app;
    const RemoteMemory place_{app_.Running(), sizeof(RECT)};
};

unsigned NumberFromEnvironment(const char* name, unsigned otherwise) {
    const char* const text = std::getenv(name);
    return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

TEST(Soak, RandomActionsAgreeWithTheModelAndLeaveNothingBehind) {
    const unsigned actions = NumberFromEnvironment("VEXTREL_SOAK_ACTIONS", 2000);
    const unsigned seed = NumberFromEnvironment("VEXTREL_SOAK_SEED", 20240229);
    RandomUser user(seed);
    std::optional<Resources> settled;
    Resources now{};
    for (unsigned action = 1; action <= actions; ++action) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", action " << action);
        ASSERT_NO_THROW(user.Act());
        if (action % 1000 != 0)
            continue;
        now = user.AtRest();
        settled = settled.value_or(now);
        std::cout << "[ measured ] " << action << " actions: " << now.gdi << " GDI objects, " << now.windows
                  << " windows, " << now.handles << " handles, " << now.kilobytes << " KB" << std::endl;
    }
    // Room for what the system loads when it is first needed and then keeps (its pointers and icons), and for its heap.
    // It does not grow with the number of actions, so that a slow leak shows in a long run.
    ASSERT_TRUE(settled);
    EXPECT_LE(now.gdi, settled->gdi + 16);
    EXPECT_LE(now.windows, settled->windows);
    EXPECT_LE(now.handles, settled->handles + 4);
    EXPECT_LE(now.kilobytes, settled->kilobytes + 4096);
}

} // namespace
} // namespace vextrel::driver
