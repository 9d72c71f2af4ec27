#include "platform/FilePaths.h"

#include "base/Text.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using platform::FilePaths;

namespace {

class FilePathsTest : public testing::Test {
protected:
    FilePathsTest() {
        folder.Write("registry.reg", "");
        folder.Write("drive_c/QUARRA/Arvon/Tools.xml", "tools");
        folder.Write("drive_c/QUARRA/Größe/Ärger.txt", "x");
        folder.Write("drive_d/data.bin", "y");
        paths = FilePaths::CreateFor(folder.Path());
    }
    TestFolder folder;
    std::unique_ptr<FilePaths> paths;
};

TEST_F(FilePathsTest, FindsAnExactPathInItsDrive) {
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\Arvon\\Tools.xml"), folder / "drive_c/QUARRA/Arvon/Tools.xml");
    EXPECT_EQ(paths->ToSystem("D:\\data.bin"), folder / "drive_d/data.bin");
    EXPECT_EQ(paths->ToSystem("c:/QUARRA/Arvon"), folder / "drive_c/QUARRA/Arvon");
}

TEST_F(FilePathsTest, IgnoresLetterCaseWhereTheExactNameIsMissing) {
    EXPECT_EQ(paths->ToSystem("C:\\quarra\\ARVON\\tools.XML"), folder / "drive_c/QUARRA/Arvon/Tools.xml");
    EXPECT_EQ(paths->ToSystem("C:\\Quarra\\GRÖßE\\äRGER.TXT"), folder / "drive_c/QUARRA/Größe/Ärger.txt");
}

TEST_F(FilePathsTest, PrefersTheExactNameToAnotherLetterCase) {
    folder.Write("drive_c/QUARRA/arvon/other.txt", "");
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\arvon"), folder / "drive_c/QUARRA/arvon");
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\Arvon"), folder / "drive_c/QUARRA/Arvon");
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\ARVON"), folder / "drive_c/QUARRA/Arvon")
        << "the first in byte order";
}

TEST_F(FilePathsTest, KeepsTheSpellingOfWhatDoesNotExist) {
    EXPECT_EQ(paths->ToSystem("C:\\quarra\\New Folder\\File.TXT"),
              folder / "drive_c/QUARRA/New Folder/File.TXT");
}

TEST_F(FilePathsTest, DropsPeriodsAndBlanksAtTheEndOfWhatItLooksUp) {
    const auto file = folder / "drive_c/QUARRA/Arvon/Tools.xml";
    for (const char* path : {"C:\\QUARRA\\Arvon\\Tools.xml.", "C:\\QUARRA\\Arvon\\TOOLS.xml. ..",
                             "C:\\quarra.\\Arvon.\\Tools.xml "})
        EXPECT_EQ(paths->ToSystem(path), file) << path;
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA \\Arvon"), folder / "drive_c/QUARRA /Arvon")
        << "a folder loses a period alone";
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\new."), folder / "drive_c/QUARRA/new.");
    folder.Write("drive_c/QUARRA/Arvon/Tools.xml.", "");
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\Arvon\\Tools.xml."), folder / "drive_c/QUARRA/Arvon/Tools.xml.");
}

TEST_F(FilePathsTest, NeverLeavesTheDriveByWhatItDropsFromANamesEnd) {
    for (const char* name : {"...", ".. ", ". .", ".. .", "....", ". "})
        for (const char* behind : {"", "\\registry.reg"}) {
            const std::string path = std::string(name) + behind;
            EXPECT_EQ(paths->ToSystem("C:\\" + path), folder / "drive_c" / base::Replace(path, "\\", "/"));
        }
}

TEST_F(FilePathsTest, TakesTheDriveAloneForItsFolder) {
    for (const char* root : {"C:", "C:\\", "c:/", "C:\\."})
        EXPECT_EQ(paths->ToSystem(root), folder / "drive_c") << root;
}

TEST_F(FilePathsTest, FindsADriveFolderInAnyLetterCase) {
    folder.Write("Drive_E/x.txt", "");
    EXPECT_EQ(paths->ToSystem("E:\\X.TXT"), folder / "Drive_E/x.txt");
}

TEST_F(FilePathsTest, NeverLeavesTheDriveByDots) {
    EXPECT_EQ(paths->ToSystem("C:\\..\\..\\registry.reg"), folder / "drive_c/registry.reg");
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\..\\..\\..\\etc\\passwd"), folder / "drive_c/etc/passwd");
    EXPECT_EQ(paths->ToSystem("C:..\\drive_d"), folder / "drive_c/drive_d");
    EXPECT_EQ(paths->ToSystem("C:\\QUARRA\\nowhere\\..\\Arvon"), folder / "drive_c/QUARRA/Arvon");
}

TEST_F(FilePathsTest, TakesPathsWithoutADriveForTheSystemsOwn) {
    EXPECT_EQ(paths->ToSystem("/usr\\share/x"), "/usr/share/x");
    EXPECT_EQ(paths->ToSystem("sub\\File"), "sub/File");
    EXPECT_EQ(paths->ToSystem(""), "");
}

TEST_F(FilePathsTest, RefusesADriveThatTheInstallationLacks) {
    const Refusal refusal = RefusalOf([&] { paths->ToSystem("Z:\\x"); });
    EXPECT_EQ(refusal.number, base::errors::PathNotFound);
    EXPECT_NE(refusal.description.find("Z:"), std::string::npos);
    EXPECT_NE(refusal.description.find("drive_z"), std::string::npos);
}

TEST_F(FilePathsTest, RefusesAFileInTheDriveFoldersPlace) {
    folder.Write("drive_f", "");
    EXPECT_EQ(RefusalOf([&] { paths->ToSystem("F:\\x"); }).number, base::errors::PathNotFound);
}

TEST_F(FilePathsTest, RefusesANulInAName) {
    EXPECT_EQ(RefusalOf([&] { paths->ToSystem(std::string_view("C:\\QUARRA\0x", 11)); }).number,
              base::errors::PathNotFound);
}

TEST_F(FilePathsTest, GivesTheInstallationFormBack) {
    EXPECT_EQ(paths->FromSystem(folder / "drive_c/QUARRA/Arvon/Tools.xml"), "C:\\QUARRA\\Arvon\\Tools.xml");
    EXPECT_EQ(paths->FromSystem(folder / "drive_d"), "D:\\");
    EXPECT_EQ(paths->FromSystem(folder / "drive_c/a/../b/"), "C:\\b");
}

TEST_F(FilePathsTest, GivesOtherPathsWithBackslashes) {
    EXPECT_EQ(paths->FromSystem("/usr/share"), "\\usr\\share");
    EXPECT_EQ(paths->FromSystem(folder / "host.ini"),
              std::string(paths->FromSystem(folder.Path()) + "\\host.ini"));
    EXPECT_EQ(paths->FromSystem(folder / "drive_c" / ".." / "host.ini").find("C:"), std::string::npos);
}

TEST_F(FilePathsTest, KnowsTheInstallationBehindASymbolicLink) {
    const TestFolder elsewhere;
    fs::create_directory_symlink(folder.Path(), elsewhere / "link");
    const auto linked = FilePaths::CreateFor(elsewhere / "link");
    EXPECT_EQ(linked->FromSystem(elsewhere / "link/drive_c/x"), "C:\\x");
    EXPECT_EQ(linked->FromSystem(folder / "drive_c/QUARRA"), "C:\\QUARRA");
    EXPECT_EQ(paths->FromSystem(elsewhere / "link/drive_c/QUARRA"), "C:\\QUARRA");
}

TEST_F(FilePathsTest, SaysWhatExistsAndNeverThrows) {
    EXPECT_TRUE(paths->Exists("C:\\quarra\\arvon\\TOOLS.xml"));
    EXPECT_TRUE(paths->Exists("C:\\QUARRA"));
    EXPECT_FALSE(paths->Exists("C:\\QUARRA\\no.txt"));
    EXPECT_FALSE(paths->Exists("Z:\\no.txt"));
    EXPECT_FALSE(paths->Exists(""));
    EXPECT_FALSE(paths->Exists("C:\\" + std::string(5000, 'x')));
    EXPECT_FALSE(paths->Exists("C:\\QUARRA\\Arvon\\Tools.xml\\below"));
    EXPECT_FALSE(paths->Exists(std::string_view("C:\\QUARRA\0", 10)));
}

TEST_F(FilePathsTest, TakesTheInstallationFromTheEnvironment) {
    const TestVariable variable(platform::InstallationVariable, (folder.Path().string() + "/").c_str());
    const auto fromEnvironment = FilePaths::Create();
    EXPECT_EQ(fromEnvironment->Installation(), folder.Path());
    EXPECT_TRUE(fromEnvironment->Exists("C:\\QUARRA"));
}

TEST(FilePaths, HasNoDrivesWithoutAnInstallation) {
    const TestVariable variable(platform::InstallationVariable, nullptr);
    const auto paths = FilePaths::Create(); // the test program lies in no installation
    EXPECT_EQ(paths->Installation(), "");
    EXPECT_EQ(RefusalOf([&] { paths->ToSystem("C:\\x"); }).number, base::errors::PathNotFound);
    EXPECT_EQ(paths->FromSystem("/a/drive_c/b"), "\\a\\drive_c\\b");
}

} // namespace
