// Real programs, followed to their end.

#include "tests/host/HostFixture.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace arvon::host::test {
namespace {

using namespace std::chrono_literals;

class Programs : public HostTest {
protected:
    Programs() {
        std::filesystem::copy_file(ENDER_PROGRAM, installation.File("Ender.exe"));
        Listen("caller", [this](const auto&) {
            events.push_back(recorder.messages.back());
            if (onEvent) onEvent();
            return "";
        });
        recorder.Forget();
    }
    static std::string CommandLine(const std::string& arguments) {
        return "C:\\QUARRA\\Ender.exe" + (arguments.empty() ? "" : " " + arguments);
    }
    std::int32_t Start(const std::string& arguments) {
        const std::int32_t id = Framework().StartProcess(CommandLine(arguments), "caller", nullptr);
        EXPECT_GT(id, 0);
        return id;
    }
    static std::string Ended(std::int32_t id, const std::string& arguments) {
        return "SnapIn>caller event 0 ShellProcessComplete 0/0(sApplicationNameAndPath=" +
               CommandLine(arguments) + ", lProcessID=" + std::to_string(id) + ")";
    }
    std::string File(std::string_view name) { return (installation.Folder() / name).string(); }
    void Touch(std::string_view name) { std::ofstream(File(name)) << "x"; }
    /// Takes in ends until this many were told.
    void WaitForEnds(std::size_t count) {
        const auto deadline = std::chrono::steady_clock::now() + 30s;
        while (events.size() < count && std::chrono::steady_clock::now() < deadline)
            Host().ProcessEvents(1000ms);
        ASSERT_EQ(events.size(), count);
    }
    bool IsReadable() {
        pollfd wanted{Host().PollDescriptor(), POLLIN, 0};
        return ::poll(&wanted, 1, 0) == 1;
    }

    std::vector<std::string> events; // that the caller received
    std::function<void()> onEvent;
};

TEST_F(Programs, AreFollowedToTheirEnd) {
    const std::int32_t id = Start("exit 7");
    EXPECT_THAT(events, IsEmpty()); // nothing is told before the caller knows the id
    ASSERT_EQ(Model().Processes().size(), 1u);
    EXPECT_EQ(Model().Processes()[0].id, id);
    EXPECT_EQ(Model().Processes()[0].commandLine, CommandLine("exit 7"));
    EXPECT_EQ(Model().Processes()[0].caller, "caller");
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    EXPECT_THAT(events, ElementsAre(Ended(id, "exit 7")));
    EXPECT_THAT(recorder.processes,
                ElementsAre("started " + CommandLine("exit 7"), "ended 7 " + CommandLine("exit 7")));
    EXPECT_THAT(Model().Processes(), IsEmpty());
    EXPECT_EQ(Host().ProcessEvents(), 0u);
    EXPECT_EQ(events.size(), 1u);
}

TEST_F(Programs, ThatASignalEndsCountFrom128) {
    Start("signal " + std::to_string(SIGKILL));
    Start("signal " + std::to_string(SIGTERM));
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    EXPECT_THAT(recorder.processes, testing::IsSupersetOf({"ended 137 " + CommandLine("signal 9"),
                                                           "ended 143 " + CommandLine("signal 15")}));
    EXPECT_EQ(events.size(), 2u);
}

TEST_F(Programs, MayEndInAnyOrder) {
    const std::string first = "wait " + File("go1"), second = "wait " + File("go2"),
                      third = "wait " + File("go3");
    const std::int32_t firstId = Start(first), secondId = Start(second), thirdId = Start(third);
    EXPECT_EQ(Host().ProcessEvents(), 0u);
    Touch("go3");
    WaitForEnds(1);
    EXPECT_EQ(events.back(), Ended(thirdId, third));
    EXPECT_EQ(Model().Processes().size(), 2u);
    Touch("go1");
    WaitForEnds(2);
    EXPECT_EQ(events.back(), Ended(firstId, first));
    Touch("go2");
    WaitForEnds(3);
    EXPECT_EQ(events.back(), Ended(secondId, second));
}

TEST_F(Programs, AreWaitedForNoLongerThanAsked) {
    Start("wait " + File("go"));
    EXPECT_EQ(Host().ProcessEvents(0ms), 0u);
    EXPECT_EQ(Host().ProcessEvents(20ms), 0u);
    EXPECT_FALSE(Host().WaitForProcesses(0ms));
    EXPECT_FALSE(Host().WaitForProcesses(20ms));
    EXPECT_FALSE(Host().WaitForProcesses(-5ms));
    Touch("go");
    EXPECT_TRUE(Host().WaitForProcesses(std::chrono::milliseconds::max()));
    EXPECT_TRUE(Host().WaitForProcesses());
    EXPECT_EQ(Host().ProcessEvents(std::chrono::milliseconds::max()),
              0u); // none is followed: returns at once
}

TEST_F(Programs, MakeADescriptorReadableWhenTheyEnd) {
    EXPECT_FALSE(IsReadable());
    Start("wait " + File("go"));
    EXPECT_FALSE(IsReadable());
    Touch("go");
    pollfd wanted{Host().PollDescriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&wanted, 1, 30'000), 1);
    EXPECT_EQ(Host().ProcessEvents(), 1u);
    EXPECT_FALSE(IsReadable());
}

TEST_F(Programs, MayEndWhileAnotherEndIsBeingTold) {
    const std::string inner = "wait " + File("go");
    const std::int32_t outerId = Start("exit 0"), innerId = Start(inner);
    onEvent = [&] {
        if (events.size() > 1) return;
        Touch("go");
        WaitForEnds(2); // from inside the delivery of the first
    };
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    EXPECT_THAT(events, ElementsAre(Ended(outerId, "exit 0"), Ended(innerId, inner)));
}

TEST_F(Programs, ThatAreStartedAgainAtEachEndAreTakenInOneATurn) {
    constexpr std::size_t manyTimes = 200;
    const auto waitForAnEnd = [&] {
        pollfd wanted{Host().PollDescriptor(), POLLIN, 0};
        ASSERT_EQ(::poll(&wanted, 1, 30'000), 1);
    };
    onEvent = [&] {
        if (events.size() >= manyTimes) return;
        Start("exit 0");
        waitForAnEnd(); // it is over before this end was told
    };
    Start("exit 0");
    waitForAnEnd();
    EXPECT_EQ(Host().ProcessEvents(), 1u);
    EXPECT_EQ(events.size(), 1u);
    EXPECT_TRUE(IsReadable());
    EXPECT_EQ(Host().ProcessEvents(1000ms), 1u);
    EXPECT_EQ(events.size(), 2u);

    EXPECT_FALSE(Host().WaitForProcesses(10ms)); // no more than what was followed by then
    EXPECT_LT(events.size(), manyTimes);
    EXPECT_TRUE(Host().WaitForProcesses()); // for as long as it takes
    EXPECT_EQ(events.size(), manyTimes);
}

TEST_F(Programs, ThatEndedInGreatNumberAreTakenInByTurns) {
    constexpr std::size_t many = 150;
    for (std::size_t index = 0; index < many; ++index) {
        const auto id = static_cast<id_t>(Start("exit 0"));
        siginfo_t info{};
        ASSERT_EQ(::waitid(P_PID, id, &info, WEXITED | WNOWAIT), 0);
    }
    std::size_t told = 0;
    while (IsReadable()) {
        const std::size_t turn = Host().ProcessEvents();
        EXPECT_GT(turn, 0u);
        EXPECT_LE(turn, 64u);
        told += turn;
        EXPECT_EQ(events.size(), told);
        if (turn == 0) break;
    }
    EXPECT_EQ(told, many);
    EXPECT_THAT(Model().Processes(), IsEmpty());
}

TEST_F(Programs, ThatHaveEndedAreAllWaitedForWithoutTime) {
    constexpr std::size_t many = 150;
    for (std::size_t index = 0; index < many; ++index) {
        const auto id = static_cast<id_t>(Start("exit 0"));
        siginfo_t info{};
        ASSERT_EQ(::waitid(P_PID, id, &info, WEXITED | WNOWAIT), 0);
    }
    EXPECT_TRUE(Host().WaitForProcesses(0ms));
    EXPECT_EQ(events.size(), many);
}

TEST_F(Programs, MayBeStartedWhileAnEndIsBeingTold) {
    onEvent = [&] {
        if (events.size() < 5) Start("exit 0");
    };
    Start("exit 0");
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    EXPECT_EQ(events.size(), 5u);
}

TEST_F(Programs, AreToldToNobodyElseWhenTheCallerIsGone) {
    Start("exit 0");
    Host().Unlisten("caller");
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    EXPECT_THAT(events, IsEmpty());
    ASSERT_EQ(recorder.records.size(), 1u);
    EXPECT_EQ(recorder.records[0].destination, "caller");
    EXPECT_FALSE(recorder.records[0].registered);
}

TEST_F(Programs, ThatAreNotThereAreNotStarted) {
    for (const auto* commandLine :
         {"C:\\QUARRA\\None.exe", "", "   ", "\"", "Q:\\x.exe", "C:\\QUARRA\\Arvon\\Tools.xml",
          "C:\\QUARRA\\Arvon", "no-such-program-anywhere"}) {
        recorder.Forget();
        EXPECT_EQ(Framework().StartProcess(commandLine, "caller", nullptr), 0) << commandLine;
        EXPECT_THAT(recorder.problems, ElementsAre("could not be started: " + std::string(commandLine)));
        EXPECT_THAT(recorder.processes, IsEmpty());
    }
    EXPECT_THAT(Model().Processes(), IsEmpty());
}

TEST_F(Programs, FindTheInstallationInTheirEnvironment) {
    Start("write " + File("report"));
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    std::string reported;
    std::getline(std::ifstream(File("report")), reported);
    EXPECT_EQ(reported, std::filesystem::canonical(installation.Folder()).string());
}

TEST_F(Programs, LeaveNothingBehind) {
    const auto descriptors = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    Start("exit 0");
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    const auto before = descriptors();
    std::map<std::int32_t, int> told;
    for (int round = 0; round < 50; ++round) {
        for (int each = 0; each < 20; ++each)
            ++told[Start("exit 0")];
        ASSERT_TRUE(Host().WaitForProcesses(60s));
    }
    EXPECT_EQ(events.size(), 1001u);
    EXPECT_EQ(descriptors(), before);
    errno = 0;
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1); // not one child, dead or alive
    EXPECT_EQ(errno, ECHILD);
    EXPECT_THAT(Model().Processes(), IsEmpty());
}

TEST_F(Programs, AreFollowedByTheHundredsAndToldOfAtOnce) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit low = before;
    low.rlim_cur = 128; // more must be asked for
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &low), 0);
    constexpr std::size_t many = 400;
    for (std::size_t index = 0; index + 1 < many; ++index)
        Start("wait " + File("go"));
    Start("exit 0"); // behind all the others
    WaitForEnds(1);
    EXPECT_EQ(Model().Processes().size(), many - 1);
    Touch("go");
    EXPECT_TRUE(Host().WaitForProcesses(100s));
    EXPECT_EQ(events.size(), many);
    std::sort(events.begin(), events.end());
    EXPECT_EQ(std::unique(events.begin(), events.end()), events.end()); // each was told once
    EXPECT_FALSE(IsReadable());
    ::setrlimit(RLIMIT_NOFILE, &before);
}

/// More programs than a process may have descriptors for: in a process of its own, which cannot get back what
/// it gives up.
class FewDescriptors : public Programs {
protected:
    template <class Body> void InAProcessOfItsOwn(Body body) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            FollowAll();
            body();
            FinishAll();
            std::_Exit(HasFailure() ? 1 : 0);
        }
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }

private:
    static constexpr rlim_t few = 64;

    void FollowAll() {
        const rlimit limit{few, few};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        for (rlim_t index = 0; index < few; ++index)
            Start("wait " + File("go"));
        Start("wait " + File("first"));
        EXPECT_EQ(Host().ProcessEvents(50ms), 0u);
    }
    void FinishAll() {
        Touch("first");
        Touch("go");
        EXPECT_TRUE(Host().WaitForProcesses(60s));
        EXPECT_EQ(events.size(), few + 1);
        EXPECT_FALSE(IsReadable());
    }
};

TEST_F(FewDescriptors, DoNotDelayTheEndOfAProgramThatHasNone) {
    InAProcessOfItsOwn([this] {
        Touch("first");
        WaitForEnds(1);
    });
}

TEST_F(FewDescriptors, WakeAnEventLoopForAProgramThatHasNone) {
    InAProcessOfItsOwn([this] {
        Touch("first");
        for (int wakes = 0; wakes < 1000 && events.empty(); ++wakes) {
            pollfd wanted{Host().PollDescriptor(), POLLIN, 0};
            EXPECT_EQ(::poll(&wanted, 1, 10'000), 1);
            Host().ProcessEvents();
        }
        EXPECT_EQ(events.size(), 1u);
    });
}

TEST_F(Programs, WhoseEndSomebodyElseTookAwayCountAsEnded) {
    const std::int32_t id = Start("exit 3");
    ASSERT_EQ(::waitpid(id, nullptr, 0), id);
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    EXPECT_THAT(events, ElementsAre(Ended(id, "exit 3")));
}

TEST_F(Programs, OfOthersAreLeftAlone) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) ::_exit(5);
    siginfo_t info{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
    EXPECT_EQ(Host().ProcessEvents(), 0u);
    Start("exit 0");
    EXPECT_TRUE(Host().WaitForProcesses(30s));
    EXPECT_EQ(events.size(), 1u);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 5);
}

TEST_F(Programs, AreFollowedEvenWhereChildrenWereToBeIgnored) {
    struct sigaction before {};
    ASSERT_EQ(::sigaction(SIGCHLD, nullptr, &before), 0);
    for (const bool byFlag : {false, true}) {
        struct sigaction ignoring {};
        ignoring.sa_handler = byFlag ? [](int) {} : SIG_IGN;
        ignoring.sa_flags = byFlag ? SA_NOCLDWAIT : 0;
        ASSERT_EQ(::sigaction(SIGCHLD, &ignoring, nullptr), 0);
        Open();
        recorder.Forget();
        Framework().StartProcess(CommandLine("exit 9"), "caller", nullptr);
        EXPECT_TRUE(Host().WaitForProcesses(30s));
        EXPECT_EQ(recorder.processes.back(), "ended 9 " + CommandLine("exit 9"));
    }
    ::sigaction(SIGCHLD, &before, nullptr);
}

TEST_F(Programs, RunOnWhenTheHostGoes) {
    const std::int32_t id = Start("wait " + File("go"));
    Close();
    EXPECT_EQ(::kill(id, 0), 0);
    Touch("go");
    int status = -1;
    EXPECT_EQ(::waitpid(id, &status, 0), id);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace arvon::host::test
