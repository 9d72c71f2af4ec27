#pragma once

#include "base/Text.h"

#include <string>
#include <string_view>

namespace arvon {

/// The command line of a record's program, by the record's "Path" and "CommandLine": the path, and behind a
/// blank the arguments without blanks around them; neither is quoted. Empty without a path.
inline std::string CommandLineOf(std::string_view path, std::string_view arguments) {
    std::string commandLine(path);
    const std::string_view trimmed = base::TrimBlanks(arguments);
    if (commandLine.empty() || trimmed.empty()) return commandLine;
    commandLine += ' ';
    commandLine += trimmed;
    return commandLine;
}

} // namespace arvon
