#include "tests/launch/LaunchFixture.h"

using namespace kvtm;
using namespace kvtm::test;

namespace {

class ListItemEvents : public LaunchingTest {
protected:
    void Item(std::int32_t kind, Parameters parameters) {
        Event(arvon::EventObject::ListItem, "lvTools", parameters, kind);
    }
    bool SavedAsListed(const char* name) const {
        host->Framework()->Tools().Reload();
        return host->Framework()->Tools().Item(name)->ShowInList();
    }
};

constexpr std::int32_t checked = 1, columnClicked = 8, opened = 13;

} // namespace

TEST_F(ListItemEvents, KeepACheckInTheCatalogue) {
    LoadSuiteInFront({{.name = "A"}, {.name = "B"}});
    host->ListItemEvent("lvTools", "B", checked, false);
    EXPECT_EQ(CallsOf("Tools.Save").size(), 1u);
    EXPECT_TRUE(SavedAsListed("A"));
    EXPECT_FALSE(SavedAsListed("B"));
    EXPECT_EQ(Probe().CurrentTool(), "B");

    host->ListItemEvent("lvTools", "B", checked, true);
    EXPECT_TRUE(SavedAsListed("B"));
}

TEST_F(ListItemEvents, ListTheToolsThatAreCheckedInTheStoredOrder) {
    LoadSuiteInFront({{.name = "B", .identifier = "BBB"}, {.name = "A", .identifier = "AAA"}});
    const Strings items = EnabledToolItems();
    ForgetCalls();
    host->ListItemEvent("lvTools", "A", checked, false);
    EXPECT_EQ(ListedNames(), Strings{"B"});
    EXPECT_EQ(RowTexts(), (Strings{"A", "B"})) << "what is shown waits for its next building";
    EXPECT_EQ(EnabledToolItems(), items);
    EXPECT_TRUE(CallsOf("Node.Select").empty());
    host->ListItemEvent("lvTools", "A", checked, true);
    EXPECT_EQ(ListedNames(), (Strings{"A", "B"}));
}

TEST_F(ListItemEvents, DoNotMakeACheckedToolTheLastNode) {
    LoadSuiteInFront({{.name = "A"}, {.name = "B"}});
    Probe().LastNodeKey() = "A";
    host->ListItemEvent("lvTools", "B", checked, false);
    EXPECT_EQ(Probe().LastNodeKey(), "A");
}

TEST_F(ListItemEvents, StartNoOtherToolForOneWithoutAName) {
    LoadSuiteInFront({LongRunning("A", "Tobr43"), LongRunning("", "Tobr44")});
    Probe().LastNodeKey() = "A";
    host->SelectRow("lvTools", "");
    host->ListItemEvent("lvTools", "", opened);
    Event(arvon::EventObject::Task, "tskLaunchTool");
    EXPECT_TRUE(CallsOf("StartProcess").empty());
}

TEST_F(ListItemEvents, SaveNothingForARowThatIsNoTool) {
    LoadSuiteInFront({{.name = "A"}});
    Item(checked, {{"objectType", "IListItem"}, {"Text", "a"}, {"Checked", "False"}});
    EXPECT_TRUE(CallsOf("Tools.Save").empty());
    EXPECT_EQ(Probe().CurrentTool(), "a");
}

TEST_F(ListItemEvents, ReportACheckThatCannotBeRead) {
    LoadSuiteInFront({{.name = "A"}});
    Item(checked, {{"objectType", "IListItem"}, {"Text", "A"}, {"Checked", "maybe"}});
    EXPECT_EQ(ClaimReport("HandleListItemEvent").number, base::errors::TypeMismatch);
    EXPECT_TRUE(CallsOf("Tools.Save").empty());
}

TEST_F(ListItemEvents, ReportACatalogueThatCannotBeSaved) {
    LoadSuiteInFront({{.name = "A"}});
    host->FailNext("Tools.Save");
    host->ListItemEvent("lvTools", "A", checked, false);
    EXPECT_EQ(ClaimReport("HandleListItemEvent").description, "Tools.Save failed");
    EXPECT_EQ(ListedNames(), Strings{}) << "the record is changed all the same";
    host->Framework()->Tools().Save();
    EXPECT_FALSE(SavedAsListed("A")) << "and the next save keeps it";
}

TEST_F(ListItemEvents, LaunchAProgramThatIsOpened) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43"), LongRunning("Plot", "Tobr44")});
    host->ListItemEvent("lvTools", "Plot", opened);
    EXPECT_EQ(ProcessOf("Tobr43"), 0);
    EXPECT_EQ(Probe().LastNodeKey(), "Plot");
    End(ProcessOf("Tobr44"));
}

TEST_F(ListItemEvents, LaunchTheTextOfTheEventAndNotTheSelectedRow) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43"), LongRunning("Plot", "Tobr44")});
    host->SelectRow("lvTools", "Layout");
    Item(opened, {{"objectType", "iLISTiTEM"}, {"Text", "Plot"}});
    EXPECT_EQ(ProcessOf("Tobr43"), 0);
    End(ProcessOf("Tobr44"));
}

TEST_F(ListItemEvents, LaunchNothingWithoutASelectedTool) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43")});
    Item(opened, {{"objectType", "IListItem"}, {"Text", "Layout"}});
    EXPECT_TRUE(CallsOf("StartProcess").empty());
}

TEST_F(ListItemEvents, SortByAColumnThatIsClicked) {
    LoadSuiteInFront({{.name = "B"}, {.name = "a"}, {.name = "C"}});
    host->ColumnClick("lvTools", "name", "0");
    EXPECT_EQ(RowTexts(), (Strings{"B", "C", "a"}));
    host->ColumnClick("lvTools", "name", "1");
    EXPECT_EQ(RowTexts(), (Strings{"a", "C", "B"}));
}

TEST_F(ListItemEvents, SortOnlyForTheExactObjectType) {
    LoadSuiteInFront({{.name = "B"}, {.name = "A"}});
    for (const char* type : {"ICOLUMNHEADER", "IListItem", ""}) {
        Item(columnClicked,
             {{"objectType", type}, {"secondType", "icolumnheader"}, {"key", "name"}, {"order", "1"}});
    }
    EXPECT_EQ(RowTexts(), (Strings{"A", "B"})); // the stored order
    Item(columnClicked,
         {{"objectType", "IColumnHeader"}, {"secondType", "icolumnHEADER"}, {"key", "name"}, {"order", "1"}});
    EXPECT_EQ(RowTexts(), (Strings{"B", "A"}));
}

TEST_F(ListItemEvents, DoNothingForOtherObjects) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43"), {.name = "A"}});
    host->SelectRow("lvTools", "Layout");
    Item(opened, {{"objectType", "INode"}, {"secondType", "IListItem"}, {"Text", "Layout"}});
    Item(columnClicked, {{"objectType", "IColumnHeader"}, {"key", "name"}, {"order", "1"}});
    Item(checked, {{"Text", "A"}, {"Checked", "False"}});
    EXPECT_TRUE(CallsOf("StartProcess").empty());
    EXPECT_TRUE(CallsOf("Tools.Save").empty());
    EXPECT_EQ(RowTexts(), (Strings{"A", "Layout"}));
}

TEST_F(ListItemEvents, DoNothingForOtherKinds) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43")});
    host->SelectRow("lvTools", "Layout");
    for (const std::int32_t kind : {0, 2, 5, 7, 12, 14, -1}) {
        Item(kind, {{"objectType", "IListItem"}, {"Text", "Layout"}, {"Checked", "False"}});
    }
    EXPECT_TRUE(CallsOf("StartProcess").empty());
    EXPECT_TRUE(CallsOf("Tools.Save").empty());
}

TEST_F(ListItemEvents, ReportAnOrderThatIsNone) {
    LoadSuiteInFront({{.name = "B"}, {.name = "A"}});
    host->ColumnClick("lvTools", "name", "upwards");
    EXPECT_EQ(ClaimReport("HandleListItemEvent").number, base::errors::TypeMismatch);
    EXPECT_EQ(RowTexts(), (Strings{"A", "B"}));
}
