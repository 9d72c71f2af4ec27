#include "tests/base/RefusalOf.h"
#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class Loading : public ComponentTest {
protected:
    bool ProfileFlagWith(base::Value id) {
        CreateHost();
        CreateTool();
        host->SetProfileId(std::move(id));
        EXPECT_TRUE(Load());
        return Probe().ProfileFlag();
    }
    std::string BrandWith(const std::vector<std::pair<std::string, std::string>>& registry) {
        installation.WriteRegistry(registry);
        CreateHost();
        CreateTool();
        EXPECT_TRUE(Load());
        return Probe().Brand();
    }
    static constexpr std::pair<const char*, const char*> binPath{"BinPath", "C:\\QUARRA\\Arvon\\Bin"};
};

TEST_F(Loading, IsLoadedBetweenLoadAndUnload) {
    CreateHost();
    CreateTool();
    EXPECT_FALSE(tool->IsLoaded());
    EXPECT_TRUE(Load());
    EXPECT_TRUE(tool->IsLoaded());
    host->Unload();
    EXPECT_FALSE(tool->IsLoaded());
    EXPECT_TRUE(Probe().Unloading());
}

TEST_F(Loading, AsksTheHostForThisInThisOrder) {
    CreateHost();
    CreateTool();
    ASSERT_TRUE(Load());
    std::vector<std::string> calls = Calls();
    std::erase_if(calls, [](const std::string& call) { return call.rfind("TaskView.", 0) == 0; });
    const std::vector<std::string> first{
        "RegisterListener(\"KvTM10\")",
        "AppPath()",
        "Views.Add(\"ocxToolProperties\", 5, \"KvTMU110.ctlToolProperties\", \"KvTM10\")",
        "Views.Add(\"ocxToolsUpdate\", 5, \"KvTMU110.ctlToolsUpdate\", \"KvTM10\")",
        "GetResource(\"Tools\", \"\")", // of the first caption
        "Views.Add(\"lvTools\", 4, null, \"KvTM10\")",
        "Tabs.Add(1, \"tabQRV\", \"KvTM10\", null, true)",
        "Tab.SetCaption(\"tabQRV\", \"text 4\")",
        "Tab.SetVisible(\"tabQRV\", true)",
        "Tab.SetEnabled(\"tabQRV\", true)",
        "Tab.Refresh(\"tabQRV\")",
        "ImageFolder()", // of the task pane
        "ComponentFolder()",
        "TaskViews.NewTaskView()",
        "TaskViews.Add(\"tvTools\", 3, \"KvTM10\")",
        "Nodes.Add(\"nodTools\", \"KvTM10\", 3, \"text 5\", null, true, 0)",
        "Node.SetImage(\"nodTools\", 1)",
        "Node.SetTaskViewKey(\"nodTools\", \"tvTools\")",
        "Menus.Add(\"mnuTool\", \"text 6\", \"text 7\", \"KvTM10\", null, null, 0, 0, true)",
    };
    ASSERT_GE(calls.size(), first.size());
    EXPECT_EQ(
        std::vector<std::string>(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(first.size())),
        first);
    std::vector<std::string> rest; // one call each of order, menus and buttons, and locale
    for (const std::string& call : calls)
        for (const char* start : {"BringPageForward(", "MenuItems.Clear(", "Buttons.Add(2", "GetSettings("})
            if (call.rfind(start, 0) == 0) rest.push_back(call);
    EXPECT_EQ(rest,
              (std::vector<std::string>{"BringPageForward(\"KvTM10\")", "MenuItems.Clear()",
                                        "Buttons.Add(2, \"KvTM10_Sep1\", 1)", "GetSettings(\"Framework\")"}));
}

TEST_F(Loading, PutsTheTabBehindThoseThatTheHostHas) {
    CreateHost();
    host->Framework()->Tabs().Add(1, "tabOther", "SnapIn", nullptr, true);
    CreateTool();
    ForgetCalls();
    ASSERT_TRUE(Load());
    EXPECT_EQ(CallsOf("Tabs.Add"),
              std::vector<std::string>{"Tabs.Add(2, \"tabQRV\", \"KvTM10\", null, true)"});
}

TEST_F(Loading, ShowsTheListInColumnsHeadedByTheHostsTexts) {
    LoadWith({});
    const auto views = host->Model().Views();
    ASSERT_EQ(views.size(), 3u);
    EXPECT_EQ(views[2].key, "lvTools");
    EXPECT_EQ(views[2].displayStyle, 3);
    const auto columns = host->Model().Columns("lvTools");
    ASSERT_EQ(columns.size(), 4u);
    EXPECT_EQ(columns[0].key, "name");
    EXPECT_EQ(columns[0].caption, "text 1");
    EXPECT_EQ(columns[0].widthTwips, 2880);
    EXPECT_EQ(columns[1].key, "version");
    EXPECT_EQ(columns[1].caption, "text 2");
    EXPECT_EQ(columns[2].key, "lastupdated");
    EXPECT_EQ(columns[2].caption, "text 3");
    EXPECT_EQ(columns[3].key, "classification");
    EXPECT_EQ(columns[3].caption, "text 1033");
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_EQ(columns[i].widthTwips, 1440);
}

TEST_F(Loading, SetsTabNodeAndMenuUp) {
    LoadWith({});
    const auto tabs = host->Model().Tabs();
    ASSERT_EQ(tabs.size(), 1u);
    EXPECT_EQ(tabs[0].key, "tabQRV");
    EXPECT_EQ(tabs[0].caption, "text 4");
    EXPECT_TRUE(tabs[0].visible);
    EXPECT_TRUE(tabs[0].enabled);
    ASSERT_EQ(tabs[0].nodes.size(), 1u);
    EXPECT_EQ(tabs[0].nodes[0].key, "nodTools");
    EXPECT_EQ(tabs[0].nodes[0].caption, "text 5");
    EXPECT_EQ(tabs[0].nodes[0].image, 1);
    EXPECT_EQ(tabs[0].nodes[0].taskView, "tvTools");
    const auto menus = host->Model().Menus();
    const auto menu =
        std::find_if(menus.begin(), menus.end(), [](const auto& m) { return m.key == "mnuTool"; });
    ASSERT_NE(menu, menus.end());
    EXPECT_EQ(menu->caption, "text 6");
    EXPECT_EQ(menu->owner, "KvTM10");
}

TEST_F(Loading, PermitsPricesForTheProfilesThreeAndFive) {
    EXPECT_TRUE(ProfileFlagWith(base::Value(3)));
}
TEST_F(Loading, PermitsPricesForAProfileNumberGivenAsText) {
    EXPECT_TRUE(ProfileFlagWith(base::Value("5")));
}
TEST_F(Loading, PermitsNoPricesForOtherProfiles) {
    EXPECT_FALSE(ProfileFlagWith(base::Value(4)));
}
TEST_F(Loading, PermitsNoPricesForAProfileThatIsNoNumber) {
    EXPECT_FALSE(ProfileFlagWith(base::Value("three")));
}
TEST_F(Loading, PermitsNoPricesWithoutAProfile) {
    EXPECT_FALSE(ProfileFlagWith({}));
}
TEST_F(Loading, KeepsThePermissionWhenTheProfileChangesLater) {
    EXPECT_TRUE(ProfileFlagWith(base::Value(5)));
    tool->SetID(base::Value(1));
    EXPECT_TRUE(Probe().ProfileFlag());
}

TEST_F(Loading, KeepsAPresentBrandAsRead) {
    EXPECT_EQ(BrandWith({binPath, {"Brand", " halcrest "}}), " halcrest ");
}
TEST_F(Loading, TakesTheHouseBrandWhenNoneIsSet) {
    EXPECT_EQ(BrandWith({binPath}), "Veltrane");
}
TEST_F(Loading, TakesTheHouseBrandWhenItIsEmpty) {
    EXPECT_EQ(BrandWith({binPath, {"Brand", ""}}), "Veltrane");
}

TEST_F(Loading, ShowsTheHostTheFailingCallAndStopsThere) {
    CreateHost();
    CreateTool();
    host->FailNext("Tabs.Add");
    const Refusal refusal = RefusalOf([&] { Load(); });
    EXPECT_EQ(refusal.number, 1001);
    EXPECT_EQ(refusal.description, "Tabs.Add failed");
    EXPECT_FALSE(tool->IsLoaded());
    EXPECT_TRUE(CallsOf("Menus.Add").empty());
}

TEST_F(Loading, TakesDownWhatItAddedButForTheUpdatesViewAndTheTab) {
    LoadWith({});
    host->Unload();
    EXPECT_EQ(Calls(), (std::vector<std::string>{"Tabs.Item(\"tabQRV\")", "Menus.Remove(\"mnuTool\")",
                                                 "Nodes.Remove(\"nodTools\")", "Views.Remove(\"lvTools\")",
                                                 "Views.Remove(\"ocxToolProperties\")"}));
    const auto views = host->Model().Views();
    ASSERT_EQ(views.size(), 1u);
    EXPECT_EQ(views[0].key, "ocxToolsUpdate");
    EXPECT_EQ(host->Model().Tabs().size(), 1u);
    const auto listeners = host->Model().Listeners();
    EXPECT_NE(std::find(listeners.begin(), listeners.end(), "KvTM10"), listeners.end());
}

TEST_F(Loading, SkipsEachRemovalThatFailsWhenUnloading) {
    LoadWith({});
    for (const char* removal : {"Menus.Remove", "Nodes.Remove", "Views.Remove"})
        host->FailNext(removal);
    host->Unload();
    EXPECT_FALSE(tool->IsLoaded());
    EXPECT_TRUE(Probe().Unloading());
    EXPECT_EQ(Calls().size(), 5u);
    const auto views = host->Model().Views();
    ASSERT_EQ(views.size(), 2u);
    EXPECT_EQ(views[0].key, "ocxToolsUpdate");
    EXPECT_EQ(views[1].key, "lvTools");
}

TEST_F(Loading, StaysLoadedWhenTheTabCannotBeFetchedAtUnloading) {
    LoadWith({});
    host->FailNext("Tabs.Item");
    host->Unload();
    EXPECT_EQ(ClaimReport("ITool_Unload").number, 1001);
    EXPECT_TRUE(tool->IsLoaded());
    EXPECT_FALSE(Probe().Unloading());
    EXPECT_TRUE(CallsOf("Menus.Remove").empty());
}

TEST_F(Loading, NeedsAFramework) {
    CreateHost();
    CreateTool();
    EXPECT_EQ(RefusalOf([&] { tool->Load(nullptr); }).number, base::errors::ObjectNotSet);
    EXPECT_FALSE(tool->IsLoaded());
}

TEST_F(Loading, IsNeededBeforeAnythingElseHasAnEffect) {
    CreateHost();
    CreateTool();
    tool->Unload();
    EXPECT_EQ(tool->ReceiveMessage(host->Framework()->NewMessage()), "");
    EXPECT_EQ(tool->SendRequestMessage(host->Framework()->NewRequest(), "SnapIn"), "");
    EXPECT_EQ(tool->LoadResString(42), "Missing String:42");
    EXPECT_TRUE(tool->Sort("name", false, false).IsEmpty());
    EXPECT_TRUE(Sent().empty());
    EXPECT_FALSE(tool->IsLoaded());
}

TEST_F(Loading, MayHappenAgainAfterUnloading) {
    LoadWith({{.name = "Layout", .identifier = "LAY1"}});
    host->Unload();
    EXPECT_TRUE(Load());
    EXPECT_TRUE(tool->IsLoaded());
    EXPECT_EQ(host->Model().Tabs().size(), 1u);
    EXPECT_EQ(host->Model().Views().size(), 3u);
}

} // namespace kvtm::test
