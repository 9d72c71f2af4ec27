#include "base/ComponentError.h"
#include "base/DateReaders.h"
#include "base/Value.h"

#include <chrono>
#include <cmath>

namespace base {

namespace {

constexpr int secondsPerDay = 24 * 60 * 60;
constexpr double firstDay = -657434; // 0100-01-01
constexpr double lastDay = 2958465;  // 9999-12-31
constexpr std::chrono::sys_days dayZero = std::chrono::year{1899} / 12 / 30;

bool IsWithin(int value, int low, int high) {
    return value >= low && value <= high;
}

[[noreturn]] void RaiseOutsideYears() {
    throw ComponentError(errors::Overflow, "Value", "the date lies outside the years 100 to 9999");
}

} // namespace

CalendarTime ToCalendar(Date date) {
    double day = std::trunc(date.days);
    if (!(day >= firstDay && day <= lastDay)) RaiseOutsideYears();
    auto seconds = static_cast<int>(std::lround(std::fabs(date.days - day) * secondsPerDay));
    if (seconds == secondsPerDay) {
        seconds = day < lastDay ? 0 : secondsPerDay - 1;
        if (day < lastDay) day += 1;
    }
    const std::chrono::year_month_day fields(dayZero + std::chrono::days(static_cast<int>(day)));
    return {.year = static_cast<int>(fields.year()),
            .month = static_cast<int>(static_cast<unsigned>(fields.month())),
            .day = static_cast<int>(static_cast<unsigned>(fields.day())),
            .hour = seconds / 3600,
            .minute = seconds / 60 % 60,
            .second = seconds % 60};
}

std::optional<Date> FindDay(int year, int month, int day) {
    const bool isPlausible = IsWithin(year, 100, 9999) && IsWithin(month, 1, 12) &&
                             IsWithin(day, 1, 31); // or it would wrap around
    const std::chrono::year_month_day fields(std::chrono::year(year),
                                             std::chrono::month(static_cast<unsigned>(month)),
                                             std::chrono::day(static_cast<unsigned>(day)));
    if (!isPlausible || !fields.ok()) return {};
    return Date{static_cast<double>((std::chrono::sys_days(fields) - dayZero).count())};
}

std::optional<Date> AtTime(Date day, double seconds) {
    if (seconds >= secondsPerDay) {
        day.days += 1;
        seconds -= secondsPerDay;
    }
    if (!(day.days >= firstDay && day.days <= lastDay)) return {};
    const double fraction = seconds / secondsPerDay;
    return Date{day.days < 0 ? day.days - fraction : day.days + fraction};
}

Date FromCalendar(const CalendarTime& time) {
    if (!IsWithin(time.year, 100, 9999)) RaiseOutsideYears();
    const std::optional<Date> day = FindDay(time.year, time.month, time.day);
    if (!day) throw ComponentError(errors::TypeMismatch, "Value", "the calendar has no such day");
    if (!IsWithin(time.hour, 0, 23) || !IsWithin(time.minute, 0, 59) || !IsWithin(time.second, 0, 59))
        throw ComponentError(errors::TypeMismatch, "Value", "the day has no such time");
    return *AtTime(*day, time.hour * 3600 + time.minute * 60 + time.second);
}

} // namespace base
