#pragma once

namespace vextrel::kit {

/// A claim of docs/security.md that is marked untested there, by its name in brackets.
struct Claim {
    const char* name;
    const char* tests;  ///< the beginning of the names of the tests that show it; else
    const char* byHand; ///< what somebody would have to do
};

inline constexpr Claim claims[] = {
    {"CaptureExclusion", "Claims.CaptureExclusion", nullptr},
    {"DropDownLists", "Claims.DropDownLists", nullptr},
    {"SignedLibraries", "Claims.SignedLibraries", nullptr},
    {"ExtensionPoints", "Claims.ExtensionPoints", nullptr},
    {"NetworkImages", "Claims.NetworkImages", nullptr},
    {"OwnersEntry", "Claims.OwnersEntry", nullptr},
    {"LibraryFolders", "Claims.LibraryFolders", nullptr},
    {"LockedPage", "Claims.LockedPage", nullptr},
    {"DragElsewhere", "Claims.DragElsewhere", nullptr},
    {"InjectElsewhere", "Claims.InjectElsewhere", nullptr},
    {"FreedMemory", "Traces", nullptr},
    {"ReadOnlySettings", "Claims.ReadOnlySettings", nullptr},
    {"RealKeyboard", nullptr, "copy the plain text with the keyboard"},
    {"HeardSound", nullptr, "type elsewhere while a long beep.wav plays"},
    {"InsideHelpers", nullptr, "use an input method and a screen reader"},
    {"GhostWindow", nullptr, "inject into a window that Windows says does not respond"},
    {"OtherDesktop", nullptr, "let an administrator's question come up in the middle of an injection's drag"},
    {"HigherInjection", nullptr, "inject into a program that was started as administrator"},
    {"HigherDrag", nullptr, "drag onto a program that was started as administrator"},
    {"LockedSession", nullptr, "lock the session with a password held: it is cleared"},
};

} // namespace vextrel::kit
