#include "tests/base/RefusalOf.h"
#include "tests/catalogue/PresentationTest.h"

namespace kvtm::test {

class ToolOrder : public PresentationTest {
protected:
    void StoreOrder(std::string_view key, std::string_view direction) {
        const auto option = [](std::string_view name, std::string_view value) {
            return "<Option><Name>" + std::string(name) + "</Name><Value>" + std::string(value) +
                   "</Value></Option>";
        };
        installation.Write("Arvon/OPTIONS.XML",
                           "<Options><ToolOptions><Tool ID=\"SOV02\">" + option("cmbToolSortKey", key) +
                               option("optToolSortOrder", direction) + "</Tool></ToolOptions></Options>");
    }
    /// The names in the order that a load with this stored order leaves.
    Texts NamesAfterLoading(std::string_view key, std::string_view direction) {
        StoreOrder(key, direction);
        LoadWith(threeTools);
        return ListedNames();
    }
    Texts Sorted(std::string_view property, bool descending, bool asDates = false) {
        Texts names;
        for (const ToolRecord& record : tool->Sort(property, descending, asDates))
            names.push_back(record->Name());
        return names;
    }

    const std::vector<CatalogueTool> threeTools = {
        {.name = "b", .classification = "Design", .version = "2.0", .lastUpdated = "2024-02-01"},
        {.name = "A", .classification = "Process", .version = "10.0", .lastUpdated = "2024-03-01"},
        {.name = "a", .classification = "Data", .version = "2.0", .lastUpdated = "2023-12-01"}};
};

TEST_F(ToolOrder, SortsByEachColumnsPropertyBothWays) {
    LoadWith(threeTools);
    Probe().LoadToolsCollection(); // b, A, a
    EXPECT_EQ(Sorted("name", false), (Texts{"A", "a", "b"}));
    EXPECT_EQ(Sorted("name", true), (Texts{"b", "a", "A"}));
    EXPECT_EQ(Sorted("version", false), (Texts{"A", "b", "a"}));
    EXPECT_EQ(Sorted("version", true), (Texts{"b", "a", "A"}));
    EXPECT_EQ(Sorted("classification", false), (Texts{"a", "b", "A"}));
    EXPECT_EQ(Sorted("classification", true), (Texts{"A", "b", "a"}));
    EXPECT_EQ(Sorted("lastupdated", false, true), (Texts{"a", "b", "A"}));
    EXPECT_EQ(Sorted("lastupdated", true, true), (Texts{"b", "A", "a"}));
}

TEST_F(ToolOrder, ReadsThePropertyInAnyLetterCase) {
    LoadWith(threeTools);
    EXPECT_EQ(Sorted("NAME", true), Sorted("name", true));
    EXPECT_EQ(Sorted("Classification", false), Sorted("CLASSIFICATION", false));
}

TEST_F(ToolOrder, LeavesTheListedToolsAloneWhenOnlyASortedCopyIsAskedFor) {
    LoadWith(threeTools);
    Probe().LoadToolsCollection();
    Sorted("name", false);
    EXPECT_EQ(ListedNames(), (Texts{"b", "A", "a"}));
    EXPECT_NE(Probe().ListedTools().Find("b"), nullptr);
}

TEST_F(ToolOrder, LosesTheNamesAsKeysWhenTheListedToolsAreSorted) {
    LoadWith(threeTools);
    Probe().LoadToolsCollection();
    Probe().SortTools("name", "0", false);
    EXPECT_EQ(ListedNames(), (Texts{"A", "a", "b"}));
    EXPECT_EQ(Probe().ListedTools().Find("b"), nullptr);
}

TEST_F(ToolOrder, GivesNothingWhenNoToolIsListed) {
    LoadWith({});
    EXPECT_TRUE(Sorted("name", false).empty());
    EXPECT_TRUE(Sorted("lastupdated", false, true).empty());
}

TEST_F(ToolOrder, ComparesAsDatesUnderTheLowerCaseNameOnly) {
    LoadWith({{.name = "October", .lastUpdated = "2023-10-09"},
              {.name = "February", .lastUpdated = "2024-02-10"},
              {.name = "September", .lastUpdated = "2024-09-01"}});
    Probe().SortTools("lastupdated", "0", false);
    EXPECT_EQ(ListedNames(), (Texts{"October", "February", "September"}));
    Probe().SortTools("LastUpdated", "0", false); // as text: "10/9/2023", "2/10/2024", "9/1/2024"
    EXPECT_EQ(ListedNames(), (Texts{"October", "February", "September"}));
    Probe().SortTools("LastUpdated", "1", false);
    EXPECT_EQ(ListedNames(), (Texts{"September", "February", "October"}));
    Probe().SortTools("lastupdated", "1", false); // descending by dates keeps the order
    EXPECT_EQ(ListedNames(), (Texts{"September", "February", "October"}));
}

TEST_F(ToolOrder, TakesBooleanWordsAndNumbersAsDirection) {
    LoadWith(threeTools);
    for (const char* descending : {"1", "-1", "True", "true", "2"}) {
        Probe().SortTools("name", "0", false);
        Probe().SortTools("name", descending, false);
        EXPECT_EQ(ListedNames(), (Texts{"b", "a", "A"})) << descending;
    }
    for (const char* ascending : {"0", "False", "FALSE"}) {
        Probe().SortTools("name", ascending, false);
        EXPECT_EQ(ListedNames(), (Texts{"A", "a", "b"})) << ascending;
    }
}

TEST_F(ToolOrder, RefusesADirectionThatIsNoBooleanAndKeepsTheOrder) {
    LoadWith(threeTools);
    EXPECT_EQ(RefusalOf([&] { Probe().SortTools("version", "down", false); }).number,
              base::errors::TypeMismatch);
    EXPECT_EQ(ListedNames(), (Texts{"A", "a", "b"}));
}

TEST_F(ToolOrder, RefusesAPropertyThatToolsDoNotHaveAndKeepsTheOrder) {
    LoadWith(threeTools);
    EXPECT_EQ(RefusalOf([&] { Probe().SortTools("colour", "0", false); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(ListedNames(), (Texts{"A", "a", "b"}));
}

TEST_F(ToolOrder, SelectsAndReloadsTheToolsNodeInFront) {
    LoadWith(threeTools);
    Probe().SortTools("name", "1", true);
    EXPECT_EQ(RowTexts(), (Texts{"b", "a", "A"}));
    EXPECT_EQ(Navigator().selected, "nodTools");
    EXPECT_EQ(host->Model().Page(), "KvTM10");
    EXPECT_EQ(CallsOf("Node.Refresh"), Texts{"Node.Refresh(\"nodTools\")"});
    EXPECT_EQ(CallsOf("Node.Select").size(), 2u); // before the refresh, and after it
    EXPECT_TRUE(CallsOf("Node.Release").empty());
}

TEST_F(ToolOrder, ReleasesTheToolsNodeFirstWhenItIsNotToBeSelected) {
    LoadWith(threeTools);
    Probe().SortTools("name", "1", false);
    EXPECT_EQ(CallsOf("Node.Release"), Texts{"Node.Release(\"nodTools\")"});
    EXPECT_EQ(RowTexts(), (Texts{"b", "a", "A"}));
    EXPECT_EQ(Navigator().selected, "nodTools");
}

TEST_F(ToolOrder, LeavesTheListAloneWhileAnotherTabIsInFront) {
    LoadWith(threeTools);
    BringAnotherTabForward();
    ForgetCalls();
    Probe().SortTools("name", "1", true);
    EXPECT_EQ(ListedNames(), (Texts{"b", "a", "A"}));
    EXPECT_EQ(RowTexts(), (Texts{"A", "a", "b"}));
    EXPECT_TRUE(CallsOf("Node.Refresh").empty());
    EXPECT_TRUE(CallsOf("BringPageForward").empty());
}

TEST_F(ToolOrder, SortsWithoutAToolsNode) {
    LoadWith(threeTools);
    host->Framework()->Tabs().Item("tabQRV")->Nodes().Remove("nodTools");
    Probe().SortTools("name", "1", true);
    EXPECT_EQ(ListedNames(), (Texts{"b", "a", "A"}));
}

TEST_F(ToolOrder, IsByNameWhenNothingIsStored) {
    EXPECT_EQ(NamesAfterLoading("", ""), (Texts{"A", "a", "b"}));
    EXPECT_EQ(RowTexts(), (Texts{"A", "a", "b"}));
}

TEST_F(ToolOrder, IsAsStored) {
    EXPECT_EQ(NamesAfterLoading("classification", "-1"), (Texts{"A", "b", "a"}));
}

TEST_F(ToolOrder, IsAscendingWhenOnlyAKeyIsStored) {
    EXPECT_EQ(NamesAfterLoading("version", ""), (Texts{"A", "b", "a"}));
}

TEST_F(ToolOrder, IsByNameWhenOnlyADirectionIsStored) {
    EXPECT_EQ(NamesAfterLoading("", "True"), (Texts{"b", "a", "A"}));
}

TEST_F(ToolOrder, ReportsTheNameOfTheToolWhoseDateCannotBeRead) {
    StoreOrder("lastupdated", "0");
    LoadWith({{.name = "b"}, {.name = "Layout", .lastUpdated = "last week"}, {.name = "a"}});
    const Report report = ClaimReport("SetToolOrder");
    EXPECT_EQ(report.number, base::errors::TypeMismatch);
    EXPECT_EQ(report.description, "tool \"Layout\": \"last week\" is not a date");
    EXPECT_EQ(ListedNames(), (Texts{"b", "Layout", "a"}));
}

TEST_F(ToolOrder, ReportsAStoredKeyThatNamesNoPropertyAndLoadsAllTheSame) {
    EXPECT_EQ(NamesAfterLoading("Colour", "0"), (Texts{"b", "A", "a"}));
    EXPECT_EQ(ClaimReport("SetToolOrder").number, base::errors::NoSuchMember);
    EXPECT_TRUE(tool->IsLoaded());
}

TEST_F(ToolOrder, ReportsAStoredDirectionThatIsNoBoolean) {
    EXPECT_EQ(NamesAfterLoading("name", "down"), (Texts{"b", "A", "a"}));
    EXPECT_EQ(ClaimReport("SetToolOrder").number, base::errors::TypeMismatch);
}

TEST_F(ToolOrder, ReportsALastUpdateThatIsNoDate) {
    StoreOrder("lastupdated", "0");
    LoadWith({{.name = "New", .lastUpdated = ""}, {.name = "Old"}});
    EXPECT_EQ(ClaimReport("SetToolOrder").number, base::errors::TypeMismatch);
    EXPECT_EQ(ListedNames(), (Texts{"New", "Old"}));
}

TEST_F(ToolOrder, IsMissingOnceAndByNameFromThenOnWhenNoOptionsWereStored) {
    installation.Write("Arvon/OPTIONS.XML",
                       "<Options><ToolOptions><Tool ID=\"SOV02\"/></ToolOptions></Options>");
    LoadWith(threeTools);
    ClaimReport("GetOptionValue"); // each missing option is made, and the call that made it fails
    ClaimReport("GetOptionValue");
    EXPECT_EQ(ClaimReport("SetToolOrder").number, base::errors::NoSuchMember);
    EXPECT_EQ(ListedNames(), (Texts{"b", "A", "a"}));

    EXPECT_TRUE(Probe().SetToolOrder());
    EXPECT_EQ(ListedNames(), (Texts{"A", "a", "b"}));
}

} // namespace kvtm::test
