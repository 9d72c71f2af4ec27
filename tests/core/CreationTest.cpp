#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class Creation : public ComponentTest {};

TEST_F(Creation, ReportsNotLoadedAndKnowsNothingYet) {
    CreateHost();
    CreateTool();
    EXPECT_FALSE(tool->IsLoaded());
    EXPECT_TRUE(Probe().LoadedTools().IsEmpty());
    EXPECT_TRUE(Probe().Processes().IsEmpty());
    EXPECT_EQ(Probe().Subscribers(), std::vector<std::string>{""});
    EXPECT_FALSE(Probe().ProfileFlag());
}

namespace {
struct ModuleNamed final : platform::SystemInfo {
    std::int32_t PlatformId() override { return 2; }
    std::filesystem::path ModuleFile() override { return "/somewhere/KvOther.v2.so"; }
};
} // namespace

TEST_F(Creation, NamesItselfAfterTheRunningLibrarysFile) {
    CreateHost();
    platform::Services services = platform::Services::Create();
    services.systemInfo = std::make_unique<ModuleNamed>();
    CreateTool(std::move(services));
    EXPECT_EQ(Probe().Name(), "KvOther.v2.ToolMain");
}

TEST_F(Creation, SwitchesTheBenchmarkRecorderOn) {
    CreateHost();
    CreateTool();
    tool->AddBenchmark("Load", 12.5, "toolmain", "");
    ASSERT_EQ(host->Benchmarks().size(), 1u);
}

} // namespace kvtm::test
