#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class Requests : public ComponentTest {
protected:
    void SetUp() override { LoadWith({{.name = "Layout", .vrex = "LAY"}, {.name = "Pipes", .vrex = "PIP"}}); }
};

using RequestsBeforeLoading = ComponentTest;

TEST_F(RequestsBeforeLoading, TellNoResourceModuleUntilAStringWasLoaded) {
    CreateHost();
    CreateTool();
    host->FailNext("AppPath"); // the load ends before the first text is asked for
    EXPECT_THROW(Load(), base::ComponentError);
    EXPECT_EQ(Request("GetResourceModule"), "0");
    EXPECT_NE(tool->LoadResString(1), "");
    EXPECT_NE(Request("GetResourceModule"), "0");
}

TEST_F(Requests, GiveThePropertiesOfTheToolOfTheLastNode) {
    Probe().LastNodeKey() = "Pipes";
    const std::string reply = Request("GetToolProperties");
    EXPECT_NE(reply.find("VREX=\"PIP\""), std::string::npos) << reply;
}

TEST_F(Requests, GiveNoPropertiesWithoutAMatchingTool) {
    Probe().LastNodeKey() = "pipes";
    EXPECT_EQ(Request("GetToolProperties"), "");
    Probe().LastNodeKey() = "";
    EXPECT_EQ(Request("GetToolProperties"), "");
}

TEST_F(Requests, SkipToolsWhoseNameCannotBeRead) {
    Probe().LastNodeKey() = "Pipes";
    host->FailNext("Record.Get");
    EXPECT_NE(Request("GetToolProperties").find("PIP"), std::string::npos);
}

TEST_F(Requests, TakeThePropertiesViewOffTheNodeWhenCancelled) {
    Probe().LastNodeKey() = "nodTools";
    EXPECT_EQ(Request("CancelToolProperties"), "True");
    EXPECT_EQ(CallsOf("Update").size(), 1u);
    EXPECT_EQ(CallsOf("Node.SetViewKey"), std::vector<std::string>{"Node.SetViewKey(\"nodTools\", \"\")"});
}

TEST_F(Requests, CancelWhateverFails) {
    Probe().LastNodeKey() = "no such node";
    EXPECT_EQ(Request("CancelToolProperties"), "True");
    host->FailNext("Tabs.Item");
    host->FailNext("Update");
    EXPECT_EQ(Request("CancelToolProperties"), "True");
}

class Permissions : public Requests {
protected:
    void Grant(std::string_view task, std::string_view toolName) { host->AddProfileTask(task, toolName); }
    std::string Enabled(std::string_view button) {
        for (const auto& control : host->Model().Controls()) {
            if (control.view != "ocxToolProperties") continue;
            for (const auto& [member, value] : control.members) {
                if (member == std::string(button) + ".Enabled") return value;
            }
        }
        return "untouched";
    }
    void SetUp() override {}
    void Start() {
        LoadWith({{.name = "Layout"}, {.name = "Pipes"}});
        Probe().LastNodeKey() = "Layout";
    }
};

TEST_F(Permissions, AreBothMissingWithoutTasks) {
    CreateHost();
    Start();
    EXPECT_EQ(Request("Initialize"), "");
    EXPECT_EQ(Enabled("GetUpdateButton"), "False");
    EXPECT_EQ(Enabled("GetLaunchButton"), "False");
}

TEST_F(Permissions, HoldForTheNamedToolOnly) {
    installation.WriteTools({{.name = "Layout"}, {.name = "Pipes"}});
    CreateHost();
    CreateTool();
    Grant("Can Update", "Pipes");
    Grant("Can Launch", "Layout");
    Grant("can update", "Layout");
    ASSERT_TRUE(Load());
    Probe().LastNodeKey() = "Layout";
    Request("Initialize");
    EXPECT_EQ(Enabled("GetUpdateButton"), "False");
    EXPECT_EQ(Enabled("GetLaunchButton"), "True");
}

TEST_F(Permissions, AreNotTouchedWithoutAMatchingTool) {
    Start();
    Probe().LastNodeKey() = "layout";
    EXPECT_EQ(Request("Initialize"), "");
    EXPECT_EQ(Enabled("GetUpdateButton"), "untouched");
}

TEST_F(Requests, ReportAMissingUpdateWindow) {
    EXPECT_EQ(Request("UnloadUpdateView"), "");
    const Report report = ClaimReport("HandleRequest");
    EXPECT_EQ(report.number, base::errors::ObjectErrorBase + 3);
    EXPECT_EQ(report.description, "the host has no window \"UpdateTools\"");
}

TEST_F(Requests, ReportToolPropertiesThatHoldNoControl) {
    host->Framework()->Views().Remove("ocxToolProperties");
    Probe().LastNodeKey() = "Layout";
    EXPECT_EQ(Request("Initialize"), "");
    const Report report = ClaimReport("HandleRequest");
    EXPECT_EQ(report.number, base::errors::ObjectErrorBase + 2);
    EXPECT_EQ(report.description, "the view \"ocxToolProperties\" holds no control");
    Probe().LastNodeKey() = "nobody";
    EXPECT_EQ(Request("Initialize"), "") << "and without a tool there is nothing to show";
}

TEST_F(Requests, ReportOptionsWithoutATool) {
    installation.Write("Arvon/OPTIONS.XML", "<Options/>");
    EXPECT_EQ(Request("GetOptionData", {{"ToolID", ""}}), "");
    const Report report = ClaimReport("HandleRequest");
    EXPECT_EQ(report.number, base::errors::ObjectErrorBase + 4);
    EXPECT_EQ(report.description, "the options hold no \"Tool\" element");
}

TEST_F(Requests, CloseTheUpdateWindow) {
    Probe().OpenUpdateToolsView();
    ASSERT_EQ(host->Model().Windows().size(), 1u);
    EXPECT_EQ(Request("UnloadUpdateView"), "");
    EXPECT_TRUE(host->Model().Windows().empty());
}

TEST_F(Requests, PassOverAnUpdateWindowThatDoesNotClose) {
    Probe().OpenUpdateToolsView();
    host->FailNext("Window.CloseWindow");
    EXPECT_EQ(Request("UnloadUpdateView"), "");
    EXPECT_EQ(host->Model().Windows().size(), 1u);
}

TEST_F(Requests, PassOverAMissingOptionsWindow) {
    EXPECT_EQ(Request("InitializeOptions"), "");
    EXPECT_EQ(Request("UnloadOptionsTool"), "");
}

TEST_F(Requests, NameTheToolOfTheLastNodeOnlyWhileSomethingIsLoaded) {
    Probe().LastNodeKey() = "Pipes";
    EXPECT_EQ(Request("LoadedVantors"), "");
    Probe().LoadedTools().Add("Layout");
    EXPECT_EQ(Request("LoadedVantors"), "Pipes");
}

TEST_F(Requests, SelectTheFixedTabOnlyWhileNothingIsLoaded) {
    EXPECT_EQ(Request("SelectFixedTab"), "");
    EXPECT_EQ(Sent(), std::vector<std::string>{"SnapIn:SelectTab{request 1}(key:2=\"FixedTab\")"});
    ForgetCalls();
    Probe().LoadedTools().Add("Layout");
    EXPECT_EQ(Request("SelectFixedTab"), "");
    EXPECT_TRUE(Sent().empty());
}

TEST_F(Requests, PassOverAFixedTabThatCannotBeAskedFor) {
    host->FailNext("NewRequest", 1, 1); // the first takes this one in
    EXPECT_EQ(Request("SelectFixedTab"), "");
    EXPECT_TRUE(Sent().empty());
    host->FailNext("Router.Send");
    EXPECT_EQ(Request("SelectFixedTab"), "");
    EXPECT_EQ(ClaimReport("SendRequestToOwner").number, 1001); // the sender's own
}

TEST_F(Requests, BuildTheResourcePathFromTheCachedLocale) {
    EXPECT_EQ(Request("GetResourcePath"), "C:\\QUARRA\\Arvon\\resources\\1033");
    Probe().LocaleId() = "1031";
    ForgetCalls();
    EXPECT_EQ(Request("GetResourcePath"), "C:\\QUARRA\\Arvon\\resources\\1031");
    EXPECT_TRUE(CallsOf("GetSettings").empty());
}

TEST_F(Requests, AskForTheLocaleOnlyWhileNoneIsKnown) {
    Probe().LocaleId() = "";
    EXPECT_EQ(Request("GetResourcePath"), "C:\\QUARRA\\Arvon\\resources\\1033");
    EXPECT_EQ(CallsOf("GetSettings"), std::vector<std::string>{"GetSettings(\"Framework\")"});
}

TEST_F(Requests, LeaveTheLocaleOutWhenItCannotBeHad) {
    Probe().LocaleId() = "";
    host->FailNext("GetSettings");
    EXPECT_EQ(Request("GetResourcePath"), "C:\\QUARRA\\Arvon\\resources\\");
}

} // namespace kvtm::test
