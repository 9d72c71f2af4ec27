// Where the removal program works: programs without a folder, and drives of the installation.

#include "tests/suite/RemoveProgramFixture.h"

namespace suite::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

TEST_F(RemoveProgram, CountsAProgramWithoutAFolderAsGone) {
    const auto expected = Snapshot();
    for (int run = 0; run < 2; ++run) {
        fs::remove(Quarra("Enviro/ResultOK.txt"));
        const ProgramEnd end = Remove("X9");
        EXPECT_EQ(end.exitCode, 0) << end.errors;
        EXPECT_TRUE(HasResult());
        EXPECT_THAT(Report(), HasSubstr("removed X9"));
    }
    ASSERT_EQ(Remove("Tobr43").exitCode, 0);
    EXPECT_EQ(Remove("Tobr43").exitCode, 0) << "the catalogue may have kept it";
    EXPECT_TRUE(HasResult());
    auto after = Snapshot();
    for (const char* own : {"ResultOK.txt", "Remove.ini"})
        EXPECT_EQ(after.erase(std::string("suite/drive_c/QUARRA/Enviro/") + own), 1U);
    std::erase_if(after, [&](const auto& entry) {
        return expected.contains(entry.first) && expected.at(entry.first) == entry.second;
    });
    EXPECT_THAT(after, IsEmpty());
}

TEST_F(RemoveProgram, CountsAnEmptyFolderWithoutALogAsGone) {
    fs::create_directory(Quarra("X1"));
    const ProgramEnd end = Remove("X1");
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    EXPECT_TRUE(HasResult());
    EXPECT_FALSE(fs::exists(Quarra("X1")));

    fs::create_directories(Quarra("X1/Data"));
    WriteRequest("X1");
    fs::remove(Quarra("Enviro/ResultOK.txt"));
    ExpectRefused("\"Install.log\": there is no such file");
}

TEST_F(RemoveProgram, RefusesALinkToNothingInThePlaceOfTheProgramFolder) {
    fs::create_symlink("nowhere", Quarra("X9"));
    WriteRequest("X9");
    ExpectRefused("\"X9\": is a link or no folder");
}

TEST_F(RemoveProgram, RefusesAWrongRequestForAProgramWithoutAFolder) {
    for (const std::string vrex : {"", ".", "..", "X9\\", "X9/a", "..\\X9", "Enviro"}) {
        SCOPED_TRACE(vrex);
        WriteRequest(vrex);
        ExpectRefused("Remove.ini: the VREX");
    }
    Write(Quarra("Enviro/Remove.ini"),
          "[Program]\r\nVREX=X9\r\nName=\r\nLogfile=C:\\QUARRA\\Tobr43\\Install.log\r\n");
    ExpectRefused("is refused");
}

TEST_F(RemoveProgram, WorksOnlyInAnInstallation) {
    fs::create_directories(Outside("somewhere/Enviro"));
    fs::copy_file(Quarra("Enviro/KT4-RemoveProgram.exe"), Outside("somewhere/Enviro/KT4-RemoveProgram.exe"));
    Write(Outside("somewhere/X1/a.txt"), "a");
    Write(Outside("somewhere/X1/Install.log"), "a.txt\r\n");
    Write(Outside("somewhere/Enviro/Remove.ini"),
          "[Program]\r\nVREX=X1\r\nName=\r\nLogfile=C:\\QUARRA\\X1\\Install.log\r\n");
    const ProgramEnd end = Run(Outside("somewhere/Enviro/KT4-RemoveProgram.exe"));
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_THAT(end.errors, HasSubstr("is not the folder QUARRA"));
    EXPECT_TRUE(fs::exists(Outside("somewhere/X1/a.txt")));
}

TEST_F(RemoveProgram, WorksOnTheDriveThatItLiesOn) {
    fs::create_directories(Installation() / "drive_d/QUARRA/Enviro");
    const fs::path quarra = Installation() / "drive_d/QUARRA";
    fs::copy_file(Quarra("Enviro/KT4-RemoveProgram.exe"), quarra / "Enviro/KT4-RemoveProgram.exe");
    Write(quarra / "X1/a.txt", "a");
    Write(quarra / "X1/Install.log", "D:\\QUARRA\\X1\\a.txt\r\n");
    Write(quarra / "Enviro/Remove.ini",
          "[Program]\r\nVREX=X1\r\nName=\r\nLogfile=D:\\QUARRA\\X1\\Install.log\r\n");
    const ProgramEnd end = Run(quarra / "Enviro/KT4-RemoveProgram.exe");
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    EXPECT_FALSE(fs::exists(quarra / "X1"));
}

/// The copy with its drive moved away and a link in its place; the environment names the copy.
class RemoveProgramOnALinkedDrive : public RemoveProgram {
protected:
    void Link(const fs::path& target) {
        fs::create_directories(target.parent_path());
        fs::rename(Installation() / "drive_c", target);
        fs::create_directory_symlink(target, Installation() / "drive_c");
    }
    TestVariable installation{"ARVON_INSTALLATION", Installation().c_str()};
};

TEST_F(RemoveProgramOnALinkedDrive, RemovesAProgram) {
    Link(Outside("elsewhere/of any name"));
    const ProgramEnd end = Remove("Tobr43");
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    EXPECT_TRUE(HasResult());
    EXPECT_FALSE(fs::exists(Outside("elsewhere/of any name/QUARRA/Tobr43")));
    EXPECT_TRUE(fs::exists(Quarra("Tobr44/Tobr44.exe")));
}

TEST_F(RemoveProgramOnALinkedDrive, RemovesAProgramWhereTheLinkLeadsToAnotherDrive) {
    Link(Installation() / "drive_d");
    const ProgramEnd end = Remove("Tobr43");
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    EXPECT_FALSE(fs::exists(Quarra("Tobr43")));
}

TEST_F(RemoveProgramOnALinkedDrive, RefusesWhatItRefusesOnAnyDrive) {
    Link(Outside("elsewhere/c"));
    Install("a.txt\r\nC:\\QUARRA\\Tobr43\\Tobr43.exe\r\n", {"a.txt"});
    WriteRequest("X1");
    ExpectRefused("install log, line 2");
    WriteRequest("..");
    ExpectRefused("the VREX \"..\"");
    fs::create_directory_symlink(Outside("elsewhere"), Quarra("X2"));
    WriteRequest("X2");
    ExpectRefused("\"X2\": is a link or no folder");
    WriteRequest("X1");
    Write(Quarra("Enviro/Remove.ini"),
          "[Program]\r\nVREX=X1\r\nName=\r\nLogfile=D:\\QUARRA\\X1\\Install.log\r\n");
    ExpectRefused("is not the folder QUARRA");
}

TEST_F(RemoveProgramOnALinkedDrive, RefusesAQuarraFolderThatIsALinkItself) {
    fs::rename(Installation() / "drive_c/QUARRA", Outside("QUARRA"));
    fs::create_directory_symlink(Outside("QUARRA"), Installation() / "drive_c/QUARRA");
    WriteRequest("Tobr43");
    ExpectRefused("is not the folder QUARRA");
}

TEST_F(RemoveProgramOnALinkedDrive, RefusesToWorkOnADriveOfAnotherInstallation) {
    Link(Outside("elsewhere/c"));
    fs::create_directories(Outside("other/drive_c/QUARRA"));
    const TestVariable other("ARVON_INSTALLATION", Outside("other").c_str());
    WriteRequest("Tobr43");
    ExpectRefused("is not the folder QUARRA");
}

} // namespace
} // namespace suite::test
