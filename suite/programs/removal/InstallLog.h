#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {
class CodePage;
}

namespace suite {

/// A path below a program's folder, one name an element; empty for the folder itself.
using ProgramPath = std::vector<std::string>;

/// Where a program is installed: "C:\QUARRA\<vrex>".
struct ProgramPlace {
    char drive = 'C';
    std::string vrex;
};

/// A path as install logs write it: below the program's folder ("Bin\x.dll") or whole
/// ("C:\QUARRA\Tobr43\x.dll"), with "\" or "/", names of folders perhaps with a separator at the end. Drive,
/// "QUARRA" and the vrex value are compared without regard to letter case. Throws ComponentError for a path
/// that leads, or could lead, out of the folder: another drive or folder, "..", a path from the drive's root,
/// names that are none.
ProgramPath ParseProgramPath(std::string_view path, const ProgramPlace& place);

/// The paths that an install log names, in its order: one a line, empty lines and lines that name the
/// program's folder itself left out. The text is UTF-8 (a byte order mark is skipped) when it is well-formed
/// as that, else ANSI. Throws as ParseProgramPath, with the number of the line.
std::vector<ProgramPath> ParseInstallLog(std::string_view bytes, const platform::CodePage& codePage,
                                         const ProgramPlace& place);

/// As it is told to people: "Bin\x.dll".
std::string ToText(const ProgramPath& path);

} // namespace suite
