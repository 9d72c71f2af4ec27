#include "tests/suite/SuiteCopy.h"

#include <chrono>
#include <csignal>
#include <thread>

namespace suite::test {
namespace {

using OutsidePrograms = SuiteCopy;

TEST_F(OutsidePrograms, EachRunsAndLogsInItsOwnFolder) {
    struct Case {
        const char* program;
        const char* log;
        const char* title;
    };
    for (const auto& [program, log, title] : {
             Case{"Tobr20/Tobr20.exe", "Tobr20/Tobr20.log", "Legacy Import"},
             Case{"Tobr43/Tobr43.exe", "Tobr43/Tobr43.log", "Layout"},
             Case{"Tobr44/Tobr44.exe", "Tobr44/Tobr44.log", "Plot Queue"},
             Case{"Jx310/Jx310.exe", "Jx310/Jx310.log", "Load Tables"},
             Case{"Jx320/Jx320.exe", "Jx320/Jx320.log", "Site Survey"},
             Case{"Jx321/Jx321.exe", "Jx321/Jx321.log", "Level Book"},
             Case{"Jx355/Grid Check/Jx355 Grid.exe", "Jx355/Grid Check/Jx355 Grid.log", "Grid Check"},
             Case{"Jx377/Jx377.exe", "Jx377/Jx377.log", "Łożyska"},
         }) {
        SCOPED_TRACE(program);
        EXPECT_EQ(Run(Quarra(program), {"--seconds", "0"}).exitCode, 0);
        const std::string text = Read(Quarra(log));
        EXPECT_NE(text.find("started " + std::string(title) + ", process "), std::string::npos) << text;
        EXPECT_NE(text.find("ended " + std::string(title) + ", exit code 0\n"), std::string::npos) << text;
    }
}

TEST_F(OutsidePrograms, WorkForTheGivenTime) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Run(Quarra("Tobr43/Tobr43.exe"), {"--seconds", "0.3"}).exitCode, 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
}

TEST_F(OutsidePrograms, EndWithTheGivenExitCode) {
    EXPECT_EQ(Run(Quarra("Jx310/Jx310.exe"), {"--seconds", "0", "--exit-code", "7"}).exitCode, 7);
    EXPECT_NE(Read(Quarra("Jx310/Jx310.log")).find("exit code 7"), std::string::npos);
}

TEST_F(OutsidePrograms, EndAtOnceWhenAskedTo) {
    const int processId = Start(Quarra("Tobr44/Tobr44.exe"), {"--seconds", "600", "Ground floor.qdr"});
    const auto log = Quarra("Tobr44/Tobr44.log");
    while (!std::filesystem::exists(log) || Read(log).empty())
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    ASSERT_EQ(kill(processId, SIGTERM), 0);
    EXPECT_EQ(WaitFor(processId), 0);
    const std::string text = Read(log);
    EXPECT_NE(text.find("600 seconds, document \"Ground floor.qdr\"\n"), std::string::npos) << text;
    EXPECT_NE(text.find("ended Plot Queue on request, exit code 0\n"), std::string::npos) << text;
}

TEST_F(OutsidePrograms, RefuseCommandLinesThatMakeNoSense) {
    const std::vector<std::vector<std::string>> commandLines = {
        {"--seconds"},          {"--seconds", "-1"},    {"--seconds", "nan"},
        {"--seconds", "inf"},   {"--seconds", "1x"},    {"--seconds", "100000"},
        {"--exit-code", "256"}, {"--exit-code", "one"}, {"--exit-code"},
        {"--colour"},
    };
    for (const auto& arguments : commandLines) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const ProgramEnd end = Run(Quarra("Tobr43/Tobr43.exe"), arguments);
        EXPECT_EQ(end.exitCode, 2);
        EXPECT_NE(end.errors.find(arguments.front()), std::string::npos) << end.errors;
    }
    EXPECT_FALSE(std::filesystem::exists(Quarra("Tobr43/Tobr43.log")));
}

TEST_F(OutsidePrograms, RunEvenWhereTheyCannotLog) {
    std::filesystem::create_directory(Quarra("Tobr43/Tobr43.log"));
    const ProgramEnd end = Run(Quarra("Tobr43/Tobr43.exe"), {"--seconds", "0"});
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_NE(end.errors.find("cannot be written"), std::string::npos) << end.errors;
}

} // namespace
} // namespace suite::test
