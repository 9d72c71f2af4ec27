#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace arvon::console {

/// What the console is started with.
struct CommandLine {
    std::optional<std::string> suite; // a fresh copy of the sample suite without it
    std::optional<std::string> profile;
    std::optional<std::string> script; // standard input without it
    bool json = false;
    bool quiet = false;
    std::optional<std::string> help; // asked for: the text to print instead of doing anything
};

/// A command line that cannot be understood; what() is one line for the user.
class BadCommandLine : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws BadCommandLine.
CommandLine ReadCommandLine(int count, const char* const* arguments);

} // namespace arvon::console
