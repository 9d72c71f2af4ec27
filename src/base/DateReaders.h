#pragma once

#include "base/NumberText.h"
#include "base/Value.h"

#include <optional>
#include <string_view>

/// What reads the two families of date texts. The readers take a text without white space at its ends and
/// answer nothing where any of it has no meaning to them; they need constant memory, and look at each
/// character a few times at most.
namespace base {

/// ISO 8601: calendar dates, days of the year and week dates in the extended and the basic format, also of
/// reduced precision; times, after "T" or a blank, with a fraction behind a point or comma; "Z" or an offset,
/// which is checked and then left aside: the time counts where it was written.
std::optional<Date> ReadIsoDate(std::string_view text);

/// What the system's date reader takes in English. Numbers between blanks, commas and at most two slashes or
/// dashes are parts of the date, those between colons or points parts of the time; a month may be named.
std::optional<Date> ReadClassicDate(std::string_view text);

/// Nothing for a day that does not exist, or lies outside the years 100 to 9999.
std::optional<Date> FindDay(int year, int month, int day);

/// A day and the time on it; the second 86,400 and what follows belong to the next day. Nothing beyond the
/// year 9999.
std::optional<Date> AtTime(Date day, double seconds);

/// Walks a text; reads past the end answer NUL, which no form holds.
class DateCursor {
public:
    explicit DateCursor(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }
    char Peek(std::size_t ahead = 0) const { return ahead < rest_.size() ? rest_[ahead] : '\0'; }

    bool Accept(char wanted) {
        if (Peek() != wanted) return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool SkipBlanks() {
        const std::size_t length = WhiteSpaceLength(rest_);
        rest_.remove_prefix(length);
        return length > 0;
    }
    std::string_view TakeDigits() { return TakeWhile(IsDigit); }
    std::string_view TakeLetters() { return TakeWhile(IsLetter); }

    static bool IsDigit(char character) { return character >= '0' && character <= '9'; }
    static bool IsLetter(char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    }

private:
    template <class Test> std::string_view TakeWhile(const Test& test) {
        std::size_t length = 0;
        while (length < rest_.size() && test(rest_[length]))
            ++length;
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    std::string_view rest_;
};

/// What a few digits stand for.
int NumberOfDigits(std::string_view digits);
/// What digits behind a point stand for, below 1.
double FractionOfDigits(std::string_view digits);

} // namespace base
