#pragma once

#include "base/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace base {

/// Reads a date, a time or both, as Value::ToDate describes the forms; nothing for any other text.
std::optional<Date> ReadDateText(std::string_view text);
/// "m/d/yyyy h:mm:ss AM", without the part that is zero. Throws Overflow outside years 100 to 9999.
std::string DateToText(Date date);

} // namespace base
