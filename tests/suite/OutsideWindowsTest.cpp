// The outside programs on a display: real programs, seen and used from outside.

#include "tests/suite/SuiteCopy.h"
#include "tests/suite/XDisplay.h"
#include "tests/support/TestVariable.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <thread>

namespace suite::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using Clock = std::chrono::steady_clock;

std::string NameOfDisplay() {
    const char* name = std::getenv("DISPLAY");
    return name ? name : "";
}
const std::string displayOfTests = NameOfDisplay(); // before a test hides it

class OutsideWindows : public SuiteCopy {
protected:
    /// Starts a program, perhaps with arguments; it has to be ended by the test.
    int Open(const char* program, const std::vector<std::string>& arguments = {}) {
        return Start(Quarra(program), arguments, "/dev/null", Outside("errors.txt"));
    }
    std::string Errors() const { return Read(Outside("errors.txt")); }

    const TestVariable display_{"DISPLAY", displayOfTests.c_str()};
    const XDisplay screen{displayOfTests};
};

TEST_F(OutsideWindows, BearTheProgramsTitleAndGoOnRequest) {
    struct Case {
        const char* program;
        const char* title;
    };
    for (const auto& [program, title] : {
             Case{"Tobr20/Tobr20.exe", "Legacy Import"},
             Case{"Tobr43/Tobr43.exe", "Layout"},
             Case{"Tobr44/Tobr44.exe", "Plot Queue"},
             Case{"Jx310/Jx310.exe", "Load Tables"},
             Case{"Jx320/Jx320.exe", "Site Survey"},
             Case{"Jx321/Jx321.exe", "Level Book"},
             Case{"Jx355/Grid Check/Jx355 Grid.exe", "Grid Check"},
             Case{"Jx377/Jx377.exe", "Łożyska"},
         }) {
        SCOPED_TRACE(program);
        for (const int signal : {SIGTERM, SIGINT}) {
            const int process = Open(program);
            screen.Window(title);
            ASSERT_EQ(kill(process, signal), 0);
            EXPECT_EQ(WaitFor(process), 0);
            screen.WaitUntilGone(title);
        }
        const std::string log = Read(Quarra(program).replace_extension(".log"));
        EXPECT_THAT(log, HasSubstr(", until it is closed\n"));
        EXPECT_THAT(log, EndsWith("ended " + std::string(title) + " on request, exit code 0\n"));
        EXPECT_EQ(Errors(), "");
    }
}

TEST_F(OutsideWindows, StayUntilTheirFramesAreClosed) {
    const int process = Open("Tobr43/Tobr43.exe", {"--exit-code", "3"});
    const xcb_window_t window = screen.Window("Layout");
    std::this_thread::sleep_for(std::chrono::milliseconds(2500)); // longer than without a window
    EXPECT_TRUE(screen.HasWindow("Layout"));
    screen.AskToClose(window);
    EXPECT_EQ(WaitFor(process), 3);
    EXPECT_THAT(Read(Quarra("Tobr43/Tobr43.log")), EndsWith("ended Layout, exit code 3\n"));
}

TEST_F(OutsideWindows, CloseByTheKeyboard) {
    for (const xcb_keysym_t key : {0x0020U /* space */, 0xff0dU /* enter */}) {
        const int process = Open("Jx310/Jx310.exe");
        screen.PressKey(screen.Window("Load Tables"), key);
        EXPECT_EQ(WaitFor(process), 0);
        EXPECT_THAT(Read(Quarra("Jx310/Jx310.log")), EndsWith("ended Load Tables, exit code 0\n"));
    }
}

TEST_F(OutsideWindows, CloseByThemselvesAfterTheGivenTime) {
    const auto start = Clock::now();
    const int process = Open("Tobr44/Tobr44.exe", {"--seconds", "1.5", "--exit-code", "4"});
    screen.Window("Plot Queue");
    EXPECT_EQ(WaitFor(process), 4);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(1500));
    EXPECT_THAT(Read(Quarra("Tobr44/Tobr44.log")), EndsWith("ended Plot Queue, exit code 4\n"));
}

TEST_F(OutsideWindows, CloseByTheUserBeforeTheGivenTime) {
    const int process = Open("Tobr44/Tobr44.exe", {"--seconds", "600"});
    screen.AskToClose(screen.Window("Plot Queue"));
    EXPECT_EQ(WaitFor(process), 0);
    EXPECT_THAT(Read(Quarra("Tobr44/Tobr44.log")), EndsWith("ended Plot Queue, exit code 0\n"));
}

TEST_F(OutsideWindows, TakeTheirDocumentsForDocumentsWhateverTheyAreCalled) {
    const int process = Open("Jx377/Jx377.exe", {"-platform", "minimal", "-qwindowtitle", "Other"});
    screen.AskToClose(screen.Window("Łożyska"));
    EXPECT_EQ(WaitFor(process), 0);
    EXPECT_THAT(Read(Quarra("Jx377/Jx377.log")),
                HasSubstr("document \"-platform\", document \"minimal\", document \"-qwindowtitle\", "
                          "document \"Other\"\n"));
}

TEST_F(OutsideWindows, AreDoneWithoutWhereTheDisplayCannotBeUsed) {
    const TestVariable noDisplay("DISPLAY", ":93");
    const auto start = Clock::now();
    const ProgramEnd end = Run(Quarra("Tobr43/Tobr43.exe"), {"--exit-code", "5", "A.qdr"});
    EXPECT_GE(Clock::now() - start, std::chrono::seconds(2));
    EXPECT_EQ(end.exitCode, 5);
    EXPECT_EQ(end.errors, "the display cannot be used: DISPLAY \":93\"; working without a window\n");
    const std::string log = Read(Quarra("Tobr43/Tobr43.log"));
    EXPECT_THAT(log, HasSubstr(", 2 seconds, document \"A.qdr\"\n"));
    EXPECT_EQ(log.find("started"), log.rfind("started"));
}

TEST_F(OutsideWindows, AreDoneWithoutWhereTheToolkitCannotStart) {
    const TestVariable plugins("QT_QPA_PLATFORM", "no-such-platform");
    const ProgramEnd end = Run(Quarra("Tobr43/Tobr43.exe"), {"--seconds", "0"});
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_THAT(end.errors, HasSubstr("working without a window\n"));
}

TEST_F(OutsideWindows, AreDoneWithoutWhereNoDisplayIsNamed) {
    const TestVariable noDisplay("DISPLAY", "");
    const ProgramEnd end = Run(Quarra("Tobr43/Tobr43.exe"));
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_EQ(end.errors, "");
    EXPECT_THAT(Read(Quarra("Tobr43/Tobr43.log")), HasSubstr(", 2 seconds\n"));
}

} // namespace
} // namespace suite::test
