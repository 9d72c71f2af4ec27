// String resources, and the switch of language behind the handle that tools keep.

#include "tests/host/HostFixture.h"

#include "platform/StringModules.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace arvon::host::test {
namespace {

class ResourcesOfTheHost : public HostTest {
protected:
    ResourcesOfTheHost() {
        std::filesystem::create_directories(installation.File("Arvon/resources/1031"));
        std::filesystem::copy_file(OTHER_STRING_MODULE, installation.File("Arvon/resources/1031/Tools.dll"));
    }
    std::string Text(std::string_view number) { return Framework().GetResource("Tools", number).ToText(); }
    std::int32_t Handle() { return Framework().GetResource("Tools", "").ToInteger(); }
    /// The text as a tool reads it, which keeps the handle.
    std::string TextBehind(std::int32_t handle, std::uint32_t number) {
        return modules_->LoadString(handle, number, 4096);
    }

private:
    std::unique_ptr<platform::StringModules> modules_ = platform::StringModules::Create();
};

TEST_F(ResourcesOfTheHost, AreTheTextsOfTheLanguageInForce) {
    EXPECT_EQ(Text("1"), "text 1");
    EXPECT_EQ(Text("13"), "yyyy-mm-dd");
    EXPECT_EQ(Model().Language(), "1033");
}

TEST_F(ResourcesOfTheHost, AreEmptyForAnythingUnknown) {
    for (const auto* number : {"9999", "-1", "1x", "x", " 1", "4294967296", "0"})
        EXPECT_TRUE(Framework().GetResource("Tools", number).IsEmpty()) << number;
    EXPECT_TRUE(Framework().GetResource("tools", "1").IsEmpty());
    EXPECT_TRUE(Framework().GetResource("", "").IsEmpty());
}

TEST_F(ResourcesOfTheHost, AreReadBehindOneHandleInEveryLanguage) {
    const std::int32_t handle = Handle();
    ASSERT_GT(handle, 2);
    EXPECT_EQ(TextBehind(handle, 2), "text 2");
    EXPECT_EQ(Framework().SwitchLanguage("1031"), "1031");
    EXPECT_EQ(Handle(), handle);
    EXPECT_EQ(TextBehind(handle, 2), "Text 2");
    EXPECT_EQ(Text("1"), "Text 1, gr\u00F6\u00DFer");
    EXPECT_EQ(Model().Language(), "1031");
    EXPECT_EQ(Framework().GetSettings("Framework")->GetItem("LocaleID").ToText(), "1031");
    EXPECT_EQ(Framework().SwitchLanguage("1033"), "1033");
    EXPECT_EQ(TextBehind(handle, 2), "text 2");
}

TEST_F(ResourcesOfTheHost, AreNotInheritedByPrograms) {
    EXPECT_NE(::fcntl(Handle(), F_GETFD) & FD_CLOEXEC, 0);
    Framework().SwitchLanguage("1031");
    EXPECT_NE(::fcntl(Handle(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(ResourcesOfTheHost, KeepTheLanguageForTheNextTime) {
    const auto group = (Open(), Framework().GetSettings("Framework"));
    Framework().SwitchLanguage("1031");
    EXPECT_EQ(group->GetItem("LocaleID").ToText(), "1031"); // a group handed out before follows
    EXPECT_EQ(ReadWholeFile(installation.Folder() / "host.ini"),
              "[Framework]\nLocaleID=1031\nFontName=Sans\nFontSize=9\n");
    Open();
    EXPECT_EQ(Text("2"), "Text 2");
}

TEST_F(ResourcesOfTheHost, AreNotSwitchedToALanguageThatIsNotThere) {
    std::filesystem::create_directories(installation.File("Arvon/resources/1036")); // without texts
    for (const auto* language : {"1040", "", "..", "../1031", "1031/../1031", "C:", "1036"})
        EXPECT_EQ(Framework().SwitchLanguage(language), "") << language;
    EXPECT_EQ(Model().Language(), "1033");
    EXPECT_EQ(Text("1"), "text 1");
    EXPECT_EQ(recorder.problems.size(), 1u); // of the folder without texts
}

TEST_F(ResourcesOfTheHost, AreSwitchedAsTheHostWasToldToAnswerOnce) {
    Host().SetLanguageAnswer("");
    EXPECT_EQ(Framework().SwitchLanguage("1031"), "");
    EXPECT_EQ(Model().Language(), "1033");
    EXPECT_EQ(Framework().SwitchLanguage("1031"), "1031");
    Host().SetLanguageAnswer("done");
    EXPECT_EQ(Framework().SwitchLanguage("1033"), "done");
    EXPECT_EQ(Model().Language(), "1033");
    Host().SetLanguageAnswer("done");
    EXPECT_EQ(Framework().SwitchLanguage("1040"), "done"); // answered, though there are no such texts
    EXPECT_EQ(Model().Language(), "1033");
    EXPECT_EQ(Text("1"), "text 1");
}

TEST_F(ResourcesOfTheHost, HaveNoHandleWithoutAModule) {
    std::filesystem::remove(installation.File("Arvon/resources/1033/Tools.dll"));
    Open();
    EXPECT_EQ(Handle(), 0);
    EXPECT_TRUE(Framework().GetResource("Tools", "1").IsEmpty());
    ASSERT_EQ(Host().Problems().size(), 1u);
    EXPECT_THAT(Host().Problems()[0], HasSubstr("no string resources for language \"1033\": "));
    EXPECT_EQ(Framework().SwitchLanguage("1031"), "1031");
    EXPECT_GT(Handle(), 2);
    EXPECT_EQ(Text("2"), "Text 2");
}

TEST_F(ResourcesOfTheHost, AreEmptyInADamagedModule) {
    installation.Write("Arvon/resources/1033/Tools.dll", "MZ and nothing more");
    Open();
    EXPECT_GT(Handle(), 2);
    EXPECT_TRUE(Framework().GetResource("Tools", "1").IsEmpty());
}

TEST_F(ResourcesOfTheHost, AreInARegularFileOnly) {
    const std::filesystem::path file = installation.File("Arvon/resources/1033/Tools.dll");
    std::filesystem::remove(file);
    const auto expectNone = [&] {
        EXPECT_EQ(Handle(), 0);
        EXPECT_THAT(Host().Problems(), ElementsAre(testing::EndsWith("it is no regular file")));
        EXPECT_EQ(Framework().SwitchLanguage("1033"), "");
    };
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    Open();
    expectNone();
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    Open();
    expectNone();
}

TEST_F(ResourcesOfTheHost, AreClosedWithTheHost) {
    const std::int32_t handle = Handle();
    Close();
    EXPECT_EQ(::fcntl(handle, F_GETFD), -1);
}

} // namespace
} // namespace arvon::host::test
