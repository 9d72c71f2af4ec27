#include "tests/scenario/ConsoleRun.h"

namespace scenario {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Messages that no tool of the suite would send: what comes back, and that the next request is answered.
class Messages : public Scenario {
protected:
    /// Delivers a body as a request and asks for something afterwards.
    Transcript Deliver(int type, const std::string& body) const {
        return Run("load\nmessage " + std::to_string(type) + " '" + body + "'\nrequest GetResourcePath\n");
    }

    static void ExpectOneReport(const Transcript& run) {
        EXPECT_EQ(run.ExitStatus(), 0);
        EXPECT_THAT(run.Replies(), ElementsAre("True", "", ResourcePath));
        EXPECT_THAT(run.Reports(), ElementsAre(HasSubstr(".IMessageListener_ReceiveMessage: ")));
    }

    static constexpr const char* ResourcePath = R"(C:\QUARRA\Arvon\resources\1033)";
};

TEST_F(Messages, ThatAreMalformedGetNoReplyAndOneReport) {
    for (const char* body : {"", "<Request", "text", "<Request/><Request/>", "<Event/>",
                             "<Request Type=\"GetResourcePath\"><Other/></Request>",
                             "<Request Type=\"GetResourcePath\" Mode=\"one\"/>"}) {
        SCOPED_TRACE(body);
        ExpectOneReport(Deliver(2, body));
    }
    ExpectOneReport(Deliver(1, "<Request Type=\"GetResourcePath\"/>"));
}

TEST_F(Messages, ThatAreTooLargeGetNoReplyAndOneReport) {
    ExpectOneReport(
        Deliver(2, "<Request Type=\"GetResourcePath\"><Parameters><Parameter Name=\"x\" Type=\"2\">" +
                       std::string(std::size_t{20} << 20, 'y') + "</Parameter></Parameters></Request>"));
}

TEST_F(Messages, ThatAreNestedTooDeeplyGetNoReplyAndOneReport) {
    std::string body = "<Request Type=\"GetResourcePath\">";
    for (int level = 0; level < 100000; ++level)
        body += "<a>";
    ExpectOneReport(Deliver(2, body));
}

TEST_F(Messages, ThatAreNoUtf8GetNoReplyAndOneReport) {
    ExpectOneReport(Deliver(2, "<Request Type=\"\xFF\xFE\"/>"));
    ExpectOneReport(Deliver(2, "<Request Type=\"\xED\xA0\x80\"/>"));
}

TEST_F(Messages, ThatDefineEntitiesGetNoReplyAndOneReport) {
    ExpectOneReport(Deliver(2, "<!DOCTYPE x [<!ENTITY a \"b\">]><Request Type=\"&a;\"/>"));
}

TEST_F(Messages, OfOtherNumbersGetNoReplyAndNoReport) {
    for (const int type : {0, 3, -1, 2147483647}) {
        const Transcript run = Deliver(type, "<Request Type=\"GetResourcePath\"/>");
        EXPECT_THAT(run.Replies(), ElementsAre("True", "", ResourcePath)) << type;
        EXPECT_THAT(run.Reports(), IsEmpty()) << type;
    }
}

TEST_F(Messages, OfUnknownNamesGetNoReplyAndNoReport) {
    const Transcript run = Run("load\nrequest getresourcemodule\nrequest ''\nevent 77 Anything\n");
    EXPECT_THAT(run.Replies(), ElementsAre("True", "", "", ""));
    EXPECT_THAT(run.Reports(), IsEmpty());
}

TEST_F(Messages, ShowAsTheyWereDelivered) {
    const Transcript run = Run("load\nrequest LaunchTool ToolName='No such \"tool\"' x= é=ü\n");
    const std::vector<Json> delivered = run.Messages("LaunchTool");
    ASSERT_THAT(delivered, SizeIs(1));
    EXPECT_EQ(delivered.front(), Json::parse(R"({
        "is": "message", "kind": "request", "source": "Console", "destination": "KvTM10",
        "name": "LaunchTool", "mode": 0,
        "parameters": [{"name": "ToolName", "type": 2, "value": "No such \"tool\""},
                       {"name": "x", "type": 2, "value": ""},
                       {"name": "é", "type": 2, "value": "ü"}],
        "reply": ""})"));
}

TEST_F(Messages, StandInTheOrderInWhichTheyAreNested) {
    EXPECT_THAT(Run("load\nrequest SelectFixedTab\n").Story(),
                ElementsAre("event tabQRV", "reply True", "done load", "request SelectFixedTab",
                            "request SelectTab", "pointer", "reply ", "done request"));
}

TEST_F(Messages, CarryTheReplyOfAListenerThatAnswersAtOnce) {
    const Transcript run = Run("load\nlisten SnapIn thanks\nrequest SelectFixedTab\n");
    const std::vector<Json> sent = run.Messages("SelectTab");
    ASSERT_THAT(sent, SizeIs(1));
    EXPECT_EQ(sent.front().at("destination"), "SnapIn");
    EXPECT_EQ(sent.front().at("mode"), 1);
    EXPECT_EQ(sent.front().at("reply"), "thanks");
}

} // namespace scenario
