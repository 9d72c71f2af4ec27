#pragma once

#include "base/Value.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kvtm {

/// What a date's text takes from the user's locale.
struct DateNames {
    std::array<std::string, 12> months, shortMonths; // from January
    std::array<std::string, 7> days, shortDays;      // from Sunday
    std::string am, pm;
    std::string dateSeparator, timeSeparator;
    std::string shortDate; // picture of "Short Date"

    static DateNames English();
    /// Of the environment's locale; English where that cannot be had.
    static DateNames OfUser();
};

/// A date picture in the classic desktop notation, read once and used for many dates.
///
/// Named: "General Date", "Long Date", "Medium Date", "Short Date", "Long Time", "Medium Time", "Short Time"
/// (any letter case). Pictures (any letter case): d dd ddd dddd ddddd dddddd, w (weekday from Sunday = 1), ww
/// (week; the first holds 1 January), m mm mmm mmmm (minutes behind an hour), q, y (day of the year) yy yyyy,
/// h hh, n nn, s ss, ttttt, c, AM/PM am/pm A/P a/p AMPM, "/" and ":" (the locale's separators), \x and "text"
/// (literal). A ";" ends the picture. An empty picture is "General Date". All else stands for itself.
class DateFormat {
public:
    DateFormat(std::string_view picture, const DateNames& names);

    std::string Format(base::Date date) const;
    /// The date that a record holds; empty text for an empty value or text. Throws as base::ToRecordDate
    /// does.
    std::string Format(const base::Value& value) const;

private:
    enum class Field {
        Literal,
        General,
        ShortDate,
        LongDate,
        LongTime,
        Day,
        ShortDayName,
        DayName,
        Weekday,
        Week,
        Month,
        ShortMonthName,
        MonthName,
        Quarter,
        DayOfYear,
        ShortYear,
        Year,
        Hour,
        Minute,
        Second,
        Half, // of the day: AM or PM
    };
    struct Piece {
        Field field;
        int digits = 1;        // at least
        std::string text = {}; // Literal; Half: the text before noon
        std::string afternoon = {};
    };

    void Read(std::string_view picture);
    std::size_t ReadHalf(std::string_view picture);
    std::size_t ReadLiteral(std::string_view picture);
    /// A run of one letter, in any mixture of letter cases.
    void ReadRun(std::string_view run);
    void Add(Field field, int digits = 1);
    void AddText(std::string_view text);
    bool FollowsHour() const;

    const DateNames& names_; // outlives the format
    std::vector<Piece> pieces_;
    bool twelveHours_ = false;
};

} // namespace kvtm
