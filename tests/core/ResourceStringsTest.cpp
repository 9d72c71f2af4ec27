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
    EXPECT_EQ(Request("GetResourceModule"), "0");
}

TEST_F(ResourceStrings, NameTheMissingOneWhenTheHostFails) {
    LoadWith({});
    host->FailNext("GetResource");
    EXPECT_EQ(tool->LoadResString(1037), "Missing String:1037");
    host->FailNext("GetResource");
    EXPECT_EQ(tool->LoadResString(-1), "Missing String:-1");
}

TEST_F(ResourceStrings, AreEmptyInADamagedModule) {
    std::ofstream(installation.File("Arvon/resources/1033/Tools.dll"), std::ios::binary) << "MZ no library";
    LoadWith({});
    EXPECT_EQ(tool->LoadResString(42), "");
}

} // namespace kvtm::test
