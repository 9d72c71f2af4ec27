#include "base/DateText.h"

#include "base/ComponentError.h"
#include "base/NumberText.h"
#include "base/Text.h"

#include <array>
#include <cstdio>

namespace base {

namespace {

constexpr std::array<std::string_view, 12> monthNames = {"JANUARY",   "FEBRUARY", "MARCH",    "APRIL",
                                                         "MAY",       "JUNE",     "JULY",     "AUGUST",
                                                         "SEPTEMBER", "OCTOBER",  "NOVEMBER", "DECEMBER"};

/// 1 to 12 for an English month name or its first three letters, else 0.
int MonthOfName(std::string_view name) {
    const std::string upper = UpperCase(name);
    for (std::size_t i = 0; i < monthNames.size(); ++i) {
        if (upper == monthNames[i] || upper == monthNames[i].substr(0, 3)) return static_cast<int>(i) + 1;
    }
    return 0;
}

struct Number {
    int value = 0;
    std::size_t digits = 0; // 0: there is none
};

class DateReader {
public:
    explicit DateReader(std::string_view text) : text_(TrimWhiteSpace(text)) {}

    std::optional<Date> Read() {
        if (text_.empty()) return std::nullopt;
        CalendarTime time;
        double fraction = 0; // of a second
        bool isUnderstood = true;
        if (!IsTimeOnly()) {
            isUnderstood = ReadDay(time);
            if (isUnderstood && !AtEnd()) isUnderstood = SkipToTime() && ReadTime(time, fraction);
        } else {
            isUnderstood = ReadTime(time, fraction);
        }
        if (!isUnderstood || !AtEnd()) return std::nullopt;
        try {
            const Date whole = FromCalendar(time);
            constexpr double secondsPerDay = 86400;
            return Date{whole.days + (whole.days < 0 ? -fraction : fraction) / secondsPerDay};
        } catch (const ComponentError&) {
            return std::nullopt;
        }
    }

private:
    bool AtEnd() const { return at_ == text_.size(); }
    char Peek() const { return AtEnd() ? '\0' : text_[at_]; }

    static bool IsDigit(char character) { return character >= '0' && character <= '9'; }
    static bool IsLetter(char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    }

    bool Accept(char wanted) {
        if (Peek() != wanted) return false;
        ++at_;
        return true;
    }

    bool SkipBlanks() {
        const std::size_t begin = at_;
        while (!AtEnd() && IsWhiteSpace(Peek()))
            ++at_;
        return at_ > begin;
    }

    Number ReadNumber() {
        Number number;
        for (; IsDigit(Peek()); ++at_, ++number.digits) {
            if (number.digits >= 4) return {};
            number.value = number.value * 10 + (Peek() - '0');
        }
        return number;
    }

    std::string_view ReadWord() {
        const std::size_t begin = at_;
        while (IsLetter(Peek()))
            ++at_;
        return text_.substr(begin, at_ - begin);
    }

    /// A text that starts with an hour: digits and then a colon or a half of the day.
    bool IsTimeOnly() const {
        DateReader ahead = *this;
        if (ahead.ReadNumber().digits == 0) return false;
        if (ahead.Peek() == ':') return true;
        ahead.SkipBlanks();
        return ahead.ReadHalfOfDay() != '\0';
    }

    /// 'A' or 'P' for AM, PM, A or P as a whole word in any letter case, else NUL.
    char ReadHalfOfDay() {
        const std::string word = UpperCase(ReadWord());
        const bool isHalf = word == "AM" || word == "PM" || word == "A" || word == "P";
        return isHalf ? word.front() : '\0';
    }

    static bool SetYear(CalendarTime& time, Number year) {
        constexpr int windowEnd = 30; // 29 is 2029, 30 is 1930
        if (year.digits == 0) return false;
        time.year = year.value;
        if (year.digits <= 2) time.year += year.value < windowEnd ? 2000 : 1900;
        return true;
    }

    bool ReadDay(CalendarTime& time) {
        if (IsLetter(Peek())) return ReadMonthName(time) && ReadDayAndYear(time);
        const Number first = ReadNumber();
        if (first.digits == 0) return false;
        const char separator = Peek();
        const bool isMarked = Accept('-') || Accept('/');
        if (!isMarked && !SkipBlanks()) return false;
        if (IsLetter(Peek())) {
            time.day = first.value;
            return first.digits <= 2 && ReadMonthName(time) && SkipDaySeparator() &&
                   SetYear(time, ReadNumber());
        }
        if (!isMarked) return false;
        const Number second = ReadNumber();
        if (second.digits == 0 || second.digits > 2 || !Accept(separator)) return false;
        const Number third = ReadNumber();
        return third.digits > 0 && SetFields(time, first, second, third);
    }

    bool ReadMonthName(CalendarTime& time) {
        time.month = MonthOfName(ReadWord());
        return time.month != 0;
    }

    /// The rest of "March 1, 2024".
    bool ReadDayAndYear(CalendarTime& time) {
        if (!SkipDaySeparator()) return false;
        const Number day = ReadNumber();
        time.day = day.value;
        return day.digits > 0 && day.digits <= 2 && SkipDaySeparator() && SetYear(time, ReadNumber());
    }

    bool SkipDaySeparator() {
        if (Accept('-') || Accept('/')) return true;
        const bool hasComma = Accept(',');
        return SkipBlanks() || hasComma;
    }

    bool SetFields(CalendarTime& time, Number first, Number second, Number third) {
        if (first.digits > 2) {
            isYearFirst_ = true;
            time.month = second.value;
            time.day = third.value;
            return first.digits == 4 && third.digits <= 2 && SetYear(time, first);
        }
        const bool isDayFirst = first.value > 12;
        time.month = isDayFirst ? second.value : first.value;
        time.day = isDayFirst ? first.value : second.value;
        return SetYear(time, third);
    }

    bool SkipToTime() {
        if (isYearFirst_ && Accept('T')) return true;
        const bool hasComma = Accept(',');
        return SkipBlanks() || hasComma;
    }

    bool ReadTime(CalendarTime& time, double& fraction) {
        const Number hour = ReadNumber();
        if (hour.digits == 0 || hour.digits > 2) return false;
        time.hour = hour.value;
        const bool hasMinutes = Peek() == ':';
        if (hasMinutes && !ReadMinutes(time, fraction)) return false;
        SkipBlanks();
        if (AtEnd()) return hasMinutes;
        const char half = ReadHalfOfDay();
        if (half == '\0' || time.hour > 12) return false;
        time.hour = time.hour % 12 + (half == 'P' ? 12 : 0);
        return true;
    }

    bool ReadMinutes(CalendarTime& time, double& fraction) {
        const auto readField = [this](int& field) {
            const Number number = ReadNumber();
            field = number.value;
            return number.digits == 1 || number.digits == 2;
        };
        if (!Accept(':') || !readField(time.minute)) return false;
        if (!Accept(':')) return true;
        if (!readField(time.second)) return false;
        if (Peek() != '.') return true;
        const NumberScan scan = ScanNumber(ReadFraction(), DigitGrouping::Refused);
        fraction = scan.value;
        return scan.length > 1;
    }

    std::string_view ReadFraction() {
        const std::size_t begin = at_++;
        while (IsDigit(Peek()))
            ++at_;
        return text_.substr(begin, at_ - begin);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    bool isYearFirst_ = false;
};

} // namespace

std::optional<Date> ReadDateText(std::string_view text) {
    return DateReader(text).Read();
}

std::string DateToText(Date date) {
    const CalendarTime time = ToCalendar(date);
    const bool isDayZero = time.year == 1899 && time.month == 12 && time.day == 30;
    const bool isMidnight = time.hour == 0 && time.minute == 0 && time.second == 0;
    std::string text;
    if (!isDayZero) {
        text = std::to_string(time.month) + "/" + std::to_string(time.day) + "/" + std::to_string(time.year);
        if (isMidnight) return text;
        text += ' ';
    }
    const auto twoDigits = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return text + std::to_string(hour) + ":" + twoDigits(time.minute) + ":" + twoDigits(time.second) +
           (time.hour < 12 ? " AM" : " PM");
}

} // namespace base
