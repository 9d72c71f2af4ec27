#pragma once

#include <string_view>

namespace suite {

/// What the suite's outside programs share: the program of that title "works" for a while and ends.
///
///     PROGRAM [--seconds N] [--exit-code N] [DOCUMENT...]
///
/// With a display it shows a window with its documents and works until that is closed, or for N seconds,
/// decimals allowed. Without one it works for N seconds (2). It also ends when it is asked to (SIGTERM,
/// SIGINT), which counts as an ordinary end. Start and end are lines in a log beside the program
/// ("Tobr43.log" beside "Tobr43.exe"). Returns the exit code: N (0), or 2 for a bad command line.
int RunOutsideProgram(std::string_view title, int argc, char** argv);

} // namespace suite
