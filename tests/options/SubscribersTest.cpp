#include "tests/options/OptionsFixture.h"

#include "core/Names.h"

#include <gmock/gmock.h>

namespace kvtm::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Subscribers : public OptionsTest {
protected:
    void SetUp() override { LoadWithTools(Tool("a", Option("n", "1"))); }
    static std::string With(std::string_view value) {
        return Options(SortOptions() + Tool("a", Option("n", value)));
    }
    std::string Get(std::string_view addSubscriber, std::string_view subscriber) {
        return Request(request::GetOptionValue, {{"ToolID", "a"},
                                                 {"OptionName", "n"},
                                                 {"AddSubscriber", addSubscriber},
                                                 {"SubscriberID", subscriber}});
    }
};

TEST_F(Subscribers, AReadMaySubscribe) {
    EXPECT_EQ(Get("-1", "S"), "1");
    EXPECT_EQ(Get("-1", "S"), "1");
    EXPECT_EQ(Get("-1", "s"), "1");
    EXPECT_THAT(Probe().Subscribers(), ElementsAre("", "S", "s"));
}

TEST_F(Subscribers, AReadWithAnyOtherValueSubscribesNobody) {
    for (const std::string_view no : {"0", "", "True", "1", "-1 "})
        EXPECT_EQ(Get(no, "S"), "1");
    EXPECT_EQ(Get("-1", ""), "1");
    EXPECT_EQ(
        Request(request::GetOptionValue, {{"ToolID", "a"}, {"OptionName", "n"}, {"AddSubscriber", "-1"}}),
        "1");
    EXPECT_THAT(Probe().Subscribers(), ElementsAre(""));
}

TEST_F(Subscribers, AFailingReadSubscribesAllTheSame) {
    EXPECT_EQ(
        Request(request::GetOptionValue,
                {{"ToolID", "a"}, {"OptionName", "missing"}, {"AddSubscriber", "-1"}, {"SubscriberID", "S"}}),
        "False");
    ClaimReport("GetOptionValue");
    EXPECT_THAT(Probe().Subscribers(), ElementsAre("", "S"));
}

TEST_F(Subscribers, AreToldOfEveryWriteInOrderOfSubscription) {
    std::vector<std::string> order;
    const auto second = Subscribe("2"), first = Subscribe("1");
    second->onNotice = [&] { order.push_back("2"); };
    first->onNotice = [&] { order.push_back("1"); };
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_THAT(order, ElementsAre("2", "1"));
    EXPECT_THAT(first->notices, ElementsAre(With("2")));
    EXPECT_EQ(first->notices.front(), FileText());
    EXPECT_THAT(Sent(), ElementsAre("2:NewOptions{request 0}(Options:2=\"" + With("2") + "\")",
                                    "1:NewOptions{request 0}(Options:2=\"" + With("2") + "\")"));
}

TEST_F(Subscribers, AreNotToldOfAWriteThatFailed) {
    const auto subscriber = Subscribe("S");
    EXPECT_EQ(Set("a", "missing", "2"), "False");
    ClaimReport("SetOptionValue");
    EXPECT_TRUE(subscriber->notices.empty());
}

TEST_F(Subscribers, AreNotToldOfAWriteThatTheDiskRefused) {
    const auto subscriber = Subscribe("S");
    const std::filesystem::path path = installation.File(file);
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(Set("a", "n", "2"), "False");
    ClaimReport("SetOptionValue");
    EXPECT_TRUE(subscriber->notices.empty());
    std::filesystem::remove(path);
    EXPECT_EQ(Set("a", "n", "3"), "True");
    EXPECT_THAT(subscriber->notices, ElementsAre(With("3")));
    EXPECT_EQ(FileText(), With("3"));
}

TEST_F(Subscribers, AreToldWhereTheNoticeCouldNotBeMadeAtFirst) {
    const auto subscriber = Subscribe("S");
    const RequestRef write = Probe().NewRequest(request::SetOptionValue);
    for (const auto& [name, value] : {std::pair{"ToolID", "a"}, {"OptionName", "n"}, {"OptionValue", "2"}})
        write->Parameters().Add(arvon::ParameterType::Text, name, value, true);
    ASSERT_NE(Get("0", ""), "False"); // read before written
    host->FailNext("NewRequest", 1);
    EXPECT_EQ(Probe().SetOptionValue(write), "True");
    EXPECT_THAT(subscriber->notices, ElementsAre(With("2")));
}

TEST_F(Subscribers, WhoAreNotRegisteredAreSkippedAndKept) {
    tool->AddSubscriber("S");
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_THAT(Sent(), ElementsAre());
    const auto subscriber = Register("S");
    EXPECT_EQ(Set("a", "n", "3"), "True");
    EXPECT_THAT(subscriber->notices, ElementsAre(With("3")));
}

TEST_F(Subscribers, MayReadWhileBeingTold) {
    const auto subscriber = Subscribe("S");
    std::string read;
    subscriber->onNotice = [&] { read = OptionsTest::Get("a", "n"); };
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(read, "2");
}

TEST_F(Subscribers, MayWriteWhileBeingTold) {
    const auto first = Subscribe("1"), second = Subscribe("2");
    first->onNotice = [&] {
        if (first->notices.size() == 1) {
            EXPECT_EQ(Set("a", "n", "written inside"), "True");
        }
    };
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(OptionsTest::Get("a", "n"), "written inside");
    EXPECT_EQ(FileText(), With("written inside"));
    EXPECT_THAT(first->notices, ElementsAre(With("2"), With("written inside")));
    // the outer notice goes on with the text that it began with
    EXPECT_THAT(second->notices, ElementsAre(With("written inside"), With("2")));
}

TEST_F(Subscribers, MayReplaceAllOptionsWhileBeingTold) {
    const auto first = Subscribe("1"), second = Subscribe("2");
    first->onNotice = [&] {
        if (first->notices.size() == 1) Request(request::UpdateOptions, {{"Options", With("replaced")}});
    };
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(OptionsTest::Get("a", "n"), "replaced");
    EXPECT_EQ(FileText(), With("replaced"));
    EXPECT_THAT(second->notices, ElementsAre(With("replaced"), With("2")));
}

TEST_F(Subscribers, WhoJoinDuringANoticeAreToldTheNextTime) {
    const auto first = Subscribe("1"), late = Register("late");
    first->onNotice = [&] { tool->AddSubscriber("late"); };
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_TRUE(late->notices.empty());
    EXPECT_EQ(Set("a", "n", "3"), "True");
    EXPECT_THAT(late->notices, ElementsAre(With("3")));
}

TEST_F(Subscribers, WhoLeaveDuringANoticeAreNotTold) {
    const auto first = Subscribe("1"), second = Subscribe("2");
    first->onNotice = [&] { host->Unlisten("2"); };
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_TRUE(second->notices.empty());
}

TEST_F(Subscribers, MayUnloadTheToolManagerWhileBeingTold) {
    const auto first = Subscribe("1"), second = Subscribe("2");
    first->onNotice = [&] { host->Unload(); };
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_FALSE(tool->IsLoaded());
    EXPECT_THAT(second->notices, ElementsAre(With("2")));
    EXPECT_EQ(FileText(), With("2"));
}

TEST_F(Subscribers, ADeliveryThatFailsIsReportedAndTheOthersAreTold) {
    const auto first = Subscribe("1"), second = Subscribe("2");
    host->FailNext("Router.Send");
    EXPECT_EQ(host->Framework()->Router()->IsRegistered("1"), true);
    // the request itself must come through: it is made without the router
    const RequestRef request = Probe().NewRequest(request::SetOptionValue);
    request->Parameters().Add(arvon::ParameterType::Text, "ToolID", base::Value("a"), true);
    request->Parameters().Add(arvon::ParameterType::Text, "OptionName", base::Value("n"), true);
    request->Parameters().Add(arvon::ParameterType::Text, "OptionValue", base::Value("2"), true);
    EXPECT_EQ(Probe().SetOptionValue(request), "True");
    ClaimReport("SendRequestToOwner");
    EXPECT_TRUE(first->notices.empty());
    EXPECT_THAT(second->notices, ElementsAre(With("2")));
}

TEST_F(Subscribers, OfTheComponentsOwnNameEndInNoLoop) {
    tool->AddSubscriber("KvTM10");
    EXPECT_EQ(Set("a", "n", "2"), "True"); // "NewOptions" is no request that it answers
}

} // namespace
} // namespace kvtm::test
