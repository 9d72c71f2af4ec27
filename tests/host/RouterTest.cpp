#include "tests/host/HostFixture.h"

#include "host/Messages.h"
#include "host/Router.h"

#include <stdexcept>

namespace arvon::host::test {
namespace {

class RouterOfTheHost : public HostTest {
protected:
    IRouter& Router() { return *Framework().Router(); }
};

TEST_F(RouterOfTheHost, DeliversToTheListenerOfThatExactIdentifier) {
    const auto small = Listen("a", [](const auto& message) { return "small " + message->Body().ToText(); });
    const auto large = Listen("A");
    EXPECT_EQ(Router().Send(NewMessage("a", 7, "body")), "small body");
    EXPECT_EQ(small->count, 1);
    EXPECT_EQ(large->count, 0);
}

TEST_F(RouterOfTheHost, HandsTheEnvelopeOverAsItIs) {
    std::shared_ptr<IMessage> received;
    Listen("a", [&](const auto& message) {
        received = message;
        return "";
    });
    const auto sent = NewMessage("a", -5, "not even XML");
    Router().Send(sent);
    EXPECT_EQ(received, sent);
}

TEST_F(RouterOfTheHost, AnswersEmptyTextForAnUnknownDestination) {
    EXPECT_FALSE(Router().IsRegistered("nobody"));
    EXPECT_EQ(Send("nobody"), "");
    EXPECT_EQ(Send(""), "");
    ASSERT_EQ(recorder.records.size(), 2u);
    EXPECT_FALSE(recorder.records[0].registered);
}

TEST_F(RouterOfTheHost, KnowsWhoIsRegistered) {
    Listen("a");
    EXPECT_TRUE(Router().IsRegistered("a"));
    EXPECT_FALSE(Router().IsRegistered("A"));
    EXPECT_FALSE(Router().IsRegistered(""));
    EXPECT_THAT(Model().Listeners(), ElementsAre("SnapIn", "a"));
    Host().Unlisten("a");
    EXPECT_FALSE(Router().IsRegistered("a"));
}

TEST_F(RouterOfTheHost, LetsANewListenerTakeAnothersPlace) {
    const auto first = Listen("a"), second = Listen("a", [](const auto&) { return "second"; });
    EXPECT_EQ(Send("a"), "second");
    EXPECT_EQ(first->count, 0);
    EXPECT_THAT(Model().Listeners(), ElementsAre("SnapIn", "a"));
}

TEST_F(RouterOfTheHost, RefusesToRegisterNobodyAndNoIdentifier) {
    EXPECT_EQ(RefusalOf([&] { Framework().RegisterListener(nullptr, "a"); }).number,
              base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { Listen(""); }).number, base::errors::InvalidCall);
    EXPECT_EQ(RefusalOf([&] { Router().Send(nullptr); }).number, base::errors::ObjectNotSet);
    EXPECT_THAT(Model().Listeners(), ElementsAre("SnapIn"));
}

TEST_F(RouterOfTheHost, DeliversNestedMessagesBeforeTheOuterOneIsAnswered) {
    Listen("inner", [](const auto&) { return "in"; });
    Listen("outer", [&](const auto&) { return "out+" + Send("inner"); });
    recorder.Forget();
    EXPECT_EQ(Send("outer"), "out+in");
    EXPECT_THAT(recorder.messages, ElementsAre("Test>outer custom 0 ", "Test>inner custom 0 "));
    ASSERT_EQ(recorder.replies.size(), 2u);
    EXPECT_EQ(recorder.replies[0].destination, "inner");
    EXPECT_EQ(recorder.replies[0].reply, "in");
    EXPECT_EQ(recorder.replies[0].depth, 1);
    EXPECT_EQ(recorder.replies[1].reply, "out+in");
    EXPECT_EQ(recorder.replies[1].depth, 0);
    EXPECT_GE(recorder.replies[1].duration, recorder.replies[0].duration);
}

TEST_F(RouterOfTheHost, MayReEnterTheSender) {
    int depth = 0;
    std::shared_ptr<TestListener> listener;
    listener = Listen("a", [&](const auto&) {
        if (++depth == 5) return std::string("deep");
        return Send("a");
    });
    EXPECT_EQ(Send("a"), "deep");
    EXPECT_EQ(listener->count, 5);
}

TEST_F(RouterOfTheHost, EndsAnEndlessConversation) {
    int refused = 0;
    const auto listener = Listen("a", [&](const auto&) {
        try {
            return Send("a");
        } catch (const base::ComponentError& error) {
            ++refused;
            EXPECT_EQ(error.Number(), base::errors::InvalidCall);
            EXPECT_THAT(error.Description(), HasSubstr("deeper than 200"));
            return std::string("enough");
        }
    });
    EXPECT_EQ(Send("a"), "enough");
    EXPECT_EQ(refused, 1);
    EXPECT_EQ(listener->count, Router::MaximumDepth);
    EXPECT_EQ(Send("a"), "enough"); // and goes on as before
}

TEST_F(RouterOfTheHost, EndsWhatAListenerThrowsAndTellsIt) {
    Listen("component",
           [](const auto&) -> std::string { throw base::ComponentError(7, "Someone", "went wrong"); });
    Listen("standard", [](const auto&) -> std::string { throw std::runtime_error("broke"); });
    Listen("number", [](const auto&) -> std::string { throw 5; });
    EXPECT_EQ(Send("component"), "");
    EXPECT_EQ(Send("standard"), "");
    EXPECT_EQ(Send("number"), "");
    ASSERT_EQ(recorder.replies.size(), 3u);
    EXPECT_EQ(recorder.replies[0].failure, "went wrong (Someone, 7)");
    EXPECT_EQ(recorder.replies[1].failure, "broke");
    EXPECT_EQ(recorder.replies[2].failure, "an exception of unknown kind");
    EXPECT_THAT(recorder.problems,
                ElementsAre("the listener \"component\" threw: went wrong (Someone, 7)",
                            "the listener \"standard\" threw: broke",
                            "the listener \"number\" threw: an exception of unknown kind"));
    EXPECT_THAT(Host().Problems(), testing::Contains("the listener \"standard\" threw: broke"));
}

TEST_F(RouterOfTheHost, AnswersTheOuterMessageThoughAnInnerListenerThrew) {
    Listen("inner", [](const auto&) -> std::string { throw std::runtime_error("broke"); });
    Listen("outer", [&](const auto&) { return "out" + Send("inner"); });
    EXPECT_EQ(Send("outer"), "out");
    EXPECT_EQ(recorder.replies.back().depth, 0);
    EXPECT_EQ(recorder.replies.back().failure, "");
}

TEST_F(RouterOfTheHost, KeepsAListenerAliveThatIsTakenAwayWhileItIsDelivering) {
    std::weak_ptr<TestListener> watched;
    {
        const auto listener = Listen("a", [&](const auto&) {
            Host().Unlisten("a");
            EXPECT_FALSE(watched.expired());
            return Send("a") + "still here"; // nobody listens any more
        });
        watched = listener;
    }
    EXPECT_EQ(Send("a"), "still here");
    EXPECT_TRUE(watched.expired());
}

TEST_F(RouterOfTheHost, LetsListenersComeAndGoDuringADelivery) {
    Listen("a", [&](const auto&) {
        Listen("b", [](const auto&) { return "b"; });
        const std::string answer = Send("b");
        Host().Unlisten("b");
        Listen("a", [](const auto&) { return "new a"; });
        return answer + "," + Send("b") + "," + Send("a");
    });
    EXPECT_EQ(Send("a"), "b,,new a");
    EXPECT_EQ(Send("a"), "new a");
    EXPECT_THAT(Model().Listeners(), ElementsAre("SnapIn", "a"));
}

TEST_F(RouterOfTheHost, RefusesToTakeAwayWhoDoesNotListen) {
    const Refusal refusal = RefusalOf([&] { Host().Unlisten("a"); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_EQ(refusal.description, "no listener \"a\"");
}

TEST_F(RouterOfTheHost, DeliversTheSameWhetherOrNotAnyoneObserves) {
    const auto listener = Listen("a", [](const auto& message) { return std::to_string(message->Type()); });
    Host().Unsubscribe(recorder);
    EXPECT_EQ(Router().Send(NewMessage("a", 1, "no event")), "1");
    const auto odd = NewMessage("a", 2);
    odd->SetBody(base::Value(base::Date{1e300})); // cannot even be read as text
    EXPECT_EQ(Router().Send(odd), "2");
    Host().Subscribe(recorder);
    EXPECT_EQ(Router().Send(NewMessage("a", 1, "no event")), "1");
    EXPECT_EQ(Router().Send(odd), "2");
    ASSERT_EQ(recorder.records.size(), 2u);
    EXPECT_TRUE(recorder.records[0].malformed);
    EXPECT_TRUE(recorder.records[1].malformed);
    EXPECT_EQ(listener->count, 4);
}

TEST_F(RouterOfTheHost, TellsWhatAMessageHolds) {
    Listen("a");
    recorder.Forget();
    const std::vector<ParameterRecord> parameters{{"Text", 2, "x"}, {"id", 3, 5}};
    Host().SendRequest("Ask", parameters, "me", "a");
    Host().SendEvent({4, "lvTools", 13, 9}, parameters, "me", "a");
    Host().SendMessage(77, "any text", "me", "a");
    Host().SendMessage(2, "no request", "me", "a");
    EXPECT_THAT(recorder.messages,
                ElementsAre("me>a request Ask(Text=x, id=5) mode 0",
                            "me>a event 4 lvTools 13/9(Text=x, id=5)", "me>a custom 77 any text",
                            "me>a request () mode 0 malformed"));
    EXPECT_EQ(recorder.records[0].parameters[1].type, 3);
    EXPECT_EQ(recorder.records[3].body, "no request");
    EXPECT_EQ(recorder.records[2].type, 77);
}

TEST_F(RouterOfTheHost, DoesNotFailTheHostsOwnMessages) {
    const auto component = Listen("KvTM10", [](const auto&) { return "here"; });
    Host().FailNext("Router.Send");
    EXPECT_EQ(Host().SendRequest("Any", {}), "here");
    Host().ClickButton("btnUpdateTools");
    EXPECT_EQ(component->count, 2);
    EXPECT_EQ(RefusalOf([&] { Send("KvTM10"); }).number, 1001);
}

class ShellOfTheHost : public HostTest {};

TEST_F(ShellOfTheHost, AnswersTheWindowHandleInDecimalText) {
    EXPECT_EQ(Host().SendRequest("GetWindowHandle", {}, "me", "SnapIn"), "1");
    Host().SetWindowHandle(-70000);
    EXPECT_EQ(Host().SendRequest("GetWindowHandle", {}, "me", "SnapIn"), "-70000");
}

TEST_F(ShellOfTheHost, AnswersNothingToEverythingElse) {
    EXPECT_EQ(Host().SendRequest("RefreshZarnMenus", {}, "me", "SnapIn"), "");
    EXPECT_EQ(Host().SendEvent({0, "GetWindowHandle", 0, 0}, {}, "me", "SnapIn"), "");
    EXPECT_EQ(Host().SendMessage(2, "<broken", "me", "SnapIn"), "");
    EXPECT_EQ(Host().SendMessage(9, "", "me", "SnapIn"), "");
}

TEST_F(ShellOfTheHost, AnswersWhatItWasToldTo) {
    Host().Listen("SnapIn", "so be it");
    EXPECT_EQ(Host().SendRequest("GetWindowHandle", {}, "me", "SnapIn"), "so be it");
    Host().Unlisten("SnapIn");
    EXPECT_EQ(Host().SendRequest("GetWindowHandle", {}, "me", "SnapIn"), "");
    EXPECT_FALSE(Framework().Router()->IsRegistered("SnapIn"));
    Host().Listen("SnapIn", "");
    EXPECT_EQ(Host().SendRequest("GetWindowHandle", {}, "me", "SnapIn"), "");
    EXPECT_TRUE(Framework().Router()->IsRegistered("SnapIn"));
}

TEST_F(ShellOfTheHost, IsOneOfTheScriptedListenersThatAnswerTheSameToAll) {
    Host().Listen("Qillo110", "yes");
    EXPECT_EQ(Host().SendRequest("ShowUpdates", {}, "me", "Qillo110"), "yes");
    EXPECT_EQ(Host().SendMessage(5, "", "me", "Qillo110"), "yes");
}

} // namespace
} // namespace arvon::host::test
