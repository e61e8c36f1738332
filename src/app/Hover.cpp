#include "app/Hover.h"

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

void Hover::Ticked() {
    if (entry_.CurrentButton()) {
        entry_.Entered(CaptionOfCurrent());
    }
}

std::wstring Hover::CaptionOfCurrent() const {
    const std::optional<int> current = entry_.CurrentButton();
    return current ? form_.Key(*current).Caption() : std::wstring();
}

} // namespace vextrel
