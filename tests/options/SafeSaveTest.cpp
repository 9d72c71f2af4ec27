// Every file operation of a save fails in turn, and the machine goes down before and after every one of them.

#include "tests/options/FaultyDisk.h"
#include "tests/options/OptionsFixture.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <sys/wait.h>

namespace kvtm::test {
namespace {

namespace fs = std::filesystem;
using Fault = FaultyDisk::Fault;

/// Two ways to save that look right while nothing goes wrong.
class SaveInPlace final : public platform::Files {
public:
    explicit SaveInPlace(platform::FileCalls& calls) : safe_(platform::CreateFilesWith(calls)) {}
    std::string Read(const fs::path& file, std::size_t limit) override { return safe_->Read(file, limit); }
    void Write(const fs::path& file, std::string_view content) override { safe_->Write(file, content); }
    void Replace(const fs::path& file, std::string_view content) override { safe_->Write(file, content); }

private:
    std::unique_ptr<platform::Files> safe_;
};

class SaveWithoutFlush final : public platform::Files {
public:
    explicit SaveWithoutFlush(platform::FileCalls& calls)
        : calls_(calls), safe_(platform::CreateFilesWith(calls)) {}
    std::string Read(const fs::path& file, std::size_t limit) override { return safe_->Read(file, limit); }
    void Write(const fs::path& file, std::string_view content) override { safe_->Write(file, content); }
    void Replace(const fs::path& file, std::string_view content) override {
        const fs::path fresh = file.string() + ".new";
        safe_->Write(fresh, content);
        calls_.Rename(fresh.c_str(), file.c_str());
    }

private:
    platform::FileCalls& calls_;
    std::unique_ptr<platform::Files> safe_;
};

class SafeSave : public OptionsTest {
protected:
    using MakeFiles = std::function<std::unique_ptr<platform::Files>(platform::FileCalls&)>;

    void SetUp() override {
        fs::create_symlink(installation.Folder() / "real.xml", installation.Folder() / "link");
        fs::remove(installation.File(file));
        fs::rename(installation.Folder() / "link",
                   installation.File(file)); // through a link, as users may have it
        LoadWithTools(Tool("a", Option("n", "1")));
        tool.reset();
        host.reset();
    }

    void LoadOn(FaultyDisk& disk, const MakeFiles& makeFiles) {
        CreateHost();
        platform::Services services = platform::Services::Create();
        services.files = makeFiles(disk);
        CreateTool(std::move(services));
        if (!Load()) throw std::runtime_error("not loaded");
    }

    /// Saves in a process of its own that goes down at a call; false when it came to its end.
    bool GoesDownAt(int call, Fault fault, const MakeFiles& makeFiles) {
        const pid_t child = ::fork();
        if (child < 0) throw std::runtime_error("no process");
        if (child == 0) {
            FaultyDisk disk(fault, call);
            LoadOn(disk, makeFiles);
            ::_exit(Set("a", "n", "2") == "True" ? 0 : 1);
        }
        int status = 0;
        if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) throw std::runtime_error("no end");
        EXPECT_THAT(WEXITSTATUS(status), testing::AnyOf(0, int{FaultyDisk::ExitStatus}));
        return WEXITSTATUS(status) == FaultyDisk::ExitStatus;
    }

    bool IsOldOrNew() const {
        return fs::exists(installation.File(file)) && (FileText() == Text("1") || FileText() == Text("2"));
    }

    /// How many of the crashes leave neither the old nor the new file.
    int LossesOf(const MakeFiles& makeFiles) {
        int losses = 0;
        for (const Fault fault : {Fault::DownBefore, Fault::DownAfter}) {
            for (int call = 1;; ++call) {
                installation.Write(file, Text("1"));
                const bool wentDown = GoesDownAt(call, fault, makeFiles);
                if (!IsOldOrNew()) ++losses;
                if (wentDown) continue;
                EXPECT_EQ(FileText(), Text("2"));
                EXPECT_GT(call, 3);
                break;
            }
        }
        return losses;
    }

    std::string Text(std::string_view value) const {
        return Options(SortOptions() + Tool("a", Option("n", value)));
    }

    std::size_t FilesBesideIt() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(installation.Folder()), fs::directory_iterator()));
    }
};

TEST_F(SafeSave, LosesNothingWhereverTheMachineGoesDown) {
    EXPECT_EQ(LossesOf(platform::CreateFilesWith), 0);
}

TEST_F(SafeSave, TheseCrashesWouldFindASaveInPlace) {
    EXPECT_GT(LossesOf([](auto& calls) { return std::make_unique<SaveInPlace>(calls); }), 0);
}

TEST_F(SafeSave, TheseCrashesWouldFindASaveThatIsNotFlushed) {
    EXPECT_GT(LossesOf([](auto& calls) { return std::make_unique<SaveWithoutFlush>(calls); }), 0);
}

TEST_F(SafeSave, AnyOperationThatFailsIsReportedAndLeavesTheOldFileOrTheNewOne) {
    const std::size_t filesBefore = FilesBesideIt();
    std::size_t refused = 0;
    for (int call = 1;; ++call) {
        installation.Write(file, Text("1"));
        FaultyDisk disk(Fault::Fail, call);
        LoadOn(disk, platform::CreateFilesWith);
        const auto subscriber = Subscribe("S");
        const bool isSaved = Set("a", "n", "2") == "True";
        SCOPED_TRACE(disk.Harmed());
        EXPECT_EQ(FileText(), Text(isSaved ? "2" : "1"));
        EXPECT_EQ(subscriber->notices.size(), isSaved ? 1u : 0u);
        EXPECT_EQ(FilesBesideIt(), filesBefore);
        EXPECT_TRUE(fs::is_symlink(installation.File(file)));
        if (!isSaved) {
            ++refused;
            EXPECT_EQ(ClaimReport("SetOptionValue").number, base::errors::FileAccess);
            EXPECT_EQ(Set("a", "n", "2"), "True"); // the next one comes through
        }
        EXPECT_EQ(FileText(), Text("2"));
        const bool wasLast = disk.Harmed().empty();
        tool.reset();
        host.reset();
        if (wasLast) break;
    }
    EXPECT_GE(refused, 4u); // to make the new file, to write, flush and rename it
}

} // namespace
} // namespace kvtm::test
