#include "console/TemporarySuite.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using arvon::console::TemporarySuite;

namespace {

class TemporarySuiteTest : public testing::Test {
protected:
    TemporarySuiteTest() {
        std::string name = fs::temp_directory_path() / "suite-original-XXXXXX";
        original = mkdtemp(name.data());
        fs::create_directories(original / "drive_c" / "QUARRA");
        std::ofstream(original / "registry.reg") << "here";
        std::ofstream(original / "drive_c" / "QUARRA" / "run.exe") << "run";
        fs::permissions(original / "drive_c" / "QUARRA" / "run.exe", fs::perms::owner_all);
    }
    ~TemporarySuiteTest() override { fs::remove_all(original); }

    /// A process that makes a copy, tells its place and waits to be ended by `number`; the place, and how it
    /// ended.
    std::pair<fs::path, int> EndedBySignal(int number) const {
        int ends[2];
        if (pipe(ends) != 0) return {};
        const pid_t child = fork();
        if (child == 0) {
            const TemporarySuite copy(original);
            const std::string place = copy.Folder();
            if (write(ends[1], place.data(), place.size()) < 0) _exit(9);
            for (;;)
                pause();
        }
        char place[4096] = {};
        const ssize_t length = read(ends[0], place, sizeof(place) - 1);
        close(ends[0]);
        close(ends[1]);
        EXPECT_GT(length, 0);
        EXPECT_TRUE(fs::exists(place));
        kill(child, number);
        int status = 0;
        waitpid(child, &status, 0);
        return {place, WIFSIGNALED(status) ? WTERMSIG(status) : 0};
    }

    fs::path original;
};

} // namespace

TEST_F(TemporarySuiteTest, IsAWholeCopyThatGoesWithTheObject) {
    std::optional<TemporarySuite> copy(original);
    const fs::path folder = copy->Folder();
    EXPECT_NE(folder, original);
    EXPECT_TRUE(fs::exists(folder / "registry.reg"));
    EXPECT_EQ(fs::status(folder / "drive_c" / "QUARRA" / "run.exe").permissions(), fs::perms::owner_all);
    std::ofstream(folder / "drive_c" / "new") << "new";
    copy.reset();
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_FALSE(fs::exists(original / "drive_c" / "new"));
}

TEST_F(TemporarySuiteTest, LeavesNothingBehindWhenTheOriginalIsMissing) {
    const auto count = [] {
        std::size_t folders = 0;
        for (const auto& entry : fs::directory_iterator(fs::temp_directory_path()))
            folders += entry.path().filename().string().starts_with("arvon-console-") ? 1 : 0;
        return folders;
    };
    const fs::path temporary = original / "temporary";
    fs::create_directories(temporary);
    setenv("TMPDIR", temporary.c_str(), 1);
    EXPECT_THROW(TemporarySuite(original / "missing"), fs::filesystem_error);
    EXPECT_EQ(count(), 0u);
    unsetenv("TMPDIR");
}

TEST_F(TemporarySuiteTest, IsGoneBeforeAProcessEndedByASignalIs) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const auto [folder, endedBy] = EndedBySignal(number);
        EXPECT_EQ(endedBy, number);
        EXPECT_FALSE(fs::exists(folder)) << number;
    }
}

TEST_F(TemporarySuiteTest, GoesSoonAfterAProcessThatWasKilled) {
    const auto [folder, endedBy] = EndedBySignal(SIGKILL);
    EXPECT_EQ(endedBy, SIGKILL);
    for (int i = 0; i < 500 && fs::exists(folder); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_FALSE(fs::exists(folder));
}
