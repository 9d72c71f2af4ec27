#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A command line taken apart as the Windows process starter and the programs behind it do.

/// One way to read a command line: which piece names the program, and the arguments behind it. Views into the
/// command line.
struct ProgramReading {
    std::string_view program;
    std::string_view arguments;
};

/// Every way to read a command line, in the order in which they are tried. A quoted program has one; an
/// unquoted one has one for every blank behind it, shortest first, then the whole line. None for a line of
/// blanks. A NUL ends the line.
std::vector<ProgramReading> ProgramReadings(std::string_view commandLine);

/// The program's path with ".exe" appended when its last name has no period in it, else nothing new.
std::string WithProgramExtension(std::string_view program);

/// Arguments split at blanks outside quotation marks. 2n backslashes before a quotation mark are n, and one
/// more makes the mark an ordinary character; other backslashes stand for themselves; "" inside quotation
/// marks is one such mark.
std::vector<std::string> SplitArguments(std::string_view arguments);

} // namespace platform
