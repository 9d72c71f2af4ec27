#include "base/DateReaders.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace base {

namespace {

constexpr std::array<std::string_view, 12> monthNames = {"JANUARY",   "FEBRUARY", "MARCH",    "APRIL",
                                                         "MAY",       "JUNE",     "JULY",     "AUGUST",
                                                         "SEPTEMBER", "OCTOBER",  "NOVEMBER", "DECEMBER"};
constexpr std::array<std::string_view, 7> dayNames = {"SUNDAY",   "MONDAY", "TUESDAY", "WEDNESDAY",
                                                      "THURSDAY", "FRIDAY", "SATURDAY"};

/// From 1, for a name or its first three letters, in upper case; else 0.
template <std::size_t Count>
int PositionOf(std::string_view name, const std::array<std::string_view, Count>& names) {
    for (std::size_t i = 0; i < Count; ++i)
        if (name == names[i] || name == names[i].substr(0, 3)) return static_cast<int>(i) + 1;
    return 0;
}

int CurrentYear() {
    const std::time_t now = std::time(nullptr);
    return std::localtime(&now)->tm_year + 1900;
}

std::optional<Date> DayOf(int year, int month, int day) {
    constexpr int windowEnd = 30; // 29 is 2029, 30 is 1930
    if (year < 100) year += year < windowEnd ? 2000 : 1900;
    return FindDay(year, month, day);
}

class ClassicReader {
public:
    explicit ClassicReader(std::string_view text) : cursor_(text) {}

    std::optional<Date> Read() {
        SkipCommas(cursor_);
        do {
            if (!ReadPiece() || !SkipSeparators()) return {};
        } while (!cursor_.AtEnd());
        const bool isTimeAlone = count_ == 0 && month_ == 0 && !hasWeekday_;
        if (isTimeAlone) return AtTime(Date{}, *seconds_);
        const std::optional<Date> day = Day();
        return day ? AtTime(*day, seconds_.value_or(0)) : std::nullopt;
    }

private:
    /// With the blanks around them; false where there is none.
    static bool SkipCommas(DateCursor& cursor) {
        cursor.SkipBlanks();
        const bool isComma = cursor.Peek() == ',';
        while (cursor.Accept(','))
            cursor.SkipBlanks();
        return isComma;
    }

    /// What parts a piece from the next: nothing, blanks, commas, and in the whole text two slashes or dashes
    /// at most. False for more, or where no piece follows.
    bool SkipSeparators() {
        bool isSeparated = SkipCommas(cursor_);
        while (cursor_.Accept('/') || cursor_.Accept('-')) {
            if (++dateSeparators_ > 2) return false;
            isSeparated = true;
            SkipCommas(cursor_);
        }
        return !isSeparated || !cursor_.AtEnd();
    }

    bool ReadPiece() {
        if (DateCursor::IsLetter(cursor_.Peek())) return ReadName();
        const std::optional<int> number = TakeNumber();
        if (!number) return false;
        if (TimeSeparatorAhead() != '\0' || HalfFollows()) return ReadTime(*number);
        if (count_ == parts_.size()) return false;
        parts_[count_++] = *number;
        return true;
    }

    /// Of any number of leading zeros; nothing beyond the last year.
    std::optional<int> TakeNumber() {
        std::string_view digits = cursor_.TakeDigits();
        if (digits.empty()) return {};
        digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
        if (digits.size() > 4) return {};
        return NumberOfDigits(digits);
    }

    bool ReadName() {
        const std::string name = TakeWord(cursor_);
        cursor_.Accept('.'); // of an abbreviation
        if (const int month = PositionOf(name, monthNames); month != 0 && month_ == 0) {
            month_ = month;
            countBeforeMonth_ = count_;
            return true;
        }
        if (PositionOf(name, dayNames) == 0 || hasWeekday_) return false;
        hasWeekday_ = true; // which one the date itself tells
        return true;
    }

    /// In upper case; nothing for a word that is longer than any name.
    static std::string TakeWord(DateCursor& cursor) {
        constexpr std::size_t longestName = 9;
        const std::string_view word = cursor.TakeLetters();
        return word.size() > longestName ? std::string() : UpperCase(word);
    }

    /// 'A' or 'P' for AM, PM, A or P as the next word, else NUL.
    static char TakeHalf(DateCursor& cursor) {
        SkipCommas(cursor);
        const std::string word = TakeWord(cursor);
        const bool isHalf = word == "AM" || word == "PM" || word == "A" || word == "P";
        return isHalf ? word.front() : '\0';
    }

    bool HalfFollows() const {
        DateCursor ahead = cursor_;
        return TakeHalf(ahead) != '\0';
    }

    /// ':' or '.' as the next character but blanks, else NUL.
    char TimeSeparatorAhead() const {
        DateCursor ahead = cursor_;
        ahead.SkipBlanks();
        return ahead.Peek() == ':' || ahead.Peek() == '.' ? ahead.Peek() : '\0';
    }

    bool ReadTime(int hour) {
        if (seconds_) return false;
        int minute = 0, second = 0;
        double fraction = 0;
        const char separator = TimeSeparatorAhead();
        if (separator != '\0') {
            if (!ReadField(minute)) return false;
            if (TimeSeparatorAhead() == separator) {
                if (!ReadField(second)) return false;
                if (separator == ':' && cursor_.Accept('.') && !ReadFraction(fraction)) return false;
            }
        }
        if (HalfFollows()) {
            const char half = TakeHalf(cursor_);
            if (hour <= 12) hour = hour % 12 + (half == 'P' ? 12 : 0); // an hour above tells the half itself
        }
        if (hour > 23) return false;
        seconds_ = hour * 3600 + minute * 60 + second + fraction;
        return true;
    }

    /// With the separator before it.
    bool ReadField(int& field) {
        cursor_.SkipBlanks();
        if (!cursor_.Accept(':')) cursor_.Accept('.');
        cursor_.SkipBlanks();
        const std::optional<int> number = TakeNumber();
        field = number.value_or(0);
        return number && field <= 59;
    }

    bool ReadFraction(double& fraction) {
        const std::string_view digits = cursor_.TakeDigits();
        fraction = FractionOfDigits(digits);
        return !digits.empty();
    }

    /// The parts are tried in the places that they may have, the American ones first, until there is such a
    /// day.
    std::optional<Date> Day() const {
        const int first = parts_[0], second = parts_[1], third = parts_[2];
        const auto firstOf = [](std::initializer_list<std::optional<Date>> days) -> std::optional<Date> {
            for (const std::optional<Date>& day : days)
                if (day) return day;
            return {};
        };
        if (month_ != 0 && count_ == 1)
            return firstOf({DayOf(CurrentYear(), month_, first), DayOf(first, month_, 1)});
        if (month_ != 0 && count_ == 2 && countBeforeMonth_ == 2)
            return firstOf({DayOf(first, month_, second), DayOf(second, month_, first)});
        if (month_ != 0 && count_ == 2)
            return firstOf({DayOf(second, month_, first), DayOf(first, month_, second)});
        if (month_ != 0) return {};
        if (count_ == 2) {
            return firstOf({DayOf(CurrentYear(), first, second), DayOf(CurrentYear(), second, first),
                            DayOf(second, first, 1), DayOf(first, second, 1)});
        }
        if (count_ != 3) return {};
        return firstOf({DayOf(third, first, second), DayOf(first, second, third), DayOf(third, second, first),
                        DayOf(first, third, second)});
    }

    DateCursor cursor_;
    int dateSeparators_ = 0;
    std::array<int, 3> parts_{};
    std::size_t count_ = 0;
    int month_ = 0; // named
    std::size_t countBeforeMonth_ = 0;
    bool hasWeekday_ = false;
    std::optional<double> seconds_;
};

} // namespace

std::optional<Date> ReadClassicDate(std::string_view text) {
    return ClassicReader(text).Read();
}

} // namespace base
