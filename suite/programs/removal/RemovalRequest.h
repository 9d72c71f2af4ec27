#pragma once

#include <string>
#include <string_view>

namespace platform {
class CodePage;
}

namespace suite {

/// What "Remove.ini" asks for.
struct RemovalRequest {
    std::string
        vrex; // names the program's folder below QUARRA; checked, so that it is the name of one folder
    std::string name;    // for people only
    std::string logFile; // as written there
};

/// Reads the text of "Remove.ini": ANSI, four lines, "[Program]", "VREX=...", "Name=...", "Logfile=...", each
/// ended by CR LF or LF (the last one perhaps by nothing). Throws ComponentError for any other shape, and for
/// a VREX that is no folder name or names one of the folders that all programs share.
RemovalRequest ParseRemovalRequest(std::string_view bytes, const platform::CodePage& codePage);

} // namespace suite
