#include "base/ComponentError.h"
#include "platform/CodePage.h"
#include "suite/programs/removal/InstallLog.h"
#include "suite/programs/removal/Lines.h"
#include "suite/programs/removal/RemovalRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace suite {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const platform::CodePage& Ansi() {
    static const auto codePage = platform::CodePage::Create();
    return *codePage;
}

/// The description of the error that a call raises; empty when it raises none.
template <class Call> std::string ErrorOf(Call call) {
    try {
        call();
    } catch (const base::ComponentError& error) {
        return error.Description();
    }
    return {};
}

RemovalRequest Request(const std::string& bytes) {
    return ParseRemovalRequest(bytes, Ansi());
}

std::string RequestFor(const std::string& vrex) {
    return "[Program]\r\nVREX=" + vrex + "\r\nName=Demo\r\nLogfile=C:\\QUARRA\\" + vrex + "\\Install.log\r\n";
}

TEST(RemovalRequest, IsReadFromFourLines) {
    const RemovalRequest request = Request(RequestFor("X1"));
    EXPECT_EQ(request.vrex, "X1");
    EXPECT_EQ(request.name, "Demo");
    EXPECT_EQ(request.logFile, "C:\\QUARRA\\X1\\Install.log");
}

TEST(RemovalRequest, MayEndItsLinesWithLfAndLackTheLastEnd) {
    const RemovalRequest request = Request("[Program]\nVREX=X1\nName=\nLogfile=l");
    EXPECT_EQ(request.vrex, "X1");
    EXPECT_EQ(request.name, "");
    EXPECT_EQ(request.logFile, "l");
}

TEST(RemovalRequest, IsAnsi) {
    const RemovalRequest request =
        Request("[Program]\r\nVREX=\xDCml1\r\nName=W\xE4rme = \x80\r\nLogfile=C:\\\xE4\r\n");
    EXPECT_EQ(request.vrex, "Üml1");
    EXPECT_EQ(request.name, "Wärme = €");
    EXPECT_EQ(request.logFile, "C:\\ä");
}

TEST(RemovalRequest, OfAnotherShapeIsRefused) {
    for (const std::string text : {"", "\r\n", "[Program]", "[Program]\r\nVREX=X1\r\nName=Demo\r\n",
                                   "[Program]\r\nVREX=X1\r\nName=Demo\r\nLogfile=l\r\nVREX=X2\r\n",
                                   "[program]\r\nVREX=X1\r\nName=Demo\r\nLogfile=l\r\n",
                                   "[Program]\r\nvrex=X1\r\nName=Demo\r\nLogfile=l\r\n",
                                   "[Program]\r\nName=Demo\r\nVREX=X1\r\nLogfile=l\r\n",
                                   "[Program]\r\nVREX X1\r\nName=Demo\r\nLogfile=l\r\n",
                                   "[Program]\r\n\r\nVREX=X1\r\nName=Demo\r\nLogfile=l\r\n",
                                   " [Program]\r\nVREX=X1\r\nName=Demo\r\nLogfile=l\r\n"}) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_THAT(ErrorOf([&] { Request(text); }), HasSubstr("Remove.ini: "));
    }
}

TEST(RemovalRequest, WithAVrexThatIsNoFolderNameIsRefused) {
    for (const std::string vrex : {"", ".", "..", "a\\b", "a/b", "..\\Enviro", "C:", "C:\\QUARRA\\X1", "*",
                                   "X?", "X1 ", "X1.", "a\tb", "a|b"}) {
        SCOPED_TRACE(vrex);
        EXPECT_THAT(ErrorOf([&] { Request(RequestFor(vrex)); }), HasSubstr("is not the name of one folder"));
    }
    EXPECT_THAT(ErrorOf([] { Request(std::string("[Program]\nVREX=a\0b\nName=\nLogfile=l", 34)); }),
                HasSubstr("is not the name of one folder"));
}

TEST(RemovalRequest, ForAFolderThatAllProgramsShareIsRefused) {
    for (const std::string vrex : {"Enviro", "Arvon", "ARVON", "packages"}) {
        SCOPED_TRACE(vrex);
        EXPECT_THAT(ErrorOf([&] { Request(RequestFor(vrex)); }), HasSubstr("all programs share"));
    }
}

const ProgramPlace Place{'C', "Tobr43"};

TEST(ProgramPath, MayBeRelativeOrWhole) {
    EXPECT_THAT(ParseProgramPath("Tobr43.exe", Place), ElementsAre("Tobr43.exe"));
    EXPECT_THAT(ParseProgramPath("Sheets\\A3 landscape.qst", Place),
                ElementsAre("Sheets", "A3 landscape.qst"));
    EXPECT_THAT(ParseProgramPath("Sheets/A3.qst", Place), ElementsAre("Sheets", "A3.qst"));
    EXPECT_THAT(ParseProgramPath("C:\\QUARRA\\Tobr43\\Sheets\\A3.qst", Place),
                ElementsAre("Sheets", "A3.qst"));
    EXPECT_THAT(ParseProgramPath("c:/quarra/TOBR43/x", Place), ElementsAre("x"));
    EXPECT_THAT(ParseProgramPath("Sheets\\", Place), ElementsAre("Sheets"));
    EXPECT_THAT(ParseProgramPath("...x", Place), ElementsAre("...x"));
}

TEST(ProgramPath, OfTheProgramsFolderItselfIsEmpty) {
    EXPECT_THAT(ParseProgramPath("", Place), IsEmpty());
    EXPECT_THAT(ParseProgramPath("C:\\QUARRA\\Tobr43", Place), IsEmpty());
    EXPECT_THAT(ParseProgramPath("C:\\QUARRA\\Tobr43\\", Place), IsEmpty());
}

TEST(ProgramPath, ThatLeadsOutOfTheFolderIsRefused) {
    for (const std::string path : {"..",
                                   "..\\Tobr44\\x",
                                   "a\\..\\..\\x",
                                   "a\\..\\b",
                                   ".",
                                   "a\\.\\b",
                                   "\\Windows\\x",
                                   "/etc/passwd",
                                   "\\\\server\\share\\x",
                                   "C:",
                                   "C:x",
                                   "C:\\",
                                   "C:\\QUARRA",
                                   "C:\\QUARRA\\Tobr44\\x",
                                   "C:\\QUARRA\\Tobr43x\\y",
                                   "C:\\QUARRA\\Tobr43\\..\\Enviro\\x",
                                   "C:\\QUARRA\\Tobr43..\\x",
                                   "C:\\QUARRA\\\\Tobr43\\x",
                                   "D:\\QUARRA\\Tobr43\\x",
                                   "C:\\Windows\\x",
                                   "a\\\\b",
                                   "a\\C:\\b",
                                   "file:stream",
                                   "a*",
                                   "a?b",
                                   "\"a\"",
                                   "a\\ \\b",
                                   "a\\b.",
                                   "a\tb",
                                   "\\",
                                   "C:\\QUARRA\\Tobr43\\\\",
                                   "\x7F"}) {
        SCOPED_TRACE(path);
        EXPECT_THAT(ErrorOf([&] { ParseProgramPath(path, Place); }), HasSubstr("is refused: "));
    }
}

TEST(InstallLog, NamesOnePathALine) {
    EXPECT_THAT(ParseInstallLog("a.exe\r\nb\\c.txt\n\r\n\nC:\\QUARRA\\Tobr43\nd", Ansi(), Place),
                ElementsAre(ElementsAre("a.exe"), ElementsAre("b", "c.txt"), ElementsAre("d")));
    EXPECT_THAT(ParseInstallLog("", Ansi(), Place), IsEmpty());
}

TEST(InstallLog, IsUtf8OrAnsi) {
    EXPECT_THAT(ParseInstallLog("Wärme – €.txt\r\n", Ansi(), Place),
                ElementsAre(ElementsAre("Wärme – €.txt")));
    EXPECT_THAT(ParseInstallLog("\xEF\xBB\xBFWärme.txt\r\n", Ansi(), Place),
                ElementsAre(ElementsAre("Wärme.txt")));
    EXPECT_THAT(ParseInstallLog("W\xE4rme \x96 \x80.txt\r\n", Ansi(), Place),
                ElementsAre(ElementsAre("Wärme – €.txt")));
}

TEST(InstallLog, NamesTheLineThatItRefuses) {
    EXPECT_THAT(ErrorOf([] { ParseInstallLog("a\r\n\r\n..\\b\r\n", Ansi(), Place); }),
                testing::AllOf(HasSubstr("install log, line 3: "), HasSubstr("..\\b")));
}

TEST(Lines, MayEndWithCrLfOrLf) {
    EXPECT_THAT(SplitLines("a\r\nb\nc"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(SplitLines("a\n\n"), ElementsAre("a", ""));
    EXPECT_THAT(SplitLines("a\rb\n"), ElementsAre("a\rb"));
    EXPECT_THAT(SplitLines(""), IsEmpty());
}

} // namespace
} // namespace suite
