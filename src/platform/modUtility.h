#pragma once

#include <string>
#include <string_view>

namespace platform {

struct Services;

namespace modUtility {

/// Starts a command line and returns when that process has ended, however long it takes; at once when it
/// could not be started.
void RunAndWait(const Services& services, std::string_view commandLine);
/// The NUL-terminated ANSI text at an address, as UTF-8. Empty for null.
std::string StringFromAnsiPointer(const Services& services, const char* address);

} // namespace modUtility
} // namespace platform
