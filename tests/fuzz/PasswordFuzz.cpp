// Sessions with the password box against the plain model, up to the 16-bit limits of its length.

#include "Fuzz.h"

#include "PasswordSession.h"

using namespace vextrel;
using fuzz::Require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input{{data, size}};
    session::Comparison both;
    while (!input.left.empty()) {
        session::Action action =
            session::ChooseAction(both.model.s, [&](std::size_t below) { return input.Below(below); });
        if (action.kind == session::Action::Kind::Paste && input.Byte() == 255) {
            const std::size_t length = input.Below(SecretText::capacity + 2);
            action.text.assign(length, static_cast<wchar_t>(input.Byte()));
        }
        Require(both.Agrees(action), "box, password, caret and modifiers are those of the model");
    }
    Require(session::IsZeroBehindItsEnd(both.ruled.password), "no character is left behind the password's end");
    return 0;
}
