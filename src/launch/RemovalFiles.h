#pragma once

#include <string>
#include <string_view>

namespace kvtm {

/// Whether programs of this type may be removed from the tool list: letter case and blanks around it do not
/// count.
bool IsRemovableProgramType(std::string_view programType);

/// Where the component and the suite's removal program meet, in the installation's own form.
struct RemovalFiles {
    std::string log;         // what the program's installation wrote
    std::string instruction; // Remove.ini
    std::string program;     // the removal program
    std::string result;      // left by the removal program when all is gone
};

/// `installPath`: a path on the suite's drive; its first three characters (blanks before it ignored) are the
/// drive's root.
RemovalFiles RemovalFilesOf(std::string_view installPath, std::string_view vrex);

/// The text of Remove.ini: four lines, values as they stand.
std::string RemoveIniText(std::string_view vrex, std::string_view name, std::string_view logFile);

} // namespace kvtm
