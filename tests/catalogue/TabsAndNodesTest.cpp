#include "tests/catalogue/PresentationTest.h"

#include "core/contract/EventShapes.h"

namespace kvtm::test {

using arvon::EventObject;
namespace eventKind = arvon::eventKind;

class TabsAndNodes : public PresentationTest {
protected:
    void Node(std::string_view source, std::string_view key, std::int32_t kind = eventKind::Selected) {
        Event(EventObject::Node, source, {{"key", key}}, kind);
    }
    void Tab(std::string_view source, std::int32_t kind = eventKind::Selected) {
        Event(EventObject::Tab, source, {{"selectedItem", ""}}, kind);
    }
    arvon::host::model::Node ToolNode(std::string_view key) const { return Entry(ToolsNode().nodes, key); }

    const std::vector<CatalogueTool> tools = {
        {.name = "Pipes"},
        {.name = "Hidden", .showInList = "0"},
        {.name = "Frame", .classification = "Manager"},
        {.name = "Base", .classification = "Core Tool"},
        {.name = "Layout", .classification = "manager"},
    };
};

TEST_F(TabsAndNodes, MakeANodeForEachListedToolInOrder) {
    LoadWith(tools);
    Node("tabQRV", "nodTools", eventKind::Expanded);
    EXPECT_EQ(NodeKeys(), (Texts{"Layout", "Pipes"}));
    const auto node = ToolNode("Pipes");
    EXPECT_EQ(node.caption, "Pipes");
    EXPECT_EQ(node.owner, "KvTM10");
    EXPECT_EQ(node.level, 3);
    EXPECT_EQ(node.image, 5);
    EXPECT_EQ(node.view, "ocxToolProperties");
}

TEST_F(TabsAndNodes, FollowTheOrderWhenExpandedAgain) {
    LoadWith(tools);
    Node("tabQRV", "nodTools", eventKind::Expanded);
    Probe().SortTools("name", "1", true);
    EXPECT_EQ(NodeKeys(), (Texts{"Layout", "Pipes"}));
    Node("tabQRV", "nodTools", eventKind::Expanded);
    EXPECT_EQ(NodeKeys(), (Texts{"Pipes", "Layout"}));
}

TEST_F(TabsAndNodes, AreForListedToolsEvenWhileAllToolsAreShown) {
    LoadWith(tools);
    Probe().ShowAllTools() = true;
    Node("tabQRV", "nodTools", eventKind::Expanded);
    EXPECT_EQ(NodeKeys(), (Texts{"Layout", "Pipes"}));
}

TEST_F(TabsAndNodes, ListTheToolsAnewWhenMadeFromTheWholeCollection) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", false);
    EXPECT_EQ(NodeKeys(), (Texts{"Pipes", "Layout"}));
    EXPECT_EQ(ListedNames(), (Texts{"Pipes", "Layout"}));
    EXPECT_NE(Probe().ListedTools().Find("Layout"), nullptr);
}

TEST_F(TabsAndNodes, ReportTheSecondToolOfANameOfTheWholeCollection) {
    LoadWith({{.name = "A"}, {.name = "B", .vrex = "B1"}});
    host->Framework()->Tools().Item(std::size_t{2})->Set("Name", base::Value("A"));
    Probe().BuildToolNodes("nodTools", false);
    EXPECT_EQ(ClaimReport("BuildToolNodes").number, base::errors::DuplicateKey);
    EXPECT_EQ(NodeKeys(), Texts{"A"});
    EXPECT_EQ(ListedNames(), Texts{"A"});
}

TEST_F(TabsAndNodes, KeepOneNodeForListedToolsOfOneName) {
    LoadWith({{.name = "A"}, {.name = "B", .vrex = "B1"}});
    host->Framework()->Tools().Item(std::size_t{2})->Set("Name", base::Value("A"));
    Probe().BuildToolNodes("nodTools", true);
    EXPECT_EQ(NodeKeys(), Texts{"A"});
}

TEST_F(TabsAndNodes, GoWhenTheirToolIsNoLongerListed) {
    LoadWith({{.name = "A"}, {.name = "B"}, {.name = "C"}});
    Node("tabQRV", "nodTools", eventKind::Expanded);
    host->Framework()
        ->Tabs()
        .Item("tabQRV")
        ->FindNode("nodTools")
        ->Nodes()
        .Add("Foreign", "Other", 3, "", nullptr, true, 0);
    ASSERT_EQ(NodeKeys(), (Texts{"A", "B", "C", "Foreign"}));
    installation.WriteTools({{.name = "C"}, {.name = "D"}});
    ProcessEnded("BuildToolXML_Arvon11.exe", 9);
    ClaimBox();
    Node("tabQRV", "nodTools", eventKind::Expanded);
    EXPECT_EQ(NodeKeys(), (Texts{"Foreign", "C", "D"}));
}

TEST_F(TabsAndNodes, AreNotMadeForToolsWithoutAName) {
    LoadWith({{.name = "Pipes"}, {.name = "", .vrex = "V1"}, {.name = "", .vrex = "V2"}});
    for (int round = 0; round < 3; ++round) {
        Node("tabQRV", "nodTools", eventKind::Expanded);
        EXPECT_EQ(NodeKeys(), Texts{"Pipes"});
    }
    Probe().BuildToolNodes("nodTools", false);
    EXPECT_EQ(NodeKeys(), Texts{"Pipes"});
    EXPECT_EQ(ListedNames(), (Texts{"Pipes", "", ""})); // listed they are
}

TEST_F(TabsAndNodes, AreNotMadeUnderAMissingParent) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodOther", true);
    EXPECT_TRUE(NodeKeys().empty());
}

TEST_F(TabsAndNodes, ReportNodesThatTheHostRefuses) {
    LoadWith(tools);
    host->FailNext("Nodes.Add");
    Node("tabQRV", "nodTools", eventKind::Expanded);
    EXPECT_EQ(ClaimReport("BuildToolNodes").number, 1001);
}

TEST_F(TabsAndNodes, ReloadTheListWhenTheToolsNodeIsSelected) {
    LoadWith(tools);
    host->Framework()->Views().Item("lvTools")->List()->Clear();
    host->Framework()->Menus().Item("mnuTool")->SetVisible(false);
    Node("tabQRV", "nodTools");
    EXPECT_EQ(RowTexts(), (Texts{"Layout", "Pipes"}));
    EXPECT_EQ(ToolsNode().taskView, "tvTools");
    EXPECT_TRUE(ToolMenu()->visible);
    EXPECT_EQ(Probe().LastNodeKey(), "nodTools");
}

TEST_F(TabsAndNodes, ListAllToolsWhenAllAreShown) {
    LoadWith(tools);
    Probe().ShowAllTools() = true;
    Node("tabQRV", "nodTools");
    EXPECT_EQ(RowTexts(), (Texts{"Pipes", "Hidden", "Layout"})); // the catalogue's order
}

TEST_F(TabsAndNodes, ReloadNothingWhenTheToolsNodeIsOnlyExpanded) {
    LoadWith(tools);
    ForgetCalls();
    Node("tabQRV", "nodTools", eventKind::Expanded);
    EXPECT_TRUE(CallsOf("ListView.Clear").empty());
    EXPECT_EQ(Probe().LastNodeKey(), "nodTools");
}

TEST_F(TabsAndNodes, ShowNoTaskPaneBesideOtherTopLevelNodes) {
    LoadWith(tools);
    const auto other = host->Framework()->Tabs().Item("tabQRV")->Nodes().Add("nodOther", "KvTM10", 3, "Other",
                                                                             nullptr, true, 0);
    other->SetTaskViewKey("tvTools");
    Node("tabQRV", "nodOther", eventKind::Expanded);
    EXPECT_EQ(Entry(Navigator().nodes, "nodOther").taskView, "");
    EXPECT_EQ(Probe().LastNodeKey(), "nodOther");
    EXPECT_EQ(Entry(Navigator().nodes, "nodOther").nodes.size(), 2u);
}

TEST_F(TabsAndNodes, ShowTheToolsPropertiesAndLeaveTheListAlone) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    host->Framework()->Menus().Item("mnuTool")->SetVisible(false);
    host->Framework()->Tabs().Item("tabQRV")->FindNode("Pipes")->SetViewKey("");
    ForgetCalls();
    Node("tabQRV", "Pipes");
    EXPECT_EQ(ToolNode("Pipes").view, "ocxToolProperties");
    EXPECT_TRUE(ToolMenu()->visible);
    EXPECT_TRUE(CallsOf("ListView.Clear").empty());
    EXPECT_EQ(Probe().LastNodeKey(), "Pipes");
}

TEST_F(TabsAndNodes, OfferAContextMenuForATool) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    Node("tabQRV", "Pipes", eventKind::ContextMenu);
    EXPECT_EQ(KeysOf(host->Model().ContextMenu()), Texts{"mnuToolContextTask"});
    EXPECT_EQ(Probe().LastNodeKey(), "Pipes");
}

TEST_F(TabsAndNodes, ReportAContextMenuThatTheHostRefuses) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    host->FailNext("ContextMenu.Add");
    Node("tabQRV", "Pipes", eventKind::ContextMenu);
    EXPECT_EQ(ClaimReport("HandleNodeEvent").number, 1001);
}

TEST_F(TabsAndNodes, LaunchAToolWhoseNodeIsOpened) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    host->Refuse("Pipes");
    Node("tabQRV", "Pipes", eventKind::Opened);
    EXPECT_EQ(CallsOf("Loader.Load"), Texts{"Loader.Load(\"Pipes\", \"KvTM10\")"});
    EXPECT_EQ(Probe().LastNodeKey(), "Pipes");
    ClaimBox();
}

TEST_F(TabsAndNodes, IgnoreOtherKindsOfEventsOfATool) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    Probe().LastNodeKey() = "before";
    for (const std::int32_t kind : {0, 1, 6, 8, 14})
        Node("tabQRV", "Pipes", kind);
    EXPECT_EQ(Probe().LastNodeKey(), "before");
}

TEST_F(TabsAndNodes, ReadSourceAndKeyWithoutBlanksAndTheSourceInAnyLetterCase) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    Node("  TABqrv ", " Pipes  ");
    EXPECT_EQ(Probe().LastNodeKey(), "Pipes");
}

TEST_F(TabsAndNodes, IgnoreTheNodesOfOtherTabsAndUnknownNodes) {
    LoadWith(tools);
    Probe().LastNodeKey() = "before";
    Node("tabOther", "nodTools");
    Node("tabQRV", "Nobody");
    Node("tabQRV", "");
    Node("tabQRV", "NODTOOLS");
    EXPECT_EQ(Probe().LastNodeKey(), "before");
}

TEST_F(TabsAndNodes, KeepTheLastNodeWhenTheListFails) {
    LoadWith(tools);
    Probe().LastNodeKey() = "before";
    host->FailNext("ListView.Clear");
    Node("tabQRV", "nodTools");
    EXPECT_EQ(ClaimReport("HandleNodeEvent").number, 1001);
    EXPECT_EQ(Probe().LastNodeKey(), "before");
}

TEST_F(TabsAndNodes, ComeBackToTheLastNodeWithTheirTab) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    Probe().LastNodeKey() = "Pipes";
    Tab("tabQRV");
    EXPECT_EQ(Navigator().selected, "Pipes");
    EXPECT_TRUE(ToolNode("Pipes").loaded);
    ForgetCalls();
    Tab("tabQRV");
    EXPECT_TRUE(CallsOf("Node.Refresh").empty()); // loaded already
}

TEST_F(TabsAndNodes, ComeBackToTheToolsNodeWhenNoneWasSelected) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    host->NodeEvent("tabQRV", "Pipes");
    Probe().LastNodeKey() = "";
    Tab("tabQRV");
    EXPECT_EQ(Navigator().selected, "nodTools");
}

TEST_F(TabsAndNodes, KnowTheirTabInAnyLetterCaseAndBetweenBlanks) {
    LoadWith(tools);
    Probe().BuildToolNodes("nodTools", true);
    for (const char* source : {"TABQRV", " tabqrv  "}) {
        host->NodeEvent("tabQRV", "Pipes");
        Probe().LastNodeKey() = "nodTools";
        Tab(source);
        EXPECT_EQ(Navigator().selected, "nodTools") << source;
    }
}

TEST_F(TabsAndNodes, IgnoreOtherTabsOtherKindsAndALastNodeThatIsGone) {
    LoadWith(tools);
    ForgetCalls();
    Tab("tabOther");
    Tab("tabQRV", eventKind::Opened);
    Probe().LastNodeKey() = "gone";
    Tab("tabQRV");
    EXPECT_TRUE(CallsOf("Node.Select").empty());
    EXPECT_TRUE(CallsOf("Node.Refresh").empty());
}

TEST_F(TabsAndNodes, ReportATabEventThatTheHostFails) {
    LoadWith(tools);
    host->FailNext("Node.Select");
    Tab("tabQRV");
    EXPECT_EQ(ClaimReport("HandleTabEvent").number, 1001);
}

TEST_F(TabsAndNodes, ReportARefreshThatTheHostFails) {
    LoadWith(tools);
    host->FailNext("Node.Refresh");
    Probe().RefreshToolsNode(true);
    EXPECT_EQ(ClaimReport("RefreshToolsNode").number, 1001);
}

TEST_F(TabsAndNodes, RefreshNothingWithoutTheToolsNode) {
    LoadWith(tools);
    host->Framework()->Tabs().Item("tabQRV")->Nodes().Remove("nodTools");
    ForgetCalls();
    Probe().RefreshToolsNode(true);
    EXPECT_TRUE(CallsOf("Node.Select").empty());
}

} // namespace kvtm::test
