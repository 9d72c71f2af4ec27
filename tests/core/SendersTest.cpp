#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class Senders : public ComponentTest {
protected:
    void SetUp() override { LoadWith({}); }
};

TEST_F(Senders, ReturnTheReceiversReply) {
    host->Listen("Qillo110", "here");
    EXPECT_EQ(tool->SendRequestMessage(Probe().NewRequest("Anyone"), "Qillo110"), "here");
    EXPECT_EQ(Probe().SendEventMessage(Probe().NewEvent("Something"), "Qillo110"), "here");
    EXPECT_EQ(Probe().SendRequestToOwner(Probe().NewRequest("Owner"), "Qillo110"), "here");
    EXPECT_EQ(Sent(),
              (std::vector<std::string>{"Qillo110:Anyone{request 0}()", "Qillo110:Something{event 0/0}()",
                                        "Qillo110:Owner{request 0}()"}));
}

TEST_F(Senders, LeaveUnregisteredDestinationsAlone) {
    EXPECT_EQ(tool->SendRequestMessage(Probe().NewRequest("Anyone"), "Nobody"), "");
    EXPECT_EQ(Probe().SendEventMessage(Probe().NewEvent("Something"), "Nobody"), "");
    EXPECT_TRUE(Sent().empty());
}

TEST_F(Senders, AskTheOwnerWithoutAskingWhetherItListens) {
    EXPECT_EQ(Probe().SendRequestToOwner(Probe().NewRequest("Owner"), "Nobody"), "");
    EXPECT_TRUE(CallsOf("Router.IsRegistered").empty());
    EXPECT_EQ(Sent(), std::vector<std::string>{"Nobody:Owner{request 0}()"});
}

TEST_F(Senders, FetchTheOwnersRouterOnce) {
    for (int message = 1; message <= 3; ++message)
        Probe().SendRequestToOwner(Probe().NewRequest("Owner"), "SnapIn");
    EXPECT_EQ(CallsOf("Router").size(), 1u);
}

TEST_F(Senders, FetchTheRouterForTheOwnerBeforeAnythingElse) {
    Probe().SendRequestToOwner(nullptr, "SnapIn");
    EXPECT_EQ(CallsOf("Router").size(), 1u);
}

TEST_F(Senders, FetchTheRouterAnewForEachStepToOthers) {
    tool->SendRequestMessage(Probe().NewRequest("Anyone"), "SnapIn");
    EXPECT_EQ(CallsOf("Router").size(), 2u);
    Probe().SendEventMessage(Probe().NewEvent("Something"), "SnapIn");
    EXPECT_EQ(CallsOf("Router").size(), 4u);
    Probe().SendEventMessage(Probe().NewEvent("Something"), "Nobody");
    EXPECT_EQ(CallsOf("Router").size(), 5u);
}

TEST_F(Senders, ReportAnEmptyReferenceToAListener) {
    EXPECT_EQ(tool->SendRequestMessage(nullptr, "Nobody"), "");
    EXPECT_TRUE(ClaimReports().empty());
    EXPECT_EQ(tool->SendRequestMessage(nullptr, "SnapIn"), "");
    EXPECT_EQ(ClaimReport("SendRequestMessage").number, base::errors::ObjectNotSet);
    EXPECT_TRUE(Sent().empty());
}

TEST_F(Senders, SendNoEmptyReferenceToTheOwner) {
    EXPECT_EQ(Probe().SendRequestToOwner(nullptr, "SnapIn"), "");
    EXPECT_TRUE(Sent().empty());
}

TEST_F(Senders, ReportEachUnderItsOwnName) {
    host->FailNext("NewMessage");
    EXPECT_EQ(tool->SendRequestMessage(Probe().NewRequest("A"), "SnapIn"), "");
    EXPECT_EQ(ClaimReport("SendRequestMessage").number, 1001);
    host->FailNext("NewMessage");
    EXPECT_EQ(Probe().SendEventMessage(Probe().NewEvent("A"), "SnapIn"), "");
    EXPECT_EQ(ClaimReport("SendEventMessage").number, 1001);
    host->FailNext("NewMessage");
    EXPECT_EQ(Probe().SendRequestToOwner(Probe().NewRequest("A"), "SnapIn"), "");
    EXPECT_EQ(ClaimReport("SendRequestToOwner").number, 1001);
}

TEST_F(Senders, ReadTheWindowHandleAsANumber) {
    host->SetWindowHandle(65552);
    EXPECT_EQ(Probe().GetWindowHandle(), 65552);
    EXPECT_EQ(Sent(), std::vector<std::string>{"SnapIn:GetWindowHandle{request 3}()"});
}

TEST_F(Senders, ShowTheCallerAHandleThatIsNoNumber) {
    host->Listen("SnapIn", "none");
    EXPECT_THROW(Probe().GetWindowHandle(), base::ComponentError);
}

TEST_F(Senders, AskTheShellToRefreshItsMenus) {
    Probe().RefreshZarnMenus();
    EXPECT_EQ(Sent(), std::vector<std::string>{"SnapIn:RefreshZarnMenus{request 2}()"});
}

} // namespace kvtm::test
