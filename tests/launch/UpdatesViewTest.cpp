#include "tests/launch/LaunchFixture.h"

using namespace kvtm;
using namespace kvtm::test;

namespace {

class UpdatesView : public LaunchingTest {
protected:
    void LoadWithUpdatesComponent() { LoadSuite({UpdatesComponent()}); }
};

} // namespace

TEST_F(UpdatesView, OpensInAWindowOfItsOwn) {
    LoadSuite({});
    Probe().OpenUpdateToolsView();
    const auto windows = host->Model().Windows();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(windows[0].key, "UpdateTools");
    EXPECT_EQ(windows[0].kind, 5);
    EXPECT_EQ(windows[0].owner, "KvTM10");
    EXPECT_EQ(windows[0].control, "KvTMU110.ctlToolsUpdate");
    EXPECT_EQ(windows[0].caption, "text 34");
    EXPECT_EQ(windows[0].widthTwips, 7250);
    EXPECT_EQ(windows[0].heightTwips, 5750);
    EXPECT_EQ(windows[0].mode, 2);
}

TEST_F(UpdatesView, IsMadeOnceAndShownAgain) {
    LoadSuite({});
    Probe().OpenUpdateToolsView();
    host->Framework()->Views().Item("UpdateTools")->SetCaption("changed");
    ForgetCalls();
    Probe().OpenUpdateToolsView();
    EXPECT_TRUE(CallsOf("Views.Add").empty());
    EXPECT_EQ(CallsOf("View.SetSize"), Strings{"View.SetSize(\"UpdateTools\", 7250, 5750)"});
    EXPECT_EQ(CallsOf("View.SetCaption"), Strings{"View.SetCaption(\"UpdateTools\", \"text 34\")"});
    EXPECT_EQ(CallsOf("View.Show").size(), 1u);
    EXPECT_EQ(host->Model().Windows().size(), 1u);
}

TEST_F(UpdatesView, IsClosedOnRequest) {
    LoadSuite({});
    Probe().OpenUpdateToolsView();
    Request("UnloadUpdateView");
    EXPECT_TRUE(host->Model().Windows().empty());
}

TEST_F(UpdatesView, HandsAFailureToItsCaller) {
    LoadSuite({});
    host->FailNext("Views.Add");
    EXPECT_THROW(Probe().OpenUpdateToolsView(), base::ComponentError);
}

TEST_F(UpdatesView, LoadsTheUpdatesComponentOnce) {
    LoadWithUpdatesComponent();
    Probe().RequestUpdates(true);
    EXPECT_EQ(CallsOf("Loader.Load").size(), 1u);
    EXPECT_EQ(Sent(), Strings{"Qillo110:ShowUpdates{request 0}(ShowNew:2=\"True\")"});

    ForgetCalls();
    Probe().RequestUpdates(false);
    EXPECT_TRUE(CallsOf("Loader.Load").empty());
    EXPECT_EQ(Sent(), Strings{"Qillo110:ShowUpdates{request 0}(ShowNew:2=\"False\")"});
}

TEST_F(UpdatesView, TakesTheCatalogueAsTheBaselineOfNewTools) {
    LoadWithUpdatesComponent();
    Probe().RequestUpdates(true);
    EXPECT_EQ(Probe().KnownToolCount(), 1);
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 1); // no message
}

TEST_F(UpdatesView, RefreshesTheHostsViewsLast) {
    LoadWithUpdatesComponent();
    Probe().RequestUpdates(true);
    EXPECT_EQ(Calls().back(), "RefreshViews(0)");
    const auto banner = std::find_if(Calls().begin(), Calls().end(),
                                     [](const std::string& call) { return call.starts_with("SetBanner("); });
    const auto load = std::find_if(Calls().begin(), Calls().end(),
                                   [](const std::string& call) { return call.starts_with("Loader."); });
    EXPECT_LT(banner, load);
}

TEST_F(UpdatesView, AnswersTrueAfterSavedProperties) {
    LoadWithUpdatesComponent();
    EXPECT_EQ(Request("SaveToolProperties"), "True");
    EXPECT_EQ(Sent(), Strings{"Qillo110:ShowUpdates{request 0}(ShowNew:2=\"False\")"});
}

TEST_F(UpdatesView, ReportsAHostThatCannotRefresh) {
    LoadWithUpdatesComponent();
    host->FailNext("RefreshViews");
    Event(arvon::EventObject::Task, "tskAddTool");
    EXPECT_EQ(ClaimReport("HandleTaskEvent").description, "RefreshViews failed");
}
