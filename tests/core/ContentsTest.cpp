// The chief header's table of contents is only worth reading while it is true.

#include "tests/core/SourceText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace kvtm::test {
namespace {

using Procedures = std::map<std::string, std::set<std::string>>; // by file, as "core/Loading.cpp"

struct Contents {
    std::vector<std::string> listed;   // in the table at the top
    std::vector<std::string> sections; // headings below "private:"
    Procedures declared;               // in a file's sections, without a body in the header
};

/// The line's code: without its comment and the blanks before it.
std::string CodeOf(const std::string& line) {
    const std::string code = line.substr(0, line.find("//"));
    return code.substr(0, code.find_last_not_of(' ') + 1);
}

/// Whether a line begins a declaration in the class: continuation lines and bodies are indented further.
bool BeginsDeclaration(const std::string& code) {
    constexpr std::size_t indent = 4;
    return code.find_first_not_of(' ') == indent && code.find('(') != std::string::npos;
}

/// Whether the declaration that begins at a line has no body there.
bool IsDefinedElsewhere(const std::vector<std::string>& lines, std::size_t at) {
    for (; at < lines.size(); ++at) {
        const std::string code = CodeOf(lines[at]);
        if (code.ends_with(';')) return true;
        if (code.ends_with('{') || code.ends_with('}')) return false;
    }
    return false;
}

/// The name before the first parenthesis.
std::string NameIn(const std::string& code) {
    const std::string start = code.substr(0, code.find('('));
    return start.substr(start.find_last_of(" *&>") + 1);
}

Contents ReadContents() {
    const std::regex listed("//   ([a-z]+/[A-Za-z]+\\.cpp)  .*");
    const std::regex section("    // ([a-z]+/[A-Za-z]+\\.cpp)");
    const std::regex otherHeading("    // (host interfaces|state of ).*");
    const std::vector<std::string> lines = LinesOf("src/core/ToolMain.h");
    Contents contents;
    std::string file; // empty where no file's section is
    bool isPrivate = false;
    for (std::size_t at = 0; at < lines.size(); ++at) {
        std::smatch match;
        if (lines[at] == "private:") isPrivate = true;
        if (std::regex_match(lines[at], match, listed)) contents.listed.push_back(match[1]);
        if (std::regex_match(lines[at], match, section)) {
            file = match[1];
            if (isPrivate) contents.sections.push_back(file);
        } else if (std::regex_match(lines[at], otherHeading)) {
            file.clear();
        } else if (BeginsDeclaration(CodeOf(lines[at])) && IsDefinedElsewhere(lines, at)) {
            contents.declared[file].insert(NameIn(CodeOf(lines[at])));
        }
    }
    return contents;
}

/// What each source file of the component defines of ToolMain.
Procedures ReadDefinitions() {
    const std::regex member("\\bToolMain::(~?[A-Za-z_]+)\\(");
    Procedures defined;
    for (const std::string& file : SourceFilesBelow("src")) {
        if (!file.ends_with(".cpp")) continue;
        for (const std::string& line : LinesOf(file)) {
            std::smatch match;
            // a definition starts at the line's beginning; a use is indented
            if (!line.empty() && line[0] != ' ' && std::regex_search(line, match, member))
                defined[file.substr(std::string("src/").size())].insert(match[1]);
        }
    }
    return defined;
}

} // namespace

TEST(Contents, ListEverySectionOfTheClassInItsOrder) {
    const Contents contents = ReadContents();
    ASSERT_GT(contents.listed.size(), 20u);
    EXPECT_EQ(contents.sections, contents.listed);
}

TEST(Contents, ListExactlyTheFilesThatDefineMembers) {
    const Contents contents = ReadContents();
    std::set<std::string> files;
    for (const auto& [file, names] : ReadDefinitions())
        files.insert(file);
    EXPECT_EQ(std::set<std::string>(contents.listed.begin(), contents.listed.end()), files);
}

TEST(Contents, HoldEveryProcedureInTheSectionOfTheFileThatDefinesIt) {
    const Procedures declared = ReadContents().declared;
    const Procedures defined = ReadDefinitions();
    ASSERT_GT(defined.size(), 20u);
    for (const auto& [file, names] : defined) {
        const auto section = declared.find(file);
        ASSERT_NE(section, declared.end()) << file;
        EXPECT_EQ(section->second, names) << file;
    }
    for (const auto& [file, names] : declared)
        EXPECT_TRUE(defined.contains(file)) << file << *names.begin();
}

} // namespace kvtm::test
