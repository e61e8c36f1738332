// Thousands of random actions in the real window: the boxes show what the plain model says after each, and the program
// holds no more at the end than after the first thousand. tests/ui/soak/run does it at length.

#include "PasswordSession.h"
#include "core/Captions.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>
#include <psapi.h>
#include <winternl.h>

#include <iostream>
#include <random>

namespace vextrel::driver {
namespace {

/// What a program holds, counted from outside.
struct Resources {
    std::size_t gdi; ///< GDI objects
    ULONG handles;
    std::size_t windows;   ///< of its main thread
    std::size_t kilobytes; ///< memory of its own
};

/// For Wine, which has no number: a process holds the table of its GDI objects in its own memory.
std::size_t EntriesOfGdiTable(HANDLE process) {
    constexpr std::size_t tableInEnvironmentBlock = 0xF8;
    PROCESS_BASIC_INFORMATION information{};
    NtQueryInformationProcess(process, ProcessBasicInformation, &information, sizeof information, nullptr);
    const auto* const place = reinterpret_cast<const char*>(information.PebBaseAddress) + tableInEnvironmentBlock;
    const void* table = nullptr;
    std::vector<std::array<char, 24>> entries(0x4000);
    Check(ReadProcessMemory(process, place, static_cast<void*>(&table), sizeof table, nullptr) != FALSE &&
              ReadProcessMemory(process, table, entries.data(), entries.size() * 24, nullptr) != FALSE,
          "reading the table of GDI objects");
    // Where an entry is free, its type is zero.
    return static_cast<std::size_t>(std::ranges::count_if(entries, [](const auto& entry) { return entry[14] != 0; }));
}

/// From the list of all processes: asked for one, Wine answers zero.
ULONG HandlesOf(HANDLE process) {
    std::vector<char> list(1 << 20);
    Check(NtQuerySystemInformation(SystemProcessInformation, list.data(), ULONG(list.size()), nullptr) == 0,
          "NtQuerySystemInformation");
    const auto* entry = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(list.data());
    while (HandleToULong(entry->UniqueProcessId) != GetProcessId(process)) {
        Check(entry->NextEntryOffset != 0, "finding the process");
        const auto* const next = reinterpret_cast<const char*>(entry) + entry->NextEntryOffset;
        entry = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(next);
    }
    return entry->HandleCount;
}

Resources ResourcesOf(HANDLE process, HWND main) {
    const DWORD gdi = GetGuiResources(process, GR_GDIOBJECTS);
    PROCESS_MEMORY_COUNTERS memory{};
    Check(GetProcessMemoryInfo(process, &memory, sizeof memory) != FALSE, "GetProcessMemoryInfo");
    return {.gdi = gdi != 0 ? gdi : EntriesOfGdiTable(process),
            .handles = HandlesOf(process),
            .windows = Process::AllBeside(main).size(),
            .kilobytes = memory.PagefileUsage / 1024};
}

/// A user who does whatever comes to mind in the real window, and beside it the plain model of the rules, which says
/// what the boxes must show after each action.
class RandomUser {
  public:
    explicit RandomUser(unsigned seed)
        : random_(seed) {}

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
        Await("what the last action left to paint has been painted", [&] {
            const Resources before = std::exchange(held, count());
            return before.gdi == held.gdi;
        });
        return held;
    }

  private:
    using Action = session::Action;

    void Edit() {
        const Action action = session::ChooseAction(model_.s, [this](std::size_t below) { return Pick(below); });
        // Long enough for edits to meet, short enough for them to meet often. Drags are among the rare actions.
        if (model_.s.box.size() > 40 || action.kind == Action::Kind::Carry)
            return Clear();
        switch (action.kind) {
        case Action::Kind::Press: return Press(action.button);
        case Action::Kind::Select:
            app_.Select(static_cast<int>(action.caret), static_cast<int>(action.caret + action.selected));
            break;
        case Action::Kind::Delete:
            Ask(app_.PasswordBox(), WM_KEYDOWN, VK_DELETE, 1);
            Ask(app_.PasswordBox(), WM_KEYUP, VK_DELETE, 1);
            model_.s.modifiers.shiftIsDown = false; // it follows the real key, which is up
            break;
        case Action::Kind::Paste:
            if (!action.text.empty())
                SetClipboard(action.text);
            if (!action.text.empty() || !model_.s.masked)
                Ask(app_.PasswordBox(), action.text.empty() ? WM_CLEAR : WM_PASTE);
            break;
        default: Command(ids::mnuViewPasswordMask);
        }
        session::Play(model_, action);
    }

    void Press(int button) {
        if (button == keys::messageLeftover) // shows a box
            return;
        const auto captions = Captions();
        const auto shown = std::ranges::find(captions, button, &ButtonCaption::button);
        Ask(app_.Key(button), BM_CLICK);
        model_.Press(button, shown != captions.end() ? shown->caption : L"");
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
            throw Failure("the box shows " + Narrow(app_.Shown()) + ", the model says " + Narrow(s.box) +
                          ", or they differ in the selection or in key " + std::to_string(key.button));
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
        std::cout << "[ measured ] " << action << " actions: " << now.gdi << " GDI objects, " << now.handles
                  << " handles, " << now.windows << " windows, " << now.kilobytes << " KB" << std::endl;
    }
    // Room for what the system loads when it is first needed and then keeps (its pointers, icons and threads), and for
    // its heap. It does not grow with the number of actions, so that a slow leak shows in a long run.
    ASSERT_TRUE(settled);
    EXPECT_LE(now.gdi, settled->gdi + 16);
    EXPECT_LE(now.handles, settled->handles + 16);
    EXPECT_LE(now.windows, settled->windows);
    EXPECT_LE(now.kilobytes, settled->kilobytes + 4096);
}

} // namespace
} // namespace vextrel::driver
