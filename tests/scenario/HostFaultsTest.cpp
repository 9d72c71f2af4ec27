#include "tests/scenario/ConsoleRun.h"

namespace scenario {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Host operations that fail when KvTM10 calls them.
class HostFaults : public Scenario {};

TEST_F(HostFaults, WhileLoadingEndTheLoadWithTheHostsError) {
    for (const char* operation : {"Views.Add", "Tabs.Add", "Menus.Add", "RegisterListener"}) {
        const Transcript run = Run(std::string("fail ") + operation + "\nload\n");
        EXPECT_EQ(run.ExitStatus(), 1) << operation;
        EXPECT_THAT(run.Errors(), ElementsAre(std::string(operation) + " failed"));
        EXPECT_THAT(run.Replies(), IsEmpty());
    }
}

TEST_F(HostFaults, AreReportedOnceWithNumberSourceAndDescription) {
    const Transcript run = Run("load\nfail Tabs.Item\nbutton btnLAY43\nrequest GetResourcePath\n");
    const std::vector<Json> reports = run.Messages("ErrorMessage");
    ASSERT_THAT(reports, SizeIs(1));
    EXPECT_THAT(Column(reports.front().at("parameters"), "value"),
                ElementsAre("Tabs.Item failed", "Arvon110", "1001", "KvTM10.ToolMain.HandleButtonEvent"));
    EXPECT_THAT(run.Of("process"), IsEmpty());
    EXPECT_EQ(run.Replies().back(), R"(C:\QUARRA\Arvon\resources\1033)");
}

TEST_F(HostFaults, EndAfterTheirCount) {
    const Transcript run = Run("fail Views.Add 2\nload\nload\nload\n");
    EXPECT_THAT(run.Errors(), ElementsAre("Views.Add failed", "Views.Add failed"));
    EXPECT_THAT(run.Replies(), ElementsAre("True"));
}

TEST_F(HostFaults, WhileLoadingLeaveWhatUnloadTakesAway) {
    const Transcript run = Run("fail Menus.Add\nload\nunload\nload\nshow menus\n");
    EXPECT_THAT(run.Errors(), ElementsAre("Menus.Add failed"));
    EXPECT_THAT(run.Replies(), ElementsAre("True"));
    EXPECT_THAT(run.Reports(), IsEmpty());
    EXPECT_THAT(Column(run.State("menus"), "key"), testing::Contains("mnuTool"));
}

TEST_F(HostFaults, AreMarkedInTheCallThatFails) {
    const Transcript run = Run("fail Tabs.Add\nload\n");
    std::vector<Json> failed = run.Of("call");
    std::erase_if(failed, [](const Json& call) { return !call.contains("failed"); });
    ASSERT_THAT(failed, SizeIs(1));
    EXPECT_EQ(failed.front().at("operation"), "Tabs.Add");
}

TEST_F(HostFaults, AreOfKnownOperationsOnly) {
    const Transcript run = Run("fail Nothing.Add\nfail Views.Add 0\nfail Views.Add many\nload\n");
    EXPECT_THAT(run.Errors(), ElementsAre(HasSubstr("Nothing.Add"), HasSubstr("COUNT"), HasSubstr("COUNT")));
    EXPECT_THAT(run.Replies(), ElementsAre("True"));
}

TEST_F(HostFaults, OfTheLoaderRefuseATool) {
    const Transcript run = Run("load\nrefuse 'Beam & Frame'\nitem 'Beam & Frame'\nshow loaded\n");
    EXPECT_THAT(run.Boxes(), ElementsAre(HasSubstr("Beam & Frame")));
    EXPECT_THAT(run.State("loaded"), IsEmpty());
}

} // namespace scenario
