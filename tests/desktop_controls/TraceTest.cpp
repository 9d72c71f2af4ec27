#include "tests/desktop_controls/Support.h"

#include "console/Words.h"
#include "core/contract/EventShapes.h"
#include "desktop/trace/ConsoleScript.h"
#include "desktop/trace/TraceModel.h"

#include <gmock/gmock.h>

#include <random>

namespace desktop::test {

namespace {

using arvon::host::MessageRecord;
using testing::ElementsAre;
using testing::HasSubstr;

MessageRecord Request(const std::string& name, int depth = 0, const std::string& destination = "KvTM10") {
    MessageRecord message;
    message.kind = MessageRecord::Kind::Request;
    message.type = 2;
    message.source = depth == 0 ? "KvTMU110" : "KvTM10";
    message.destination = destination;
    message.name = name;
    message.depth = depth;
    message.body = "<Request/>";
    return message;
}

MessageRecord Event(arvon::EventObject object, const std::string& name, int category = 0) {
    MessageRecord message;
    message.kind = MessageRecord::Kind::Event;
    message.type = 1;
    message.source = "SnapIn";
    message.destination = "KvTM10";
    message.name = name;
    message.objectType = static_cast<int>(object);
    message.category = category;
    return message;
}

MessageRecord With(MessageRecord message, const std::string& name, const std::string& value) {
    message.parameters.push_back({name, 2, base::Value(value)});
    return message;
}

class RecorderTest : public testing::Test {
protected:
    void Deliver(const MessageRecord& message, const std::function<void()>& inside = {},
                 const std::string& reply = {}, const std::string& failure = {}) {
        recorder.OnMessage(message);
        if (inside) inside();
        MessageRecord over = message;
        over.reply = reply;
        over.failure = failure;
        over.duration = std::chrono::milliseconds(2);
        recorder.OnReply(over);
    }
    void FillModel() { model.Append(recorder.Take()); }

    bool atWork = true;
    int notices = 0;
    TraceLimits limits{.messages = 20, .bytes = 1 << 20, .textBytes = 10};
    MessageRecorder recorder{limits, [this] { return atWork; }, [this] { ++notices; }};
    TraceModel model{limits, QIcon(), QIcon()};
};

} // namespace

TEST_F(RecorderTest, KeepsDeliveriesNestedInOrder) {
    Deliver(Request("A"), [&] {
        Deliver(Request("B", 1), [&] { Deliver(Request("C", 2)); });
        Deliver(Request("D", 1));
    });
    Deliver(Request("E"));
    EXPECT_EQ(notices, 2);
    FillModel();
    ASSERT_EQ(model.rowCount(), 2);
    const QModelIndex a = model.index(0, 0);
    ASSERT_EQ(model.rowCount(a), 2);
    const QModelIndex b = model.index(0, 0, a);
    EXPECT_EQ(b.data().toString(), "request B");
    EXPECT_EQ(model.index(0, 0, b).data().toString(), "request C");
    EXPECT_EQ(model.index(1, 0, a).data().toString(), "request D");
    EXPECT_EQ(model.index(1, 0).data().toString(), "request E");
    EXPECT_EQ(model.parent(model.index(0, 0, b)), b);
    EXPECT_EQ(model.Messages(), 5U);
}

TEST_F(RecorderTest, TheModelKeepsTheRulesOfModels) {
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int round = 0; round < 30; ++round) {
        Deliver(Request("A"), [&] { Deliver(Request("B", 1)); });
        if (round % 3 == 0) FillModel();
    }
    FillModel();
    model.Clear();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(RecorderTest, ShowsEverythingOfADelivery) {
    Deliver(With(Request("GetOptionValue"), "ToolID", "Tobr43"), {}, "A3");
    FillModel();
    const auto cell = [&](int column) { return model.index(0, column).data().toString(); };
    EXPECT_EQ(cell(TraceModel::Direction), "in");
    EXPECT_EQ(cell(TraceModel::From), "KvTMU110");
    EXPECT_EQ(cell(TraceModel::To), "KvTM10");
    EXPECT_EQ(cell(TraceModel::Parameters), "ToolID=\"Tobr43\"");
    EXPECT_EQ(cell(TraceModel::Reply), "A3");
    EXPECT_EQ(cell(TraceModel::Duration), "2.000 ms");
    EXPECT_EQ(cell(TraceModel::State), "");
    const std::string details = TraceModel::DetailsOf(model.RootAt(0)).toStdString();
    EXPECT_THAT(details, HasSubstr("ToolID = Tobr43"));
    EXPECT_THAT(details, HasSubstr("A3"));
}

TEST_F(RecorderTest, MarksEveryTroubleAndWhatItIsInside) {
    MessageRecord broken = Request("");
    broken.malformed = true;
    MessageRecord lost = Request("X", 0, "Nobody");
    lost.registered = false;
    Deliver(Request("A"), [&] { Deliver(Request("B", 1), {}, {}, "it threw"); });
    Deliver(broken);
    Deliver(lost);
    Deliver(Event(arvon::EventObject::Menu, "ErrorMessage"));
    FillModel();
    const auto state = [&](int row, const QModelIndex& parent = {}) {
        return model.index(row, TraceModel::State, parent).data().toString();
    };
    EXPECT_EQ(state(0), "Failures inside: 1");
    EXPECT_EQ(state(0, model.index(0, 0)), "Failed: it threw");
    EXPECT_EQ(state(1), "Cannot be read");
    EXPECT_EQ(state(2), "Nobody listens");
    EXPECT_EQ(state(3), "Error report");
}

TEST_F(RecorderTest, TheOldestGoWhenThereAreTooMany) {
    for (int number = 0; number < 50; ++number) {
        Deliver(Request("R" + std::to_string(number)));
        if (number % 7 == 0) FillModel();
    }
    FillModel();
    EXPECT_EQ(model.Messages(), 20U);
    EXPECT_TRUE(model.HasDropped());
    EXPECT_EQ(model.index(0, 0).data().toString(), "request R30");
    EXPECT_EQ(model.index(19, 0).data().toString(), "request R49");
}

TEST_F(RecorderTest, OneDeliveryCannotGrowWithoutBound) {
    Deliver(Request("A"), [&] {
        for (int number = 0; number < 100; ++number)
            Deliver(Request("B", 1), [&] { Deliver(Request("C", 2)); });
    });
    FillModel();
    EXPECT_EQ(model.Messages(), 20U);
    EXPECT_THAT(model.index(0, TraceModel::State).data().toString().toStdString(),
                HasSubstr("more inside were not kept"));
    EXPECT_FALSE(model.HasDropped());
}

TEST_F(RecorderTest, LargeTextsMakeOlderOnesGo) {
    for (int number = 0; number < 10; ++number)
        Deliver(With(Request("A"), "Options", std::string(300'000, 'x')));
    FillModel();
    EXPECT_EQ(model.rowCount(), 3);
}

TEST_F(RecorderTest, InnerTextsAreCutAndTheUsersAreNot) {
    Deliver(With(Request("A"), "P", std::string(100, 'x')),
            [&] { Deliver(With(Request("B", 1), "P", "123456789\u00fc\u00fc"), {}, std::string(100, 'y')); });
    FillModel();
    EXPECT_EQ(model.RootAt(0).message.parameters[0].value.ToText().size(), 100U);
    const TraceNode& inner = *model.RootAt(0).children[0];
    EXPECT_EQ(inner.message.parameters[0].value.ToText(), "123456789\u2026") << "no half character";
    EXPECT_EQ(inner.message.reply, std::string(10, 'y') + "\u2026");
}

TEST_F(RecorderTest, PausingInsideADeliveryHandsOutWhatThereIs) {
    Deliver(Request("A"), [&] { recorder.SetRecording(false); });
    Deliver(Request("Unseen"));
    EXPECT_FALSE(recorder.WantsMessages());
    recorder.SetRecording(true);
    recorder.OnReply(Request("Late"));
    Deliver(Request("B"));
    FillModel();
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.index(0, TraceModel::State).data().toString(), "Recording stopped inside");
    EXPECT_EQ(model.index(1, 0).data().toString(), "request B");
}

TEST_F(RecorderTest, TheFilterKeepsWhatIsAroundAFind) {
    Deliver(Request("A"),
            [&] { Deliver(With(Request("B", 1, "Zarn11"), "vrex", "Tobr43"), {}, {}, "it threw"); });
    Deliver(Request("C"));
    FillModel();
    TraceFilter filter;
    filter.setSourceModel(&model);
    filter.SetText("tobr43");
    ASSERT_EQ(filter.rowCount(), 1);
    EXPECT_EQ(filter.rowCount(filter.index(0, 0)), 1);
    filter.SetText("");
    filter.SetListener("Zarn11");
    EXPECT_EQ(filter.rowCount(), 1);
    filter.SetListener("KvTM10");
    EXPECT_EQ(filter.rowCount(), 2);
    filter.SetListener("");
    filter.SetOnlyTroubles(true);
    EXPECT_EQ(filter.rowCount(), 1);
}

TEST_F(RecorderTest, AFilterOverAFullTraceAnswersAtOnce) {
    MessageRecorder full(
        TraceLimits(), [] { return true; }, [] {});
    for (int number = 0; number < 10'000; ++number) {
        const MessageRecord message =
            With(Request("GetOptionValue"), "OptionName", "option" + std::to_string(number));
        full.OnMessage(message);
        full.OnReply(message);
    }
    TraceModel large(TraceLimits{}, QIcon{}, QIcon{});
    large.Append(full.Take());
    TraceFilter filter;
    filter.setSourceModel(&large);
    WorkClock clock;
    filter.SetText("option9999");
    EXPECT_EQ(filter.rowCount(), 1);
    EXPECT_LT(clock.Restart(), 500);
}

TEST(ConsoleWord, ReadsBackAsTheConsoleReadsWords) {
    std::mt19937 random(7);
    const std::string characters = "aZ9 \t'\"\\$`#=;|<>&*~!(){}[]-_./:%@\u00fc\u20ac";
    std::uniform_int_distribution<std::size_t> length(0, 12), pick(0, characters.size() - 1);
    int written = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t left = length(random); left > 0; --left)
            text += characters[pick(random)];
        const auto word = ConsoleWord(text);
        if (!word) continue; // half a character beyond ASCII
        ++written;
        ASSERT_THAT(arvon::console::SplitWords("request " + *word + " end"),
                    ElementsAre("request", text, "end"))
            << *word;
    }
    EXPECT_GT(written, 5'000);
    EXPECT_EQ(ConsoleWord("C:\\QUARRA"), "'C:\\QUARRA'");
    EXPECT_EQ(ConsoleWord("two\nlines"), std::nullopt);
    EXPECT_EQ(ConsoleWord(std::string("a\0b", 3)), std::nullopt);
}

TEST(ConsoleLine, EveryClickHasItsCommand) {
    using arvon::EventObject;
    const auto line = [](const MessageRecord& message) { return ConsoleLine(message).value_or("none"); };
    EXPECT_EQ(line(Event(EventObject::Menu, "mnuToolOptions")), "menu mnuToolOptions");
    EXPECT_EQ(line(Event(EventObject::Button, "btn LAY")), "button 'btn LAY'");
    EXPECT_EQ(line(With(Event(EventObject::Task, "tskEditTool"), "Flag", "False")), "task tskEditTool");
    EXPECT_EQ(line(With(Event(EventObject::Task, "tskShowAll"), "Flag", "True")), "task tskShowAll");
    EXPECT_EQ(line(With(Event(EventObject::Node, "tabQRV", 5), "key", "Beam & Frame")),
              "node 'Beam & Frame' 5");
    EXPECT_EQ(line(Event(EventObject::Tab, "tabQRV", 5)), "tab 5");
    EXPECT_EQ(
        line(With(With(Event(EventObject::ListItem, "lvTools", 13), "Text", "Layout"), "Checked", "False")),
        "item Layout 13");
    EXPECT_EQ(line(With(With(Event(EventObject::ListItem, "lvTools", 1), "Text", "It's"), "Checked", "True")),
              "item \"It's\" 1 checked=True");
    EXPECT_EQ(line(With(With(Event(EventObject::ListItem, "lvTools", 8), "key", "name"), "order", "1")),
              "column name 1");
}

TEST(ConsoleLine, WhatNoShorterCommandSaysIsSentAsItsXml) {
    MessageRecord lines = With(Request("UpdateOptions"), "Options", "one\ntwo & <three>");
    EXPECT_EQ(ConsoleLine(lines),
              "message 2 '<Request Type=\"UpdateOptions\" Mode=\"0\"><Parameters><Parameter Name=\"Options\" "
              "Type=\"2\">one&#10;two &amp; &lt;three&gt;</Parameter></Parameters></Request>'");
    MessageRecord mode = Request("SelectTab");
    mode.mode = 1;
    EXPECT_THAT(*ConsoleLine(mode), HasSubstr("Mode=\"1\""));
    EXPECT_THAT(*ConsoleLine(With(Event(arvon::EventObject::Task, "tskUpdateTool"), "Flag", "True")),
                HasSubstr("event 5 tskUpdateTool Flag=True"));
    MessageRecord leveled = Event(arvon::EventObject::Menu, "Other");
    leveled.source = "Zarn11";
    leveled.level = 9;
    EXPECT_THAT(*ConsoleLine(leveled), HasSubstr("message 1 "));
    MessageRecord custom = Request("");
    custom.kind = MessageRecord::Kind::Custom;
    custom.type = 7;
    custom.body = "any thing";
    EXPECT_EQ(ConsoleLine(custom), "message 7 'any thing'");
    custom.body = "two\nlines";
    EXPECT_EQ(ConsoleLine(custom), std::nullopt);
    EXPECT_EQ(ConsoleLine(Request("ShowUpdates", 0, "Qillo110")), std::nullopt);
}

TEST_F(RecorderTest, TheScriptHoldsWhatTheUserDidAndNothingThatFollowed) {
    atWork = false;
    Deliver(Event(arvon::EventObject::Node, "tabQRV", 5)); // while loading
    atWork = true;
    Deliver(With(Request("LaunchTool"), "ToolName", "Layout"),
            [&] { Deliver(Request("SelectTab", 1, "SnapIn")); });
    Deliver(Event(arvon::EventObject::Process, "ShellProcessComplete"));
    Deliver(Event(arvon::EventObject::Process, "ShellProcessComplete"));
    Deliver(Request("ShowUpdates", 0, "Qillo110"));
    Deliver(Event(arvon::EventObject::Menu, "mnuSort"));
    MessageRecord own = Request("Tool_Load", 0, "Zarn11");
    own.source = "KvTM10";
    Deliver(own);
    ConsoleScript script;
    for (const auto& node : recorder.Take())
        script.Add(*node);
    EXPECT_EQ(
        script.Text().substr(script.Text().find('\n') + 1),
        "load\nrequest LaunchTool ToolName=Layout\nwait\n# cannot be repeated here: ShowUpdates to Qillo110\n"
        "menu mnuSort\n");
}

} // namespace desktop::test
