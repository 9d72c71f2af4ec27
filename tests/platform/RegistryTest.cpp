#include "platform/Registry.h"

#include "platform/FilePaths.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace std::string_literals;
using namespace platform;
namespace result = platform::registryResult;

namespace {

const std::string Start = "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\A]\r\n";

class RegistryTest : public testing::Test {
protected:
    RegistryTest() { folder.Write("registry.reg", Start + "\"v\"=\"value\"\r\n"); }

    std::int32_t Open(std::string_view subKey, std::uint32_t access, RegistryKey& key,
                      std::uint32_t hive = HkeyLocalMachine) {
        return registry->OpenKey(hive, subKey, access, key);
    }
    RegistryKey Opened(std::uint32_t access) {
        RegistryKey key = 0;
        EXPECT_EQ(Open("SOFTWARE\\A", access, key), result::Success);
        return key;
    }
    std::int32_t Query(RegistryKey key, std::string_view name, std::string& data, std::uint32_t room = 100) {
        std::string buffer(room, ' ');
        std::uint32_t type = 0;
        size = room;
        const std::int32_t answer = registry->QueryValue(key, name, type, buffer, size);
        if (answer == result::Success) data = buffer.substr(0, size);
        return answer;
    }
    std::string ValueOf(RegistryKey key, std::string_view name) {
        std::string data;
        EXPECT_EQ(Query(key, name, data), result::Success);
        return data;
    }

    TestFolder folder;
    std::unique_ptr<FilePaths> paths = FilePaths::CreateFor(folder.Path());
    std::unique_ptr<Registry> registry = Registry::Create(*paths);
    std::uint32_t size = 0; // as the last query left it
};

TEST_F(RegistryTest, OpensOnlyKeysThatExist) {
    RegistryKey key = 0;
    EXPECT_EQ(Open("software\\a\\", KeyQueryValue, key), result::Success);
    EXPECT_EQ(Open("", KeyQueryValue, key), result::Success) << "the root itself";
    EXPECT_EQ(Open("SOFTWARE\\B", KeyQueryValue, key), result::NotFound);
    EXPECT_EQ(Open("SOFTWARE\\B", KeySetValue, key), result::NotFound);
    EXPECT_EQ(Open("SOFTWARE\\A", KeyQueryValue, key, HkeyCurrentUser), result::NotFound);
    EXPECT_EQ(Open("SOFTWARE\\A", KeyQueryValue, key, 0x12345), result::InvalidHandle);
}

TEST_F(RegistryTest, CountsTheNulInTheSize) {
    const RegistryKey key = Opened(KeyQueryValue);
    EXPECT_EQ(ValueOf(key, "V"), "value\0"s);
    EXPECT_EQ(size, 6u);
}

TEST_F(RegistryTest, SaysHowMuchRoomAValueNeeds) {
    const RegistryKey key = Opened(KeyQueryValue);
    std::string data;
    EXPECT_EQ(Query(key, "v", data, 6), result::Success);
    EXPECT_EQ(Query(key, "v", data, 5), result::MoreData);
    EXPECT_EQ(size, 6u);
    std::uint32_t type = 0, needed = 0;
    EXPECT_EQ(registry->QueryValue(key, "v", type, {}, needed), result::Success);
    EXPECT_EQ(needed, 6u);
    EXPECT_EQ(type, RegSz);
}

TEST_F(RegistryTest, TouchesNothingForAValueThatIsMissing) {
    const RegistryKey key = Opened(KeyQueryValue);
    std::string data = "untouched";
    EXPECT_EQ(Query(key, "other", data), result::NotFound);
    EXPECT_EQ(data, "untouched");
    EXPECT_EQ(size, 100u);
}

TEST_F(RegistryTest, StoresExactlyTheBytesGiven) {
    const RegistryKey key = Opened(KeyQueryValue | KeySetValue);
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "abc"s), result::Success);
    EXPECT_EQ(ValueOf(key, "v"), "abc");
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(folder.Read("registry.reg"), Start + "\"v\"=hex(1):61,00,62,00,63,00\r\n");
    EXPECT_EQ(registry->SetValue(key, "w", RegSz, "\xE4\0"s), result::Success);
    EXPECT_EQ(ValueOf(key, "w"), "\xE4\0"s);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"registry.reg"});
}

TEST_F(RegistryTest, ShowsWhatSomebodyElseWrote) {
    const RegistryKey key = Opened(KeyQueryValue);
    folder.Write("registry.reg", Start + "\"v\"=\"changed\"\r\n");
    EXPECT_EQ(ValueOf(key, "v"), "changed\0"s);
    const auto other = Registry::Create(*paths);
    RegistryKey otherKey = 0;
    ASSERT_EQ(other->OpenKey(HkeyLocalMachine, "SOFTWARE\\A", KeySetValue, otherKey), result::Success);
    ASSERT_EQ(other->SetValue(otherKey, "v", RegSz, "again\0"s), result::Success);
    EXPECT_EQ(ValueOf(key, "v"), "again\0"s);
}

TEST_F(RegistryTest, KeepsToTheAccessAskedFor) {
    std::string data;
    EXPECT_EQ(Query(Opened(KeySetValue), "v", data), result::AccessDenied);
    EXPECT_EQ(registry->SetValue(Opened(KeyQueryValue), "v", RegSz, "x"s), result::AccessDenied);
}

TEST_F(RegistryTest, KnowsOnlyOpenKeys) {
    const RegistryKey key = Opened(KeyQueryValue | KeySetValue);
    EXPECT_EQ(registry->CloseKey(key), result::Success);
    EXPECT_EQ(registry->CloseKey(key), result::InvalidHandle);
    std::string data;
    EXPECT_EQ(Query(key, "v", data), result::InvalidHandle);
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "x"s), result::InvalidHandle);
    EXPECT_NE(Opened(KeyQueryValue), key) << "an old number must not mean another key";
}

TEST_F(RegistryTest, RefusesNamesThatTheFileCannotHold) {
    const RegistryKey key = Opened(KeySetValue);
    EXPECT_EQ(registry->SetValue(key, "a\nb", RegSz, "x"s), result::InvalidParameter);
    constexpr std::size_t longest = 16'383;
    EXPECT_EQ(registry->SetValue(key, std::string(longest + 1, 'n'), RegSz, "x"s), result::InvalidParameter);
    EXPECT_EQ(registry->SetValue(key, std::string(longest, 'n'), RegSz, "x"s), result::Success);
    EXPECT_EQ(registry->SetValue(key, "a b", RegSz, "x"s), result::Success)
        << "a blank is no control character";
}

TEST_F(RegistryTest, RefusesToWriteWhereTheInstallationIsGone) {
    const RegistryKey key = Opened(KeySetValue);
    const std::filesystem::path elsewhere = folder.Path().string() + "-elsewhere";
    std::filesystem::rename(folder.Path(), elsewhere);
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "x"s), result::AccessDenied);
    std::filesystem::rename(elsewhere, folder.Path());
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "x"s), result::Success);
}

TEST_F(RegistryTest, FindsNothingWithoutAFile) {
    std::filesystem::remove(folder / "registry.reg");
    RegistryKey key = 0;
    EXPECT_EQ(Open("SOFTWARE\\A", KeyQueryValue, key), result::NotFound);
    EXPECT_EQ(Open("", KeyQueryValue, key), result::NotFound);
    EXPECT_FALSE(std::filesystem::exists(folder / "registry.reg"));
}

TEST_F(RegistryTest, FindsNothingWithoutAnInstallation) {
    const auto none = FilePaths::CreateFor("");
    RegistryKey key = 0;
    EXPECT_EQ(Registry::Create(*none)->OpenKey(HkeyLocalMachine, "SOFTWARE", KeyQueryValue, key),
              result::NotFound);
}

TEST_F(RegistryTest, NoticesAKeyThatWentAway) {
    const RegistryKey key = Opened(KeyQueryValue | KeySetValue);
    folder.Write("registry.reg", "Windows Registry Editor Version 5.00\r\n");
    std::string data;
    EXPECT_EQ(Query(key, "v", data), result::NotFound);
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "x"s), result::NotFound);
}

TEST_F(RegistryTest, NamesFileAndLineOfABrokenFile) {
    const auto file = folder.Write("registry.reg", Start.substr(1));
    RegistryKey key = 0;
    const Refusal refusal = RefusalOf([&] { Open("SOFTWARE\\A", KeyQueryValue, key); });
    EXPECT_NE(refusal.description.find(file.string() + "\", line 1"), std::string::npos)
        << refusal.description;
    EXPECT_EQ(RefusalOf([&] { registry->Problems(); }).description, refusal.description);
}

TEST_F(RegistryTest, ReadsAndWritesAroundLinesThatAreNone) {
    const auto file = folder.Write("registry.reg", Start + "# mine\r\n\"v\"=\"value\"\r\n// mine\r\n");
    const RegistryKey key = Opened(KeyQueryValue | KeySetValue);
    EXPECT_EQ(ValueOf(key, "v"), "value\0"s);
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "new\0"s), result::Success);
    EXPECT_EQ(folder.Read("registry.reg"), Start + "# mine\r\n\"v\"=\"new\"\r\n// mine\r\n");
    const std::vector<std::string> problems = registry->Problems();
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_NE(problems[0].find(file.string() + "\", line 4"), std::string::npos) << problems[0];
    EXPECT_NE(problems[1].find("line 6"), std::string::npos) << problems[1];
    std::filesystem::remove(file);
    EXPECT_TRUE(registry->Problems().empty());
}

TEST_F(RegistryTest, RefusesAFileOfAbsurdSize) {
    std::filesystem::resize_file(folder / "registry.reg", 17u << 20);
    RegistryKey key = 0;
    EXPECT_EQ(RefusalOf([&] { Open("SOFTWARE\\A", KeyQueryValue, key); }).number, base::errors::FileAccess);
}

TEST_F(RegistryTest, RefusesToGrowPastWhatItWouldRead) {
    const RegistryKey key = Opened(KeyQueryValue | KeySetValue);
    const std::string data(10u << 20, 'x');
    EXPECT_EQ(RefusalOf([&] { registry->SetValue(key, "big", 3, data); }).number, base::errors::FileAccess);
    EXPECT_EQ(ValueOf(key, "v"), "value\0"s);
}

TEST_F(RegistryTest, DeniesWhatTheFilesModeDenies) {
    ASSERT_EQ(::chmod((folder / "registry.reg").c_str(), 0444), 0);
    const OrdinaryUser user(folder.Path());
    RegistryKey key = 0;
    EXPECT_EQ(Open("SOFTWARE\\A", KeyQueryValue, key), result::Success);
    EXPECT_EQ(Open("SOFTWARE\\A", KeySetValue, key), result::AccessDenied);
    ASSERT_EQ(::chmod((folder / "registry.reg").c_str(), 0), 0);
    EXPECT_EQ(Open("SOFTWARE\\A", KeyQueryValue, key), result::AccessDenied);
}

TEST_F(RegistryTest, LosesNoValueToWritersAtTheSameTime) {
    constexpr int Writers = 4, Values = 25;
    std::array<pid_t, Writers> children{};
    for (int writer = 0; writer < Writers; ++writer) {
        children[static_cast<std::size_t>(writer)] = ::fork();
        if (children[static_cast<std::size_t>(writer)] != 0) continue;
        RegistryKey key = 0;
        bool isGood = Open("SOFTWARE\\A", KeySetValue, key) == result::Success;
        for (int i = 0; i < Values && isGood; ++i)
            isGood =
                registry->SetValue(key, std::to_string(writer) + "-" + std::to_string(i), RegSz, "x\0"s) == 0;
        ::_exit(isGood ? 0 : 1);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    const RegistryKey key = Opened(KeyQueryValue);
    for (int writer = 0; writer < Writers; ++writer)
        for (int i = 0; i < Values; ++i)
            EXPECT_EQ(ValueOf(key, std::to_string(writer) + "-" + std::to_string(i)), "x\0"s);
}

TEST_F(RegistryTest, GivesUpOnAWriterThatNeverEnds) {
    const RegistryKey key = Opened(KeySetValue);
    const int holder = ::open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "x"s), result::AccessDenied);
    ::close(holder);
    EXPECT_EQ(registry->SetValue(key, "v", RegSz, "x"s), result::Success);
}

} // namespace
