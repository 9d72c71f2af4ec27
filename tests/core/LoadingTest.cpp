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

TEST_F(Loading, BuildsViewsTabNodeAndMenuInOrder) {
    CreateHost();
    CreateTool();
    ASSERT_TRUE(Load());
    std::vector<std::string> built;
    for (const std::string& call : Calls()) {
        for (const char* start : {"RegisterListener(", "AppPath(", "Views.Add(", "Tabs.Add(",
                                  "TaskViews.Add(", "Nodes.Add(", "Menus.Add(", "GetSettings("}) {
            if (call.rfind(start, 0) == 0) built.push_back(call.substr(0, call.find(',')));
        }
    }
    EXPECT_EQ(built, (std::vector<std::string>{
                         "RegisterListener(\"KvTM10\")", "AppPath()", "Views.Add(\"ocxToolProperties\"",
                         "Views.Add(\"ocxToolsUpdate\"", "Views.Add(\"lvTools\"", "Tabs.Add(1",
                         "TaskViews.Add(\"tvTools\"", "Nodes.Add(\"nodTools\"", "Menus.Add(\"mnuTool\"",
                         "GetSettings(\"Framework\")"}));
}

TEST_F(Loading, DescribesTheListsColumnsInTheHostsTexts) {
    LoadWith({});
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

TEST_F(Loading, GivesTheMenuItsTextsAndTheHostsNumbers) {
    CreateHost();
    CreateTool();
    ASSERT_TRUE(Load());
    EXPECT_EQ(CallsOf("Menus.Add"),
              std::vector<std::string>{
                  "Menus.Add(\"mnuTool\", \"text 6\", \"text 7\", \"KvTM10\", null, null, 0, 0, true)"});
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
    EXPECT_EQ(CallsOf("Menus.Remove"), std::vector<std::string>{"Menus.Remove(\"mnuTool\")"});
    EXPECT_EQ(CallsOf("Nodes.Remove"), std::vector<std::string>{"Nodes.Remove(\"nodTools\")"});
    EXPECT_EQ(CallsOf("Views.Remove"),
              (std::vector<std::string>{"Views.Remove(\"lvTools\")", "Views.Remove(\"ocxToolProperties\")"}));
    const auto views = host->Model().Views();
    ASSERT_EQ(views.size(), 1u);
    EXPECT_EQ(views[0].key, "ocxToolsUpdate");
    EXPECT_EQ(host->Model().Tabs().size(), 1u);
    const auto listeners = host->Model().Listeners();
    EXPECT_NE(std::find(listeners.begin(), listeners.end(), "KvTM10"), listeners.end());
}

TEST_F(Loading, SkipsRemovalsThatFailWhenUnloading) {
    LoadWith({});
    host->FailNext("Menus.Remove");
    host->FailNext("Nodes.Remove");
    host->Unload();
    EXPECT_FALSE(tool->IsLoaded());
    EXPECT_EQ(CallsOf("Views.Remove").size(), 2u);
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
