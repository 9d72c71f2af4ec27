#include "tests/support/ComponentFixture.h"

#include <fstream>

namespace kvtm::test {

class ResourceStrings : public ComponentTest {};

TEST_F(ResourceStrings, ComeFromTheHostsModule) {
    LoadWith({});
    EXPECT_EQ(tool->LoadResString(42), "text 42");
    EXPECT_TRUE(CallsOf("GetResource").empty()); // the module was fetched once, at Load
}

TEST_F(ResourceStrings, AreAskedOfTheFrameworkByNumberWhenTheModuleLacksThem) {
    LoadWith({});
    EXPECT_EQ(tool->LoadResString(999), "");
    EXPECT_EQ(CallsOf("GetResource"), std::vector<std::string>{"GetResource(\"Tools\", \"999\")"});
}

TEST_F(ResourceStrings, AreEmptyWithoutAModule) {
    std::filesystem::remove(installation.File("Arvon/resources/1033/Tools.dll"));
    LoadWith({});
    EXPECT_EQ(tool->LoadResString(42), "");
    EXPECT_EQ(CallsOf("GetResource"), std::vector<std::string>{"GetResource(\"Tools\", \"\")"});
    EXPECT_EQ(Request("GetResourceModule"), "0");
}

TEST_F(ResourceStrings, NameTheMissingOneWhenTheHostFails) {
    LoadWith({});
    host->FailNext("GetResource");
    EXPECT_EQ(tool->LoadResString(1037), "Missing String:1037");
    host->FailNext("GetResource");
    EXPECT_EQ(tool->LoadResString(-1), "Missing String:-1");
}

namespace {
struct ModuleAskedFor final : platform::StringModules {
    explicit ModuleAskedFor(std::vector<std::size_t>& asked) : capacities(asked) {}
    std::string LoadString(std::int32_t, std::uint32_t, std::size_t capacity) override {
        capacities.push_back(capacity);
        return std::string(capacity - 1, '\xe4'); // as ANSI
    }
    std::vector<std::size_t>& capacities;
};
} // namespace

TEST_F(ResourceStrings, AreReadUpTo2047Characters) {
    std::vector<std::size_t> capacities;
    CreateHost();
    platform::Services services = platform::Services::Create();
    services.stringModules = std::make_unique<ModuleAskedFor>(capacities);
    CreateTool(std::move(services));
    ASSERT_TRUE(Load());
    capacities.clear();
    std::string text;
    for (int character = 1; character <= 2047; ++character)
        text += "\xc3\xa4";
    EXPECT_EQ(tool->LoadResString(42), text);
    EXPECT_EQ(capacities, std::vector<std::size_t>{2048});
}

TEST_F(ResourceStrings, AreEmptyInADamagedModule) {
    std::ofstream(installation.File("Arvon/resources/1033/Tools.dll"), std::ios::binary) << "MZ no library";
    LoadWith({});
    EXPECT_EQ(tool->LoadResString(42), "");
}

} // namespace kvtm::test
