#include "platform/StringModules.h"

#include "tests/platform/ModuleBuilder.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr std::size_t Capacity = 2048;

class StringModulesTest : public testing::Test {
protected:
    ~StringModulesTest() override {
        for (const int file : open)
            ::close(file);
    }
    int Open(const std::filesystem::path& file) {
        open.push_back(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_GT(open.back(), 0);
        return open.back();
    }
    /// Opens a module whose string 1 is this text.
    int OpenModule(const std::string& name, const std::u16string& text) {
        return Open(folder.Write(name, ModuleBuilder().Block(1, 0, {u"", text}).Build(false)));
    }
    std::string Load(int module, std::uint32_t number = 1, std::size_t capacity = Capacity) {
        return modules->LoadString(module, number, capacity);
    }

    TestFolder folder;
    std::unique_ptr<platform::StringModules> modules = platform::StringModules::Create();
    std::vector<int> open;
};

TEST_F(StringModulesTest, GivesStringsInAnsiBytes) {
    const int module = Open(STRING_MODULE);
    EXPECT_EQ(Load(module), "one");
    EXPECT_EQ(Load(module, 2000), "??");
    EXPECT_EQ(Load(module, 3), "");
    EXPECT_EQ(Load(OpenModule("a.dll", u"Häßlich €")), "H\xE4\xDFlich \x80");
}

TEST_F(StringModulesTest, GivesTheUsersLanguage) {
    const TestVariable locale("LC_ALL", "de_CH.UTF-8");
    modules = platform::StringModules::Create();
    const int module = Open(folder.Write("a.dll", ModuleBuilder()
                                                      .Block(1, 0, {u"", u"neutral"})
                                                      .Block(1, 0x0807, {u"", u"schweizerisch"})
                                                      .Build(false)));
    EXPECT_EQ(Load(module), "schweizerisch");
}

TEST_F(StringModulesTest, CutsAtTheCapacity) {
    const int module = OpenModule("a.dll", u"abcdef");
    EXPECT_EQ(Load(module, 1, 7), "abcdef");
    EXPECT_EQ(Load(module, 1, 4), "abc");
    EXPECT_EQ(Load(module, 1, 2), "a");
    EXPECT_EQ(Load(module, 1, 1), "");
    EXPECT_EQ(Load(module, 1, 0), "");
    EXPECT_EQ(Load(OpenModule("long.dll", std::u16string(5000, u'x'))), std::string(2047, 'x'));
}

TEST_F(StringModulesTest, CountsTheLowHalfOfANumber) {
    EXPECT_EQ(Load(OpenModule("a.dll", u"text"), 0x10001), "text");
}

TEST_F(StringModulesTest, LeavesTheDescriptorAsItWas) {
    const int module = OpenModule("a.dll", u"text");
    ASSERT_EQ(::lseek(module, 5, SEEK_SET), 5);
    EXPECT_EQ(Load(module), "text");
    EXPECT_EQ(::lseek(module, 0, SEEK_CUR), 5);
}

TEST_F(StringModulesTest, FollowsTheDescriptorToAnotherFile) {
    const int module = OpenModule("a.dll", u"english");
    const int other = OpenModule("b.dll", u"deutsch");
    EXPECT_EQ(Load(module), "english");
    ASSERT_EQ(::dup2(other, module), module);
    EXPECT_EQ(Load(module), "deutsch");
    EXPECT_EQ(Load(other), "deutsch");
}

TEST_F(StringModulesTest, SeesAFileThatChangesInPlace) {
    const int module = OpenModule("a.dll", u"first");
    EXPECT_EQ(Load(module), "first");
    OpenModule("a.dll", u"second one");
    EXPECT_EQ(Load(module), "second one");
    std::filesystem::resize_file(folder / "a.dll", 10);
    EXPECT_EQ(Load(module), "");
}

TEST_F(StringModulesTest, HasNothingInWhatIsNoModule) {
    EXPECT_EQ(Load(0), "") << "no module";
    EXPECT_EQ(Load(-1), "");
    EXPECT_EQ(Load(9999), "") << "not open";
    EXPECT_EQ(Load(Open(folder.Path())), "");
    EXPECT_EQ(Load(Open("/dev/zero")), "");
    EXPECT_EQ(Load(Open(folder.Write("text", "no module at all"))), "");
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_EQ(Load(ends[0]), "") << "reading would wait for ever";
    ::close(ends[0]);
    ::close(ends[1]);
    EXPECT_EQ(Load(::open(folder.Write("w", "").c_str(), O_WRONLY)), "") << "not open for reading";
}

TEST_F(StringModulesTest, DoesNotTakeInAFileOfAbsurdSize) {
    const int module = OpenModule("a.dll", u"text");
    std::filesystem::resize_file(folder / "a.dll", (64u << 20) + 1);
    EXPECT_EQ(Load(module), "");
    std::filesystem::resize_file(folder / "a.dll", 64u << 20);
    EXPECT_EQ(Load(module), "text");
}

} // namespace
