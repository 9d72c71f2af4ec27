#include "tests/console/Capture.h"

#include <gtest/gtest.h>

using namespace arvon::console;

namespace {

MessageRecord Event(const char* source, const char* destination, const char* name) {
    MessageRecord message;
    message.kind = MessageRecord::Kind::Event;
    message.source = source;
    message.destination = destination;
    message.name = name;
    return message;
}

} // namespace

TEST(TextWriter, IndentsWhatHappensInsideADelivery) {
    Capture capture(Writer::Form::Text);
    const MessageRecord outer = Event("SnapIn", "KvTM10", "mnuSort");
    const MessageRecord inner = Event("KvTM10", "SnapIn", "Tool_Load");
    capture.writer->OnMessage(outer);
    capture.writer->OnCall({"Views.Item", {"lvTools"}});
    capture.writer->OnMessage(inner);
    capture.writer->OnReply(inner);
    capture.writer->OnReply(outer);
    capture.writer->OnDone("menu");
    EXPECT_EQ(capture.Take(), "event   SnapIn → KvTM10  mnuSort\n"
                              "  call    Views.Item  \"lvTools\"\n"
                              "  event   KvTM10 → SnapIn  Tool_Load\n"
                              "done    menu\n");
}

TEST(TextWriter, LeavesCallsOutWhenAskedTo) {
    Capture capture(Writer::Form::Text, false);
    capture.writer->OnCall({"Views.Item", {"lvTools"}});
    EXPECT_EQ(capture.Take(), "");
}

TEST(TextWriter, WritesNoEscapeCodesWithoutColour) {
    Capture capture(Writer::Form::Text);
    capture.writer->OnMessageBox("\x1B[2J\x9B\xC2\x9B boo", 16, "\x07");
    capture.writer->OnError("\x1B", "\x1B");
    capture.writer->OnProblem("\x1B");
    capture.writer->OnCommandReply("x", "\x1B");
    capture.writer->OnProcessStarted({1, "\x1B", "", "", ""});
    capture.writer->OnState("x", Json::array({{{"key", "\x1B"}}}));
    capture.writer->OnMessage(Event("\x1B", "\x1B", "\x1B"));
    const std::string text = capture.Take();
    EXPECT_EQ(text.find('\x1B'), std::string::npos) << text;
    EXPECT_EQ(text.find('\x9B'), std::string::npos) << text;
    EXPECT_EQ(text.find('\x07'), std::string::npos) << text;
}

TEST(TextWriter, ColoursWhenAskedToAndEndsEveryColour) {
    Capture capture(Writer::Form::ColouredText);
    capture.writer->OnError("menu", "no");
    EXPECT_EQ(capture.Take(), "\033[31merror   \033[0mmenu: no\n");
}

TEST(TextWriter, ShowsTheScriptCommentsAsTheyStand) {
    Capture capture(Writer::Form::Text);
    for (const char* line : {"# The host starts.", "", "  load # now"})
        capture.writer->OnScriptLine(line);
    EXPECT_EQ(capture.Take(), "# The host starts.\n\n> load # now\n");
}
