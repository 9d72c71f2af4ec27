#include "platform/linux/FileCalls.h"

#include "tests/base/RefusalOf.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

namespace {

/// A disk whose flush ends only after work that was called while it was waited for; it waits for ten seconds
/// at most.
class SlowDisk final : public platform::FileCalls {
public:
    int Flush(int file) override {
        if (done_.wait_for(std::chrono::seconds(10)) != std::future_status::ready) workedInTime = false;
        return FileCalls::Flush(file);
    }
    std::promise<void> worked;
    bool workedInTime = true;

private:
    std::shared_future<void> done_ = worked.get_future().share();
};

class ReplaceWhile : public testing::Test {
protected:
    TestFolder folder;
    const std::filesystem::path file = folder.Write("file", "old");
    std::unique_ptr<platform::Files> files = platform::Files::Create();
    int calls = 0;
};

TEST_F(ReplaceWhile, WorksWhileTheDiskIsWaitedFor) {
    SlowDisk disk;
    platform::CreateFilesWith(disk)->ReplaceWhile(file, "new", [&] { disk.worked.set_value(); });
    EXPECT_TRUE(disk.workedInTime);
    EXPECT_EQ(files->Read(file), "new");
}

TEST_F(ReplaceWhile, WorksOnceInTheCallersThread) {
    std::thread::id worker;
    files->ReplaceWhile(file, "new", [&] {
        ++calls;
        worker = std::this_thread::get_id();
    });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(worker, std::this_thread::get_id());
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
