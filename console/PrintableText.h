#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace arvon::console {

/// Text that cannot steer a terminal: control characters and bytes that are no UTF-8 are written as "\n",
/// "\t" or "\x1B".
std::string Printable(std::string_view text);
/// In double quotes, at most `limit` characters of it; what is cut off shows as "…".
std::string Quoted(std::string_view text, std::size_t limit);
/// The first `limit` characters, the last of them "…" where something is cut off.
std::string Shortened(std::string_view text, std::size_t limit);
/// Characters of a printable text: the columns that it takes.
std::size_t Width(std::string_view text);

} // namespace arvon::console
