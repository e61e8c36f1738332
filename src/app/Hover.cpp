#include "app/Hover.h"

#include "win32/Gate.h"
#include "win32/ProgramState.h"
#include "win32/SystemLibrary.h"

#include <mmsystem.h>

namespace vextrel {

void Hover::Beep(const std::wstring& folder) {
    const std::wstring file = folder + L"\\beep.wav";
    if (!FileExists(file)) {
        ::MessageBeep(MB_OK);
        return;
    }
    // Not a static import: winmm.dll is none of those that the system always takes from its own folder.
    static const SystemLibrary multimedia(L"winmm.dll");
    if (const auto play = multimedia.Find<decltype(&::sndPlaySoundW)>("sndPlaySoundW")) {
        play(file.c_str(), SND_SYNC);
    }
}

bool Hover::SeePointer() noexcept {
    // First where the last message found it, which may be the click that ended a dialog or a menu.
    const bool stood = pointer_.Seen(::GetMessagePos(), static_cast<DWORD>(::GetMessageTime()),
                                     Gate::SourceOfInput() == InputSource::System);
    if (POINT now{}; ::GetCursorPos(&now) != FALSE) {
        pointer_.Seen(static_cast<DWORD>(MAKELONG(now.x, now.y)), static_cast<DWORD>(::GetTickCount64()), false);
    }
    return stood;
}

std::wstring Hover::CaptionOfCurrent() const {
    const std::optional<int> current = entry_.CurrentButton();
    return current ? form_.Key(*current).Caption() : std::wstring();
}

} // namespace vextrel
