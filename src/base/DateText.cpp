#include "base/DateText.h"

#include "base/DateReaders.h"
#include "base/NumberText.h"

#include <algorithm>

namespace base {

namespace {

bool IsNumber(std::string_view text) {
    return ScanNumber(text, DigitGrouping::Accepted).length == text.size();
}

/// Digits alone, in the number that a date of the basic format has.
bool IsDigits(std::string_view text, std::size_t count) {
    return text.size() == count && std::all_of(text.begin(), text.end(), DateCursor::IsDigit);
}

} // namespace

int NumberOfDigits(std::string_view digits) {
    int number = 0;
    for (const char digit : digits)
        number = number * 10 + (digit - '0');
    return number;
}

double FractionOfDigits(std::string_view digits) {
    constexpr std::size_t exactDigits = 15;
    double number = 0, scale = 1;
    for (const char digit : digits.substr(0, exactDigits)) {
        number = number * 10 + (digit - '0');
        scale *= 10;
    }
    return number / scale;
}

std::optional<Date> ReadDateText(std::string_view text) {
    text = TrimWhiteSpace(text);
    if (IsNumber(text) && !IsDigits(text, 8))
        return {}; // of days; no date has so many as eight digits can count
    if (const std::optional<Date> date = ReadIsoDate(text)) return date;
    return ReadClassicDate(text);
}

Date ToRecordDate(const Value& value) {
    if (const std::string* text = value.TextIfAny()) {
        const std::string_view trimmed = TrimWhiteSpace(*text);
        if (IsDigits(trimmed, 4) || IsDigits(trimmed, 7))
            if (const std::optional<Date> date = ReadIsoDate(trimmed)) return *date;
    }
    return value.ToDate();
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
