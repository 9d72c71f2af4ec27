#pragma once

#include "base/Object.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace base {

/// A point in local calendar time, as the classic automation date: days since 1899-12-30, the time of day in
/// the fraction (for negative dates the fraction still counts forward from midnight). Range: years 100 to
/// 9999.
struct Date {
    double days = 0;
    friend auto operator<=>(const Date&, const Date&) = default;
};

/// A value of any kind: empty, boolean, 32-bit integer, double, text (UTF-8), date or object.
///
/// Conversions follow the classic desktop-automation rules. They throw ComponentError TypeMismatch where the
/// content has no such meaning and Overflow where it does not fit.
class Value {
public:
    enum class Kind { Empty, Boolean, Integer, Double, Text, Date, Object };

    Value() = default;
    Value(bool value) : content_(value) {}
    Value(std::int32_t value) : content_(value) {}
    Value(double value) : content_(value) {}
    Value(Date value) : content_(value) {}
    Value(const std::string& value) : content_(TextContent(value)) {}
    Value(std::string&& value) : content_(TextContent(std::move(value))) {}
    Value(std::string_view value) : content_(TextContent(value)) {}
    Value(const char* value) : content_(TextContent(std::string_view(value))) {}
    /// A text that is shared, not copied, where it is long.
    explicit Value(const std::shared_ptr<const std::string>& value)
        : content_(value->size() < LongText::From ? Content(*value) : Content(LongText(value))) {}
    Value(std::shared_ptr<Object> value) : content_(std::move(value)) {}

    Kind GetKind() const noexcept {
        return std::holds_alternative<LongText>(content_) ? Kind::Text : static_cast<Kind>(content_.index());
    }
    bool IsEmpty() const noexcept { return GetKind() == Kind::Empty; }

    /// Empty is False; numbers are True unless 0; "True"/"False" in any letter case; other text as a number.
    bool ToBoolean() const;
    /// Rounds halves to even; True is -1; Empty is 0; text is read as a number ("-1,234.5", "1e3", "&H1F"),
    /// also with its sign behind it, in parentheses for a negative, or with a dollar sign; blanks around it
    /// ignored.
    std::int32_t ToInteger() const;
    double ToDouble() const;
    /// "True"/"False"; numbers in their shortest decimal form; dates as "m/d/yyyy h:mm:ss AM" (a part that is
    /// zero is left out); Empty is "".
    std::string ToText() const&;
    std::string ToText() &&;
    /// Text is read as ISO 8601 in every form ("2024-03-01T14:05:00", "20240301", "2024-061", "2024-W09-5";
    /// an offset is checked and left aside) or as the system's date reader does in English ("3/1/2024 2:05
    /// PM", "1-Mar-24", "Friday, March 1, 2024", "March 2024", "3/1" in the current year); numbers, and texts
    /// that are numbers, are days.
    Date ToDate() const;
    /// The object, null for an empty reference. TypeMismatch for any other kind.
    std::shared_ptr<Object> ToObject() const;

    /// The text itself when the value holds text, else null: saves the copy that ToText makes.
    const std::string* TextIfAny() const noexcept {
        if (const LongText* text = std::get_if<LongText>(&content_)) return &text->Get();
        return std::get_if<std::string>(&content_);
    }

    /// Compares as values of any kind: text counts when it reads as a number; Empty counts as 0; a text that
    /// is no number, or an object, equals no number. Never throws.
    bool EqualsNumber(double number) const noexcept;

private:
    /// A text that copies of the value share: documents travel in values, to many receivers.
    class LongText {
    public:
        static constexpr std::size_t From = 1024; // bytes
        explicit LongText(std::string text) : text_(std::make_shared<const std::string>(std::move(text))) {}
        explicit LongText(std::shared_ptr<const std::string> text) : text_(std::move(text)) {}
        const std::string& Get() const noexcept;
        operator const std::string&() const noexcept { return Get(); }

    private:
        std::shared_ptr<const std::string> text_;
    };

    // in the order of the kinds; LongText stands for a text as well
    using Content = std::variant<std::monostate, bool, std::int32_t, double, std::string, Date,
                                 std::shared_ptr<Object>, LongText>;

    template <class Text> static Content TextContent(Text&& text) {
        if (text.size() < LongText::From)
            return Content(std::in_place_type<std::string>, std::forward<Text>(text));
        return Content(std::in_place_type<LongText>, std::string(std::forward<Text>(text)));
    }

    Content content_;
};

/// The number at the start of a text (blanks skipped, rest ignored), 0 when there is none: never fails.
double LeadingNumber(std::string_view text) noexcept;

/// Calendar fields of a date in the proleptic Gregorian calendar.
struct CalendarTime {
    int year = 1899, month = 12, day = 30; // month and day from 1
    int hour = 0, minute = 0, second = 0;
};
/// Rounded to the nearest second.
CalendarTime ToCalendar(Date date);
/// TypeMismatch for a day or time that does not exist; Overflow outside years 100 to 9999.
Date FromCalendar(const CalendarTime& time);

} // namespace base
