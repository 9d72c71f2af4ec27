// What goes to the debugger's output, on which nothing else depends.

#include "tests/support/ComponentFixture.h"
#include "tests/support/DebugLines.h"

namespace kvtm::test {

class Diagnostics : public ComponentTest {
protected:
    using Lines = std::vector<std::string>;

    void SetUp() override {
        CreateHost();
        platform::Services services = platform::Services::Create();
        services.debugOutput = std::make_unique<DebugLines>(lines);
        CreateTool(std::move(services));
        ASSERT_TRUE(Load());
        lines.clear();
    }

    Lines lines;
};

TEST_F(Diagnostics, NameARequestThatNobodyKnows) {
    Request("getresourcemodule");
    EXPECT_EQ(lines, Lines{"HandleRequest - Unknown Request Type (getresourcemodule) Received"});
}

TEST_F(Diagnostics, TellOfAnEventThatNobodyKnows) {
    Event(static_cast<arvon::EventObject>(7), "any");
    EXPECT_EQ(lines, Lines{"ToolMain.HandleEvent - Unknown Event Object Received"});
}

TEST_F(Diagnostics, NameAProcessEventThatNobodyKnows) {
    Event(arvon::EventObject::Process, "any");
    EXPECT_EQ(lines, Lines{"HandleProcessEvent - Unknown Process Event (any) Received"});
}

TEST_F(Diagnostics, AreSilentOnWhatIsKnownAndOnCustomMessages) {
    Request("GetResourceModule");
    Event(arvon::EventObject::Task, "any");
    host->SendMessage(3, "any");
    EXPECT_EQ(lines, Lines{});
}

} // namespace kvtm::test
