#include "suite/programs/removal/RemovalRequest.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "platform/CodePage.h"
#include "suite/programs/removal/Lines.h"

#include <algorithm>
#include <array>
#include <vector>

namespace suite {
namespace {

constexpr std::array<std::string_view, 3> SharedFolders = {"Arvon", "Enviro", "Packages"};

[[noreturn]] void Refuse(const std::string& what) {
    throw base::ComponentError(base::errors::InvalidCall, "RemoveProgram", "Remove.ini: " + what);
}

std::string ValueOf(const std::string& line, std::string_view key, int number) {
    const std::string start = std::string(key) + "=";
    if (!line.starts_with(start)) {
        Refuse("line " + std::to_string(number) + " should begin with \"" + start + "\", found \"" + line +
               "\"");
    }
    return line.substr(start.size());
}

void CheckVrex(const std::string& vrex) {
    if (!IsFileName(vrex)) Refuse("the VREX \"" + vrex + "\" is not the name of one folder");
    if (std::ranges::any_of(SharedFolders,
                            [&](auto shared) { return base::EqualIgnoringCase(shared, vrex); }))
        Refuse("the VREX \"" + vrex + "\" names a folder that all programs share");
}

} // namespace

RemovalRequest ParseRemovalRequest(std::string_view bytes, const platform::CodePage& codePage) {
    const std::vector<std::string> lines = SplitLines(codePage.FromAnsi(bytes));
    if (lines.size() != 4) Refuse("should have four lines, found " + std::to_string(lines.size()));
    if (lines[0] != "[Program]") Refuse("line 1 should be \"[Program]\", found \"" + lines[0] + "\"");

    RemovalRequest request{ValueOf(lines[1], "VREX", 2), ValueOf(lines[2], "Name", 3),
                           ValueOf(lines[3], "Logfile", 4)};
    CheckVrex(request.vrex);
    return request;
}

} // namespace suite
