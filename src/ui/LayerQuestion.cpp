#include "ui/LayerQuestion.h"

#include "core/OptionValues.h"
#include "ui/InputBox.h"

namespace vextrel {

std::optional<std::int32_t> AskForLayerOpacity(Operations& operations, HWND owner) {
    InputBox question(L"Transparency Value", L"Give a new protective layer transparency value (0-255).", L"100");
    const std::optional<std::wstring> answer = question.Ask(operations, owner);
    return answer ? ParseLayerAnswer(*answer) : std::nullopt;
}

} // namespace vextrel
