#include "tests/catalogue/PresentationTest.h"

#include "core/contract/EventShapes.h"

namespace kvtm::test {

using arvon::EventObject;

class MenuEvents : public PresentationTest {
protected:
    void Menu(std::string_view key) { Event(EventObject::Menu, key); }
    void Button(std::string_view key) { Event(EventObject::Button, key); }

    const std::vector<CatalogueTool> threeTools = {{.name = "b",
                                                    .identifier = "BBB",
                                                    .classification = "Design",
                                                    .version = "2.0",
                                                    .lastUpdated = "2024-02-01"},
                                                   {.name = "A",
                                                    .identifier = "AAA",
                                                    .classification = "Process",
                                                    .version = "10.0",
                                                    .lastUpdated = "2024-03-01"},
                                                   {.name = "a",
                                                    .identifier = "aaa",
                                                    .classification = "Data",
                                                    .version = "2.0",
                                                    .lastUpdated = "2023-12-01"}};
};

TEST_F(MenuEvents, SortTheListAscending) {
    LoadWith(threeTools);
    Menu("mnuToolsSortVersion");
    EXPECT_EQ(RowTexts(), (Texts{"A", "a", "b"})); // of equal versions the one listed first stays first
    Menu("mnuToolsSortUPDATED");
    EXPECT_EQ(RowTexts(), (Texts{"a", "b", "A"}));
    Menu("mnuToolsSortType");
    EXPECT_EQ(RowTexts(), (Texts{"a", "b", "A"}));
    Menu("mnuToolsSortName");
    EXPECT_EQ(RowTexts(), (Texts{"A", "a", "b"}));
    EXPECT_EQ(ListedNames(), RowTexts());
    EXPECT_EQ(Navigator().selected, "nodTools");
}

TEST_F(MenuEvents, CompareItemsExactly) {
    LoadWith(threeTools);
    Menu("mnutoolssortversion");
    Menu("mnuToolsSortVersion ");
    Menu("mnuinstalltools");
    EXPECT_EQ(ListedNames(), (Texts{"A", "a", "b"}));
    EXPECT_TRUE(Sent().empty());
}

TEST_F(MenuEvents, ReportASortThatFails) {
    LoadWith({{.name = "A", .lastUpdated = "soon"}, {.name = "B"}});
    ClaimReport("HandleNodeEvent"); // loading shows the list, which cannot write the date
    Menu("mnuToolsSortUPDATED");
    EXPECT_EQ(ClaimReport("HandleMenuEvent").number, base::errors::TypeMismatch);
    EXPECT_EQ(ListedNames(), (Texts{"A", "B"}));
}

TEST_F(MenuEvents, ShowAToolsNode) {
    LoadWith(threeTools);
    Probe().BuildToolNodes("nodTools", true);
    BringAnotherTabForward();
    Menu("mnuBBB");
    EXPECT_EQ(host->Model().CurrentControl(), "tabQRV");
    EXPECT_EQ(Navigator().selected, "b");
    EXPECT_EQ(Probe().LastNodeKey(), "b");
    Menu("mnuaaa"); // another tool than mnuAAA
    EXPECT_EQ(Navigator().selected, "a");
}

TEST_F(MenuEvents, ShowTheNodeOfANameWithAmpersandsAndUmlauts) {
    const std::string name = "&R&D \xC3\x9C";
    LoadWith({{.name = name, .identifier = "RUD"}});
    Probe().BuildToolNodes("nodTools", true);
    Menu("mnuRUD");
    EXPECT_EQ(Navigator().selected, name);
}

TEST_F(MenuEvents, SelectNothingForAToolWithoutANode) {
    LoadWith(threeTools);
    const std::string selected = Navigator().selected;
    BringAnotherTabForward();
    Menu("mnuBBB");
    EXPECT_EQ(host->Model().CurrentControl(), "tabQRV");
    EXPECT_EQ(Navigator().selected, selected);
}

TEST_F(MenuEvents, DoNothingForTheMenuItselfAndForUnknownItems) {
    LoadWith(threeTools);
    BringAnotherTabForward();
    const std::string before = testing::PrintToString(ListedNames());
    ForgetCalls();
    for (const char* key : {"mnuTool", "mnuNobodys", "", "BBB"})
        Menu(key);
    EXPECT_EQ(host->Model().CurrentControl(), "tabOther");
    EXPECT_TRUE(CallsOf("Node.Select").empty());
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(testing::PrintToString(ListedNames()), before);
}

TEST_F(MenuEvents, OpenTheOptions) {
    LoadWith({});
    Menu("mnuToolOptions");
    EXPECT_EQ(KeysOf(host->Model().Windows()), Texts{"ocxToolOptions"});
}

TEST_F(MenuEvents, ReportAHostThatFails) {
    LoadWith(threeTools);
    host->FailNext("Menus.FindItem");
    Menu("mnuBBB");
    EXPECT_EQ(ClaimReport("HandleMenuEvent").number, 1001);
}

TEST_F(MenuEvents, LaunchTheToolOfTheContextMenu) {
    LoadWith(threeTools);
    Probe().BuildToolNodes("nodTools", true);
    host->NodeEvent("tabQRV", "b", arvon::eventKind::ContextMenu);
    host->Refuse("b");
    Menu("mnuLaunch");
    EXPECT_EQ(CallsOf("Loader.Load"), Texts{"Loader.Load(\"b\", \"KvTM10\")"});
    ClaimBox();
}

class ButtonEvents : public MenuEvents {};

TEST_F(ButtonEvents, LaunchTheTool) {
    LoadWith(threeTools);
    Probe().BuildToolNodes("nodTools", true);
    host->Refuse("b");
    Button("btnBBB");
    EXPECT_EQ(CallsOf("Loader.Load"), Texts{"Loader.Load(\"b\", \"KvTM10\")"});
    ClaimBox();
}

TEST_F(ButtonEvents, ReadButtonNamesInAnyLetterCase) {
    LoadWith({{.name = "b", .identifier = "BBB"}});
    host->Refuse("b");
    Button("BTNbbb");
    EXPECT_EQ(CallsOf("Loader.Load"), Texts{"Loader.Load(\"b\", \"KvTM10\")"});
    ClaimBox();
}

TEST_F(ButtonEvents, LaunchTheToolThatHasTheButtonOfASharedIdentifier) {
    LoadWith({{.name = "Second", .identifier = "SAME"}, {.name = "First", .identifier = "SAME"}});
    ClaimReport("AddMenu");
    ClaimReport("AddButton");
    ASSERT_EQ(PresentationTest::Button("btnSAME").toolTip, "text 16 First");
    host->Refuse("First");
    Button("btnSAME");
    EXPECT_EQ(CallsOf("Loader.Load"), Texts{"Loader.Load(\"First\", \"KvTM10\")"});
    ClaimBox();
}

TEST_F(ButtonEvents, BringTheNavigatorForward) {
    LoadWith(threeTools);
    BringAnotherTabForward();
    Button("btnNobodys");
    EXPECT_EQ(host->Model().CurrentControl(), "tabQRV");
    EXPECT_EQ(CallsOf("Tab.BringForward").size(), 2u); // the test's own, and this one
    Button("btnNobodys");
    EXPECT_EQ(CallsOf("Tab.BringForward").size(), 2u);
}

TEST_F(ButtonEvents, ShowTheUpdatesOnTheToolsNode) {
    LoadWith(threeTools);
    Probe().BuildToolNodes("nodTools", true);
    host->NodeEvent("tabQRV", "b");
    for (const char* key : {"btnUpdateTools", "BTNUPDATETOOLS"}) {
        Button(key);
        EXPECT_EQ(Navigator().selected, "nodTools");
        EXPECT_EQ(ToolsNode().view, "ocxToolsUpdate");
    }
    host->NodeEvent("tabQRV", "nodTools"); // the user comes back to the list
    EXPECT_EQ(ToolsNode().view, "");
    EXPECT_EQ(ToolsNode().taskView, "tvTools");
}

TEST_F(ButtonEvents, DoNothingWithoutATool) {
    LoadWith({{.name = "A", .identifier = ""}});
    for (const char* key : {"btn", "btnNobodys", "", "A"})
        Button(key);
    EXPECT_TRUE(CallsOf("Loader.Load").empty());
}

TEST_F(ButtonEvents, ReportAHostThatFails) {
    LoadWith(threeTools);
    host->FailNext("Tabs.Item");
    Button("btnBBB");
    EXPECT_EQ(ClaimReport("HandleButtonEvent").number, 1001);
}

} // namespace kvtm::test
