#include "base/ComponentError.h"
#include "base/Value.h"

#include <chrono>
#include <cmath>

namespace base {

namespace {

constexpr int secondsPerDay = 24 * 60 * 60;
constexpr double firstDay = -657434; // 0100-01-01
constexpr double lastDay = 2958465;  // 9999-12-31
constexpr std::chrono::sys_days dayZero = std::chrono::year{1899} / 12 / 30;

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

Date FromCalendar(const CalendarTime& time) {
    if (time.year < 100 || time.year > 9999) RaiseOutsideYears();
    const auto isWithin = [](int value, int low, int high) { return value >= low && value <= high; };
    const bool isPlausible = isWithin(time.month, 1, 12) && isWithin(time.day, 1, 31);
    const std::chrono::year_month_day fields(std::chrono::year(time.year),
                                             std::chrono::month(static_cast<unsigned>(time.month)),
                                             std::chrono::day(static_cast<unsigned>(time.day)));
    if (!isPlausible || !fields.ok())
        throw ComponentError(errors::TypeMismatch, "Value", "the calendar has no such day");
    if (!isWithin(time.hour, 0, 23) || !isWithin(time.minute, 0, 59) || !isWithin(time.second, 0, 59))
        throw ComponentError(errors::TypeMismatch, "Value", "the day has no such time");
    const auto days = static_cast<double>((std::chrono::sys_days(fields) - dayZero).count());
    const double fraction =
        static_cast<double>(time.hour * 3600 + time.minute * 60 + time.second) / secondsPerDay;
    return Date{days < 0 ? days - fraction : days + fraction};
}

} // namespace base
