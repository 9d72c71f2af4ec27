#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class RequestDispatch : public ComponentTest {
protected:
    void SetUp() override { LoadWith({{.name = "Layout"}}); }
    std::string Deliver(std::int32_t type, std::string_view body) { return host->SendMessage(type, body); }
    /// The next request works after whatever came before.
    void ExpectStillAnswering() {
        EXPECT_EQ(Request("GetResourcePath"), "C:\\QUARRA\\Arvon\\resources\\1033");
    }
};

TEST_F(RequestDispatch, MatchesNamesExactly) {
    EXPECT_EQ(Request("getresourcemodule"), "");
    EXPECT_EQ(Request("GetResourceModule "), "");
    EXPECT_EQ(Request(""), "");
    EXPECT_NE(Request("GetResourceModule"), "");
    EXPECT_TRUE(Sent().empty());
}

TEST_F(RequestDispatch, SetsThePointerBackOnEveryPath) {
    for (const char* type : {"LoadedVantors", "NoSuchRequest", "UnloadUpdateView"}) {
        ForgetCalls();
        Request(type);
        EXPECT_EQ(CallsOf("SetMousePointer"), std::vector<std::string>{"SetMousePointer(0)"}) << type;
    }
    ClaimReport("HandleRequest");
}

TEST_F(RequestDispatch, SetsThePointerBackWhenTheReportCannotBeSent) {
    host->FailNext("Router.Send", 2); // the report, and the report of that
    Request("UpdateOptions", {{"Options", "<a"}});
    EXPECT_EQ(CallsOf("SetMousePointer"),
              (std::vector<std::string>{"SetMousePointer(11)", "SetMousePointer(0)"}));
    ExpectStillAnswering();
}

TEST_F(RequestDispatch, RefusesWhatIsNoMessage) {
    EXPECT_EQ(tool->ReceiveMessage(nullptr), "");
    const Report report = ClaimReport("IMessageListener_ReceiveMessage");
    EXPECT_EQ(report.number, base::errors::ObjectNotSet);
    EXPECT_EQ(report.source, report.procedure);
    EXPECT_EQ(report.description, "there is no message");
    ExpectStillAnswering();
}

TEST_F(RequestDispatch, KeepsTheReplyWhenThePointerCannotBeSet) {
    host->FailNext("SetMousePointer");
    ExpectStillAnswering();
    EXPECT_EQ(ClaimReport("HandleRequest").number, 1001);
}

TEST_F(RequestDispatch, LeavesCustomMessagesAlone) {
    EXPECT_EQ(Deliver(3, "<Request Type=\"GetResourcePath\"/>"), "");
    EXPECT_EQ(Deliver(0, "anything"), "");
    EXPECT_TRUE(Calls().empty());
    EXPECT_TRUE(Sent().empty());
}

TEST_F(RequestDispatch, AnswersEventsWithEmptyText) {
    EXPECT_EQ(Deliver(1, "<Event ObjectType=\"7\" Name=\"Any\" Category=\"0\" Level=\"0\"/>"), "");
}

TEST_F(RequestDispatch, ReportsAFailureToMakeTheRequest) {
    host->FailNext("NewRequest");
    EXPECT_EQ(Request("GetResourcePath"), "");
    const Report report = ClaimReport("IMessageListener_ReceiveMessage");
    EXPECT_EQ(report.number, 1001);
    EXPECT_EQ(report.description, "NewRequest failed");
    EXPECT_EQ(report.source, "Arvon110");
    ExpectStillAnswering();
}

struct BadBody {
    const char* name;
    std::string text;
};

class BadBodies : public RequestDispatch, public testing::WithParamInterface<BadBody> {};

TEST_P(BadBodies, GetAnEmptyReplyAndOneReportAsRequest) {
    EXPECT_EQ(Deliver(2, GetParam().text), "");
    const Report report = ClaimReport("IMessageListener_ReceiveMessage");
    EXPECT_NE(report.number, 0);
    EXPECT_FALSE(report.description.empty());
    ExpectStillAnswering();
}

TEST_P(BadBodies, GetAnEmptyReplyAndOneReportAsEvent) {
    EXPECT_EQ(Deliver(1, GetParam().text), "");
    ClaimReport("IMessageListener_ReceiveMessage");
    ExpectStillAnswering();
}

std::string Nested(std::size_t levels) {
    std::string text;
    for (std::size_t i = 0; i < levels; ++i)
        text += "<a>";
    for (std::size_t i = 0; i < levels; ++i)
        text += "</a>";
    return text;
}

const BadBody badBodies[] = {
    {"Empty", ""},
    {"NoXml", "LoadedVantors"},
    {"CutShort", "<Request Type=\"LoadedVantors\" Mode=\"0\"><Parameters>"},
    {"OtherRoot", "<Tools/>"},
    {"UnknownChild", "<Request Type=\"LoadedVantors\"><Other/></Request>"},
    {"NumberThatIsNone", "<Request Type=\"LoadedVantors\" Mode=\"many\"/>"},
    {"DeeplyNested", Nested(100000)},
    {"WronglyEncoded", "<Request Type=\"Loaded\xff\xfeVantors\"/>"},
    {"NulBytes", std::string("<Request Type=\"LoadedVantors\0\"/>", 33)},
    {"DocumentType", "<!DOCTYPE Request [<!ENTITY a \"b\">]><Request Type=\"&a;\"/>"},
    {"Oversized", "<Request Type=\"" + std::string(std::size_t{64} << 20, 'x') + "\"/>"},
};
INSTANTIATE_TEST_SUITE_P(RequestDispatch, BadBodies, testing::ValuesIn(badBodies),
                         [](const auto& body) { return std::string(body.param.name); });

TEST_F(RequestDispatch, SurvivesEveryTruncationOfAGoodRequest) {
    const std::string whole = "<Request Type=\"LaunchTool\" Mode=\"0\"><Parameters>"
                              "<Parameter Name=\"ToolName\" Type=\"2\">\xc3\x84nderung</Parameter>"
                              "</Parameters></Request>";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(Deliver(2, whole.substr(0, length)), "") << length;
        ClaimReport("IMessageListener_ReceiveMessage");
    }
    ExpectStillAnswering();
}

} // namespace kvtm::test
