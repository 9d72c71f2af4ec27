#pragma once

#include "base/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace base {

/// Reads a date, a time or both, as Value::ToDate describes the forms; nothing for any other text, nor for
/// one that is a number of days.
std::optional<Date> ReadDateText(std::string_view text);
/// The date that a record holds: as Value::ToDate, but a text of four digits is a year and one of seven a
/// year and the day in it. Throws as ToDate does.
Date ToRecordDate(const Value& value);
/// "m/d/yyyy h:mm:ss AM", without the part that is zero. Throws Overflow outside years 100 to 9999.
std::string DateToText(Date date);

} // namespace base
