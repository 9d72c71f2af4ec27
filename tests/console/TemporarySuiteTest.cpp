#include "console/TemporarySuite.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
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
        folder.Write("original/registry.reg", "here");
        fs::permissions(folder.Write("original/drive_c/QUARRA/run.exe", "run"), fs::perms::owner_all);
    }

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

    const TestFolder folder;
    const fs::path original = folder / "original";
};

} // namespace

TEST_F(TemporarySuiteTest, IsAWholeCopyThatGoesWithTheObject) {
    std::optional<TemporarySuite> copy(original);
    const fs::path place = copy->Folder();
    EXPECT_NE(place, original);
    EXPECT_TRUE(fs::exists(place / "registry.reg"));
    EXPECT_EQ(fs::status(place / "drive_c" / "QUARRA" / "run.exe").permissions(), fs::perms::owner_all);
    WriteWholeFile(place / "drive_c" / "new", "new");
    copy.reset();
    EXPECT_FALSE(fs::exists(place));
    EXPECT_FALSE(fs::exists(original / "drive_c" / "new"));
}

TEST_F(TemporarySuiteTest, LeavesNothingBehindWhenTheOriginalIsMissing) {
    const fs::path temporary = folder / "temporary";
    fs::create_directory(temporary);
    const TestVariable temporaryPlace("TMPDIR", temporary.c_str());
    EXPECT_THROW(TemporarySuite(original / "missing"), fs::filesystem_error);
    EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(TemporarySuiteTest, LiesInATemporaryFolderOfTheSuites) {
    const TestVariable temporaryPlace("TMPDIR", folder.Path().c_str());
    const TemporarySuite copy(original);
    EXPECT_EQ(copy.Folder().parent_path(), folder.Path());
    EXPECT_TRUE(copy.Folder().filename().string().starts_with("arvon-suite-")) << copy.Folder();
}

TEST_F(TemporarySuiteTest, IsGoneBeforeAProcessEndedByASignalIs) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const auto [place, endedBy] = EndedBySignal(number);
        EXPECT_EQ(endedBy, number);
        EXPECT_FALSE(fs::exists(place)) << number;
    }
}

TEST_F(TemporarySuiteTest, GoesSoonAfterAProcessThatWasKilled) {
    const auto [place, endedBy] = EndedBySignal(SIGKILL);
    EXPECT_EQ(endedBy, SIGKILL);
    for (int i = 0; i < 500 && fs::exists(place); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_FALSE(fs::exists(place));
}
