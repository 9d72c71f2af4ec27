// Programs that run as processes of their own: real ones, started and followed by the host.

#include "core/contract/EventShapes.h"
#include "tests/launch/LaunchFixture.h"

#include <fstream>

using namespace kvtm;
using namespace kvtm::test;
namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestCommandLine = 32767; // bytes that the process starter takes

class OutsideLaunch : public LaunchingTest {
protected:
    void ExpectAlreadyRunning() {
        const Box box = ClaimBox();
        EXPECT_EQ(box.text, "text 41");
        EXPECT_EQ(box.style, 64);
        EXPECT_EQ(box.title, "text 48");
    }
    /// Launches the tool "P" and expects that nothing came of it, without a word.
    void ExpectSilence() {
        EXPECT_EQ(Launch("P"), "False");
        EXPECT_TRUE(Sent().empty());
        EXPECT_TRUE(Probe().Processes().IsEmpty());
        EXPECT_TRUE(host->Model().Processes().empty());
    }
    void LoadProgram(const std::string& path, const std::string& arguments = {}) {
        LoadSuite({{.name = "P", .vrex = "Tobr99", .path = path, .commandLine = arguments}});
    }
};

} // namespace

TEST_F(OutsideLaunch, StartsTheProgramAndTellsTheLauncher) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    EXPECT_EQ(Launch("Layout"), "False");

    const std::int32_t id = ProcessOf("Tobr43");
    ASSERT_GT(id, 1);
    EXPECT_EQ(kill(id, 0), 0) << "there is no such process";
    EXPECT_EQ(CommandLines(), Strings{"/bin/sleep 60"});
    EXPECT_EQ(CallsOf("StartProcess"), Strings{"StartProcess(\"/bin/sleep 60\", \"KvTM10\")"});
    EXPECT_EQ(Sent(),
              Strings{"Zarn11:Tool_Load{event 1/9}(ToolName:2=\"Layout\", vrex:2=\"Tobr43\", ProcessID:3=" +
                      std::to_string(id) + ")"});
    EXPECT_TRUE(CallsOf("Loader.Load").empty());
    End(id);
}

TEST_F(OutsideLaunch, AsksTheHostForThisInThisOrder) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    Launch("Layout");
    EXPECT_EQ(Calls(), (Strings{"NewRequest()", "Tools.Item(\"Layout\")",
                                "StartProcess(\"/bin/sleep 60\", \"KvTM10\")", "NewEvent()",
                                "Router.IsRegistered(\"Zarn11\")", "NewMessage()", "SetMousePointer(0)"}));
    End(ProcessOf("Tobr43"));
}

TEST_F(OutsideLaunch, FollowsTheProgramToItsEnd) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    Launch("Layout");
    const std::int32_t id = ProcessOf("Tobr43");
    ForgetCalls();
    End(id);
    EXPECT_TRUE(Probe().Processes().IsEmpty());
    // the path of this program does not tell its vrex
    EXPECT_EQ(Sent(), Strings{"Zarn11:Tool_UnLoad{event 2/9}(ProcessID:3=" + std::to_string(id) + ")"});
}

TEST_F(OutsideLaunch, NoticesAKilledProgramLikeOneThatEnded) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    Launch("Layout");
    const std::int32_t id = ProcessOf("Tobr43");
    ForgetCalls();
    End(id, SIGKILL);
    EXPECT_EQ(Sent(), Strings{"Zarn11:Tool_UnLoad{event 2/9}(ProcessID:3=" + std::to_string(id) + ")"});
    EXPECT_TRUE(Probe().Processes().IsEmpty());
}

TEST_F(OutsideLaunch, RunsTheSuitesOwnPrograms) {
    std::vector<CatalogueTool> tools{
        {.name = "Layout", .vrex = "Tobr43", .commandLine = "--seconds 60"},
        {.name = "Grid Check", .vrex = "Jx355", .commandLine = "--seconds 60 \"Plan 1.qdr\""}};
    tools[0].path = Put(LAYOUT_PROGRAM, "Tobr43/Tobr43.exe");
    tools[1].path = Put(GRID_PROGRAM, "Jx355/Grid Check/Jx355 Grid.exe");
    LoadSuite(tools);
    Launch("Layout");
    Launch("Grid Check");
    const std::int32_t layout = ProcessOf("Tobr43");
    const std::int32_t grid = ProcessOf("Jx355");
    WaitForText("Tobr43/Tobr43.log", "started");
    WaitForText("Jx355/Grid Check/Jx355 Grid.log", "started");
    ForgetCalls();
    End(grid);
    End(layout);
    EXPECT_EQ(
        Sent(),
        (Strings{"Zarn11:Tool_UnLoad{event 2/9}(vrex:2=\"Jx355\", ProcessID:3=" + std::to_string(grid) + ")",
                 "Zarn11:Tool_UnLoad{event 2/9}(vrex:2=\"Tobr43\", ProcessID:3=" + std::to_string(layout) +
                     ")"}));
    EXPECT_NE(installation.Read("Jx355/Grid Check/Jx355 Grid.log").find("document \"Plan 1.qdr\""),
              std::string::npos);
}

TEST_F(OutsideLaunch, NoticesAProgramThatEndsAtOnce) {
    LoadProgram("/bin/true");
    Launch("P");
    const std::int32_t id = ProcessOf("Tobr99");
    EXPECT_TRUE(host->WaitForProcesses(std::chrono::seconds(20)));
    EXPECT_EQ(Sent().back(), "Zarn11:Tool_UnLoad{event 2/9}(ProcessID:3=" + std::to_string(id) + ")");
    EXPECT_TRUE(Probe().Processes().IsEmpty());
    EXPECT_EQ(kill(id, 0), -1) << "a dead child was left behind";
}

TEST_F(OutsideLaunch, CountsAProgramAsRunningUntilItsEndIsTold) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    Launch("Layout");
    EXPECT_EQ(Launch("Layout"), "False");
    ExpectAlreadyRunning();
    EXPECT_EQ(CommandLines().size(), 1u);

    End(ProcessOf("Tobr43"));
    Launch("Layout");
    EXPECT_EQ(CommandLines().size(), 1u);
    End(ProcessOf("Tobr43"));
}

TEST_F(OutsideLaunch, CountsAllToolsOfOneVrexAsOneProgram) {
    CatalogueTool viewer = LongRunning("Layout viewer", "Tobr43");
    viewer.showInList = "0"; // the list has one row a vrex
    LoadSuite({LongRunning("Layout", "Tobr43"), viewer});
    Launch("Layout");
    Launch("Layout viewer");
    ExpectAlreadyRunning();
    End(ProcessOf("Tobr43"));
}

TEST_F(OutsideLaunch, LeavesTheMenusAlone) {
    CatalogueTool layout = LongRunning("Layout", "Tobr43");
    layout.identifier = "LAY43";
    LoadSuite({layout});
    Launch("Layout");
    EXPECT_TRUE(CallsOf("MenuItem.SetEnabled").empty());
    End(ProcessOf("Tobr43"));
}

TEST_F(OutsideLaunch, AddsNoBlankForArgumentsOfBlanks) {
    LoadProgram("/bin/true", "   ");
    Launch("P");
    EXPECT_EQ(CallsOf("StartProcess"), Strings{"StartProcess(\"/bin/true\", \"KvTM10\")"});
    host->WaitForProcesses();
}

TEST_F(OutsideLaunch, PassesAPathWithBlanksUnquoted) {
    Put(LAYOUT_PROGRAM, "W\xc3\xa4rme Kurz/Program One.exe");
    LoadProgram("C:\\QUARRA\\W\xc3\xa4rme Kurz\\Program One.exe", "--seconds 0");
    Launch("P");
    EXPECT_EQ(CommandLines(), Strings{"C:\\QUARRA\\W\xc3\xa4rme Kurz\\Program One.exe --seconds 0"});
    EXPECT_TRUE(host->WaitForProcesses(std::chrono::seconds(20)));
    EXPECT_NE(installation.Read("W\xc3\xa4rme Kurz/Program One.log").find("started"), std::string::npos);
}

TEST_F(OutsideLaunch, StartsNothingThroughAShell) {
    LoadProgram("/bin/echo", "$(touch " + installation.File("touched").string() + "); touch " +
                                 installation.File("touched").string() + " | `id` && x");
    testing::internal::CaptureStdout();
    Launch("P");
    EXPECT_TRUE(host->WaitForProcesses(std::chrono::seconds(20)));
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(fs::exists(installation.File("touched")));
}

TEST_F(OutsideLaunch, TakesTheLongestCommandLine) {
    Put(LAYOUT_PROGRAM, "P.exe");
    const std::string start = "C:\\QUARRA\\P.exe --seconds 0 ";
    const std::string document(longestCommandLine - start.size(), 'd');
    LoadProgram("C:\\QUARRA\\P.exe", "--seconds 0 " + document);
    Launch("P");
    EXPECT_TRUE(host->WaitForProcesses(std::chrono::seconds(20)));
    EXPECT_NE(installation.Read("P.log").find('"' + document + '"'), std::string::npos);
}

TEST_F(OutsideLaunch, EndsSilentlyWhenTheCommandLineIsTooLong) {
    Put(LAYOUT_PROGRAM, "P.exe");
    LoadProgram("C:\\QUARRA\\P.exe", "--seconds 0 " + std::string(longestCommandLine, 'd'));
    ExpectSilence();
    EXPECT_FALSE(fs::exists(installation.File("P.log")));
}

TEST_F(OutsideLaunch, EndsSilentlyWithoutAPath) {
    LoadProgram("", "--seconds 5");
    ExpectSilence();
    EXPECT_TRUE(CallsOf("StartProcess").empty());
}

TEST_F(OutsideLaunch, EndsSilentlyWhenTheProgramIsMissing) {
    LoadProgram("C:\\QUARRA\\Tobr99\\Tobr99.exe");
    ExpectSilence();
    EXPECT_EQ(CallsOf("StartProcess").size(), 1u);
}

TEST_F(OutsideLaunch, EndsSilentlyWhenTheFileIsNoProgram) {
    installation.Write("Tobr99/Tobr99.exe", "MZ, but not for this system");
    LoadProgram("C:\\QUARRA\\Tobr99\\Tobr99.exe");
    ExpectSilence();
}

TEST_F(OutsideLaunch, EndsSilentlyWhenThePathIsAFolder) {
    fs::create_directories(installation.File("Tobr99/Tobr99.exe"));
    LoadProgram("C:\\QUARRA\\Tobr99\\Tobr99.exe");
    ExpectSilence();
}

TEST_F(OutsideLaunch, EndsSilentlyOnADriveThatTheInstallationDoesNotHave) {
    LoadProgram("Q:\\Tobr99.exe");
    ExpectSilence();
}

TEST_F(OutsideLaunch, ReportsAHostThatFailsToStartAndStaysReady) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    host->FailNext("StartProcess");
    EXPECT_EQ(Launch("Layout"), "False");
    EXPECT_EQ(ClaimReport("LaunchTool").description, "StartProcess failed");
    EXPECT_TRUE(Probe().Processes().IsEmpty());

    Launch("Layout");
    End(ProcessOf("Tobr43"));
}

TEST_F(OutsideLaunch, IsCountedWithoutALauncherToTell) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    host->Unlisten("Zarn11");
    Launch("Layout");
    EXPECT_TRUE(Sent().empty());
    End(ProcessOf("Tobr43"));
}

TEST_F(OutsideLaunch, ForgetsOneProgramAtATimeWhenAProcessIdComesTwice) {
    LoadSuite({});
    Probe().Processes().Add(4711, "Tobr43");
    Probe().Processes().Add(4711, "Tobr44");
    ProcessEnded("C:\\QUARRA\\Tobr44\\Tobr44.exe", 4711);
    EXPECT_EQ(ProcessOf("Tobr43"), 0);
    EXPECT_EQ(ProcessOf("Tobr44"), 4711);
}

TEST_F(OutsideLaunch, TellsTheHostWhoseProgramItStarts) {
    LoadSuiteInFront({LongRunning("First", "Tobr1"), LongRunning("Second", "Tobr2")}); // one command line
    host->ListItemEvent("lvTools", "Second", arvon::eventKind::Opened);
    Launch("First");
    Strings names;
    for (const auto& process : host->Model().Processes())
        names.push_back(process.name + " " + process.vrex);
    EXPECT_EQ(names, (Strings{"Second Tobr2", "First Tobr1"}));
    End(ProcessOf("Tobr1"));
    End(ProcessOf("Tobr2"));
}

TEST_F(OutsideLaunch, SurvivesTheUnloadingOfTheComponent) {
    LoadSuite({LongRunning("Layout", "Tobr43")});
    Launch("Layout");
    const std::int32_t id = ProcessOf("Tobr43");
    host->Unload();
    EXPECT_EQ(kill(id, 0), 0);
    End(id);
    EXPECT_TRUE(Probe().Processes().IsEmpty());
}
