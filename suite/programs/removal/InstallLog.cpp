#include "suite/programs/removal/InstallLog.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "platform/CodePage.h"
#include "suite/programs/removal/Lines.h"

namespace suite {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void Refuse(std::string_view path, const std::string& why) {
    throw base::ComponentError(base::errors::InvalidCall, "RemoveProgram",
                               "\"" + std::string(path) + "\" is refused: " + why);
}

bool HasDrive(std::string_view path) {
    return path.size() >= 2 && path[1] == ':';
}

/// The part of a whole path behind the program's folder.
std::string_view BelowProgram(std::string_view path, const std::string& slashed, const ProgramPlace& place) {
    const std::string folder = std::string(1, place.drive) + ":/QUARRA/" + place.vrex;
    const std::string_view start = std::string_view(slashed).substr(0, folder.size());
    const std::string_view rest = std::string_view(slashed).substr(start.size());
    if (!base::EqualIgnoringCase(start, folder) || !(rest.empty() || rest.starts_with('/')))
        Refuse(path, "it does not lie in " + base::Replace(folder, "/", "\\"));
    return rest.empty() ? rest : rest.substr(1);
}

} // namespace

ProgramPath ParseProgramPath(std::string_view path, const ProgramPlace& place) {
    const std::string slashed = base::Replace(path, "\\", "/");
    std::string_view below =
        HasDrive(slashed) ? BelowProgram(path, slashed, place) : std::string_view(slashed);
    if (below.ends_with('/') && below.size() > 1) below.remove_suffix(1);
    if (below.empty()) return {};

    ProgramPath names = base::Split(below, '/');
    for (const std::string& name : names) {
        if (!IsFileName(name)) Refuse(path, "\"" + name + "\" is not the name of one file or folder");
    }
    return names;
}

std::vector<ProgramPath> ParseInstallLog(std::string_view bytes, const platform::CodePage& codePage,
                                         const ProgramPlace& place) {
    if (bytes.starts_with(ByteOrderMark)) bytes.remove_prefix(ByteOrderMark.size());
    const std::string text = base::IsWellFormedUtf8(bytes) ? std::string(bytes) : codePage.FromAnsi(bytes);

    std::vector<ProgramPath> paths;
    std::size_t number = 0;
    for (const std::string& line : SplitLines(text)) {
        ++number;
        if (line.empty()) continue;
        try {
            ProgramPath path = ParseProgramPath(line, place);
            if (!path.empty()) paths.push_back(std::move(path));
        } catch (const base::ComponentError& error) {
            throw base::ComponentError(error.Number(), error.Source(),
                                       "install log, line " + std::to_string(number) + ": " +
                                           error.Description());
        }
    }
    return paths;
}

std::string ToText(const ProgramPath& path) {
    std::string text;
    for (const std::string& name : path)
        text += (text.empty() ? "" : "\\") + name;
    return text;
}

} // namespace suite
