#include "base/DateReaders.h"
#include "base/Text.h"

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

/// A number that is part of the date.
struct DatePart {
    int value = 0;
    std::size_t digits = 0;
};

std::optional<Date> DayOf(DatePart year, int month, DatePart day) {
    constexpr int windowEnd = 30; // 29 is 2029, 30 is 1930
    if (day.digits > 2) return {};
    if (year.digits <= 2) year.value += year.value < windowEnd ? 2000 : 1900;
    return FindDay(year.value, month, day.value);
}

std::optional<Date> DayOf(DatePart year, DatePart month, DatePart day) {
    if (month.digits > 2) return {};
    return DayOf(year, month.value, day);
}

class ClassicReader {
public:
    explicit ClassicReader(std::string_view text) : cursor_(text) {}

    std::optional<Date> Read() {
        do {
            if (!ReadPiece()) return {};
            cursor_.SkipBlanks();
            const bool isSeparated = cursor_.Accept(',') || cursor_.Accept('/') || cursor_.Accept('-');
            if (isSeparated && cursor_.AtEnd()) return {};
            cursor_.SkipBlanks();
        } while (!cursor_.AtEnd());
        const bool isTimeAlone = count_ == 0 && month_ == 0 && !hasWeekday_;
        if (isTimeAlone) return AtTime(Date{}, *seconds_);
        const std::optional<Date> day = Day();
        return day ? AtTime(*day, seconds_.value_or(0)) : std::nullopt;
    }

private:
    bool ReadPiece() {
        if (DateCursor::IsLetter(cursor_.Peek())) return ReadName();
        const std::string_view digits = cursor_.TakeDigits();
        if (digits.empty() || digits.size() > 4) return false;
        const char next = cursor_.Peek();
        if (next == ':' || next == '.' || HalfFollows()) return ReadTime(digits);
        if (count_ == parts_.size()) return false;
        parts_[count_++] = {NumberOfDigits(digits), digits.size()};
        return true;
    }

    bool ReadName() {
        const std::string name = TakeWord(cursor_);
        cursor_.Accept('.'); // of an abbreviation
        if (const int month = PositionOf(name, monthNames); month != 0 && month_ == 0) {
            month_ = month;
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
        cursor.SkipBlanks();
        const std::string word = TakeWord(cursor);
        const bool isHalf = word == "AM" || word == "PM" || word == "A" || word == "P";
        return isHalf ? word.front() : '\0';
    }

    bool HalfFollows() const {
        DateCursor ahead = cursor_;
        return TakeHalf(ahead) != '\0';
    }

    bool ReadTime(std::string_view hourDigits) {
        if (seconds_ || hourDigits.size() > 2) return false;
        int hour = NumberOfDigits(hourDigits), minute = 0, second = 0;
        double fraction = 0;
        const char separator = cursor_.Peek();
        if (cursor_.Accept(':') || cursor_.Accept('.')) {
            if (!ReadField(minute)) return false;
            if (cursor_.Accept(separator)) {
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

    bool ReadField(int& field) {
        const std::string_view digits = cursor_.TakeDigits();
        if (digits.empty() || digits.size() > 2) return false;
        field = NumberOfDigits(digits);
        return field <= 59;
    }

    bool ReadFraction(double& fraction) {
        const std::string_view digits = cursor_.TakeDigits();
        fraction = FractionOfDigits(digits);
        return !digits.empty();
    }

    /// The parts are tried in the places that they may have, the American ones first, until there is such a
    /// day.
    std::optional<Date> Day() const {
        const DatePart first = parts_[0], second = parts_[1], third = parts_[2];
        const auto firstOf = [](std::initializer_list<std::optional<Date>> days) -> std::optional<Date> {
            for (const std::optional<Date>& day : days)
                if (day) return day;
            return {};
        };
        constexpr DatePart firstDay{1, 1};
        if (month_ != 0 && count_ == 1)
            return firstOf({DayOf(ThisYear(), month_, first), DayOf(first, month_, firstDay)});
        if (month_ != 0 && count_ == 2)
            return firstOf({DayOf(second, month_, first), DayOf(first, month_, second)});
        if (month_ != 0) return {};
        if (count_ == 2) {
            return firstOf({DayOf(ThisYear(), first, second), DayOf(ThisYear(), second, first),
                            DayOf(second, first, firstDay), DayOf(first, second, firstDay)});
        }
        if (count_ != 3) return {};
        return firstOf(
            {DayOf(third, first, second), DayOf(first, second, third), DayOf(third, second, first)});
    }

    static DatePart ThisYear() { return {CurrentYear(), 4}; }

    DateCursor cursor_;
    std::array<DatePart, 3> parts_;
    std::size_t count_ = 0;
    int month_ = 0; // named
    bool hasWeekday_ = false;
    std::optional<double> seconds_;
};

} // namespace

std::optional<Date> ReadClassicDate(std::string_view text) {
    return ClassicReader(text).Read();
}

} // namespace base
