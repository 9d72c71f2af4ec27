#include "tests/suite/RemoveProgramFixture.h"

#include <sys/stat.h>

namespace suite::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

TEST_F(RemoveProgram, TakesEveryProgramOfTheSuiteAwayWhole) {
    for (const std::string vrex : {"Tobr11", "Tobr20", "Tobr43", "Tobr44", "Tobr50", "Jx310", "Jx320",
                                   "Jx321", "Jx355", "Jx377", "Vn21", "Vn34", "Qx07", "Qx12"}) {
        SCOPED_TRACE(vrex);
        fs::remove(Quarra("Enviro/ResultOK.txt"));
        const ProgramEnd end = Remove(vrex);
        EXPECT_EQ(end.exitCode, 0) << end.errors;
        EXPECT_THAT(end.errors, IsEmpty());
        EXPECT_TRUE(HasResult());
        EXPECT_FALSE(fs::exists(Quarra(vrex)));
        EXPECT_THAT(Report(), HasSubstr("removed " + vrex));
    }
    EXPECT_TRUE(fs::exists(Quarra("Arvon/Tools.xml")));
}

TEST_F(RemoveProgram, TakesTheLogOfAProgramThatRanAwayToo) {
    ASSERT_EQ(Run(Quarra("Tobr43/Tobr43.exe"), {"--seconds", "0"}).exitCode, 0);
    EXPECT_EQ(Remove("Tobr43").exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("Tobr43")));
}

TEST_F(RemoveProgram, TouchesNothingElse) {
    auto expected = Snapshot();
    std::erase_if(expected,
                  [](const auto& entry) { return entry.first.starts_with("suite/drive_c/QUARRA/Tobr43"); });
    EXPECT_EQ(Remove("Tobr43").exitCode, 0);
    auto after = Snapshot();
    EXPECT_EQ(after.erase("suite/drive_c/QUARRA/Enviro/ResultOK.txt"), 1U);
    EXPECT_EQ(after.erase("suite/drive_c/QUARRA/Enviro/Remove.ini"), 1U);
    EXPECT_EQ(after, expected);
}

TEST_F(RemoveProgram, LeavesTheProgramOfAToolThatStandsInsideTheRemovedOne) {
    EXPECT_EQ(Remove("Jx320").exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("Jx320")));
    EXPECT_EQ(Run(Quarra("Jx321/Jx321.exe"), {"--seconds", "0"}).exitCode, 0);
}

TEST_F(RemoveProgram, LeavesWhatTheLogDoesNotName) {
    Install("a.exe\r\nData\\b.txt\r\nEmpty\\c.txt\r\n",
            {"a.exe", "Data/b.txt", "Data/mine.txt", "Empty/c.txt"});
    EXPECT_EQ(Remove("X1").exitCode, 0);
    EXPECT_TRUE(HasResult());
    EXPECT_FALSE(fs::exists(Quarra("X1/a.exe")));
    EXPECT_FALSE(fs::exists(Quarra("X1/Data/b.txt")));
    EXPECT_TRUE(fs::exists(Quarra("X1/Data/mine.txt")));
    EXPECT_FALSE(fs::exists(Quarra("X1/Empty")));
    EXPECT_FALSE(fs::exists(Quarra("X1/Install.log")));
}

TEST_F(RemoveProgram, FindsNamesWithoutRegardToLetterCase) {
    Install("A.EXE\r\ndata\\ÄRGER.TXT\r\nC:\\quarra\\x1\\DATA\\c\r\n", {"a.exe", "Data/ärger.txt", "Data/C"});
    Write(Quarra("Enviro/Remove.ini"),
          "[Program]\r\nVREX=x1\r\nName=\r\nLogfile=C:\\QUARRA\\x1\\INSTALL.LOG\r\n");
    EXPECT_EQ(Remove().exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("X1")));
}

TEST_F(RemoveProgram, ReadsAnInstallLogInAnsiWithPlainLineEnds) {
    Install("W\xE4rme \x96 kurz.txt\n\xDC\\\x80.txt", {"Wärme – kurz.txt", "Ü/€.txt"});
    EXPECT_EQ(Remove("X1").exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("X1")));
}

TEST_F(RemoveProgram, RemovesAProgramWhoseVrexIsNotAscii) {
    Write(Quarra("Überbau/a.txt"), "a");
    Write(Quarra("Überbau/Install.log"), "a.txt\r\n");
    Write(Quarra("Enviro/Remove.ini"), "[Program]\r\nVREX=\xDC"
                                       "berbau\r\nName=\xDC"
                                       "berbau\r\nLogfile=C:\\QUARRA\\\xDC"
                                       "berbau\\Install.log\r\n");
    const ProgramEnd end = Remove();
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    EXPECT_FALSE(fs::exists(Quarra("Überbau")));
    EXPECT_THAT(Report(), HasSubstr("Überbau"));
}

TEST_F(RemoveProgram, CountsWhatIsMissingAlreadyAsTakenAway) {
    Install("a.exe\r\nnever.txt\r\nno\\folder\\x.txt\r\na.exe\r\n", {"a.exe"});
    EXPECT_EQ(Remove("X1").exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("X1")));
}

TEST_F(RemoveProgram, TakesAnEmptyNamedFolderAway) {
    Install("Data\\\r\nData\\a.txt\r\nData\\Deep\r\nC:\\QUARRA\\X1\r\n", {"Data/a.txt"});
    fs::create_directory(Quarra("X1/Data/Deep"));
    EXPECT_EQ(Remove("X1").exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("X1")));
}

TEST_F(RemoveProgram, AnEmptyLogTakesOnlyItselfAway) {
    Install("", {"a.txt"});
    EXPECT_EQ(Remove("X1").exitCode, 0);
    EXPECT_TRUE(fs::exists(Quarra("X1/a.txt")));
    EXPECT_FALSE(fs::exists(Quarra("X1/Install.log")));
}

TEST_F(RemoveProgram, ALogMayNameItself) {
    Install("a.txt\r\nInstall.log\r\n", {"a.txt"});
    EXPECT_EQ(Remove("X1").exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("X1")));
}

TEST_F(RemoveProgram, ANamedFolderThatHoldsOtherFilesIsNotGone) {
    Install("a.txt\r\nData\r\n", {"a.txt", "Data/mine.txt"});
    const ProgramEnd end = Remove("X1");
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_THAT(end.errors, HasSubstr("\"Data\": the folder is not empty"));
    EXPECT_FALSE(HasResult());
    EXPECT_TRUE(fs::exists(Quarra("X1/Data/mine.txt")));

    fs::remove(Quarra("X1/Data/mine.txt"));
    EXPECT_EQ(Remove("X1").exitCode, 0) << "the log is still there for a second try";
    EXPECT_FALSE(fs::exists(Quarra("X1")));
}

TEST_F(RemoveProgram, RefusesALogThatNamesPathsOutsideTheProgram) {
    for (const std::string line :
         {"..\\Tobr43\\Tobr43.exe", "C:\\QUARRA\\Tobr43\\Tobr43.exe",
          "C:\\QUARRA\\X1\\..\\Tobr43\\Tobr43.exe", "/etc/hostname", "D:\\QUARRA\\X1\\a.txt",
          "\\\\server\\share\\a.txt", "Data\\..\\..\\Enviro\\Remove.ini", ".", ".."}) {
        SCOPED_TRACE(line);
        Install("a.txt\r\n" + line + "\r\n", {"a.txt", "Data/b.txt"});
        WriteRequest("X1");
        ExpectRefused("install log, line 2: \"" + line + "\" is refused");
    }
}

TEST_F(RemoveProgram, RefusesPathsThatLeadOverALink) {
    Write(Outside("elsewhere/precious.txt"), "precious");
    Install("a.txt\r\nLink\\precious.txt\r\n", {"a.txt"});
    fs::create_directory_symlink(Outside("elsewhere"), Quarra("X1/Link"));
    WriteRequest("X1");
    ExpectRefused("\"Link\": is a link or no folder");
}

TEST_F(RemoveProgram, RefusesPathsThatLeadOverALinkInside) {
    Install("a.txt\r\nLink\\b.txt\r\n", {"a.txt", "Data/b.txt"});
    fs::create_directory_symlink("Data", Quarra("X1/Link"));
    WriteRequest("X1");
    ExpectRefused("\"Link\": is a link or no folder");
}

TEST_F(RemoveProgram, TakesANamedLinkAwayButNotWhatItPointsTo) {
    Write(Outside("elsewhere/precious.txt"), "precious");
    Install("ToFile\r\nToFolder\r\nToNothing\r\n", {});
    fs::create_symlink(Outside("elsewhere/precious.txt"), Quarra("X1/ToFile"));
    fs::create_directory_symlink(Outside("elsewhere"), Quarra("X1/ToFolder"));
    fs::create_symlink("nowhere", Quarra("X1/ToNothing"));
    EXPECT_EQ(Remove("X1").exitCode, 0);
    EXPECT_FALSE(fs::exists(Quarra("X1")));
    EXPECT_EQ(Read(Outside("elsewhere/precious.txt")), "precious");
}

TEST_F(RemoveProgram, RefusesAProgramFolderThatIsALink) {
    Write(Outside("elsewhere/a.txt"), "precious");
    Write(Outside("elsewhere/Install.log"), "a.txt\r\n");
    fs::create_directory_symlink(Outside("elsewhere"), Quarra("X1"));
    WriteRequest("X1");
    ExpectRefused("\"X1\": is a link or no folder");
}

TEST_F(RemoveProgram, RefusesAnInstallLogThatIsALinkOrNoRegularFile) {
    Write(Outside("elsewhere/Install.log"), "a.txt\r\n");
    Write(Quarra("X1/a.txt"), "a");
    WriteRequest("X1");
    fs::create_symlink(Outside("elsewhere/Install.log"), Quarra("X1/Install.log"));
    ExpectRefused("Install.log");

    fs::remove(Quarra("X1/Install.log"));
    ASSERT_EQ(mkfifo(Quarra("X1/Install.log").c_str(), 0600), 0);
    const ProgramEnd pipe = Remove();
    EXPECT_EQ(pipe.exitCode, 1);
    EXPECT_THAT(pipe.errors, HasSubstr("is no regular file"));

    fs::remove(Quarra("X1/Install.log"));
    fs::create_directory(Quarra("X1/Install.log"));
    ExpectRefused("is no regular file");
}

TEST_F(RemoveProgram, RefusesAFileWhereAFolderShouldBe) {
    Install("a.txt\\b.txt\r\n", {"a.txt"});
    WriteRequest("X1");
    ExpectRefused("\"a.txt\": is a link or no folder");
}

TEST_F(RemoveProgram, NeedsTheInstallLog) {
    fs::remove(Quarra("Tobr43/Install.log"));
    WriteRequest("Tobr43");
    ExpectRefused("\"Install.log\": there is no such file");
}

TEST_F(RemoveProgram, RefusesALogOfAnotherPlace) {
    for (const std::string log :
         {"C:\\QUARRA\\Tobr44\\Install.log", "C:\\QUARRA\\Tobr43\\..\\Tobr44\\Install.log",
          "D:\\QUARRA\\Tobr43\\Install.log", "/etc/hostname"}) {
        SCOPED_TRACE(log);
        Write(Quarra("Enviro/Remove.ini"),
              "[Program]\r\nVREX=Tobr43\r\nName=Layout\r\nLogfile=" + log + "\r\n");
        ExpectRefused("\"" + log + "\" is refused");
    }
    Write(Quarra("Enviro/Remove.ini"), "[Program]\r\nVREX=Tobr43\r\nName=Layout\r\nLogfile=\r\n");
    ExpectRefused("Logfile");
}

TEST_F(RemoveProgram, RefusesFoldersThatAllProgramsShareAndNamesThatAreNone) {
    Write(Quarra("Enviro/Install.log"), "logo-v3.jpg\r\n");
    for (const std::string vrex :
         {"Enviro", "arvon", "Packages", "..", ".", "", "Tobr43\\Sheets", "../../.."}) {
        SCOPED_TRACE(vrex);
        WriteRequest(vrex);
        ExpectRefused("Remove.ini: the VREX \"" + vrex + "\"");
    }
}

TEST_F(RemoveProgram, RefusesARequestOfAnotherShape) {
    WriteRequest("Tobr43", "Layout\r\nVREX=Tobr44"); // a name with a line end in it
    ExpectRefused("should have four lines, found 5");
    Write(Quarra("Enviro/Remove.ini"), "");
    ExpectRefused("should have four lines, found 0");
    Write(Quarra("Enviro/Remove.ini"), std::string(100000, 'x'));
    ExpectRefused("Remove.ini");
    fs::remove(Quarra("Enviro/Remove.ini"));
    ExpectRefused("Remove.ini");
}

TEST_F(RemoveProgram, AFailureTakesTheResultOfAnEarlierRunAway) {
    ASSERT_EQ(Remove("Tobr43").exitCode, 0);
    ASSERT_TRUE(HasResult());
    fs::remove(Quarra("Tobr44/Install.log"));
    EXPECT_EQ(Remove("Tobr44").exitCode, 1);
    EXPECT_FALSE(HasResult());
    EXPECT_THAT(Report(), AllOf(HasSubstr("not removed"), testing::Not(HasSubstr("\nremoved"))));
}

TEST_F(RemoveProgram, SaysWhatCouldNotBeTakenAwayAndRemovesTheRest) {
    Install("a.txt\r\nLocked\\b.txt\r\n", {"a.txt", "Locked/b.txt"});
    WriteRequest("X1");
    fs::permissions(Quarra("X1/Locked"), fs::perms::owner_read | fs::perms::owner_exec);
    const ProgramEnd end = RunUnprivileged(Quarra("Enviro/KT4-RemoveProgram.exe"));
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_THAT(end.errors, HasSubstr("Locked\\b.txt"));
    EXPECT_FALSE(HasResult());
    EXPECT_FALSE(fs::exists(Quarra("X1/a.txt")));
    EXPECT_TRUE(fs::exists(Quarra("X1/Locked/b.txt")));
    EXPECT_TRUE(fs::exists(Quarra("X1/Install.log")));
}

TEST_F(RemoveProgram, ReplacesLinksWhereItsOwnFilesGo) {
    Write(Outside("precious.txt"), "precious");
    fs::create_symlink(Outside("precious.txt"), Quarra("Enviro/ResultOK.txt"));
    fs::create_symlink(Outside("precious.txt"), Quarra("Enviro/RemoveProgram.log"));
    EXPECT_EQ(Remove("Tobr43").exitCode, 0);
    EXPECT_EQ(Read(Outside("precious.txt")), "precious");
    EXPECT_FALSE(fs::is_symlink(Quarra("Enviro/ResultOK.txt")));
}

TEST_F(RemoveProgram, TakesNoArguments) {
    WriteRequest("Tobr43");
    EXPECT_EQ(Run(Quarra("Enviro/KT4-RemoveProgram.exe"), {"Tobr43"}).exitCode, 2);
    EXPECT_TRUE(fs::exists(Quarra("Tobr43/Tobr43.exe")));
}

} // namespace
} // namespace suite::test
