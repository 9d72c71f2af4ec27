// The list of operations in the host's README is the list of operations.

#include "host/ReferenceHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace arvon::host::test {
namespace {

/// The names between back quotes in the rows of the table below that heading.
std::vector<std::string> NamesBelow(const std::string& heading) {
    std::ifstream readme(HOST_README);
    std::vector<std::string> names;
    bool isBelow = false;
    for (std::string line; std::getline(readme, line);) {
        if (line.starts_with("#")) isBelow = line == heading;
        if (!isBelow || !line.starts_with("|")) continue;
        for (std::size_t at = line.find('`'); at != std::string::npos;) {
            const std::size_t end = line.find('`', at + 1);
            if (end == std::string::npos) break;
            names.push_back(line.substr(at + 1, end - at - 1));
            at = line.find('`', end + 1);
        }
    }
    return names;
}

TEST(TheReadme, ListsExactlyTheOperationsThatThereAre) {
    std::vector<std::string> listed = NamesBelow("## Operations");
    std::sort(listed.begin(), listed.end());
    EXPECT_THAT(listed, testing::ElementsAreArray(ReferenceHost::Operations()));
}

TEST(TheReadme, ListsTheKeysOfTheSettings) {
    const std::vector<std::string> listed = NamesBelow("## host.ini");
    for (const auto* key : {"LocaleID", "FontName", "FontSize", "AppPath", "ImageFolder", "ComponentFolder",
                            "InstallPath", "CheckBoxes"})
        EXPECT_THAT(listed, testing::Contains(key));
}

} // namespace
} // namespace arvon::host::test
