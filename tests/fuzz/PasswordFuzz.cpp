// Sessions with the password box against the plain model, up to the 16-bit limits of its length.

#include "Require.h"

#include "../core/RuledSession.h"

using namespace vextrel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::uint8_t* const end = data + size;
    const auto byte = [&]() -> std::size_t { return data != end ? *data++ : 0; };
    const auto pick = [&](std::size_t below) {
        std::size_t number = byte();
        for (int more = below <= 256 ? 0 : 3; more > 0; --more) {
            number = number << 8U | byte();
        }
        return number % below;
    };
    session::Model model;
    session::Ruled ruled;
    while (data != end) {
        session::Action action = session::ChooseAction(model.s, pick);
        if (action.kind == session::Action::Kind::Paste && byte() == 255) {
            const std::size_t length = pick(session::full + 2);
            action.text.assign(length, static_cast<wchar_t>(byte()));
        }
        session::Model next = model;
        const std::wstring carried = session::Play(next, action);
        try {
            Require(session::Play(ruled, action) == carried, "what is carried away is that of the model");
            model = std::move(next);
        } catch (const Error& error) { // what 16 bits cannot hold is refused, and then nothing changes
            Require(error.Number() == 6, "a refusal is an overflow");
        }
        ruled.s.password = ruled.password.View();
        Require(ruled.s == model.s, "box, password, caret and modifiers are those of the model");
    }
    Require(session::IsZeroBehindItsEnd(ruled.password), "no character is left behind the password's end");
    return 0;
}
