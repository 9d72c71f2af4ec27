#include "host/IniFile.h"
#include "tests/host/HostFixture.h"

#include <fstream>

namespace arvon::host::test {
namespace {

TEST(IniFile, FindsSectionsAndItemsInAnyLetterCase) {
    const IniFile ini("[Framework]\nLocaleID=1033\n[Host]\nAppPath=C:\\A\n");
    EXPECT_EQ(ini.Get("FRAMEWORK", "localeid"), "1033");
    EXPECT_EQ(ini.Get("Host", "AppPath"), "C:\\A");
    EXPECT_EQ(ini.Get("Host", "LocaleID"), std::nullopt);
    EXPECT_TRUE(ini.HasSection("host"));
    EXPECT_FALSE(ini.HasSection("hosts"));
}

TEST(IniFile, ReadsTheFirstOfSeveralAndJoinsSectionsOfOneName) {
    const IniFile ini("[a]\nx=1\nx=2\n[b]\nx=3\n[A]\ny=4\n");
    EXPECT_EQ(ini.Get("a", "x"), "1");
    EXPECT_EQ(ini.Get("a", "y"), "4");
}

TEST(IniFile, TrimsNamesAndValuesAndSkipsComments) {
    const IniFile ini(" [ a ] \r\n ; x=0\n# x=0\n\n  x  =  two words = here  \r\ny=\n");
    EXPECT_EQ(ini.Get("a", "x"), "two words = here");
    EXPECT_EQ(ini.Get("a", "y"), "");
    EXPECT_THAT(ini.Problems(), IsEmpty());
}

TEST(IniFile, NamesLinesThatAreNothing) {
    const IniFile ini("[a\nx\n=1\n[b]\ny=2\nz=\xE4\n");
    EXPECT_THAT(ini.Problems(), ElementsAre("line 1: expected \"[section]\" or \"name=value\", found \"[a\"",
                                            "line 2: expected \"[section]\" or \"name=value\", found \"x\"",
                                            "line 3: expected \"[section]\" or \"name=value\", found \"=1\"",
                                            "line 6: the bytes are not well-formed UTF-8"));
    EXPECT_EQ(ini.Get("b", "y"), "2");
    EXPECT_EQ(ini.Get("b", "z"), std::nullopt);
}

TEST(IniFile, ChangesOneLineAndKeepsTheOthers) {
    IniFile ini("\xEF\xBB\xBF; head\r\n[A]\r\n x = 1 ; kept as value\r\n\r\n[B]\r\ny=2\r\n; tail");
    ini.Set("a", "X", "9");
    ini.Set("A", "z", "8");
    ini.Set("C", "w", "7");
    EXPECT_EQ(ini.Text(),
              "\xEF\xBB\xBF; head\r\n[A]\r\nx=9\r\nz=8\r\n\r\n[B]\r\ny=2\r\n; tail\r\n[C]\r\nw=7\r\n");
    EXPECT_EQ(ini.Get("A", "x"), "9");
    EXPECT_EQ(ini.Get("A", "z"), "8");
}

TEST(IniFile, StartsEmpty) {
    IniFile ini;
    EXPECT_EQ(ini.Text(), "");
    EXPECT_EQ(IniFile("").Text(), "");
    ini.Set("A", "x", "1");
    EXPECT_EQ(ini.Text(), "[A]\nx=1\n");
}

class SettingsOfTheHost : public HostTest {
protected:
    void OpenWithIni(std::string_view text) {
        std::ofstream(installation.Folder() / "host.ini", std::ios::binary) << text;
        Open();
    }
};

TEST_F(SettingsOfTheHost, AreGroupsOfTheFile) {
    OpenWithIni("[Framework]\nLocaleID=1033\nFontName=Sans\n[Mine]\nx=1\n");
    const auto group = Framework().GetSettings("framework");
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->GetItem("fontname").ToText(), "Sans");
    EXPECT_TRUE(group->GetItem("FontSize").IsEmpty());
    EXPECT_EQ(Framework().GetSettings("Mine")->GetItem("x").ToText(), "1");
    EXPECT_EQ(Framework().GetSettings("Other"), nullptr);
    EXPECT_EQ(Framework().GetSettings(""), nullptr);
}

TEST_F(SettingsOfTheHost, HaveValuesWithoutAFile) {
    std::filesystem::remove(installation.Folder() / "host.ini");
    Open();
    EXPECT_EQ(Framework().AppPath(), "C:\\QUARRA\\Arvon");
    EXPECT_EQ(Framework().ImageFolder(), "C:\\QUARRA\\Arvon\\Images");
    EXPECT_EQ(Framework().ComponentFolder(), "C:\\QUARRA\\Arvon\\Bin");
    EXPECT_EQ(Framework().InstallPath(), "C:\\QUARRA\\Arvon");
    EXPECT_EQ(Framework().GetSettings("Framework"), nullptr);
    EXPECT_EQ(Model().Language(), "1033");
    EXPECT_THAT(Host().Problems(), IsEmpty());
}

TEST_F(SettingsOfTheHost, NamePlacesWithoutATrailingBackslash) {
    OpenWithIni("[Host]\nAppPath=C:\\QUARRA\\Arvon\\\nImageFolder=C:\\Pictures\\\\\nInstallPath=C:\\\n");
    EXPECT_EQ(Framework().AppPath(), "C:\\QUARRA\\Arvon");
    EXPECT_EQ(Framework().ImageFolder(), "C:\\Pictures");
    EXPECT_EQ(Framework().ComponentFolder(), "C:\\QUARRA\\Arvon\\Bin");
    EXPECT_EQ(Framework().InstallPath(), "C:");
}

TEST_F(SettingsOfTheHost, SayWhetherListsHaveCheckBoxes) {
    for (const auto& [value, expected] : std::vector<std::pair<std::string, bool>>{
             {"0", false}, {"-1", true}, {"False", false}, {"", true}, {"odd", true}}) {
        OpenWithIni("[Host]\nCheckBoxes=" + value + "\n");
        const auto view = Framework().Views().Add("l", ViewKind::List, ListViewDefinition{}, "me");
        EXPECT_EQ(view->List()->CheckBoxes(), expected) << value;
    }
}

TEST_F(SettingsOfTheHost, TellOfLinesWithoutAMeaning) {
    OpenWithIni("[Framework]\nnonsense\n");
    ASSERT_EQ(Host().Problems().size(), 1u);
    EXPECT_THAT(Host().Problems()[0], HasSubstr("host.ini, line 2: "));
}

TEST_F(SettingsOfTheHost, TellOfRegistryLinesWithoutAMeaning) {
    const auto file = installation.Folder() / "registry.reg";
    std::ofstream(file, std::ios::app) << "# mine\n\"Logo\"=hex:0g\n";
    OpenWithIni("");
    ASSERT_EQ(Host().Problems().size(), 2u);
    EXPECT_THAT(Host().Problems()[0], AllOf(HasSubstr(file.string()), HasSubstr("found \"# mine\"")));
    EXPECT_THAT(Host().Problems()[1], HasSubstr("expected two hexadecimal digits"));
}

TEST_F(SettingsOfTheHost, OpenAnInstallationWhoseRegistryIsNone) {
    std::ofstream(installation.Folder() / "registry.reg") << "nonsense";
    OpenWithIni("");
    EXPECT_THAT(Host().Problems(), IsEmpty()) << "who reads a value is told";
}

TEST_F(SettingsOfTheHost, MustBeReadable) {
    std::filesystem::remove(installation.Folder() / "host.ini");
    std::filesystem::create_directory(installation.Folder() / "host.ini");
    EXPECT_EQ(RefusalOf([&] { Open(); }).number, base::errors::FileAccess);
    std::filesystem::remove(installation.Folder() / "host.ini");
    std::filesystem::create_symlink("host.ini", installation.Folder() / "host.ini"); // leads to itself
    EXPECT_NE(RefusalOf([&] { Open(); }).number, 0);
    std::filesystem::remove(installation.Folder() / "host.ini");
}

TEST_F(SettingsOfTheHost, MustNameADriveThatIsThere) {
    std::ofstream(installation.Folder() / "host.ini") << "[Host]\nAppPath=Q:\\Arvon\n";
    EXPECT_EQ(RefusalOf([&] { Open(); }).number, base::errors::PathNotFound);
}

} // namespace
} // namespace arvon::host::test
