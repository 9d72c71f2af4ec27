#pragma once

#include "base/Text.h"

#include <string>
#include <string_view>

namespace kvtm {

/// Whether a program of this vrex runs as a process of its own; all others run in the host. Exact.
inline bool IsOutsideProgram(std::string_view vrex) noexcept {
    return vrex.starts_with("Tobr") || vrex.starts_with("Jx3");
}

/// A program's path and what is passed to it, as the host's process starter takes them: neither is quoted.
/// Empty without a path.
inline std::string CommandLineOf(std::string_view programPath, std::string_view arguments) {
    std::string commandLine(programPath);
    const std::string_view trimmed = base::TrimBlanks(arguments);
    if (commandLine.empty() || trimmed.empty()) return commandLine;
    commandLine += ' ';
    commandLine += trimmed;
    return commandLine;
}

} // namespace kvtm
