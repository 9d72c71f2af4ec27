#pragma once

#include "base/ComponentError.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace arvon::host {

/// Raises an error of the host's own: source "Arvon110".
[[noreturn]] void Raise(std::int32_t number, std::string description);
/// Raises InvalidCall for something that is not there: no KIND "KEY".
[[noreturn]] void RaiseNoSuch(std::string_view kind, std::string_view key);

} // namespace arvon::host
