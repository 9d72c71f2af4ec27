#include "base/Value.h"

#include "base/ComponentError.h"
#include "base/DateText.h"
#include "base/NumberText.h"
#include "base/Text.h"

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace base {

namespace {

constexpr std::size_t quotedCharacters = 40; // of a refused text in an error description

[[noreturn]] void RaiseMismatch(std::string_view text, const char* expected) {
    const std::string_view shown = FirstCharacters(text, quotedCharacters);
    throw ComponentError(errors::TypeMismatch, "Value",
                         "\"" + std::string(shown) + (shown.size() < text.size() ? "...\"" : "\"") +
                             " is not " + expected);
}

[[noreturn]] void RaiseObject(const char* expected) {
    throw ComponentError(errors::TypeMismatch, "Value", std::string("an object is not ") + expected);
}

double NumberOfText(std::string_view text, const char* expected) {
    const std::optional<NumberScan> number = ReadNumber(text);
    if (!number) RaiseMismatch(text, expected);
    if (number->isTooLarge) {
        throw ComponentError(errors::Overflow, "Value",
                             "\"" + std::string(FirstCharacters(text, quotedCharacters)) +
                                 "\" is too large for a number");
    }
    return number->value;
}

double RoundHalfToEven(double number) {
    const double floor = std::floor(number);
    const double above = number - floor;
    if (above < 0.5) return floor;
    if (above > 0.5) return floor + 1;
    return std::fmod(floor, 2) == 0 ? floor : floor + 1;
}

std::int32_t RoundToInteger(double number) {
    const double rounded = RoundHalfToEven(number);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        throw ComponentError(errors::Overflow, "Value", "the number does not fit into a 32-bit integer");
    }
    return static_cast<std::int32_t>(rounded);
}

std::optional<bool> ReadBooleanWord(std::string_view text) {
    if (EqualIgnoringCase(text, "True") || text == "#TRUE#") return true;
    if (EqualIgnoringCase(text, "False") || text == "#FALSE#") return false;
    return std::nullopt;
}

Date CheckedDate(double days) {
    ToCalendar(Date{days});
    return Date{days};
}

std::string FiniteToText(double number) {
    if (!std::isfinite(number))
        throw ComponentError(errors::Overflow, "Value", "an infinite number has no text");
    return NumberToText(number);
}

/// One visitor from handlers for each kind.
template <class... Handlers> struct Handle : Handlers... { using Handlers::operator()...; };
template <class... Handlers> Handle(Handlers...) -> Handle<Handlers...>;

} // namespace

const std::string& Value::LongText::Get() const noexcept {
    static const std::string nothing; // of a value whose content was moved away
    return text_ ? *text_ : nothing;
}

bool Value::ToBoolean() const {
    return std::visit(Handle{[](std::monostate) { return false; }, [](bool value) { return value; },
                             [](std::int32_t value) { return value != 0; },
                             [](double value) { return value != 0; },
                             [](const std::string& text) {
                                 const std::optional<bool> word = ReadBooleanWord(TrimWhiteSpace(text));
                                 return word ? *word : NumberOfText(text, "a boolean") != 0;
                             },
                             [](Date date) { return date.days != 0; },
                             [](const std::shared_ptr<Object>&) -> bool { RaiseObject("a boolean"); }},
                      content_);
}

std::int32_t Value::ToInteger() const {
    return std::visit(
        Handle{[](std::monostate) { return 0; }, [](bool value) { return value ? -1 : 0; },
               [](std::int32_t value) { return value; }, [](double value) { return RoundToInteger(value); },
               [](const std::string& text) { return RoundToInteger(NumberOfText(text, "an integer")); },
               [](Date date) { return RoundToInteger(date.days); },
               [](const std::shared_ptr<Object>&) -> std::int32_t { RaiseObject("an integer"); }},
        content_);
}

double Value::ToDouble() const {
    return std::visit(Handle{[](std::monostate) { return 0.0; },
                             [](bool value) { return value ? -1.0 : 0.0; },
                             [](std::int32_t value) { return static_cast<double>(value); },
                             [](double value) { return value; },
                             [](const std::string& text) { return NumberOfText(text, "a number"); },
                             [](Date date) { return date.days; },
                             [](const std::shared_ptr<Object>&) -> double { RaiseObject("a number"); }},
                      content_);
}

std::string Value::ToText() && {
    if (std::string* text = std::get_if<std::string>(&content_)) return std::move(*text);
    return std::as_const(*this).ToText();
}

std::string Value::ToText() const& {
    return std::visit(Handle{[](std::monostate) { return std::string(); },
                             [](bool value) { return std::string(value ? "True" : "False"); },
                             [](std::int32_t value) { return std::to_string(value); },
                             [](double value) { return FiniteToText(value); },
                             [](const std::string& text) { return text; },
                             [](Date date) { return DateToText(date); },
                             [](const std::shared_ptr<Object>&) -> std::string { RaiseObject("a text"); }},
                      content_);
}

Date Value::ToDate() const {
    return std::visit(Handle{[](Date date) { return date; }, [](std::monostate) { return Date{}; },
                             [](bool value) { return Date{value ? -1.0 : 0.0}; },
                             [](std::int32_t value) { return CheckedDate(value); },
                             [](double value) { return CheckedDate(value); },
                             [](const std::string& text) {
                                 if (const std::optional<Date> date = ReadDateText(text)) return *date;
                                 return CheckedDate(NumberOfText(text, "a date"));
                             },
                             [](const std::shared_ptr<Object>&) -> Date { RaiseObject("a date"); }},
                      content_);
}

std::shared_ptr<Object> Value::ToObject() const {
    if (const auto* object = std::get_if<std::shared_ptr<Object>>(&content_)) return *object;
    throw ComponentError(errors::TypeMismatch, "Value", "the value is no object");
}

bool Value::EqualsNumber(double number) const noexcept {
    return std::visit(Handle{[=](std::monostate) { return number == 0; },
                             [=](bool value) { return (value ? -1.0 : 0.0) == number; },
                             [=](std::int32_t value) { return value == number; },
                             [=](double value) { return value == number; },
                             [=](const std::string& text) {
                                 const std::optional<NumberScan> read = ReadNumber(text);
                                 return read && !read->isTooLarge && read->value == number;
                             },
                             [=](Date date) { return date.days == number; },
                             [](const std::shared_ptr<Object>&) { return false; }},
                      content_);
}

double LeadingNumber(std::string_view text) noexcept {
    while (!text.empty() && IsWhiteSpace(text.front()))
        text.remove_prefix(1);
    return ScanNumber(text, DigitGrouping::Refused).value;
}

} // namespace base
