// Every system call under a replacement fails in turn, and the process ends before and after every one of
// them.

#include "platform/linux/FileCalls.h"

#include "base/ComponentError.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <set>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

enum class Fault { Fail, EndBefore, EndAfter };

/// Counts the calls and does the harm at the chosen one.
class FaultyCalls : public platform::FileCalls {
public:
    FaultyCalls(int chosen, Fault fault, int error = EIO) : chosen_(chosen), fault_(fault), error_(error) {}

    /// The call that was harmed; empty when fewer were made.
    const std::string& Harmed() const { return harmed_; }

    int Open(const char* path, int flags, mode_t mode) override {
        return Do<int>("open", [&] { return FileCalls::Open(path, flags, mode); });
    }
    int Stat(const char* path, struct stat& status) override {
        return Do<int>("stat", [&] { return FileCalls::Stat(path, status); });
    }
    int CheckWritable(const char* path) override {
        return Do<int>("check", [&] { return FileCalls::CheckWritable(path); });
    }
    ssize_t ReadLink(const char* path, char* target, std::size_t size) override {
        return Do<ssize_t>("readlink", [&] { return FileCalls::ReadLink(path, target, size); });
    }
    ssize_t Write(int file, const char* data, std::size_t size) override {
        return Do<ssize_t>("write", [&] { return FileCalls::Write(file, data, size); });
    }
    int ChangeOwner(int file, uid_t owner, gid_t group) override {
        return Do<int>("chown", [&] { return FileCalls::ChangeOwner(file, owner, group); });
    }
    int ChangeMode(int file, mode_t mode) override {
        return Do<int>("chmod", [&] { return FileCalls::ChangeMode(file, mode); });
    }
    int Flush(int file) override {
        return Do<int>("fsync", [&] { return FileCalls::Flush(file); });
    }
    int Close(int file) override {
        const int result = FileCalls::Close(file); // a close that fails has closed all the same
        return Do<int>("close", [&] { return result; });
    }
    int Rename(const char* from, const char* to) override {
        return Do<int>("rename", [&] { return FileCalls::Rename(from, to); });
    }

private:
    template <typename Result, typename Call> Result Do(const char* name, Call call) {
        if (++count_ != chosen_) return call();
        harmed_ = name;
        if (fault_ == Fault::EndBefore) ::_exit(0);
        if (fault_ == Fault::EndAfter) {
            call();
            ::_exit(0);
        }
        errno = error_;
        return -1;
    }
    int chosen_;
    Fault fault_;
    int error_;
    int count_ = 0;
    std::string harmed_;
};

constexpr int MoreThanAllCalls = 100;

void ReplaceInChild(const fs::path& file, const std::string& content, int step, Fault fault) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        FaultyCalls calls(step, fault);
        platform::CreateFilesWith(calls)->Replace(file, content);
        ::_exit(1); // came to its end
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
}

class FilesFaultTest : public testing::Test {
protected:
    const std::string oldContent = "old content\n", newContent = std::string(10'000, 'n');
    TestFolder folder;
};

TEST_F(FilesFaultTest, AFailureOfAnyCallLeavesTheOldFileOrTheNewOne) {
    std::set<std::string> refused, tolerated;
    for (int step = 1; step < MoreThanAllCalls; ++step) {
        const fs::path file = folder.Write("file", oldContent);
        FaultyCalls calls(step, Fault::Fail, ENOSPC);
        bool isRefused = false;
        try {
            platform::CreateFilesWith(calls)->Replace(file, newContent);
        } catch (const base::ComponentError& error) {
            isRefused = true;
            EXPECT_TRUE(error.Description().starts_with("cannot replace \"" + file.string() + "\": "))
                << error.Description();
            EXPECT_NE(error.Description().find("no space left"), std::string::npos) << error.Description();
            EXPECT_EQ(error.Number(), base::errors::FileAccess);
        }
        EXPECT_EQ(folder.Read("file"), isRefused ? oldContent : newContent) << calls.Harmed();
        EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"}) << calls.Harmed();
        if (calls.Harmed().empty()) break;
        (isRefused ? refused : tolerated).insert(calls.Harmed());
    }
    EXPECT_EQ(refused, (std::set<std::string>{"readlink", "stat", "check", "open", "write", "chmod", "fsync",
                                              "close", "rename"}));
    // The rest happens behind the rename, or is asked for where it can be had: the owner, the folder.
    EXPECT_EQ(tolerated, (std::set<std::string>{"chown", "open", "fsync", "close"}));
}

TEST_F(FilesFaultTest, FlushesTheWorkingFolderForABareName) {
    struct Opened : platform::FileCalls {
        std::set<std::string> paths;
        int Open(const char* path, int flags, mode_t mode) override {
            paths.insert(path);
            return FileCalls::Open(path, flags, mode);
        }
    } calls;
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    platform::CreateFilesWith(calls)->Replace("bare", newContent);
    fs::current_path(before);
    EXPECT_TRUE(calls.paths.contains("."));
}

TEST_F(FilesFaultTest, AFailureWhileCreatingLeavesNothing) {
    for (int step = 1; step < MoreThanAllCalls; ++step) {
        FaultyCalls calls(step, Fault::Fail, ENOSPC);
        try {
            platform::CreateFilesWith(calls)->Replace(folder / "file", newContent);
            EXPECT_EQ(folder.Read("file"), newContent) << calls.Harmed();
            fs::remove(folder / "file");
        } catch (const base::ComponentError&) {
            EXPECT_TRUE(folder.Names().empty()) << calls.Harmed();
        }
        if (calls.Harmed().empty()) break;
    }
}

TEST_F(FilesFaultTest, AProcessThatEndsAnywhereLeavesTheOldFileOrTheNewOne) {
    for (const Fault fault : {Fault::EndBefore, Fault::EndAfter}) {
        bool sawOld = false, sawNew = false;
        for (int step = 1; step < 20; ++step) {
            const fs::path file = folder.Write("file", oldContent);
            ReplaceInChild(file, newContent, step, fault);
            const std::string content = folder.Read("file");
            EXPECT_TRUE(content == oldContent || content == newContent) << step << ": " << content.size();
            (content == oldContent ? sawOld : sawNew) = true;
        }
        EXPECT_TRUE(sawOld);
        EXPECT_TRUE(sawNew);
    }
}

/// Writes a few bytes at a time and is interrupted before each.
class HaltingCalls : public platform::FileCalls {
public:
    ssize_t Write(int file, const char* data, std::size_t size) override {
        if (Interrupts()) return -1;
        return FileCalls::Write(file, data, std::min<std::size_t>(size, 7));
    }
    ssize_t Read(int file, char* data, std::size_t size) override {
        if (Interrupts()) return -1;
        return FileCalls::Read(file, data, std::min<std::size_t>(size, 7));
    }
    int Open(const char* path, int flags, mode_t mode) override {
        if (Interrupts()) return -1;
        return FileCalls::Open(path, flags, mode);
    }

private:
    bool Interrupts() {
        errno = EINTR;
        return turn_ = !turn_;
    }
    bool turn_ = false;
};

TEST_F(FilesFaultTest, GoesOnAfterSignalsAndShortCounts) {
    HaltingCalls calls;
    const auto files = platform::CreateFilesWith(calls);
    files->Replace(folder / "a", newContent);
    files->Write(folder / "b", newContent);
    EXPECT_EQ(folder.Read("a"), newContent);
    EXPECT_EQ(folder.Read("b"), newContent);
    EXPECT_EQ(files->Read(folder / "a"), newContent);
}

/// A disk that takes nothing more, without saying why.
class FullCalls : public platform::FileCalls {
public:
    ssize_t Write(int, const char*, std::size_t) override { return 0; }
};

TEST_F(FilesFaultTest, EndsWhereNothingMoreIsWritten) {
    folder.Write("a", oldContent);
    FullCalls calls;
    EXPECT_THROW(platform::CreateFilesWith(calls)->Replace(folder / "a", newContent), base::ComponentError);
    EXPECT_EQ(folder.Read("a"), oldContent);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a"});
}

/// An owner that cannot be kept, and perhaps a group.
class ForeignCalls : public platform::FileCalls {
public:
    explicit ForeignCalls(bool mayKeepGroup) : mayKeepGroup_(mayKeepGroup) {}
    int ChangeOwner(int, uid_t owner, gid_t) override {
        if (owner == static_cast<uid_t>(-1) && mayKeepGroup_) return 0;
        errno = EPERM;
        return -1;
    }

private:
    bool mayKeepGroup_;
};

TEST_F(FilesFaultTest, GivesNobodyMoreThanTheOldFileDid) {
    const auto modeAfter = [&](bool mayKeepGroup) {
        const fs::path file = folder.Write("a", oldContent);
        EXPECT_EQ(::chmod(file.c_str(), 06764), 0);
        ForeignCalls calls(mayKeepGroup);
        platform::CreateFilesWith(calls)->Replace(file, newContent);
        struct stat status {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0);
        return status.st_mode & 07777;
    };
    EXPECT_EQ(modeAfter(true), 0764u);
    EXPECT_EQ(modeAfter(false), 0744u);
}

} // namespace
