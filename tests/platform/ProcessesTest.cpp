#include "platform/Processes.h"

#include "platform/FilePaths.h"
#include "platform/Services.h"
#include "platform/modUtility.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>

namespace fs = std::filesystem;
using platform::Processes;

namespace {

class ProcessesTest : public testing::Test {
protected:
    ProcessesTest() {
        folder.Write("registry.reg", "");
        Install("QUARRA/Tool/Tool.exe");
        paths = platform::FilePaths::CreateFor(folder.Path());
        processes = Processes::Create(*paths);
    }

    void Install(const std::string& place) const {
        const fs::path file = folder.Path() / "drive_c" / place;
        fs::create_directories(file.parent_path());
        fs::copy_file(REPORTER_PROGRAM, file);
    }
    std::string ReportFile() const { return (folder / "report").string(); }

    /// Runs a command line to its end and answers the program's report; empty when nothing ran.
    std::string Run(const std::string& commandLine) const {
        fs::remove(ReportFile());
        const Processes::Handle handle = processes->Start(commandLine);
        processes->Wait(handle);
        processes->Close(handle);
        return fs::exists(ReportFile()) ? folder.Read("report") : "";
    }
    static bool Says(const std::string& report, const std::string& line) {
        return ("\n" + report).find("\n" + line + "\n") != std::string::npos;
    }

    TestFolder folder;
    std::unique_ptr<platform::FilePaths> paths;
    std::unique_ptr<Processes> processes;
};

TEST_F(ProcessesTest, StartsAProgramOfTheInstallationAndWaitsForItsEnd) {
    const std::string report = Run("C:\\quarra\\tool\\TOOL.exe " + ReportFile() + " 7 \"a b\" c");
    EXPECT_TRUE(Says(report, "argument 0: " + (folder / "drive_c/QUARRA/Tool/Tool.exe").string())) << report;
    EXPECT_TRUE(Says(report, "argument 3: a b")) << report;
    EXPECT_TRUE(Says(report, "argument 4: c")) << report;
}

TEST_F(ProcessesTest, FindsAnUnquotedPathWithBlanks) {
    Install("Program Files/My Tool/Tool.exe");
    const std::string report = Run("C:\\Program Files\\My Tool\\Tool.exe " + ReportFile());
    EXPECT_TRUE(Says(report, "argument 1: " + ReportFile())) << report;
}

TEST_F(ProcessesTest, TakesTheShortestPieceThatNamesAProgram) {
    Install("Program.exe");
    Install("Program Files/Tool.exe");
    fs::create_directory(folder / "drive_c/Program"); // a folder is no program
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    const std::string report = Run("C:\\Program Files\\Tool.exe " + ReportFile());
    fs::current_path(before);
    EXPECT_EQ(report, "") << "Program.exe was started, with \"Files\\Tool.exe\" for its report";
    EXPECT_TRUE(fs::exists(folder / "Files\\Tool.exe"));
    EXPECT_NE(Run("\"C:\\Program Files\\Tool.exe\" " + ReportFile()), "");
}

TEST_F(ProcessesTest, PassesOverFilesThatAreNoPrograms) {
    Install("Program Files/Tool.exe");
    folder.Write("drive_c/Program", "a note");
    EXPECT_NE(Run("C:\\Program Files\\Tool.exe " + ReportFile()), "");
}

TEST_F(ProcessesTest, AppendsTheExtension) {
    EXPECT_NE(Run("C:\\QUARRA\\Tool\\Tool " + ReportFile()), "");
    EXPECT_NE(Run("\"C:\\QUARRA\\Tool\\tool\" " + ReportFile()), "");
}

TEST_F(ProcessesTest, DropsAPeriodAtTheEndOfAProgramAndAppendsNothing) {
    Install("QUARRA/Tool/noext");
    for (const char* program :
         {"C:\\QUARRA\\Tool\\noext.", "C:\\quarra\\tool\\NOEXT..", "\"C:\\QUARRA\\Tool.\\noext. \"",
          "C:\\QUARRA\\Tool\\Tool.exe.", "C:\\QUARRA\\Tool\\noext"})
        EXPECT_NE(Run(std::string(program) + " " + ReportFile()), "") << program;
    EXPECT_NE(Run((folder / "drive_c/QUARRA/Tool/noext.").string() + " " + ReportFile()), "");
    EXPECT_EQ(Run("C:\\QUARRA\\Tool\\Tool. " + ReportFile()), "") << "Tool.exe is another program";
    const TestVariable path("PATH", (folder / "drive_c/QUARRA/Tool").c_str());
    EXPECT_NE(Run("noext. " + ReportFile()), "");

    Install("QUARRA/Tool/exact.");
    fs::copy_file(REPORTER_PROGRAM, folder / "drive_c/QUARRA/Tool/exact");
    EXPECT_TRUE(Says(Run("C:\\QUARRA\\Tool\\exact. " + ReportFile()),
                     "argument 0: " + (folder / "drive_c/QUARRA/Tool/exact.").string()));
}

TEST_F(ProcessesTest, FindsABareNameAlongThePath) {
    const TestVariable path("PATH", (folder / "drive_c/QUARRA/Tool").c_str());
    EXPECT_NE(Run("Tool.exe " + ReportFile()), "");
    EXPECT_NE(Run("Tool " + ReportFile()), "");
}

TEST_F(ProcessesTest, NeverAsksAShell) {
    const std::string report = Run("C:\\QUARRA\\Tool\\Tool.exe " + ReportFile() + " 0 ; > $HOME `id` * | &&");
    const char* const words[] = {";", ">", "$HOME", "`id`", "*", "|", "&&"};
    for (int i = 0; i < 7; ++i)
        EXPECT_TRUE(Says(report, "argument " + std::to_string(i + 3) + ": " + words[i])) << report;

    // Without "#!" the kernel refuses a text, and nothing else is tried.
    const fs::path script = folder.Write("drive_c/script.exe", "echo hello > " + ReportFile() + "\n");
    fs::permissions(script, fs::perms::owner_all);
    EXPECT_EQ(processes->Start("C:\\script.exe"), 0);
}

TEST_F(ProcessesTest, AnswersZeroForWhatCannotBeStarted) {
    folder.Write("drive_c/note.txt", "no program");
    const fs::path broken = folder.Write("drive_c/broken.exe", "\x7F"
                                                               "ELF but not really");
    fs::permissions(broken, fs::perms::owner_all);
    for (const std::string& commandLine :
         {std::string(), std::string("   "), std::string("\"\""), std::string("C:\\none.exe"),
          std::string("Z:\\none.exe"), std::string("C:\\note.txt"), std::string("C:\\broken.exe"),
          std::string("C:\\QUARRA"), std::string("C:\\QUARRA\\."), std::string("..."), std::string("C:\\..."),
          std::string("\"\\. .\""), std::string("\0C:\\QUARRA\\Tool\\Tool.exe", 25),
          "C:\\QUARRA\\Tool\\Tool.exe " + std::string(40'000, 'x')})
        EXPECT_EQ(processes->Start(commandLine), 0) << commandLine.substr(0, 40);
    EXPECT_LT(::waitpid(-1, nullptr, WNOHANG), 0) << "no child may be left";
    processes->Wait(0);
    processes->Close(0);
}

TEST_F(ProcessesTest, GivesTheChildEnvironmentFolderAndOpenFiles) {
    const TestVariable variable("REPORTED_VARIABLE", "handed on");
    const int inherited = ::open(folder.Write("inherited", "").c_str(), O_RDONLY);
    const int kept = ::open(folder.Write("kept", "").c_str(), O_RDONLY | O_CLOEXEC);
    const std::string report = Run("C:\\QUARRA\\Tool\\Tool.exe " + ReportFile());
    ::close(inherited);
    ::close(kept);
    EXPECT_TRUE(Says(report, "variable: handed on"));
    EXPECT_TRUE(Says(report, "folder: " + fs::current_path().string()));
    EXPECT_TRUE(Says(report, "open: " + (folder / "inherited").string())) << report;
    EXPECT_FALSE(Says(report, "open: " + (folder / "kept").string())) << report;
}

TEST_F(ProcessesTest, StartsTheChildWithFreshSignals) {
    sigset_t all, before;
    ::sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, &before);
    const auto pipeBefore = std::signal(SIGPIPE, SIG_IGN);
    const std::string report = Run("C:\\QUARRA\\Tool\\Tool.exe " + ReportFile());
    std::signal(SIGPIPE, pipeBefore);
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    EXPECT_TRUE(Says(report, "SIGPIPE: default")) << report;
    EXPECT_EQ(report.find("blocked:"), std::string::npos) << report;
}

std::atomic<int> alarms = 0;

TEST_F(ProcessesTest, WaitsOnWhenSignalsArrive) {
    struct sigaction handler {
    }, before{};
    handler.sa_handler = [](int) { ++alarms; }; // no SA_RESTART: every alarm breaks the wait
    ::sigaction(SIGALRM, &handler, &before);
    const itimerval often{{0, 20'000}, {0, 20'000}}, never{};
    ::setitimer(ITIMER_REAL, &often, nullptr);
    const auto start = std::chrono::steady_clock::now();
    const Processes::Handle handle = processes->Start("/bin/sleep 0.3");
    processes->Wait(handle);
    const auto duration = std::chrono::steady_clock::now() - start;
    ::setitimer(ITIMER_REAL, &never, nullptr);
    ::sigaction(SIGALRM, &before, nullptr);
    processes->Close(handle);
    EXPECT_GE(duration, std::chrono::milliseconds(290));
    EXPECT_GE(alarms, 5);
}

TEST_F(ProcessesTest, WaitsForItsOwnChildOnly) {
    const Processes::Handle other = processes->Start("/bin/sleep 0");
    const Processes::Handle waited = processes->Start("/bin/sleep 0.1");
    ASSERT_GT(other, 0);
    ASSERT_NE(other, waited);
    processes->Wait(waited);
    EXPECT_EQ(::kill(static_cast<pid_t>(other), 0), 0) << "its end is still there to be asked for";
    processes->Wait(other);
    EXPECT_EQ(::kill(static_cast<pid_t>(other), 0), -1);
    processes->Close(waited);
    processes->Close(other);
}

TEST_F(ProcessesTest, ReturnsFromAWaitForWhatSomebodyElseTook) {
    const Processes::Handle handle = processes->Start("/bin/sleep 0");
    ASSERT_EQ(::waitpid(static_cast<pid_t>(handle), nullptr, 0), handle);
    processes->Wait(handle);
    processes->Close(handle);
}

TEST_F(ProcessesTest, LeavesNoDeadEntryOfAChildThatIsClosedWhileItRuns) {
    const Processes::Handle handle = processes->Start("/bin/sleep 0.05");
    processes->Close(handle);
    EXPECT_EQ(::kill(static_cast<pid_t>(handle), 0), 0) << "closing does not end it";
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (::kill(static_cast<pid_t>(handle), 0) == 0 && std::chrono::steady_clock::now() < deadline) {
        const Processes::Handle next = processes->Start("/bin/sleep 0");
        processes->Wait(next);
        processes->Close(next);
    }
    EXPECT_EQ(::kill(static_cast<pid_t>(handle), 0), -1) << "taken at one of the later starts";
}

TEST_F(ProcessesTest, RunAndWaitReturnsWhenTheChildHasEnded) {
    platform::Services services;
    services.processes = std::move(processes);
    platform::modUtility::RunAndWait(services, "C:\\QUARRA\\Tool\\Tool.exe " + ReportFile() + " 3");
    EXPECT_TRUE(fs::exists(ReportFile()));
    EXPECT_LT(::waitpid(-1, nullptr, WNOHANG), 0) << "no child may be left";
}

TEST_F(ProcessesTest, RunAndWaitReturnsAtOnceWhenNothingCouldBeStarted) {
    platform::Services services;
    services.processes = std::move(processes);
    platform::modUtility::RunAndWait(services, "C:\\QUARRA\\Enviro\\missing.exe");
    EXPECT_FALSE(fs::exists(ReportFile()));
}

} // namespace
