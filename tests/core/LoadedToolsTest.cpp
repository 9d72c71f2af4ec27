#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class LoadedTools : public ComponentTest {
protected:
    void SetUp() override {
        LoadWith({{.name = "Layout", .vrex = "LAY", .identifier = "L1"}});
        host->Listen("Zarn11", "");
        ForgetCalls();
    }
    std::string Unload(Parameters parameters) { return Request("UnloadTool", parameters); }
    std::vector<std::string> Names() { return Probe().LoadedTools().Snapshot(); }
};

TEST_F(LoadedTools, StayWithoutAVrex) {
    Probe().LoadedTools().Add("Layout");
    EXPECT_EQ(Unload({}), "");
    EXPECT_EQ(Unload({{"vrex", "   "}, {"toolID", "L1"}}), "");
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(Names().size(), 1u);
    Probe().RequestUnloadTool(nullptr);
    EXPECT_TRUE(Sent().empty());
}

TEST_F(LoadedTools, AreAnnouncedToLauncherAndShellEvenWhenTheHostKnowsNone) {
    Probe().LoadedTools().Add("Layout");
    EXPECT_EQ(Unload({{"vrex", " NONE "}, {"toolID", "L1"}}), "");
    EXPECT_EQ(Sent(),
              (std::vector<std::string>{"Zarn11:Tool_Unload{event 2/9}(vrex:2=\"NONE\", toolID:2=\"L1\")",
                                        "SnapIn:Tool_Unload{event 2/9}(vrex:2=\"NONE\", toolID:2=\"L1\")"}));
    EXPECT_EQ(Names().size(), 1u);
}

TEST_F(LoadedTools, AreAnnouncedByTheToolIdAsItWasGiven) {
    Unload({{"vrex", "NONE"}, {"toolID", " L1 "}});
    Unload({{"vrex", "NONE"}});
    EXPECT_EQ(Sent(),
              (std::vector<std::string>{"Zarn11:Tool_Unload{event 2/9}(vrex:2=\"NONE\", toolID:2=\" L1 \")",
                                        "SnapIn:Tool_Unload{event 2/9}(vrex:2=\"NONE\", toolID:2=\" L1 \")",
                                        "Zarn11:Tool_Unload{event 2/9}(vrex:2=\"NONE\", toolID:2=\"\")",
                                        "SnapIn:Tool_Unload{event 2/9}(vrex:2=\"NONE\", toolID:2=\"\")"}));
}

TEST_F(LoadedTools, AreNotToldToAWorkflowWithoutAName) {
    host->Listen("WORKFLOW", "");
    Unload({{"vrex", "NONE"}});
    for (const std::string& sent : Sent())
        EXPECT_EQ(sent.find("WORKFLOW"), std::string::npos) << sent;
}

TEST_F(LoadedTools, BringTabAndMenusUpToDateAfterAnUnload) {
    Unload({{"vrex", "NONE"}});
    EXPECT_EQ(Calls(), (std::vector<std::string>{
                           "NewRequest()", "Router.IsRegistered(\"WORKFLOW\")", "NewEvent()",
                           "Router.IsRegistered(\"Zarn11\")", "NewMessage()",
                           "Router.IsRegistered(\"SnapIn\")", "NewMessage()", "Tabs.Item(\"tabQRV\")",
                           "Tab.Update(\"tabQRV\")", "Menus.Item(\"mnuTool\")", "MenuItems.Item(\"mnuL1\")",
                           "MenuItem.SetEnabled(\"mnuL1\", true)", "MenuItems.Item(\"mnuToolsSep1\")",
                           "MenuItem.SetEnabled(\"mnuToolsSep1\", true)", "SetMousePointer(0)"}));
}

TEST_F(LoadedTools, LeaveTabAndMenusWhileTheComponentItselfUnloads) {
    host->FailNext("Menus.Remove"); // or there would be no items to set
    host->Unload();
    ForgetCalls();
    Unload({{"vrex", "NONE"}});
    EXPECT_TRUE(CallsOf("Tab.Update").empty());
    EXPECT_TRUE(CallsOf("MenuItem.SetEnabled").empty());
    EXPECT_EQ(Sent().size(), 2u);
}

TEST_F(LoadedTools, BringTabAndMenusUpToDateAgainOnceTheComponentWasLoadedAnew) {
    host->Unload();
    host->Load();
    ForgetCalls();
    Unload({{"vrex", "NONE"}});
    EXPECT_EQ(CallsOf("Tab.Update").size(), 1u);
    EXPECT_FALSE(CallsOf("MenuItem.SetEnabled").empty());
}

TEST_F(LoadedTools, ReportAFailureAndStopThere) {
    host->FailNext("Tabs.Item");
    Unload({{"vrex", "NONE"}});
    EXPECT_EQ(ClaimReport("Request_UnloadTool").number, 1001);
    EXPECT_TRUE(CallsOf("Tab.Update").empty());
}

} // namespace kvtm::test
