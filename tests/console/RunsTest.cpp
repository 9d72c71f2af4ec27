#include "console/Runs.h"

#include <gtest/gtest.h>

#include <cstdint>

using namespace arvon::console;
using arvon::host::model::Process;

namespace {

Process NewProcess(std::int64_t id, const char* name = "") {
    return {id, "x.exe", "KvTM10", name, ""};
}

} // namespace

TEST(Runs, AreKnownAfterTheirEnd) {
    const auto before = std::chrono::system_clock::now();
    Runs runs;
    runs.OnProcessStarted(NewProcess(7, "Layout"));
    ASSERT_EQ(runs.All().size(), 1u);
    EXPECT_FALSE(runs.All()[0].ended);
    EXPECT_FALSE(runs.All()[0].end);
    runs.OnProcessEnded(NewProcess(7), {143, 15});
    const ProgramRun& run = runs.All()[0];
    EXPECT_EQ(run.process.name, "Layout");
    EXPECT_EQ(run.end->exitCode, 143);
    EXPECT_EQ(run.end->signal, 15);
    EXPECT_GE(run.started, before);
    EXPECT_GE(*run.ended, run.started);
}

TEST(Runs, AreDroppedFromTheOldestThatIsOver) {
    Runs runs;
    const auto many = static_cast<std::int64_t>(Runs::MostKept);
    for (std::int64_t id = 1; id <= many + 1; ++id)
        runs.OnProcessStarted(NewProcess(id)); // all of them run
    EXPECT_EQ(runs.All().size(), Runs::MostKept + 1);
    for (const std::int64_t id : {2, 3, 99'999}) // the last is nobody's
        runs.OnProcessEnded(NewProcess(id), {});
    runs.OnProcessStarted(NewProcess(many + 2));
    EXPECT_EQ(runs.All().size(), Runs::MostKept + 1);
    EXPECT_EQ(runs.All()[0].process.id, 1);
    EXPECT_EQ(runs.All()[1].process.id, 3);
    EXPECT_EQ(runs.All().back().process.id, many + 2);
}

TEST(Runs, AreToldApartWhereTheSystemGivesANumberAgain) {
    Runs runs;
    runs.OnProcessStarted(NewProcess(7, "one"));
    runs.OnProcessEnded(NewProcess(7), {1, 0});
    runs.OnProcessStarted(NewProcess(7, "two"));
    EXPECT_FALSE(runs.All()[1].end);
    runs.OnProcessEnded(NewProcess(7), {2, 0});
    EXPECT_EQ(runs.All()[0].end->exitCode, 1);
    EXPECT_EQ(runs.All()[1].end->exitCode, 2);
}
