#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class HostInterfaces : public ComponentTest {
protected:
    void SetUp() override {
        CreateHost();
        CreateTool();
    }
};

TEST_F(HostInterfaces, ListenUnderTheComponentsIdentifier) {
    EXPECT_EQ(tool->id(), "KvTM10");
}

TEST_F(HostInterfaces, GiveBackKeyAndProfileUnchanged) {
    tool->SetKey(base::Value("a key"));
    EXPECT_EQ(tool->Key().ToText(), "a key");
    tool->SetID(base::Value(7));
    EXPECT_EQ(tool->ID().GetKind(), base::Value::Kind::Integer);
    EXPECT_EQ(tool->ID().ToInteger(), 7);
    tool->SetID(base::Value("7"));
    EXPECT_EQ(tool->ID().GetKind(), base::Value::Kind::Text);
}

TEST_F(HostInterfaces, KeepNoFrameworkForISecure) {
    static_cast<arvon::ISecure&>(*tool).SetFramework(host->Framework());
    EXPECT_EQ(static_cast<arvon::ISecure&>(*tool).Framework(), nullptr);
}

TEST_F(HostInterfaces, RememberEachSubscriberOnceInOrder) {
    tool->AddSubscriber("B");
    tool->AddSubscriber("A");
    tool->AddSubscriber("B");
    tool->AddSubscriber("b");
    EXPECT_EQ(Probe().Subscribers(), (std::vector<std::string>{"", "B", "A", "b"}));
}

TEST_F(HostInterfaces, NeverCompareTheUnusedFirstSubscriber) {
    tool->AddSubscriber("");
    EXPECT_EQ(Probe().Subscribers().size(), 2u);
}

} // namespace kvtm::test
