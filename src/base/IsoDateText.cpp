#include "base/DateReaders.h"

#include <algorithm>
#include <chrono>

namespace base {

namespace {

struct IsoDay {
    Date day;
    bool isWhole = true; // else a week, a month or a year: its first day
};

std::optional<Date> DayOfYear(int year, int day) {
    const std::optional<Date> first = FindDay(year, 1, 1), last = FindDay(year, 12, 31);
    if (!first || day < 1 || first->days + day - 1 > last->days) return {};
    return Date{first->days + day - 1};
}

/// The Monday that the year's first week begins with: the week of 4 January.
double FirstMonday(int year) {
    constexpr std::chrono::sys_days dayZero = std::chrono::year{1899} / 12 / 30;
    const std::chrono::sys_days fourth = std::chrono::year(year) / 1 / 4;
    const std::chrono::days sinceMonday = std::chrono::weekday(fourth) - std::chrono::Monday;
    return static_cast<double>((fourth - sinceMonday - dayZero).count());
}

/// `day` from 1, a Monday.
std::optional<Date> DayOfWeek(int year, int week, int day) {
    const double monday = FirstMonday(year) + 7 * (week - 1);
    if (week < 1 || day < 1 || day > 7 || monday >= FirstMonday(year + 1)) return {};
    return AtTime(Date{monday + day - 1}, 0);
}

std::optional<IsoDay> Found(const std::optional<Date>& day, bool isWhole) {
    if (!day) return {};
    return IsoDay{*day, isWhole};
}

/// The rest of a week date behind its "W".
std::optional<IsoDay> ReadWeek(DateCursor& cursor, int year, bool isExtended) {
    const std::string_view digits = cursor.TakeDigits();
    const int week = NumberOfDigits(digits.substr(0, 2));
    if (digits.size() == 3 && !isExtended)
        return Found(DayOfWeek(year, week, NumberOfDigits(digits.substr(2))), true);
    if (digits.size() != 2) return {};
    if (!isExtended || !cursor.Accept('-')) return Found(DayOfWeek(year, week, 1), false);
    const std::string_view day = cursor.TakeDigits();
    if (day.size() != 1) return {};
    return Found(DayOfWeek(year, week, NumberOfDigits(day)), true);
}

std::optional<IsoDay> ReadDay(DateCursor& cursor) {
    const std::string_view digits = cursor.TakeDigits();
    const int year = NumberOfDigits(digits.substr(0, 4));
    if (digits.size() == 8) {
        return Found(FindDay(year, NumberOfDigits(digits.substr(4, 2)), NumberOfDigits(digits.substr(6))),
                     true);
    }
    if (digits.size() == 7) return Found(DayOfYear(year, NumberOfDigits(digits.substr(4))), true);
    if (digits.size() != 4) return {};
    if (cursor.AtEnd()) return Found(FindDay(year, 1, 1), false);

    const bool isExtended = cursor.Accept('-');
    if (cursor.Accept('W') || cursor.Accept('w')) return ReadWeek(cursor, year, isExtended);
    if (!isExtended) return {};
    const std::string_view part = cursor.TakeDigits();
    if (part.size() == 3) return Found(DayOfYear(year, NumberOfDigits(part)), true);
    if (part.size() != 2) return {};
    if (!cursor.Accept('-')) return Found(FindDay(year, NumberOfDigits(part), 1), false);
    const std::string_view day = cursor.TakeDigits();
    if (day.size() != 2) return {};
    return Found(FindDay(year, NumberOfDigits(part), NumberOfDigits(day)), true);
}

struct TimeFields {
    int hour = 0, minute = 0, second = 0;
    double unit = 3600; // seconds of the last field written
};

/// "hh", "hhmm" and "hhmmss" stand behind a "T" only: elsewhere they would be numbers.
std::optional<TimeFields> ReadFields(DateCursor& cursor, bool isMarked) {
    const std::string_view digits = cursor.TakeDigits();
    if (digits.size() != 2 && !(isMarked && (digits.size() == 4 || digits.size() == 6))) return {};
    TimeFields fields{.hour = NumberOfDigits(digits.substr(0, 2))};
    if (digits.size() >= 4) {
        fields.minute = NumberOfDigits(digits.substr(2, 2));
        fields.second = NumberOfDigits(digits.substr(4));
        fields.unit = digits.size() == 4 ? 60 : 1;
        return fields;
    }
    if (!cursor.Accept(':')) return isMarked ? std::optional(fields) : std::nullopt;
    const std::string_view minute = cursor.TakeDigits();
    if (minute.size() != 2) return {};
    fields.minute = NumberOfDigits(minute);
    fields.unit = 60;
    if (!cursor.Accept(':')) return fields;
    const std::string_view second = cursor.TakeDigits();
    if (second.size() != 2) return {};
    fields.second = NumberOfDigits(second);
    fields.unit = 1;
    return fields;
}

/// Below 1; 0 where there is none.
std::optional<double> ReadFraction(DateCursor& cursor) {
    if (!cursor.Accept('.') && !cursor.Accept(',')) return 0;
    const std::string_view digits = cursor.TakeDigits();
    if (digits.empty()) return {};
    return FractionOfDigits(digits);
}

/// Seconds since midnight.
std::optional<double> ReadTime(DateCursor& cursor, bool isMarked, bool isOfADay) {
    const std::optional<TimeFields> fields = ReadFields(cursor, isMarked);
    const std::optional<double> fraction = ReadFraction(cursor);
    if (!fields || !fraction) return {};
    constexpr double secondsPerDay = 86400;
    const double seconds =
        fields->hour * 3600 + fields->minute * 60 + fields->second + *fraction * fields->unit;
    const bool isDaysEnd = fields->hour == 24 && seconds == secondsPerDay && (isMarked || isOfADay);
    const bool isLeapSecond = fields->minute == 59 && fields->second == 60;
    if (isDaysEnd) return seconds;
    if (fields->hour > 23 || fields->minute > 59 || (fields->second > 59 && !isLeapSecond)) return {};
    return seconds;
}

/// "Z" or an offset from it; the offset of a date alone needs its colon, or it would be another part of it.
bool SkipZone(DateCursor& cursor, bool isOfADate) {
    if (cursor.Accept('Z') || cursor.Accept('z')) return true;
    if (!cursor.Accept('+') && !cursor.Accept('-')) return false;
    std::string_view hour = cursor.TakeDigits(), minute;
    const bool hasColon = cursor.Accept(':');
    if (hasColon) {
        minute = cursor.TakeDigits();
    } else if (hour.size() == 4) {
        minute = hour.substr(2);
        hour = hour.substr(0, 2);
    }
    const bool isComplete = hour.size() == 2 && (minute.size() == 2 || (minute.empty() && !hasColon));
    if (!isComplete || (isOfADate && !hasColon)) return false;
    return NumberOfDigits(hour) <= 23 && NumberOfDigits(minute) <= 59;
}

} // namespace

std::optional<Date> ReadIsoDate(std::string_view text) {
    DateCursor cursor(text);
    const auto acceptMark = [&cursor] { return cursor.Accept('T') || cursor.Accept('t'); };
    IsoDay day;
    bool isMarked = acceptMark();
    const bool isTimeAlone = isMarked || cursor.Peek(2) == ':';
    if (!isTimeAlone) {
        const std::optional<IsoDay> read = ReadDay(cursor);
        if (!read) return {};
        day = *read;
        if (cursor.AtEnd()) return day.day;
        if (!day.isWhole) return {};
        isMarked = acceptMark();
        if (!isMarked && !cursor.SkipBlanks())
            return SkipZone(cursor, true) && cursor.AtEnd() ? std::optional(day.day) : std::nullopt;
    }
    const std::optional<double> seconds = ReadTime(cursor, isMarked, !isTimeAlone);
    if (!seconds) return {};
    cursor.SkipBlanks();
    if (!cursor.AtEnd() && !(SkipZone(cursor, false) && cursor.AtEnd())) return {};
    return AtTime(day.day, *seconds);
}

} // namespace base
