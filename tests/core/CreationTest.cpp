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

TEST_F(Creation, OffersItsMethodsToWhoeverHasTheObject) {
    LoadWith({{.name = "Pipes"}, {.name = "Layout"}});
    const auto manager = std::dynamic_pointer_cast<arvon::IToolManager>(std::shared_ptr<arvon::ITool>(tool));
    ASSERT_TRUE(manager);
    manager->AddSubscriber("Lim32");
    EXPECT_EQ(Probe().Subscribers(), (std::vector<std::string>{"", "Lim32"}));
    EXPECT_EQ(manager->LoadResString(42), "text 42");
    EXPECT_EQ(manager->Sort("name", true, false).Item(1)->Name(), "Pipes");
}

TEST_F(Creation, SwitchesTheBenchmarkRecorderOn) {
    CreateHost();
    CreateTool();
    tool->AddBenchmark("Load", 12.5, "toolmain", "");
    ASSERT_EQ(host->Benchmarks().size(), 1u);
}

} // namespace kvtm::test
