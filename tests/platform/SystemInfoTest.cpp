#include "platform/SystemInfo.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

TEST(SystemInfo, IsOfTheNtFamily) {
    EXPECT_EQ(platform::SystemInfo::Create()->PlatformId(), 2);
}

TEST(SystemInfo, NamesTheFileThatItRunsIn) {
    const auto info = platform::SystemInfo::Create();
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(info->ModuleFile(), program);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path("/");
    EXPECT_EQ(info->ModuleFile(), program);
    std::filesystem::current_path(before);
}

} // namespace
