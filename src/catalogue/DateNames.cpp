#include "base/Text.h"
#include "catalogue/DateFormat.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace kvtm {

namespace {

/// One conversion of strftime in a locale. Empty where the locale's text is not UTF-8.
std::string InLocale(const std::locale& locale, const std::tm& time, char conversion) {
    std::ostringstream out;
    out.imbue(locale);
    std::use_facet<std::time_put<char>>(locale).put(std::ostreambuf_iterator<char>(out), out, ' ', &time,
                                                    conversion);
    return base::IsWellFormedUtf8(out.str()) ? out.str() : std::string();
}

/// The locale's short date as a picture, learnt from how it writes 25 November 2003. Empty when it cannot be
/// learnt.
std::string ShortDatePicture(const std::locale& locale) {
    std::tm probe{};
    probe.tm_year = 103;
    probe.tm_mon = 10;
    probe.tm_mday = 25;
    probe.tm_wday = 2;
    std::string text = InLocale(locale, probe, 'x');
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    if (std::any_of(text.begin(), text.end(), isLetter)) return {}; // a picture would read them as fields
    text = base::Replace(text, "2003", "yyyy");
    text = base::Replace(text, "03", "yy");
    text = base::Replace(text, "11", "mm");
    text = base::Replace(text, "25", "dd");
    const auto has = [&](std::string_view part) { return text.find(part) != std::string::npos; };
    const bool learnt =
        has("yy") && has("mm") && has("dd") && text.find_first_of("0123456789") == std::string::npos;
    return learnt ? text : std::string();
}

} // namespace

DateNames DateNames::English() {
    return {
        {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
         "November", "December"},
        {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"},
        {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"},
        {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"},
        "AM",
        "PM",
        "/",
        ":",
        "m/d/yyyy",
    };
}

DateNames DateNames::OfUser() {
    DateNames names = English();
    std::locale locale;
    try {
        locale = std::locale("");
    } catch (const std::runtime_error&) {
        return names; // the environment names a locale that is not installed
    }
    if (locale.name() == "C" || locale.name() == "POSIX") return names;

    const auto take = [&](std::string& name, const std::tm& time, char conversion) {
        std::string text = InLocale(locale, time, conversion);
        if (!text.empty()) name = std::move(text);
    };
    std::tm time{};
    time.tm_mday = 1;
    for (std::size_t month = 0; month < names.months.size(); ++month) {
        time.tm_mon = static_cast<int>(month);
        take(names.months[month], time, 'B');
        take(names.shortMonths[month], time, 'b');
    }
    for (std::size_t day = 0; day < names.days.size(); ++day) {
        time.tm_wday = static_cast<int>(day);
        take(names.days[day], time, 'A');
        take(names.shortDays[day], time, 'a');
    }
    time.tm_hour = 1;
    take(names.am, time, 'p');
    time.tm_hour = 13;
    take(names.pm, time, 'p');

    const std::string shortDate = ShortDatePicture(locale);
    if (!shortDate.empty()) {
        names.shortDate = shortDate;
        const std::size_t separator = shortDate.find_first_not_of("dmy");
        if (separator != std::string::npos) {
            const std::size_t end = shortDate.find_first_of("dmy", separator);
            names.dateSeparator = shortDate.substr(separator, end - separator);
        }
    }
    return names;
}

} // namespace kvtm
