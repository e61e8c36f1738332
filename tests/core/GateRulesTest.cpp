#include "core/GateRules.h"

#include <gtest/gtest.h>

#include <set>

namespace vextrel {
namespace {

// Under the names that the system gives them.
enum Message : std::uint32_t {
    Destroy = 0x02,
    SetText = 0x0C,
    GetText = 0x0D,
    GetTextLength = 0x0E,
    Paint = 0x0F,
    Close = 0x10,
    EndSession = 0x16,
    SettingChange = 0x1A,
    NextDialogControl = 0x28,
    SetFont = 0x30,
    GetObject = 0x3D,
    CopyData = 0x4A,
    Notify = 0x4E,
    ContextMenu = 0x7B,
    SetIcon = 0x80,
    NcCreate = 0x81,
    NcDestroy = 0x82,
    GetDialogCode = 0x87,
    NcMouseMove = 0xA0,
    NcButtonDown = 0xA1,
    EditGetSelection = 0xB0,
    EditSetWordBreak = 0xD0,
    ButtonGetState = 0xF2,
    ButtonClick = 0xF5,
    KeyDown = 0x100,
    KeyUp = 0x101,
    Char = 0x102,
    SysKeyDown = 0x104,
    SysChar = 0x106,
    Command = 0x111,
    SysCommand = 0x112,
    Timer = 0x113,
    HScroll = 0x114,
    SysTimer = 0x118,
    MenuSelect = 0x11F,
    MouseMove = 0x200,
    ButtonDown = 0x201,
    Wheel = 0x20A,
    EnterMenuLoop = 0x211,
    MouseLeave = 0x2A3,
    SessionChange = 0x2B1,
    TabletQuery = 0x2CC,
    DpiChanged = 0x2E0,
    Cut = 0x300,
    Copy = 0x301,
    Undo = 0x304,
    Print = 0x317,
    User = 0x400,
    LastOfControls = 0xBFFF,
    Registered = 0xC001,
};

TEST(GateRules, WhoeverSendsGetsNamesAndNoSecretAndGivesNoOrder) {
    using enum GatedWindow;
    const struct {
        Message message;
        bool form, control, box;
    } rows[] = {
        {GetObject, true, true, true},      {GetDialogCode, true, true, true},   {GetText, true, true, false},
        {GetTextLength, true, true, false}, {SettingChange, true, true, true},   {Close, true, false, false},
        {SysCommand, true, false, false},   {SetIcon, true, false, false},       {EndSession, true, false, false},
        {TabletQuery, true, true, true},    {SessionChange, true, false, false},
    };
    std::set<std::uint32_t> named;
    for (const auto& row : rows) {
        named.insert(row.message);
        EXPECT_EQ(AnswersSent(Form, row.message, 0), row.form) << std::hex << row.message;
        EXPECT_EQ(AnswersSent(Control, row.message, 0), row.control) << std::hex << row.message;
        EXPECT_EQ(AnswersSent(SecretBox, row.message, 0), row.box) << std::hex << row.message;
    }
    for (const Message message : {Destroy,
                                  SetText,
                                  NextDialogControl,
                                  SetFont,
                                  CopyData,
                                  Notify,
                                  ContextMenu,
                                  NcCreate,
                                  NcDestroy,
                                  NcButtonDown,
                                  EditGetSelection,
                                  Command,
                                  Timer,
                                  EditSetWordBreak,
                                  ButtonGetState,
                                  ButtonClick,
                                  KeyDown,
                                  Char,
                                  HScroll,
                                  MenuSelect,
                                  ButtonDown,
                                  EnterMenuLoop,
                                  DpiChanged,
                                  Cut,
                                  Copy,
                                  Undo,
                                  Print,
                                  MouseMove}) {
        for (const GatedWindow window : {Form, Control, SecretBox}) {
            EXPECT_FALSE(AnswersSent(window, message, 0)) << std::hex << message;
        }
    }
    for (std::uint32_t message = User; message <= 0xFFFF; ++message) {
        ASSERT_FALSE(AnswersSent(Form, message, 0) || AnswersSent(Control, message, 0) ||
                     AnswersSent(SecretBox, message, 0))
            << std::hex << message;
    }
    for (std::uint32_t message = 0; message <= 0xFFFF; ++message) {
        ASSERT_TRUE(AnswersSent(Form, message, 0) || !IsTakenLater(message)) << std::hex << message;
    }
}

TEST(GateRules, OnlyWhatTheSystemPostsIsTakenFromTheQueue) {
    for (const Message message : {Close, SysCommand, Timer, SettingChange, MouseLeave, KeyDown, Char, MouseMove}) {
        EXPECT_TRUE(TakesPosted(message, 0, 0)) << std::hex << message;
    }
    EXPECT_TRUE(TakesPosted(Timer, 1, 0));
    EXPECT_FALSE(TakesPosted(Timer, 1, 1)) << "a procedure";
    EXPECT_FALSE(TakesPosted(SysTimer, 1, 1)) << "a procedure";
    EXPECT_TRUE(TakesPosted(Paint, 0, 0) && AnswersSent(GatedWindow::Control, Paint, 0));
    EXPECT_FALSE(TakesPosted(Paint, 1, 0) || AnswersSent(GatedWindow::Control, Paint, 1)) << "onto what?";
    for (const Message message : {Destroy, EndSession, Notify, ContextMenu, EditGetSelection, ButtonClick, Command,
                                  HScroll, MenuSelect, EnterMenuLoop, DpiChanged, Cut, Copy, Undo, Print, GetText}) {
        EXPECT_FALSE(TakesPosted(message, 0, 0)) << std::hex << message;
    }
    for (std::uint32_t message = User; message <= 0xFFFF; ++message) {
        ASSERT_FALSE(TakesPosted(message, 0, 0)) << std::hex << message;
    }
}

TEST(GateRules, InputCountsWhenSomebodyMadeIt) {
    using enum InputSource;
    for (const Message message :
         {KeyDown, KeyUp, SysKeyDown, NcButtonDown, ButtonDown, Wheel, MouseMove, NcMouseMove}) {
        const bool moves = message == MouseMove || message == NcMouseMove;
        EXPECT_TRUE(IsInput(message)) << std::hex << message;
        for (const InputSource source : {Hardware, Injected, Touch})
            EXPECT_TRUE(CountsAsInput(message, source)) << std::hex << message;
        EXPECT_FALSE(CountsAsInput(message, Nobody)) << std::hex << message;
        EXPECT_EQ(CountsAsInput(message, System), moves) << std::hex << message;
        EXPECT_EQ(IsKeyDown(message), message == KeyDown || message == SysKeyDown) << std::hex << message;
        EXPECT_FALSE(IsCharacter(message)) << std::hex << message;
    }
    for (const Message message : {Char, SysChar}) {
        EXPECT_TRUE(IsCharacter(message) && !IsInput(message)) << std::hex << message;
    }
    // Of pens and fingers; of nobody in particular.
    for (const std::uintptr_t info : {0xFF515700U, 0xFF515780U, 0xFF5157FFU})
        EXPECT_TRUE(IsOfTouch(info)) << info;
    for (const std::uintptr_t info : {0U, 1U, 0x51570080U, 0xFF515880U})
        EXPECT_FALSE(IsOfTouch(info)) << info;
    EXPECT_FALSE(IsInput(Timer) || IsInput(Registered) || IsInput(LastOfControls));
}

} // namespace
} // namespace vextrel
