#include "core/Error.h"

namespace vextrel {

namespace {

const wchar_t* CustomaryDescription(ErrorNumber number) {
    switch (number) {
    case ErrorNumber::InvalidCall: return L"Invalid procedure call or argument";
    case ErrorNumber::Overflow: return L"Overflow";
    case ErrorNumber::OutOfMemory: return L"Out of memory";
    case ErrorNumber::SubscriptOutOfRange: return L"Subscript out of range";
    case ErrorNumber::TypeMismatch: return L"Type mismatch";
    case ErrorNumber::SendKeys: return L"Invalid sendkeys command";
    }
    return L"";
}

} // namespace

Error::Error(ErrorNumber number)
    : Error(number, CustomaryDescription(number)) {}

} // namespace vextrel
