#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class EventDispatch : public ComponentTest {
protected:
    void SetUp() override {
        LoadWith({{.name = "Layout"}});
        host->Listen("Zarn11", "");
        ForgetCalls();
    }
    std::vector<std::string> RemainingProcesses() {
        std::vector<std::string> keys;
        for (std::size_t i = 1; i <= Probe().Processes().Count(); ++i) {
            keys.push_back(Probe().Processes().KeyAt(i) + "=" + std::to_string(Probe().Processes().Item(i)));
        }
        return keys;
    }
};

TEST_F(EventDispatch, IgnoresKindsThatItDoesNotKnow) {
    Event(static_cast<arvon::EventObject>(7), "mnuTool");
    Event(static_cast<arvon::EventObject>(-1), "mnuTool");
    EXPECT_EQ(Calls(),
              (std::vector<std::string>{"NewEvent()", "NewEvent()"})); // the events taken in, no more
    EXPECT_TRUE(Sent().empty());
}

TEST_F(EventDispatch, IgnoresProcessEventsOfOtherNames) {
    Event(arvon::EventObject::Process, "shellprocesscomplete", {{"lProcessID", "12"}});
    EXPECT_TRUE(Sent().empty());
}

TEST_F(EventDispatch, TellsTheLauncherOfAnEndedProgram) {
    Probe().Processes().Add(12, "Tobr43");
    Probe().Processes().Add(13, "Jx3AB");
    ProcessEnded("C:\\QUARRA\\Jx3AB\\Jx3AB.exe", 13);
    EXPECT_EQ(Sent(),
              std::vector<std::string>{"Zarn11:Tool_UnLoad{event 2/9}(vrex:2=\"Jx3AB\", ProcessID:3=13)"});
    EXPECT_EQ(RemainingProcesses(), std::vector<std::string>{"Tobr43=12"});
}

TEST_F(EventDispatch, TellsTheLauncherOfProgramsThatItNeverStarted) {
    ProcessEnded("C:\\other.exe", 4711);
    EXPECT_EQ(Sent(), std::vector<std::string>{"Zarn11:Tool_UnLoad{event 2/9}(ProcessID:3=4711)"});
}

TEST_F(EventDispatch, TakesOnlyTheFirstEntryOfAnIdentifier) {
    Probe().Processes().Add(12, "A");
    Probe().Processes().Add(12, "B");
    ProcessEnded("a.exe", 12);
    EXPECT_EQ(RemainingProcesses(), std::vector<std::string>{"B=12"});
}

TEST_F(EventDispatch, NeedsAProcessIdentifierAboveZero) {
    Probe().Processes().Add(0, "A");
    Event(arvon::EventObject::Process, "ShellProcessComplete", {{"sApplicationNameAndPath", "Tobr43.exe"}});
    ProcessEnded("Tobr43.exe", 0);
    ProcessEnded("Tobr43.exe", -5);
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(RemainingProcesses().size(), 1u);
}

TEST_F(EventDispatch, ReportsAnIdentifierThatIsNoNumber) {
    Event(arvon::EventObject::Process, "ShellProcessComplete", {{"lProcessID", "twelve"}});
    EXPECT_EQ(ClaimReport("HandleEvent").number, base::errors::TypeMismatch);
}

TEST_F(EventDispatch, PrefersTheLongerNameInThePath) {
    ProcessEnded("C:\\Jx3AB\\Tobr43\\x.exe", 1);
    EXPECT_EQ(Sent(),
              std::vector<std::string>{"Zarn11:Tool_UnLoad{event 2/9}(vrex:2=\"Tobr43\", ProcessID:3=1)"});
}

TEST_F(EventDispatch, TakesTheShorterRestAtThePathsEnd) {
    ProcessEnded("C:\\QUARRA\\Jx3A", 1);
    ProcessEnded("C:\\QUARRA\\Jx3", 2);
    ProcessEnded("C:\\QUARRA\\jx3AB", 3);
    EXPECT_EQ(Sent(),
              (std::vector<std::string>{"Zarn11:Tool_UnLoad{event 2/9}(vrex:2=\"Jx3A\", ProcessID:3=1)",
                                        "Zarn11:Tool_UnLoad{event 2/9}(vrex:2=\"Jx3\", ProcessID:3=2)",
                                        "Zarn11:Tool_UnLoad{event 2/9}(ProcessID:3=3)"}));
}

TEST_F(EventDispatch, CountsCharactersAndNotBytesBehindThePrefix) {
    ProcessEnded("C:\\Jx3\xc3\x84\xc3\x96\\x.exe", 1);
    EXPECT_EQ(Sent(), std::vector<std::string>{
                          "Zarn11:Tool_UnLoad{event 2/9}(vrex:2=\"Jx3\xc3\x84\xc3\x96\", ProcessID:3=1)"});
}

TEST_F(EventDispatch, TellsOfNewToolsWhenTheGeneratorEnded) {
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "Layout"}, {.name = "Pipes"}});
    ProcessEnded("C:\\QUARRA\\Arvon\\Bin\\BuildToolXML_Arvon11.exe", 9);
    const Box box = ClaimBox();
    EXPECT_EQ(box.text, "text 42\r\ntext 43\r\ntext 44");
    EXPECT_EQ(box.style, 64);
    EXPECT_EQ(box.title, "text 45");
}

TEST_F(EventDispatch, ReadsTheCatalogueOfAGeneratorWithoutAProcessIdentifier) {
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "Layout"}, {.name = "Pipes"}});
    Event(arvon::EventObject::Process, "ShellProcessComplete",
          {{"sApplicationNameAndPath", "BuildToolXML_Arvon11.exe"}});
    ClaimBox();
    EXPECT_EQ(ListedNames(), (std::vector<std::string>{"Layout", "Pipes"}));
    EXPECT_TRUE(Sent().empty());
}

TEST_F(EventDispatch, KnowsTheGeneratorByItsExactName) {
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "Layout"}, {.name = "Pipes"}});
    ProcessEnded("C:\\QUARRA\\Arvon\\Bin\\buildtoolxml_arvon11.exe", 9);
    EXPECT_EQ(ListedNames(), std::vector<std::string>{"Layout"}) << "nothing was read again";
    EXPECT_EQ(host->Model().Tools().size(), 1u);
}

TEST_F(EventDispatch, KeepsTheStoredOrderWhenTheGeneratorEnded) {
    installation.WriteTools({{.name = "Pipes"}, {.name = "Layout"}});
    ProcessEnded("C:\\QUARRA\\Arvon\\Bin\\BuildToolXML_Arvon11.exe", 9);
    ClaimBox();
    EXPECT_EQ(ListedNames(), (std::vector<std::string>{"Layout", "Pipes"}));
}

TEST_F(EventDispatch, SendsNothingWhenNoLauncherListens) {
    host->Unlisten("Zarn11");
    Probe().Processes().Add(12, "A");
    ProcessEnded("a.exe", 12);
    EXPECT_TRUE(Sent().empty());
    EXPECT_TRUE(RemainingProcesses().empty());
}

} // namespace kvtm::test
