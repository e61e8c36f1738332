#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace vextrel {

/// Numbers of the errors that the program raises itself. They follow the classic numbering of the field, so that a
/// report names something that can be looked up.
enum class ErrorNumber : std::int32_t {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    SendKeys = 1000, ///< a send-keys command that cannot be read or played
};

[[nodiscard]] constexpr const wchar_t* CustomaryDescription(ErrorNumber number) noexcept {
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

/// An unexpected condition that an event handler reports to the user and survives. The description never holds the
/// password or a part of it.
class Error : public std::exception {
  public:
    /// An error of ours, with its customary description.
    explicit Error(ErrorNumber number)
        : Error(number, CustomaryDescription(number)) {}
    Error(ErrorNumber number, std::wstring description, std::wstring source = {})
        : Error(static_cast<std::int32_t>(number), std::move(description), std::move(source)) {}
    /// Of the operating system, with the system's own code.
    Error(std::int32_t number, std::wstring description, std::wstring source = {})
        : number_(number)
        , description_(std::move(description))
        , source_(std::move(source)) {}

    [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
    [[nodiscard]] const std::wstring& Description() const noexcept { return description_; }
    /// Who raised it, where that is part of the contract (send-keys); empty otherwise.
    [[nodiscard]] const std::wstring& Source() const noexcept { return source_; }
    [[nodiscard]] const char* what() const noexcept override { return "vextrel::Error"; }

  private:
    std::int32_t number_;
    std::wstring description_;
    std::wstring source_;
};

} // namespace vextrel
