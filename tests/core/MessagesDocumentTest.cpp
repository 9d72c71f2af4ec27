// The page that tells other tools' authors about messages is held against the code.

#include "core/contract/EventShapes.h"
#include "host/MessageXml.h"
#include "tests/core/SourceText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kvtm::test {
namespace {

using testing::ElementsAreArray;

using Words = std::vector<std::string>;
using WordSet = std::set<std::string>;

/// A row of a table: its cells without blanks and back quotes around them.
using PageRow = Words;

/// A chapter ("## ") with its table, or a section ("### ") below one with its table of parameters.
struct PagePart {
    std::string heading;
    std::vector<PageRow> rows; // below the table's head
};

struct MessagesPage {
    std::vector<PagePart> chapters, sections;
    std::map<std::string, Words> sectionsOf; // headings, by chapter
    Words examples;                          // whole XML texts
    WordSet quoted;                          // single words between back quotes

    std::vector<PageRow> RowsOf(const std::string& chapter) const {
        for (const PagePart& part : chapters) {
            if (part.heading == chapter) return part.rows;
        }
        return {};
    }
    Words FirstCellsOf(const std::string& chapter) const {
        Words cells;
        for (const PageRow& row : RowsOf(chapter))
            cells.push_back(row.front());
        return cells;
    }
};

MessagesPage ReadPage() {
    const std::regex quotedWord("`([A-Za-z_]+)`");
    MessagesPage page;
    PagePart* part = nullptr;
    bool isBelowHead = false, isExample = false;
    for (const std::string& line : LinesOf("docs/messages.md")) {
        if (line.starts_with("## ")) part = &page.chapters.emplace_back(PagePart{line.substr(3), {}});
        if (line.starts_with("### ")) {
            part = &page.sections.emplace_back(PagePart{line.substr(4), {}});
            page.sectionsOf[page.chapters.back().heading].push_back(part->heading);
        }
        if (!line.starts_with("|")) isBelowHead = false;
        if (isBelowHead) part->rows.push_back(CellsOf(line));
        if (line.starts_with("|---")) isBelowHead = true;
        if (!line.starts_with("    ")) isExample = false;
        if (line.starts_with("    <Request ") || line.starts_with("    <Event ")) {
            isExample = true;
            page.examples.emplace_back();
        }
        if (isExample) page.examples.back() += line + "\n";
        for (std::sregex_iterator word(line.begin(), line.end(), quotedWord), end; word != end; ++word)
            page.quoted.insert((*word)[1]);
    }
    return page;
}

/// Constants of a namespace of a header: their names and texts, in order.
std::vector<std::pair<std::string, std::string>> Constants(const std::string& header,
                                                           const std::string& nameSpace) {
    const std::regex constant("std::string_view\\s+(\\w+)\\s*=\\s*\"([^\"]*)\"");
    std::string text;
    for (const std::string& line : LinesOf(header))
        text += line + "\n";
    const std::size_t begin = text.find("namespace " + nameSpace + " {");
    text = begin == std::string::npos ? "" : text.substr(begin, text.find("\n}", begin) - begin);
    std::vector<std::pair<std::string, std::string>> constants;
    for (std::sregex_iterator found(text.begin(), text.end(), constant), end; found != end; ++found)
        constants.emplace_back((*found)[1], (*found)[2]);
    return constants;
}

const std::string namesHeader = "src/core/Names.h";
const std::string shapesHeader = "src/core/contract/EventShapes.h";

std::string TextOfConstant(const std::string& nameSpace, const std::string& name) {
    for (const auto& [constant, text] : Constants(namesHeader, nameSpace)) {
        if (constant == name) return text;
    }
    return "no " + nameSpace + "::" + name;
}

WordSet TextsOf(const std::string& header, const std::string& nameSpace) {
    WordSet texts;
    for (const auto& [constant, text] : Constants(header, nameSpace))
        texts.insert(text);
    return texts;
}

Words RequestsOfDispatchTable() {
    Words names = MatchesIn("src/core/RequestDispatch.cpp", "\\{request::(\\w+), &ToolMain::");
    for (std::string& name : names)
        name = TextOfConstant("request", name);
    return names;
}

const std::string processEvent = "ShellProcessComplete";

/// What the page says of the parameters of a request or event: type codes by name.
std::map<std::string, std::string> CodesOf(const MessagesPage& page, const std::string& message) {
    const std::string heading = message == processEvent ? "Process" : message;
    std::map<std::string, std::string> codes;
    for (const PagePart& section : page.sections) {
        if (section.heading != heading) continue;
        for (const PageRow& row : section.rows)
            codes[row[0]] = row[1];
    }
    return codes;
}

} // namespace

TEST(MessagesPage, HasARowForEachRequestOfTheDispatchTableInItsOrder) {
    const MessagesPage page = ReadPage();
    ASSERT_EQ(RequestsOfDispatchTable().size(), 18u);
    EXPECT_THAT(page.FirstCellsOf("Requests answered"), ElementsAreArray(RequestsOfDispatchTable()));
}

TEST(MessagesPage, HasARowForEachRequestThatIsSent) {
    WordSet sent = TextsOf(namesHeader, "request");
    for (const std::string& answered : RequestsOfDispatchTable())
        sent.erase(answered);
    EXPECT_THAT(ReadPage().FirstCellsOf("Requests sent"), testing::UnorderedElementsAreArray(sent));
}

TEST(MessagesPage, HasARowForEachKindOfEventOfTheDispatchTableWithItsNumber) {
    const std::string kinds = "src/core/EventDispatch.cpp";
    const MessagesPage page = ReadPage();
    EXPECT_THAT(page.FirstCellsOf("Events handled"),
                ElementsAreArray(MatchesIn(kinds, "\\{EventObject::(\\w+), &ToolMain::")));
    for (const PageRow& row : page.RowsOf("Events handled")) {
        EXPECT_THAT(MatchesIn(shapesHeader, "^    " + row[0] + " = (\\d+),"), ElementsAreArray({row[1]}))
            << row[0];
    }
}

TEST(MessagesPage, HasARowForEachEventThatIsSent) {
    WordSet sent = TextsOf(namesHeader, "event");
    EXPECT_EQ(sent.erase(processEvent), 1u);
    EXPECT_THAT(ReadPage().FirstCellsOf("Events sent"), testing::UnorderedElementsAreArray(sent));
}

TEST(MessagesPage, TellsCategoryAndLevelOfEachEventAsTheyAreSent) {
    std::map<std::string, WordSet> told, sent;
    for (const PageRow& row : ReadPage().RowsOf("Events sent"))
        told[row[0]] = {row[2] + ", " + row[3]};
    for (const std::string& file : SourceFilesBelow("src")) {
        for (const std::string& name : MatchesIn(file, "NewEvent\\(event::(\\w+), ")) {
            const Words numbers = MatchesIn(file, "NewEvent\\(event::" + name + ", (\\d+, \\d+)\\)");
            sent[TextOfConstant("event", name)].insert(numbers.begin(), numbers.end());
        }
    }
    EXPECT_EQ(told, sent);
}

TEST(MessagesPage, TellsTheModeOfEachRequestAsItIsSent) {
    const std::regex made("NewRequest\\(request::(\\w+)\\)"), given("->SetMode\\((\\d+)\\)");
    std::map<std::string, std::string> told, sent;
    for (const PageRow& row : ReadPage().RowsOf("Requests sent"))
        told[row[0]] = row[2];
    for (const std::string& file : SourceFilesBelow("src")) {
        std::string request;
        for (const std::string& line : LinesOf(file)) {
            std::smatch match;
            if (std::regex_search(line, match, made)) {
                request = TextOfConstant("request", match[1]);
                if (told.contains(request)) sent[request] = "0"; // unless one is given
            } else if (std::regex_search(line, match, given)) {
                sent[request] = match[1];
            }
        }
    }
    EXPECT_EQ(told, sent);
}

TEST(MessagesPage, HasASectionForEachRow) {
    const MessagesPage page = ReadPage();
    for (const char* chapter : {"Requests answered", "Requests sent", "Events handled", "Events sent"}) {
        ASSERT_TRUE(page.sectionsOf.contains(chapter)) << chapter;
        EXPECT_EQ(page.sectionsOf.at(chapter), page.FirstCellsOf(chapter)) << chapter;
    }
}

TEST(MessagesPage, HasRowsForExactlyTheParametersThatThereAre) {
    WordSet known = TextsOf(namesHeader, "parameter"), told;
    known.merge(TextsOf(shapesHeader, "eventParameter"));
    for (const PagePart& section : ReadPage().sections) {
        for (const PageRow& row : section.rows) {
            ASSERT_EQ(row.size(), 4u) << section.heading;
            told.insert(row[0]);
        }
    }
    EXPECT_EQ(told, known);
}

TEST(MessagesPage, TellsTheTypeCodesOfWhatIsSent) {
    const MessagesPage page = ReadPage();
    std::map<std::string, WordSet> codes;
    for (const std::string& file : SourceFilesBelow("src")) {
        for (const auto& [adder, code] : {std::pair("Text", "2"), std::pair("Integer", "3")}) {
            for (const std::string& name :
                 MatchesIn(file, "Add" + std::string(adder) + "\\([^;]*parameter::(\\w+)"))
                codes[TextOfConstant("parameter", name)].insert(code);
        }
    }
    ASSERT_GT(codes.size(), 10u);
    for (const PagePart& section : page.sections) {
        for (const PageRow& row : section.rows) {
            const auto sent = codes.find(row[0]);
            const WordSet expected = sent == codes.end() ? WordSet{row[1]} : sent->second;
            EXPECT_EQ(expected, WordSet{row[1]}) << section.heading << ": " << row[0];
        }
    }
}

TEST(MessagesPage, NamesProceduresThatReport) {
    WordSet reporting;
    for (const std::string& file : SourceFilesBelow("src")) {
        for (const char* guard : {"Guarded\\(\"([\\w.]+)\"", "string_view proc = \"([\\w.]+)\""}) {
            const Words names = MatchesIn(file, guard);
            reporting.insert(names.begin(), names.end());
        }
    }
    Words told;
    for (const PageRow& row : ReadPage().RowsOf("Events handled"))
        told.push_back(row[3]);
    std::string text;
    for (const std::string& line : LinesOf("docs/messages.md"))
        text += line + " ";
    const std::regex phrase("[Rr]eported as ([A-Z]\\w{2,}|cToolMain\\.\\w+)"); // "X" stands for any
    for (std::sregex_iterator found(text.begin(), text.end(), phrase), end; found != end; ++found)
        told.push_back((*found)[1]);
    EXPECT_GT(told.size(), 20u);
    for (const std::string& name : told)
        EXPECT_TRUE(reporting.contains(name)) << name;
}

TEST(MessagesPage, NamesNoOtherMessageOrParameter) {
    WordSet known = TextsOf(namesHeader, "request");
    known.merge(TextsOf(namesHeader, "event"));
    known.merge(TextsOf(namesHeader, "parameter"));
    known.merge(TextsOf(shapesHeader, "eventParameter"));
    for (const std::string& object : ReadPage().FirstCellsOf("Events handled"))
        known.insert(object);
    for (const std::string& word : ReadPage().quoted)
        EXPECT_TRUE(known.contains(word)) << word;
}

TEST(MessagesPage, HasExamplesThatTheHostReads) {
    namespace messageXml = arvon::host::messageXml;
    const MessagesPage page = ReadPage();
    EXPECT_GE(page.examples.size(), 6u);
    for (const std::string& example : page.examples) {
        const bool isRequest = example.find("<Request ") != std::string::npos;
        const auto root = isRequest ? messageXml::Root::Request : messageXml::Root::Event;
        messageXml::Content content;
        ASSERT_NO_THROW(content = messageXml::Read(root, example.substr(example.find('<')))) << example;
        const std::map<std::string, std::string> codes = CodesOf(page, content.name);
        EXPECT_FALSE(codes.empty()) << example;
        for (const auto& parameter : content.parameters) {
            const auto told = codes.find(parameter->Name());
            ASSERT_NE(told, codes.end()) << parameter->Name() << " in " << example;
            EXPECT_EQ(told->second, std::to_string(parameter->Type())) << parameter->Name();
        }
    }
}

} // namespace kvtm::test
