#include "tests/console/Capture.h"

#include <gtest/gtest.h>

using namespace arvon::console;

namespace {

class JsonWriterTest : public testing::Test {
protected:
    static MessageRecord RequestTo(const char* destination) {
        MessageRecord message;
        message.kind = MessageRecord::Kind::Request;
        message.source = "KvTM10";
        message.destination = destination;
        message.name = "SelectTab";
        message.mode = 1;
        message.parameters = {{"key", 2, "FixedTab"}};
        return message;
    }

    static MessageRecord Answered(MessageRecord message, const char* reply) {
        message.reply = reply;
        return message;
    }

    Capture capture{Writer::Form::JsonLines};
    Writer& writer = *capture.writer;
};

} // namespace

TEST_F(JsonWriterTest, WritesACallWithItsArgumentsByKind) {
    const base::Value object(std::shared_ptr<base::Object>{});
    writer.OnCall({"Menus.Add", {"mnuTool", "&Tools", base::Value(), 0, true, 1.5, object}});
    EXPECT_EQ(capture.Take(),
              R"({"is":"call","operation":"Menus.Add","arguments":["mnuTool","&Tools",null,0,true,1.5,null]})"
              "\n");
}

TEST_F(JsonWriterTest, MarksACallThatIsMadeToFail) {
    writer.OnCall({"Views.Add", {}, true});
    EXPECT_EQ(capture.Take(), R"({"is":"call","operation":"Views.Add","arguments":[],"failed":true})"
                              "\n");
}

TEST_F(JsonWriterTest, WritesARequestWithTheReplyThatCameAtOnce) {
    const MessageRecord request = RequestTo("SnapIn");
    writer.OnMessage(request);
    writer.OnReply(Answered(request, "4660"));
    EXPECT_EQ(
        capture.Take(),
        R"({"is":"message","kind":"request","source":"KvTM10","destination":"SnapIn","name":"SelectTab",)"
        R"("mode":1,"parameters":[{"name":"key","type":2,"value":"FixedTab"}],"reply":"4660"})"
        "\n");
}

TEST_F(JsonWriterTest, WritesARequestWhereItWasDeliveredWhenSomethingHappensBeforeTheReply) {
    const MessageRecord outer = RequestTo("Jx310");
    const MessageRecord inner = RequestTo("SnapIn");
    writer.OnMessage(outer);
    writer.OnMessage(inner);
    EXPECT_EQ(
        capture.Take(),
        R"({"is":"message","kind":"request","source":"KvTM10","destination":"Jx310","name":"SelectTab",)"
        R"("mode":1,"parameters":[{"name":"key","type":2,"value":"FixedTab"}],"reply":""})"
        "\n");
    writer.OnReply(Answered(inner, "in"));
    EXPECT_EQ(Json::parse(capture.Take())["reply"], "in");
    writer.OnReply(Answered(outer, "out"));
    EXPECT_EQ(capture.Take(), R"({"is":"messageReply","source":"KvTM10","destination":"Jx310",)"
                              R"("name":"SelectTab","reply":"out"})"
                              "\n");
}

TEST_F(JsonWriterTest, WritesNoReplyLineForAnEmptyReply) {
    const MessageRecord request = RequestTo("Jx310");
    writer.OnMessage(request);
    writer.OnPointer(11);
    capture.Take();
    writer.OnReply(request);
    EXPECT_EQ(capture.Take(), "");
}

TEST_F(JsonWriterTest, WritesTheSameWithoutCallsButForTheCallLines) {
    Capture quiet(Writer::Form::JsonLines, false);
    for (Writer* each : {&writer, quiet.writer.get()}) {
        const MessageRecord request = RequestTo("SnapIn");
        each->OnMessage(request);
        each->OnCall({"Menus.Clear", {}});
        each->OnReply(Answered(request, "1"));
        each->OnDone("load");
    }
    std::string all = capture.Take();
    const std::string call = R"({"is":"call","operation":"Menus.Clear","arguments":[]})"
                             "\n";
    ASSERT_NE(all.find(call), std::string::npos);
    all.erase(all.find(call), call.size());
    EXPECT_EQ(quiet.Take(), all);
}

TEST_F(JsonWriterTest, WritesAnEventWithTypedParameters) {
    MessageRecord event;
    event.kind = MessageRecord::Kind::Event;
    event.source = "KvTM10";
    event.destination = "SnapIn";
    event.name = "ErrorMessage";
    event.category = 20;
    event.level = 9;
    event.parameters = {{"ErrorNumber", 3, 1001}};
    writer.OnMessage(event);
    EXPECT_EQ(capture.Take(), R"({"is":"message","kind":"event","source":"KvTM10","destination":"SnapIn",)"
                              R"("name":"ErrorMessage","category":20,"level":9,)"
                              R"("parameters":[{"name":"ErrorNumber","type":3,"value":1001}]})"
                              "\n");
}

TEST_F(JsonWriterTest, ShowsTheBodyOfWhatIsNoRequestAndNoEvent) {
    MessageRecord message;
    message.source = "Console";
    message.destination = "KvTM10";
    message.type = 7;
    message.body = "x";
    writer.OnMessage(message);
    EXPECT_EQ(
        capture.Take(),
        R"({"is":"message","kind":"custom","source":"Console","destination":"KvTM10","type":7,"body":"x"})"
        "\n");
    message.kind = MessageRecord::Kind::Event;
    message.malformed = true;
    message.body = "<Ev";
    writer.OnMessage(message);
    EXPECT_EQ(Json::parse(capture.Take())["malformed"], "<Ev");
}

TEST_F(JsonWriterTest, TellsWhenNobodyListens) {
    MessageRecord message = RequestTo("Zarn11");
    message.registered = false;
    writer.OnMessage(message);
    writer.OnReply(message);
    EXPECT_EQ(Json::parse(capture.Take())["registered"], false);
}

TEST_F(JsonWriterTest, WritesBoxesPointersAndProcesses) {
    writer.OnMessageBox("Sure?", 64, "Arvon");
    writer.OnPointer(11);
    const arvon::host::model::Process process{4711, R"(C:\QUARRA\Tobr43\Tobr43.exe)", "", "Layout", "Tobr43"};
    writer.OnProcessStarted(process);
    writer.OnProcessEnded(process, {3, 0});
    EXPECT_EQ(
        capture.Take(),
        R"({"is":"messageBox","text":"Sure?","style":64,"title":"Arvon"})"
        "\n"
        R"({"is":"pointer","value":11})"
        "\n"
        R"({"is":"process","change":"started","id":4711,"commandLine":"C:\\QUARRA\\Tobr43\\Tobr43.exe"})"
        "\n"
        R"({"is":"process","change":"ended","id":4711,"exitCode":3})"
        "\n");
}

TEST_F(JsonWriterTest, WritesWhatComesOfCommands) {
    writer.OnCommandReply("request", "True");
    writer.OnState("listeners", Json::array({"SnapIn"}));
    writer.OnDone("load");
    writer.OnError("menu", "no menu item \"mnuX\"");
    EXPECT_EQ(capture.Take(), R"({"is":"reply","command":"request","text":"True"})"
                              "\n"
                              R"({"is":"state","of":"listeners","value":["SnapIn"]})"
                              "\n"
                              R"({"is":"done","command":"load"})"
                              "\n"
                              R"({"is":"error","command":"menu","text":"no menu item \"mnuX\""})"
                              "\n");
}

TEST_F(JsonWriterTest, StaysValidUtf8AndOneLineWhateverTheTexts) {
    writer.OnError("x", std::string("a\xFF\n\0\x1B[31m", 9));
    const std::string line = capture.Take();
    EXPECT_EQ(line, "{\"is\":\"error\",\"command\":\"x\",\"text\":\"a\xEF\xBF\xBD\\n\\u0000\\u001b[31m\"}\n");
}
