// The chief header's table of contents is only worth reading while it is true.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Contents {
    std::vector<std::string> listed;   // in the table at the top
    std::vector<std::string> sections; // headings inside the class
};

Contents ReadContents() {
    std::ifstream in(fs::path(SOURCE_FOLDER) / "core" / "ToolMain.h");
    const std::regex listed("^//   ([a-z]+/[A-Za-z]+\\.cpp)  .*");
    const std::regex section("^    // ([a-z]+/[A-Za-z]+\\.cpp)$");
    Contents contents;
    for (std::string line; std::getline(in, line);) {
        std::smatch match;
        if (std::regex_match(line, match, listed)) contents.listed.push_back(match[1]);
        if (std::regex_match(line, match, section)) contents.sections.push_back(match[1]);
    }
    return contents;
}

/// Source files of the component that define members of ToolMain.
std::set<std::string> FilesWithMembers() {
    std::set<std::string> files;
    const std::regex member("\\bToolMain::~?[A-Za-z_]+\\(");
    for (const char* folder : {"core", "catalogue", "options", "launch"}) {
        for (const auto& entry : fs::directory_iterator(fs::path(SOURCE_FOLDER) / folder)) {
            if (entry.path().extension() != ".cpp") continue;
            std::ifstream in(entry.path());
            for (std::string line; std::getline(in, line);) {
                // a definition starts at the line's beginning; a use is indented
                if (!line.empty() && line[0] != ' ' && std::regex_search(line, member)) {
                    files.insert(std::string(folder) + "/" + entry.path().filename().string());
                }
            }
        }
    }
    return files;
}

} // namespace

TEST(Contents, ListEverySectionOfTheClassInItsOrder) {
    const Contents contents = ReadContents();
    ASSERT_GT(contents.listed.size(), 20u);
    // what is only public needs no section of its own
    std::vector<std::string> listedWithSection;
    std::copy_if(contents.listed.begin(), contents.listed.end(), std::back_inserter(listedWithSection),
                 [&](const std::string& file) {
                     return std::find(contents.sections.begin(), contents.sections.end(), file) !=
                            contents.sections.end();
                 });
    EXPECT_EQ(contents.sections, listedWithSection);
    EXPECT_EQ(contents.sections.size(), contents.listed.size());
}

TEST(Contents, ListExactlyTheFilesThatDefineMembers) {
    const Contents contents = ReadContents();
    EXPECT_EQ(std::set<std::string>(contents.listed.begin(), contents.listed.end()), FilesWithMembers());
}
