#include "platform/linux/FileCalls.h"

#include "tests/base/RefusalOf.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// A disk that notes when it is to begin and when it is waited for.
class NotedDisk final : public platform::FileCalls {
public:
    explicit NotedDisk(std::vector<std::string>& notes) : notes_(notes) {}
    int StartFlush(int file) override {
        notes_.push_back("begin");
        return FileCalls::StartFlush(file);
    }
    int Flush(int file) override {
        notes_.push_back("wait");
        return FileCalls::Flush(file);
    }

private:
    std::vector<std::string>& notes_;
};

class ReplaceWhile : public testing::Test {
protected:
    TestFolder folder;
    const std::filesystem::path file = folder.Write("file", "old");
    std::unique_ptr<platform::Files> files = platform::Files::Create();
    int calls = 0;
};

TEST_F(ReplaceWhile, WorksOnceTheDiskHasBegunAndBeforeItIsWaitedFor) {
    std::vector<std::string> notes;
    NotedDisk disk(notes);
    platform::CreateFilesWith(disk)->ReplaceWhile(file, "new", [&] {
        notes.push_back("work");
        EXPECT_EQ(files->Read(file), "old");
    });
    EXPECT_EQ(notes, (std::vector<std::string>{"begin", "work", "wait", "wait"}))
        << "the folder is waited for too";
    EXPECT_EQ(files->Read(file), "new");
}

TEST_F(ReplaceWhile, DoesWithoutADiskThatBeginsEarly) {
    struct LateDisk final : platform::FileCalls {
        int StartFlush(int) override {
            errno = ENOSYS;
            return -1;
        }
    } disk;
    platform::CreateFilesWith(disk)->ReplaceWhile(file, "new", [&] { ++calls; });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(files->Read(file), "new");
}

TEST_F(ReplaceWhile, TellsWhyTheFileCouldNotBeReplaced) {
    const Refusal refusal =
        RefusalOf([&] { files->ReplaceWhile(folder / "none/file", "new", [&] { ++calls; }); });
    EXPECT_EQ(refusal.number, base::errors::PathNotFound);
    EXPECT_LE(calls, 1);
}

TEST_F(ReplaceWhile, ReplacesTheFileWhereTheWorkFails) {
    EXPECT_THROW(files->ReplaceWhile(file, "new", [] { throw std::runtime_error("no work"); }),
                 std::runtime_error);
    EXPECT_EQ(files->Read(file), "new");
}

TEST_F(ReplaceWhile, PutsTheFilesFailureBeforeTheWorks) {
    const Refusal refusal = RefusalOf([&] {
        files->ReplaceWhile(folder / "none/file", "new", [] { throw std::runtime_error("no work"); });
    });
    EXPECT_EQ(refusal.number, base::errors::PathNotFound);
}

} // namespace
