#include "catalogue/DateFormat.h"

#include "base/DateText.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kvtm {

namespace {

struct NamedFormat {
    std::string_view name; // in upper case
    std::string_view picture;
};
constexpr NamedFormat namedFormats[] = {
    {"GENERAL DATE", "c"},   {"LONG DATE", "dddddd"}, {"MEDIUM DATE", "dd-mmm-yy"},
    {"SHORT DATE", "ddddd"}, {"LONG TIME", "ttttt"},  {"MEDIUM TIME", "hh:nn AM/PM"},
    {"SHORT TIME", "hh:nn"},
};
constexpr std::string_view longDate = "dddd, mmmm d, yyyy";
constexpr std::string_view longTime = "h:nn:ss AMPM";

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

void AppendNumber(std::string& text, int number, int digits) {
    const std::string plain = std::to_string(number);
    text.append(static_cast<std::size_t>(std::max(0, digits - static_cast<int>(plain.size()))), '0');
    text += plain;
}

int DayOfYear(const base::CalendarTime& time) {
    const base::Date newYear = base::FromCalendar({time.year, 1, 1});
    const base::Date day = base::FromCalendar({time.year, time.month, time.day});
    return static_cast<int>(day.days - newYear.days) + 1;
}

/// 0 is Sunday.
int WeekdayOf(const base::CalendarTime& time) {
    const double days = base::FromCalendar({time.year, time.month, time.day}).days; // day 1 was a Sunday
    const int weekday = static_cast<int>(std::fmod(days - 1, 7));
    return weekday < 0 ? weekday + 7 : weekday;
}

} // namespace

DateFormat::DateFormat(std::string_view picture, const DateNames& names) : names_(names) {
    const std::string upper = base::UpperCase(picture);
    const auto named = std::find_if(std::begin(namedFormats), std::end(namedFormats),
                                    [&](const NamedFormat& format) { return format.name == upper; });
    if (named != std::end(namedFormats)) picture = named->picture;
    Read(picture.empty() ? "c" : picture);
    twelveHours_ =
        std::any_of(pieces_.begin(), pieces_.end(), [](const Piece& p) { return p.field == Field::Half; });
}

void DateFormat::Read(std::string_view picture) {
    while (!picture.empty() && picture.front() != ';') {
        std::size_t used = ReadHalf(picture);
        if (used == 0) used = ReadLiteral(picture);
        if (used == 0) {
            const char letter = Lower(picture.front());
            const auto end =
                std::find_if(picture.begin(), picture.end(), [&](char c) { return Lower(c) != letter; });
            used = static_cast<std::size_t>(end - picture.begin());
            ReadRun(picture.substr(0, used));
        }
        picture.remove_prefix(used);
    }
}

std::size_t DateFormat::ReadHalf(std::string_view picture) {
    const std::string start = base::UpperCase(base::FirstCharacters(picture, 5));
    const bool small = picture.front() == 'a';
    const auto half = [&](const std::string& am, const std::string& pm) {
        pieces_.push_back({Field::Half, 1, am, pm});
    };
    if (start == "AM/PM") {
        small ? half("am", "pm") : half("AM", "PM");
        return 5;
    }
    if (StartsWith(start, "AMPM")) {
        half(names_.am, names_.pm);
        return 4;
    }
    if (StartsWith(start, "A/P")) {
        small ? half("a", "p") : half("A", "P");
        return 3;
    }
    return 0;
}

std::size_t DateFormat::ReadLiteral(std::string_view picture) {
    switch (picture.front()) {
    case '\\': {
        const std::string_view escaped = base::FirstCharacters(picture.substr(1), 1);
        AddText(escaped);
        return 1 + escaped.size();
    }
    case '"': {
        const std::size_t end = std::min(picture.find('"', 1), picture.size());
        AddText(picture.substr(1, end - 1));
        return std::min(end + 1, picture.size());
    }
    case '/':
        AddText(names_.dateSeparator);
        return 1;
    case ':':
        AddText(names_.timeSeparator);
        return 1;
    default:
        if (std::string_view("dwmqyhnstc").find(Lower(picture.front())) != std::string_view::npos) return 0;
        AddText(picture.substr(0, 1));
        return 1;
    }
}

void DateFormat::ReadRun(std::string_view run) {
    struct Row {
        char letter;
        std::size_t length; // the longest run of the letter comes first
        Field field;
        int digits;
    };
    static constexpr Row rows[] = {
        {'d', 6, Field::LongDate, 1},       {'d', 5, Field::ShortDate, 1}, {'d', 4, Field::DayName, 1},
        {'d', 3, Field::ShortDayName, 1},   {'d', 2, Field::Day, 2},       {'d', 1, Field::Day, 1},
        {'w', 2, Field::Week, 1},           {'w', 1, Field::Weekday, 1},   {'m', 4, Field::MonthName, 1},
        {'m', 3, Field::ShortMonthName, 1}, {'m', 2, Field::Month, 2},     {'m', 1, Field::Month, 1},
        {'q', 1, Field::Quarter, 1},        {'y', 4, Field::Year, 1},      {'y', 2, Field::ShortYear, 2},
        {'y', 1, Field::DayOfYear, 1},      {'h', 2, Field::Hour, 2},      {'h', 1, Field::Hour, 1},
        {'n', 2, Field::Minute, 2},         {'n', 1, Field::Minute, 1},    {'s', 2, Field::Second, 2},
        {'s', 1, Field::Second, 1},         {'t', 5, Field::LongTime, 1},  {'c', 1, Field::General, 1},
    };
    while (!run.empty()) {
        const auto row = std::find_if(std::begin(rows), std::end(rows), [run](const Row& r) {
            return r.letter == Lower(run.front()) && r.length <= run.size();
        });
        if (row == std::end(rows)) { // a t too few or too many
            AddText(run);
            return;
        }
        const bool minutes = row->field == Field::Month && FollowsHour();
        Add(minutes ? Field::Minute : row->field, row->digits);
        run.remove_prefix(row->length);
    }
}

void DateFormat::Add(Field field, int digits) {
    pieces_.push_back({field, digits});
}

void DateFormat::AddText(std::string_view text) {
    pieces_.push_back({Field::Literal, 1, std::string(text)});
}

bool DateFormat::FollowsHour() const {
    const auto last = std::find_if(pieces_.rbegin(), pieces_.rend(),
                                   [](const Piece& piece) { return piece.field != Field::Literal; });
    return last != pieces_.rend() && last->field == Field::Hour;
}

std::string DateFormat::Format(const base::Value& value) const {
    const std::string* text = value.TextIfAny();
    if (value.IsEmpty() || (text && text->empty())) return {};
    return Format(base::ToRecordDate(value));
}

std::string DateFormat::Format(base::Date date) const {
    const base::CalendarTime time = base::ToCalendar(date);
    const auto index = [](int fromOne) { return static_cast<std::size_t>(fromOne - 1); };
    std::string text;
    for (const Piece& piece : pieces_) {
        const auto number = [&](int value) { AppendNumber(text, value, piece.digits); };
        const auto inOther = [&](std::string_view picture) {
            text += DateFormat(picture, names_).Format(date);
        };
        switch (piece.field) {
        case Field::Literal:
            text += piece.text;
            break;
        case Field::General: {
            const bool noTime = time.hour == 0 && time.minute == 0 && time.second == 0;
            const bool noDay = time.year == 1899 && time.month == 12 && time.day == 30;
            inOther(noDay ? "ttttt" : noTime ? "ddddd" : "ddddd ttttt");
            break;
        }
        case Field::ShortDate:
            inOther(names_.shortDate);
            break;
        case Field::LongDate:
            inOther(longDate);
            break;
        case Field::LongTime:
            inOther(longTime);
            break;
        case Field::Day:
            number(time.day);
            break;
        case Field::ShortDayName:
            text += names_.shortDays[static_cast<std::size_t>(WeekdayOf(time))];
            break;
        case Field::DayName:
            text += names_.days[static_cast<std::size_t>(WeekdayOf(time))];
            break;
        case Field::Weekday:
            number(WeekdayOf(time) + 1);
            break;
        case Field::Week:
            number((DayOfYear(time) - 1 + WeekdayOf({time.year, 1, 1})) / 7 + 1);
            break;
        case Field::Month:
            number(time.month);
            break;
        case Field::ShortMonthName:
            text += names_.shortMonths[index(time.month)];
            break;
        case Field::MonthName:
            text += names_.months[index(time.month)];
            break;
        case Field::Quarter:
            number((time.month - 1) / 3 + 1);
            break;
        case Field::DayOfYear:
            number(DayOfYear(time));
            break;
        case Field::ShortYear:
            number(time.year % 100);
            break;
        case Field::Year:
            number(time.year);
            break;
        case Field::Hour:
            number(twelveHours_ ? (time.hour + 11) % 12 + 1 : time.hour);
            break;
        case Field::Minute:
            number(time.minute);
            break;
        case Field::Second:
            number(time.second);
            break;
        case Field::Half:
            text += time.hour < 12 ? piece.text : piece.afternoon;
            break;
        }
    }
    return text;
}

} // namespace kvtm
