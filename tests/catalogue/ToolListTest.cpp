#include "catalogue/DateFormat.h"
#include "tests/base/DateTexts.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class ToolList : public ComponentTest {
protected:
    /// Lists the tools as they stand in the catalogue; loading would have sorted and shown them already.
    void ListUnsorted(const std::vector<CatalogueTool>& tools) {
        LoadWith({});
        installation.WriteTools(tools);
        host->Framework()->Tools().Reload();
        Probe().LoadToolsCollection();
    }

    const DateNames names = DateNames::English();
};

TEST_F(ToolList, ShowsARowForEachToolInCollectionOrder) {
    ListUnsorted({{.name = "Pipes", .vrex = "PIP", .classification = "Process", .version = "2.1"},
                  {.name = "Layout", .vrex = "LAY", .lastUpdated = "3/9/2023"}});
    Probe().LoadTools("nodTools", true);
    const auto rows = host->Model().List("lvTools");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].key, "PIP");
    EXPECT_EQ(rows[0].text, "Pipes");
    EXPECT_TRUE(rows[0].checked);
    using SubItems = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(rows[0].subItems,
              (SubItems{{"version", "2.1"}, {"lastupdated", "2024-03-01"}, {"classification", "Process"}}));
    EXPECT_EQ(rows[1].SubItem("lastupdated"), "2023-03-09");
}

TEST_F(ToolList, NeverShowsToolsOfTheFramework) {
    LoadWith(
        {{.name = "Frame", .classification = "Manager"}, {.name = "Base", .classification = "Core Tool"}});
    Probe().ShowAllTools() = true;
    Probe().LoadTools("nodTools", false);
    EXPECT_TRUE(RowTexts().empty());
}

TEST_F(ToolList, ShowsHiddenToolsUncheckedWhenAllAreShown) {
    LoadWith({{.name = "Layout"}, {.name = "Hidden", .showInList = "0"}});
    Probe().ShowAllTools() = true;
    Probe().LoadTools("nodTools", false);
    EXPECT_EQ(RowTexts(), (std::vector<std::string>{"Layout", "Hidden"}));
    EXPECT_TRUE(host->Model().List("lvTools")[0].checked);
    EXPECT_FALSE(host->Model().List("lvTools")[1].checked);
}

TEST_F(ToolList, PassesTheShowAllSwitchToTheTaskPane) {
    LoadWith({});
    Probe().ShowAllTools() = true;
    Probe().LoadTools("nodTools", true);
    EXPECT_TRUE(host->Model().TaskViews().at(0).showAll);
    Probe().ShowAllTools() = false;
    Probe().LoadTools("nodTools", true);
    EXPECT_FALSE(host->Model().TaskViews().at(0).showAll);
}

TEST_F(ToolList, IsEmptiedForAnEmptyCollection) {
    LoadWith({{.name = "Layout"}});
    Probe().LoadTools("nodTools", true);
    ASSERT_EQ(RowTexts().size(), 1u);
    Probe().ListedTools().Clear();
    Probe().LoadTools("nodTools", true);
    EXPECT_TRUE(RowTexts().empty());
}

TEST_F(ToolList, StaysAsItWasForAnUnknownTab) {
    LoadWith({{.name = "Layout"}});
    Probe().LoadTools("nodTools", true);
    ForgetCalls();
    Probe().LoadTools("nodOther", true);
    EXPECT_EQ(RowTexts().size(), 1u);
    EXPECT_TRUE(CallsOf("ListView.Clear").empty());
}

TEST_F(ToolList, RaisesTheFirstOwnErrorWhenTheListIsMissing) {
    LoadWith({});
    host->Framework()->Views().Remove("lvTools");
    const Refusal refusal = RefusalOf([&] { Probe().LoadTools("nodTools", true); });
    EXPECT_EQ(refusal.number, -2147221504);
    EXPECT_EQ(refusal.source, Probe().Name() + ".LoadTools");
    EXPECT_EQ(refusal.description, "text 12nodTools");
}

TEST_F(ToolList, KeepsTheRowsBeforeARepeatedKey) {
    ListUnsorted({{.name = "A", .vrex = "X"}, {.name = "B", .vrex = "Y"}, {.name = "C", .vrex = "X"}});
    EXPECT_THROW(Probe().LoadTools("nodTools", true), base::ComponentError);
    EXPECT_EQ(RowTexts(), (std::vector<std::string>{"A", "B"}));
}

TEST_F(ToolList, FailsForALastUpdateThatIsNoDateAndNamesItsTool) {
    ListUnsorted({{.name = "A"}, {.name = "B", .lastUpdated = "last week"}, {.name = "C"}});
    const Refusal refusal = RefusalOf([&] { Probe().LoadTools("nodTools", true); });
    EXPECT_EQ(refusal.number, base::errors::TypeMismatch);
    EXPECT_EQ(refusal.description, "tool \"B\": \"last week\" is not a date");
    EXPECT_EQ(RowTexts().at(0), "A");
    EXPECT_EQ(RowTexts().size(), 2u); // the list ends there
}

TEST_F(ToolList, TellsOfALastUpdateThatIsNoDateAlsoWhereTheToolsNameCannotBeRead) {
    ListUnsorted({{.name = "B", .lastUpdated = "last week"}});
    host->FailNext("Record.Name");
    const Refusal refusal = RefusalOf([&] { Probe().LoadTools("nodTools", true); });
    EXPECT_EQ(refusal.number, base::errors::TypeMismatch);
    EXPECT_EQ(refusal.description, "\"last week\" is not a date");
}

TEST_F(ToolList, ShowsEveryLastUpdateThatIsADate) {
    std::vector<CatalogueTool> tools;
    std::vector<std::string> dates;
    const auto add = [&](const char* text, const base::CalendarTime& time) {
        tools.push_back({.name = "tool " + std::to_string(tools.size()), .lastUpdated = text});
        dates.push_back(DateFormat("yyyy-mm-dd", names).Format(base::FromCalendar(time)));
    };
    for (const auto& [text, time] : dateTexts::isoDates)
        add(text, time);
    for (const auto& [text, time] : dateTexts::classicDates)
        add(text, time);
    for (const auto& [text, time] : dateTexts::dayNumbers)
        add(text, time);
    for (const auto& [text, inRecord, elsewhere] : dateTexts::recordDigits)
        add(text, inRecord);
    ListUnsorted(tools);
    Probe().LoadTools("nodTools", true);
    const auto rows = host->Model().List("lvTools");
    ASSERT_EQ(rows.size(), tools.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(rows[i].SubItem("lastupdated"), dates[i]) << tools[i].lastUpdated;
}

TEST_F(ToolList, ShowsAToolWithoutALastUpdate) {
    LoadWith({{.name = "A", .lastUpdated = ""}});
    Probe().LoadTools("nodTools", true);
    EXPECT_EQ(host->Model().List("lvTools").at(0).SubItem("lastupdated"), "");
}

} // namespace kvtm::test
