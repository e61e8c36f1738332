#pragma once

namespace vextrel::ids {

// Identifiers of every control and command. Assistive programs, scripts and tests find them by these numbers: they
// never change, and a retired one is not used again.

inline constexpr int firstKey = 1001; ///< Command1; CommandN is firstKey + N - 1
inline constexpr int lastKey = 1065;  ///< Command65

inline constexpr int txtPassword = 1101;
inline constexpr int txtText = 1102;
inline constexpr int txtSetup = 1103; ///< on the main window and on the protective layer

inline constexpr int sldHoverDelay = 1111;
inline constexpr int lblHoverDelay = 1112;
inline constexpr int sldTransparency = 1113;
inline constexpr int lblTransparency = 1114;
inline constexpr int tbToolbar = 1120;
inline constexpr int StatusBar1 = 1121;

inline constexpr int txtError = 1201;
inline constexpr int lblTitle = 1202;
inline constexpr int cmdClose = 1203;

inline constexpr int dragNoteHeader = 1211;
inline constexpr int dragNoteText = 1212;

inline constexpr int inputBoxText = 1221;

inline constexpr int aboutHomepage = 1231;
inline constexpr int aboutDonate = 1232;
inline constexpr int aboutProtections = 1233;
inline constexpr int aboutManual = 1234;

inline constexpr int mnuFileKeepOnTop = 2001;
inline constexpr int mnuFileExit = 2002;
inline constexpr int mnuModeStandard = 2011;
inline constexpr int mnuModeHover = 2012;
inline constexpr int mnuModeHiddenMouseAndHover = 2013;
inline constexpr int mnuViewToolbar = 2021;
inline constexpr int mnuViewProtectiveLayer = 2022;
inline constexpr int mnuViewPasswordMask = 2023;
inline constexpr int mnuOptionsBeepOnHover = 2031;
inline constexpr int mnuOptionsKeepPasswordAfterDragDrop = 2032;
inline constexpr int mnuOptionsDragDrop = 2033;
inline constexpr int mnuOptionsInjectMode = 2034;
inline constexpr int mnuOptionsSaveSettingsInINI = 2035;
inline constexpr int mnuKeyboardLayoutDefault = 2041;
inline constexpr int mnuKeyboardLayoutEnglish = 2042;
inline constexpr int mnuKeyboardLayoutLastSaved = 2043;
inline constexpr int mnuKeyboardLayoutImport = 2044;
inline constexpr int mnuKeyboardCreateNewLayoutFile = 2045;
inline constexpr int mnuHelpVisitHomepage = 2051;
inline constexpr int mnuHelpDonate = 2052;
inline constexpr int mnuHelpAbout = 2053;

// The toolbar's buttons in their order.
inline constexpr int toolStandard = 2101;
inline constexpr int toolHover = 2102;
inline constexpr int toolHideMouse = 2103;
inline constexpr int toolInject = 2104;
inline constexpr int toolScrambleOnScreen = 2105;
inline constexpr int toolScrambleAll = 2106;
inline constexpr int toolDvorak = 2107;
inline constexpr int toolUnscramble = 2108;
inline constexpr int toolToggleMask = 2109;
inline constexpr int toolBeep = 2110;
inline constexpr int toolKeepPassword = 2111;
inline constexpr int toolObsfucate = 2112;
inline constexpr int toolKeepOnTop = 2113;
inline constexpr int toolRefresh = 2114;
inline constexpr int toolClear = 2115;

// The delays in the Hover button's menu, shortest first.
inline constexpr int hoverDelayHalfSecond = 2121;
inline constexpr int hoverDelayOneSecond = 2122;
inline constexpr int hoverDelayOneAndAHalfSeconds = 2123;
inline constexpr int hoverDelayTwoSeconds = 2124;

} // namespace vextrel::ids
