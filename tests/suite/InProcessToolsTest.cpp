// The suite's in-process tools in the reference host, without the tool manager: its listener is played by the
// tests.

#include "host/ReferenceHost.h"
#include "tests/suite/SuiteCopy.h"

#include <gmock/gmock.h>

namespace suite::test {
namespace {

using arvon::host::ParameterRecord;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

ParameterRecord Text(const std::string& name, const std::string& value) {
    return {name, 2, value};
}
ParameterRecord Number(const std::string& name, std::int32_t value) {
    return {name, 3, value};
}

/// Takes down the errors that tools report.
class ErrorRecorder : public arvon::host::IObserver {
public:
    std::vector<std::string> errors; // descriptions

    void OnMessage(const arvon::host::MessageRecord& message) override {
        if (message.name != "ErrorMessage") return;
        for (const ParameterRecord& parameter : message.parameters) {
            if (parameter.name == "ErrorDescription") errors.push_back(parameter.value.ToText());
        }
    }
};

class InProcessTools : public SuiteCopy {
protected:
    InProcessTools() : host(Installation()) { host.Subscribe(recorder); }
    ~InProcessTools() override {
        host.Unsubscribe(recorder);
        EXPECT_THAT(recorder.errors, IsEmpty()) << "errors that the test did not take";
    }

    bool Load(const std::string& name) { return host.Framework()->Loader().Load(name, nullptr); }
    std::string Ask(const std::string& listener, const std::string& request,
                    const std::vector<ParameterRecord>& parameters = {}) {
        return host.SendRequest(request, parameters, "Console", listener);
    }
    void Tell(const std::string& listener, const std::string& event,
              const std::vector<ParameterRecord>& parameters) {
        host.SendEvent({0, event, 0, 0}, parameters, "KvTM10", listener);
    }
    std::vector<std::string> TakeErrors() { return std::exchange(recorder.errors, {}); }

    arvon::host::ReferenceHost host;

private:
    ErrorRecorder recorder;
};

TEST_F(InProcessTools, LoadAnswerAndUnloadEachInTurn) {
    for (const std::string name : {"Beam & Frame", "Wärmebedarf", "Unit Converter", "Material Library",
                                   "Launcher", "Program Updates", "Workflow"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(Load(name)) << host.ProblemOf(name);
        host.UnloadTool(name);
        EXPECT_THAT(host.Model().Loaded(), IsEmpty());
        ASSERT_TRUE(Load(name)) << "a second time: " << host.ProblemOf(name);
        host.UnloadTool(name);
    }
}

TEST_F(InProcessTools, AreFoundByTheIdentifierOfTheirRecord) {
    for (const std::string identifier : {"Zarn11", "Qillo110", "WORKFLOW"})
        EXPECT_TRUE(Load(identifier)) << host.ProblemOf(identifier);
    EXPECT_THAT(host.Model().Listeners(), testing::IsSupersetOf({"Zarn11", "Qillo110", "WORKFLOW"}));
}

TEST_F(InProcessTools, KnowNothingOfUnknownRequests) {
    ASSERT_TRUE(Load("Unit Converter"));
    EXPECT_EQ(Ask("Qx07", "Translate"), "");
}

TEST_F(InProcessTools, SurviveMessagesThatAreNoMessages) {
    ASSERT_TRUE(Load("Unit Converter"));
    EXPECT_EQ(host.SendMessage(2, "<Request", "Console", "Qx07"), "");
    EXPECT_EQ(host.SendMessage(1, "", "Console", "Qx07"), "");
    EXPECT_EQ(host.SendMessage(3, "anything", "Console", "Qx07"), "");
    EXPECT_EQ(TakeErrors().size(), 2U) << "a custom message is no error";
}

TEST_F(InProcessTools, BeamAndFrameCalculatesWithTheMaterialOfItsOption) {
    host.Listen("KvTM10", "Spruce C24");
    ASSERT_TRUE(Load("Beam & Frame"));
    const std::vector<ParameterRecord> beam = {Text("SpanM", "4"), Text("LoadKNPerM", "3"),
                                               Number("InertiaCm4", 10000)};
    // 5 * 3 * 4000^4 / (384 * 11000 * 1e8) = 9.0909...
    EXPECT_THAT(Ask("Vn21", "Calculate", beam),
                AllOf(HasSubstr("Material=\"Spruce C24\""), HasSubstr("DeflectionMm=\"9.0909"),
                      HasSubstr("MomentKNm=\"6\"")));

    EXPECT_EQ(
        Ask("Vn21", "NewOptions",
            {Text("Options",
                  "<Options><ToolOptions><Tool ID='Vn34'/><Tool ID='Vn21'><Option><Name>cmbMaterial</Name>"
                  "<Value>Steel S235</Value></Option></Tool></ToolOptions></Options>")}),
        "True");
    EXPECT_THAT(Ask("Vn21", "Calculate", beam), HasSubstr("Material=\"Steel S235\""));
}

TEST_F(InProcessTools, BeamAndFrameUsesSteelWithoutTheToolManager) {
    ASSERT_TRUE(Load("Beam & Frame"));
    EXPECT_THAT(
        Ask("Vn21", "Calculate", {Text("SpanM", "4"), Text("LoadKNPerM", "3"), Text("InertiaCm4", "10000")}),
        HasSubstr("Material=\"Steel S235\""));
}

TEST_F(InProcessTools, BeamAndFrameReportsWhatItCannotCalculate) {
    ASSERT_TRUE(Load("Beam & Frame"));
    EXPECT_EQ(Ask("Vn21", "Calculate", {Text("SpanM", "4"), Text("LoadKNPerM", "3")}), "");
    EXPECT_EQ(
        Ask("Vn21", "Calculate", {Text("SpanM", "0"), Text("LoadKNPerM", "3"), Text("InertiaCm4", "1")}), "");
    EXPECT_EQ(
        Ask("Vn21", "Calculate", {Text("SpanM", "long"), Text("LoadKNPerM", "3"), Text("InertiaCm4", "1")}),
        "");
    const std::vector<std::string> errors = TakeErrors();
    ASSERT_EQ(errors.size(), 3U);
    EXPECT_THAT(errors[0], HasSubstr("\"InertiaCm4\" is missing"));
    EXPECT_THAT(errors[1], HasSubstr("should be above 0"));
}

TEST_F(InProcessTools, HeatLossFollowsTheRoomTemperature) {
    ASSERT_TRUE(Load("Wärmebedarf"));
    const std::vector<ParameterRecord> wall = {Text("UValue", "0.5"), Text("AreaM2", "10"),
                                               Number("OutsideTemperature", -10)};
    EXPECT_EQ(Ask("Vn34", "Calculate", wall), "150");
    EXPECT_EQ(
        Ask("Vn34", "NewOptions",
            {Text("Options",
                  "<Options><Tool ID='Vn34'><Option><Name>txtRoomTemperature</Name><Value>22</Value></Option>"
                  "</Tool></Options>")}),
        "True");
    EXPECT_EQ(Ask("Vn34", "Calculate", wall), "160");
    EXPECT_EQ(Ask("Vn34", "NewOptions", {Text("Options", "<Options/>")}), "True");
    EXPECT_EQ(Ask("Vn34", "Calculate", wall), "160") << "options without that one change nothing";
}

TEST_F(InProcessTools, UnitConverterConvertsWithinAQuantity) {
    ASSERT_TRUE(Load("Unit Converter"));
    EXPECT_EQ(Ask("Qx07", "Convert", {Text("Value", "2"), Text("From", "m"), Text("To", "mm")}), "2000");
    EXPECT_EQ(Ask("Qx07", "Convert", {Number("Value", 1), Text("From", "ft"), Text("To", "in")}), "12");
    EXPECT_EQ(Ask("Qx07", "Convert", {Text("Value", "1"), Text("From", "m"), Text("To", "kg")}), "");
    EXPECT_EQ(Ask("Qx07", "Convert", {Text("Value", "1"), Text("From", "furlong"), Text("To", "m")}), "");
    EXPECT_THAT(TakeErrors(),
                ElementsAre(HasSubstr("measure different things"), HasSubstr("\"furlong\" is unknown")));
}

TEST_F(InProcessTools, MaterialLibraryReadsItsOwnFolder) {
    ASSERT_TRUE(Load("Material Library")) << host.ProblemOf("Material Library");
    EXPECT_THAT(Ask("Qx12", "Materials"), HasSubstr("Steel S235\nAluminium 6061\n"));
    EXPECT_THAT(Ask("Qx12", "Material", {Text("Name", "Glass, float")}), HasSubstr("ModulusMPa=\"70000\""));
    EXPECT_EQ(Ask("Qx12", "Material", {Text("Name", "Unobtainium")}), "");
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("Unobtainium")));
}

TEST_F(InProcessTools, MaterialLibraryDoesNotLoadWithoutItsMaterials) {
    std::filesystem::remove(Quarra("Qx12/Materials.xml"));
    EXPECT_FALSE(Load("Material Library"));
    EXPECT_THAT(host.ProblemOf("Material Library"), HasSubstr("Materials.xml"));
}

TEST_F(InProcessTools, ZarnKnowsWhatIsRunning) {
    ASSERT_TRUE(Load("Zarn11"));
    Tell("Zarn11", "Tool_Load",
         {Text("ToolName", "Layout"), Text("vrex", "Tobr43"), Number("ProcessID", 4711)});
    Tell("Zarn11", "Tool_Load", {Text("ToolName", "Beam & Frame"), Text("vrex", "Vn21")});
    Tell("Zarn11", "Tool_Load",
         {Text("ToolName", "Grid Check"), Text("vrex", "Jx355"), Number("ProcessID", 4712)});
    EXPECT_EQ(Ask("Zarn11", "RunningTools"),
              "Layout\tTobr43\t4711\nBeam & Frame\tVn21\t0\nGrid Check\tJx355\t4712");

    Tell("Zarn11", "Tool_UnLoad", {Text("vrex", "Tobr43"), Number("ProcessID", 4711)});
    Tell("Zarn11", "Tool_UnLoad", {Number("ProcessID", 1)});
    EXPECT_EQ(Ask("Zarn11", "RunningTools"), "Beam & Frame\tVn21\t0\nGrid Check\tJx355\t4712");

    Tell("Zarn11", "Tool_Unload", {Text("vrex", "VN21"), Text("toolID", "")});
    Tell("Zarn11", "tool_unload", {Text("vrex", "Jx355")});
    EXPECT_EQ(Ask("Zarn11", "RunningTools"), "Grid Check\tJx355\t4712");
}

TEST_F(InProcessTools, WorkflowKeepsTheHistoryOfUnloadedTools) {
    ASSERT_TRUE(Load("WORKFLOW"));
    EXPECT_EQ(Ask("WORKFLOW", "History"), "");
    Tell("WORKFLOW", "ToolUnloaded", {Text("ToolName", "Beam & Frame")});
    Tell("WORKFLOW", "Tool_Unload", {Text("ToolName", "other event")});
    Tell("WORKFLOW", "ToolUnloaded", {Text("ToolName", "Wärmebedarf")});
    EXPECT_EQ(Ask("WORKFLOW", "History"), "Beam & Frame\nWärmebedarf");
}

TEST_F(InProcessTools, QilloShowsNewProgramsOrUpdates) {
    ASSERT_TRUE(Load("Qillo110"));
    const std::string newPrograms = Ask("Qillo110", "ShowUpdates", {Text("ShowNew", "True")});
    EXPECT_THAT(newPrograms, AllOf(HasSubstr("<Updates ShowNew=\"-1\">"), HasSubstr("Name=\"Pipe Sizing\""),
                                   HasSubstr("Name=\"Drainage &amp; Sewers\""), Not(HasSubstr("Layout"))));
    const std::string updates = Ask("Qillo110", "ShowUpdates", {Number("ShowNew", 0)});
    EXPECT_THAT(updates,
                AllOf(HasSubstr("<Updates ShowNew=\"0\">"), HasSubstr("version=\"4.3\" installed=\"4.2\""),
                      HasSubstr("Name=\"Wärmebedarf\""), Not(HasSubstr("Load Tables")),
                      Not(HasSubstr("Pipe Sizing"))));
    EXPECT_EQ(Ask("Qillo110", "ShowUpdates"), updates) << "without the parameter: updates";
}

TEST_F(InProcessTools, QilloReportsADamagedPackageAndOffersTheOthers) {
    ASSERT_TRUE(Load("Qillo110"));
    Write(Quarra("Packages/Damaged.xml"), "<Package><Tool");
    EXPECT_THAT(Ask("Qillo110", "ShowUpdates", {Text("ShowNew", "-1")}), HasSubstr("Pipe Sizing"));
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("Damaged.xml")));
}

TEST_F(InProcessTools, QilloOffersNothingWithoutAPackageFolder) {
    ASSERT_TRUE(Load("Qillo110"));
    std::filesystem::remove_all(Quarra("Packages"));
    EXPECT_EQ(Ask("Qillo110", "ShowUpdates", {Text("ShowNew", "-1")}), "<Updates ShowNew=\"-1\"/>");
}

TEST_F(InProcessTools, QilloAnswersItsSettings) {
    ASSERT_TRUE(Load("Qillo110"));
    EXPECT_EQ(Ask("Qillo110", "ShowOptions"), "<UpdateSettings PackageFolder=\"C:\\QUARRA\\Packages\" "
                                              "CheckAtStart=\"ON\" CheckIntervalDays=\"7\"/>");
    host.Listen("KvTM10", "30");
    EXPECT_THAT(Ask("Qillo110", "ShowOptions"), HasSubstr("CheckIntervalDays=\"30\""));
}

struct Fault {
    const char* library;
    const char* reason; // what the host says, in part
};

/// One library that is broken in one way, under the name of a tool of the suite.
class FaultyTool : public InProcessTools {
protected:
    void Install(const std::string& library) const {
        std::filesystem::copy_file(std::string(KVTM_FAULTY_TOOLS) + "/" + library + ".dll",
                                   Quarra("Vn21/Vn21.dll"),
                                   std::filesystem::copy_options::overwrite_existing);
    }
};

TEST_F(FaultyTool, ThatThrowsAtMessagesAndAtUnloadingHarmsNobodyElse) {
    Install("ThrowsLater");
    ASSERT_TRUE(Load("Beam & Frame")) << host.ProblemOf("Beam & Frame");
    ASSERT_TRUE(Load("Unit Converter"));
    EXPECT_EQ(Ask("ThrowsLater", "Calculate"), "");
    Tell("ThrowsLater", "Tool_Load", {});
    const std::string thrown = "the listener \"ThrowsLater\" threw: thrown out of ReceiveMessage";
    EXPECT_THAT(host.Problems(), ElementsAre(thrown, thrown));

    host.UnloadTool("Beam & Frame");
    EXPECT_THAT(host.Problems(),
                ElementsAre(thrown, thrown, "tool \"Beam & Frame\" failed to unload: thrown out of Unload"));
    EXPECT_THAT(host.Model().Listeners(), Not(testing::Contains("ThrowsLater")));
    ASSERT_EQ(host.Model().Loaded().size(), 1U);
    EXPECT_EQ(Ask("Qx07", "Convert", {Text("Value", "2"), Text("From", "m"), Text("To", "mm")}), "2000");
}

class FaultyTools : public FaultyTool, public testing::WithParamInterface<Fault> {};

TEST_P(FaultyTools, AreRefusedByTheHost) {
    Install(GetParam().library);
    EXPECT_FALSE(Load("Beam & Frame"));
    EXPECT_THAT(host.ProblemOf("Beam & Frame"), HasSubstr(GetParam().reason));
    EXPECT_THAT(host.Model().Loaded(), IsEmpty());
    EXPECT_TRUE(Load("Unit Converter")) << "others load all the same";
}

INSTANTIATE_TEST_SUITE_P(EachFault, FaultyTools,
                         testing::Values(Fault{"NoEntryPoint", "has no entry point"},
                                         Fault{"MakesNothing", "made no tool"},
                                         Fault{"DeclinesToLoad", "declined"},
                                         Fault{"ThrowsWhileLoading", "the licence file is missing"}),
                         [](const auto& test) { return std::string(test.param.library); });

} // namespace
} // namespace suite::test
