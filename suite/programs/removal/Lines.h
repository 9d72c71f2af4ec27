#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace suite {

/// The lines of a text, without their ends (CR LF or LF). An end behind the last line begins no new one.
std::vector<std::string> SplitLines(std::string_view text);

/// Whether a text can be the name of one file or folder, and of nothing else: not empty, no separator, no
/// drive, no wildcard, no control character, not "." or "..", no blank or point at its end (which the suite's
/// own system drops).
bool IsFileName(std::string_view text);

} // namespace suite
