// Which tool a launch means.

#include "tests/launch/LaunchFixture.h"

using namespace kvtm;
using namespace kvtm::test;

namespace {

class FindingToLaunch : public LaunchingTest {
protected:
    void ExpectAdvice(const char* advice) {
        const Box box = ClaimBox();
        EXPECT_EQ(box.text, std::string("text 38\r\n") + advice);
        EXPECT_EQ(box.style, 16);
        EXPECT_EQ(box.title, "text 46");
    }
    std::string Started() const {
        const Strings calls = CallsOf("StartProcess");
        return calls.empty() ? std::string() : calls.back();
    }
};

constexpr const char* reinstall = "Please reinstall the program";
constexpr const char* startMenu =
    "Please try running the program directly from the Start Menu to help diagnose the problem.";

/// Ends at once; the arguments tell which it was.
CatalogueTool Program(const char* name, const char* vrex) {
    return {.name = name, .vrex = vrex, .path = "/bin/true", .commandLine = vrex};
}

} // namespace

TEST_F(FindingToLaunch, TakesTheNameOfTheRequestAndKeepsIt) {
    LoadSuite({Program("A", "Tobr1"), Program("B", "Tobr2")});
    Probe().LastNodeKey() = "A";
    Launch("B");
    EXPECT_EQ(Started(), "StartProcess(\"/bin/true Tobr2\", \"KvTM10\")");
    EXPECT_EQ(Probe().LastNodeKey(), "B");
}

TEST_F(FindingToLaunch, TakesTheSelectedToolWithoutAName) {
    LoadSuite({Program("A", "Tobr1"), Program("B", "Tobr2")});
    Probe().LastNodeKey() = "A";
    EXPECT_EQ(Request("LaunchTool"), "False");
    EXPECT_EQ(Started(), "StartProcess(\"/bin/true Tobr1\", \"KvTM10\")");
}

TEST_F(FindingToLaunch, TakesAnEmptyNameAsNone) {
    LoadSuite({Program("A", "Tobr1")});
    Probe().LastNodeKey() = "A";
    Launch("");
    EXPECT_EQ(Started(), "StartProcess(\"/bin/true Tobr1\", \"KvTM10\")");
}

TEST_F(FindingToLaunch, FindsAToolThatIsNotListed) {
    CatalogueTool hidden = Program("Hidden", "Tobr1");
    hidden.showInList = "0";
    LoadSuite({hidden});
    Launch("Hidden");
    EXPECT_EQ(Started(), "StartProcess(\"/bin/true Tobr1\", \"KvTM10\")");
}

TEST_F(FindingToLaunch, ComparesNamesExactly) {
    LoadSuite({Program("Layout", "Tobr1")});
    EXPECT_EQ(Launch("layout"), "False");
    ExpectAdvice(reinstall);
    EXPECT_EQ(Started(), "");
}

TEST_F(FindingToLaunch, TellsOfAToolThatIsGone) {
    LoadSuite({Program("A", "Tobr1")});
    Probe().LastNodeKey() = "Gone";
    EXPECT_EQ(Request("LaunchTool"), "False");
    ExpectAdvice(reinstall);
    EXPECT_TRUE(CallsOf("Node.Select").empty());
}

TEST_F(FindingToLaunch, SelectsTheToolsNodeWhenNoToolWasSelected) {
    LoadSuite({Program("A", "Tobr1")});
    for (const char* key : {"", "nodTools"}) {
        Probe().LastNodeKey() = key;
        ForgetCalls();
        EXPECT_EQ(Request("LaunchTool"), "False");
        EXPECT_EQ(CallsOf("Node.Select"), Strings{"Node.Select(\"nodTools\")"});
        ExpectAdvice(startMenu);
    }
}

TEST_F(FindingToLaunch, TellsOfNoToolEvenWithoutTheToolsNode) {
    LoadSuite({});
    host->Framework()->Tabs().Item("tabQRV")->Nodes().Remove("nodTools");
    EXPECT_EQ(Request("LaunchTool"), "False");
    ExpectAdvice(startMenu);
}

TEST_F(FindingToLaunch, ReportsATabThatCannotBeFetched) {
    LoadSuite({});
    host->FailNext("Tabs.Item");
    EXPECT_EQ(Request("LaunchTool"), "False");
    EXPECT_EQ(ClaimReport("LaunchTool").description, "Tabs.Item failed");
}

TEST_F(FindingToLaunch, FollowsANodeEvent) {
    LoadSuite({Program("A", "Tobr1"), Program("B", "Tobr2")});
    host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
    host->NodeEvent("tabQRV", "B", arvon::eventKind::Opened);
    EXPECT_EQ(Started(), "StartProcess(\"/bin/true Tobr2\", \"KvTM10\")");
}

TEST_F(FindingToLaunch, FollowsAToolbarButton) {
    CatalogueTool a = Program("A", "Tobr1");
    a.identifier = "AAA01";
    LoadSuite({a});
    host->ClickButton("btnAAA01");
    EXPECT_EQ(Started(), "StartProcess(\"/bin/true Tobr1\", \"KvTM10\")");
}
