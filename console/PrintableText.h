#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace arvon::console {

/// Text that cannot steer a terminal: control characters and bytes that are no UTF-8 are written as "\n",
/// "\t" or "\x1B".
std::string Printable(std::string_view text);
/// In double quotes, at most `limit` columns of it; what is cut off shows as "…".
std::string Quoted(std::string_view text, std::size_t limit);
/// The first characters that fit into `limit` columns, the last of them "…" where something is cut off. A
/// character and the marks on it stay together.
std::string Shortened(std::string_view text, std::size_t limit);
/// The columns that a printable text takes on a terminal: none for a combining mark, two for a wide
/// character.
std::size_t Width(std::string_view text);

} // namespace arvon::console
