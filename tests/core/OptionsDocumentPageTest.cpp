// The tables of the page about the options document are held against the code.

#include "base/XmlDocument.h"
#include "core/Names.h"
#include "options/OptionNames.h"
#include "tests/core/SourceText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace kvtm::test {
namespace {

using testing::UnorderedElementsAreArray;

std::vector<std::string> FirstCells(const std::string& head) {
    std::vector<std::string> cells;
    for (const std::vector<std::string>& row : RowsBelow("docs/options.md", head))
        cells.push_back(row.at(0));
    return cells;
}

} // namespace

TEST(OptionsPage, HasARowForEachOwnErrorOfTheOptions) {
    const auto numbers = MatchesIn("src/options/OptionErrors.h", "std::int32_t \\w+ = (\\d+);");
    ASSERT_GE(numbers.size(), 10u);
    EXPECT_THAT(FirstCells("| own error |"), testing::ElementsAreArray(numbers));
}

TEST(OptionsPage, HasARowForEachOptionThatTheComponentKnows) {
    std::set<std::string> known(optionName::Pricing.begin(), optionName::Pricing.end());
    for (const std::string_view name : {optionName::UnitOfMeasure, optionName::DefaultPrinter,
                                        optionName::Language, sortOption::Key, sortOption::Order})
        known.emplace(name);
    EXPECT_THAT(FirstCells("| option |"), UnorderedElementsAreArray(known));
    for (const std::vector<std::string>& row : RowsBelow("docs/options.md", "| option |")) {
        const bool isOfOneTool = row.at(0) == sortOption::Key || row.at(0) == sortOption::Order;
        EXPECT_EQ(row.at(1), isOfOneTool ? sortOption::ToolID : "any") << row.at(0);
    }
}

TEST(OptionsPage, TellsTheLimitsThatAreKept) {
    using base::XmlDocument;
    const std::map<std::string, std::size_t> limits = {
        {"MaximumBytes", XmlDocument::MaximumBytes},
        {"MaximumDepth", XmlDocument::MaximumDepth},
        {"MaximumAttributes", XmlDocument::MaximumAttributes},
        {"MaximumNamespaces", XmlDocument::MaximumNamespaces},
        {"MaximumNames", XmlDocument::MaximumNames},
    };
    std::map<std::string, std::size_t> told;
    for (const std::vector<std::string>& row : RowsBelow("docs/options.md", "| limit |"))
        told[row.at(0)] = std::stoul(row.at(1));
    EXPECT_EQ(told, limits);
}

TEST(OptionsPage, NamesTheMembersThatHoldOptions) {
    for (const std::string& member : FirstCells("| member |")) {
        EXPECT_FALSE(MatchesIn("src/core/ToolMain.h", "(" + member + ");").empty()) << member;
    }
    EXPECT_EQ(FirstCells("| member |").size(), 3u);
}

} // namespace kvtm::test
