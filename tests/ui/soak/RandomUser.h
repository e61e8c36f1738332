#pragma once

#include "PasswordSession.h"
#include "core/LayoutFile.h"
#include "driver/App.h"
#include "driver/Remote.h"
#include "driver/Target.h"

#include <array>
#include <deque>
#include <map>
#include <random>

namespace vextrel::driver {

/// A user who does whatever comes to mind in the real window, and beside it the plain model of the rules, which says
/// what the boxes must show after each action. Most actions are messages, as they cost little; of each kind that a hand
/// does, a share is done with the real pointer and the real keys.
class RandomUser {
  public:
    explicit RandomUser(unsigned seed);

    /// One action. Throws a Failure that names it when the window does not come to show what the model says.
    void Act();
    /// Back to the window of the start, with nothing in it.
    void ComeToRest();
    /// How often each kind of action was taken.
    [[nodiscard]] std::string Tally() const;
    [[nodiscard]] const Process& Program() const { return app_.Running(); }

  private:
    using Action = session::Action;

    struct Kind {
        const char* name;
        std::size_t weight;
        void (RandomUser::*act)();
    };
    static const std::array<Kind, 13> kinds;

    /// A program whose last saved layout differs from the built-in one in every key, and whose hover entry is quick.
    struct PreparedSandbox : Sandbox {
        explicit PreparedSandbox(const Layout& saved);
    };

    void Remember(const std::string& what);
    void Note(const std::string& what);

    // What the user does.
    void EditPassword();
    void Press();
    void ClickForReal();
    void DoubleClickForReal();
    void TypeForReal();
    void Hover();
    void OpenMenu();
    void AnswerDialog();
    void ChangeOption();
    void ChangeLayout();
    void CaptureLayout();
    void ChangeWindow();
    void MinimiseAndRestore();

    void PressByMessage(int button);
    void EditByMessage(const Action& action);
    void PasteByMessage(const std::wstring& text);
    void TypeByMessage(wchar_t character);
    void DeleteByMessage();
    /// To the other program, or for an injection there, or given up by Escape; done once more if the pointer was not
    /// where it was put.
    void Drag(bool takesAway);
    /// @return whether it ended over the other program.
    bool DragOnce(bool takesAway, bool escapes);
    void PullToTarget(bool injects);
    /// @return false if the program says that the injection ended over itself.
    [[nodiscard]] bool Arrives(const std::wstring& carried, bool injected);
    void Select(std::size_t caret, std::size_t count);
    void ClickLayerOfNoSize();
    void Clear();

    [[nodiscard]] std::size_t Pick(std::size_t below) { return static_cast<std::size_t>(random_()) % below; }
    [[nodiscard]] int PickCharacterKey() { return StandardButtonOfSlot(Pick(characterKeyCount)); }
    [[nodiscard]] HWND Key(int button) const { return keys_.at(static_cast<std::size_t>(button)); }
    [[nodiscard]] bool IsPushed(int button) const { return (Ask(Key(button), BM_GETSTATE) & BST_PUSHED) != 0; }
    [[nodiscard]] HWND Box() const { return model_.s.masked ? maskedBox_ : plainBox_; }
    [[nodiscard]] std::wstring CaptionOf(int button) const;
    [[nodiscard]] LPARAM OnLayer(int button) const;
    [[nodiscard]] std::wstring BoxText() const;
    [[nodiscard]] HWND Hint() const;
    [[nodiscard]] bool HintFollows(POINT place) const;

    void Command(int id) const { Ask(app_.Main(), WM_COMMAND, static_cast<WPARAM>(id)); }
    void Toggle(int id);
    /// Posts a message and waits until the program has taken it, in whatever loop it then is.
    void Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// As Command; a dialog that opens is answered.
    void CommandThatMayAsk(int id, WPARAM answer);
    void EndDialog(WPARAM answer);
    /// Before real input: the window is in front, nothing covers it, and the layer takes the clicks.
    void MakeReady();
    /// Puts the pointer beside the window.
    void Park();
    [[nodiscard]] bool Agrees() const;
    void AwaitModel(const char* after) const;
    [[nodiscard]] bool CaptionsAgree() const;
    void AwaitCaptions(const char* after) const;
    [[nodiscard]] std::string Difference() const;
    /// Readable, with the codes of what cannot be read.
    [[nodiscard]] static std::string Words(const std::wstring& text);

    Layout english_;
    Layout saved_;
    const Layout* layout_ = &english_;
    std::mt19937 random_;
    session::Model model_;
    std::map<int, bool> toggled_; ///< commands that switch something, and whether it is other than at the start
    std::optional<std::wstring> clipboard_;
    std::wstring lastHovered_;
    int flashed_ = 0;
    std::map<std::string, int> tally_;
    std::deque<std::string> recent_; ///< the last actions, for whoever asks what led to a failure
    bool fence_ = false;

    const Target target_{L"--topmost"}; // first, so that the program is in the foreground
    const PreparedSandbox sandbox_;
    const App app_;
    const RemoteMemory suggestedPlace_;
    // Looked up once: each search costs more than an action.
    const HWND layer_;
    const HWND maskedBox_;
    const HWND plainBox_;
    std::array<HWND, keyButtonCount + 1> keys_{};
    Pointer pointer_;
};

} // namespace vextrel::driver
