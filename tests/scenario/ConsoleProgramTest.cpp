#include "tests/scenario/ConsoleRun.h"

#include "tests/support/TestProgram.h"

#include <algorithm>
#include <cstdlib>

namespace fs = std::filesystem;

namespace scenario {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// The program around the commands: what it is started with, how it ends and what it leaves behind.
class ConsoleProgram : public Scenario {
protected:
    static void ExpectRefused(const Transcript& run, const char* reason) {
        EXPECT_EQ(run.ExitStatus(), 2);
        EXPECT_THAT(run.Output(), IsEmpty());
        EXPECT_THAT(run.StandardError(), StartsWith("arvon-console: "));
        EXPECT_THAT(run.StandardError(), HasSubstr(reason));
        EXPECT_EQ(std::count(run.StandardError().begin(), run.StandardError().end(), '\n'), 1);
    }

    static constexpr const char* WriteSheet =
        "load\nrequest SetOptionValue ToolID=Tobr43 OptionName=cmbSheet OptionValue=A0\n";

    /// Runs a script on this test's suite, started by a shell that changes the streams so.
    Transcript RunWithStreams(std::string_view script, const std::string& streams) const {
        folder.Write("script.arvon", script);
        const std::vector<std::string> words{"/bin/sh", "-c",      "exec \"$@\" " + streams,
                                             "sh",      Console(), "--json",
                                             "--suite", suite,     folder / "script.arvon"};
        const int status = WaitForEnd(StartProgram(words, {"/dev/null", folder / "out", folder / "err"}));
        return {status, folder.Read("out"), folder.Read("err")};
    }
};

TEST_F(ConsoleProgram, EndsWith0WhenEveryCommandWasCarriedOut) {
    const Transcript run = Run("load\n# nothing\n\nunload\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Errors(), IsEmpty());
    EXPECT_THAT(run.StandardError(), IsEmpty());
}

TEST_F(ConsoleProgram, EndsWith1WhenACommandWasNotAndCarriesOutTheRest) {
    const Transcript run = Run("dance\nload\n");
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Errors(), ElementsAre(StartsWith("unknown command \"dance\"")));
    EXPECT_THAT(run.Replies(), ElementsAre("True"));
}

TEST_F(ConsoleProgram, RefusesABadCommandLine) {
    ExpectRefused(RunConsole({"--colour"}), "--colour");
    ExpectRefused(RunConsole({"--suite"}), "--suite");
    ExpectRefused(RunConsole({"--suite", suite, "one", "two"}), "two");
}

TEST_F(ConsoleProgram, RefusesASuiteThatIsNone) {
    ExpectRefused(RunConsole({"--suite", folder / "missing"}), "missing");
    ExpectRefused(RunConsole({"--suite", folder.Path()}), "drive_c");
    fs::remove(File("registry.reg"));
    ExpectRefused(RunConsole({"--suite", suite}), "registry.reg");
}

TEST_F(ConsoleProgram, RefusesAScriptThatCannotBeRead) {
    ExpectRefused(RunConsole({"--suite", suite, folder / "missing.arvon"}), "missing.arvon");
    ExpectRefused(RunConsole({"--suite", suite, folder.Path()}), "is a folder");
}

TEST_F(ConsoleProgram, RefusesToRunWithoutAnySuite) {
    const TestVariable sample("ARVON_SAMPLE_SUITE", (folder / "missing").c_str());
    ExpectRefused(RunConsole({}), "no sample suite");
}

TEST_F(ConsoleProgram, WorksOnACopyOfTheSampleSuiteThatGoesWithIt) {
    const fs::path temporary = folder / "temporary";
    fs::create_directory(temporary);
    const TestVariable temporaryPlace("TMPDIR", temporary.c_str());
    const TestVariable sample("ARVON_SAMPLE_SUITE", suite.c_str());
    const std::string before = Read("drive_c/QUARRA/Arvon/OPTIONS.XML");
    const Transcript run = RunConsole(
        {"--json"}, "load\nrequest SetOptionValue ToolID=Tobr43 OptionName=cmbSheet OptionValue=A0\n"
                    "request GetOptionValue ToolID=Tobr43 OptionName=cmbSheet\n");
    EXPECT_EQ(run.Replies().back(), "A0");
    EXPECT_EQ(Read("drive_c/QUARRA/Arvon/OPTIONS.XML"), before);
    EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(ConsoleProgram, ChangesAGivenSuiteInPlace) {
    Run("load\nrequest SetOptionValue ToolID=Tobr43 OptionName=cmbSheet OptionValue=A0\n");
    EXPECT_THAT(Read("drive_c/QUARRA/Arvon/OPTIONS.XML"), HasSubstr("A0"));
}

TEST_F(ConsoleProgram, ReadsAScriptWithCrLfAndNoEndOfItsLastLine) {
    Write("script.arvon", "\xEF\xBB\xBFload\r\nrequest GetResourcePath\r\nshow listeners");
    const Transcript run = RunConsole({"--json", "--suite", suite, File("script.arvon")});
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Replies(), ElementsAre("True", R"(C:\QUARRA\Arvon\resources\1033)"));
    EXPECT_THAT(run.State("listeners"), testing::Contains("KvTM10"));
}

TEST_F(ConsoleProgram, ReadsItsScriptWhenStandardStreamsAreClosed) {
    const Transcript noInput = RunWithStreams("load\nrequest GetResourcePath\n", "<&-");
    EXPECT_EQ(noInput.ExitStatus(), 0);
    EXPECT_THAT(noInput.Replies(), ElementsAre("True", R"(C:\QUARRA\Arvon\resources\1033)"));

    const char* optionsFile = "drive_c/QUARRA/Arvon/OPTIONS.XML";
    const std::string before = Read(optionsFile);
    for (const char* closed : {">&-", "<&- >&-", "<&- >&- 2>&-"}) {
        Write(optionsFile, before);
        const Transcript run = RunWithStreams(WriteSheet, closed);
        EXPECT_EQ(run.ExitStatus(), 0) << closed;
        EXPECT_THAT(run.Output() + run.StandardError(), IsEmpty()) << closed;
        EXPECT_THAT(Read(optionsFile), HasSubstr("<Value>A0</Value>")) << closed;
        EXPECT_EQ(folder.Read("script.arvon"), WriteSheet) << closed;
    }
}

TEST_F(ConsoleProgram, EndsWith1WhenItsOutputIsLostAndCarriesOutTheCommands) {
    for (const char* streams : {">/dev/full", "--quiet >/dev/full"}) {
        const Transcript run = RunWithStreams(WriteSheet, streams);
        EXPECT_EQ(run.ExitStatus(), 1) << streams;
        EXPECT_EQ(run.StandardError(), "arvon-console: the output could not be written\n") << streams;
    }
    EXPECT_THAT(Read("drive_c/QUARRA/Arvon/OPTIONS.XML"), HasSubstr("<Value>A0</Value>"));
}

TEST_F(ConsoleProgram, EndsWith1WhenItCannotExplainItself) {
    const int status =
        WaitForEnd(StartProgram({Console(), "--help"}, {"/dev/null", "/dev/full", folder / "err"}));
    EXPECT_EQ(status, 1);
    EXPECT_EQ(folder.Read("err"), "arvon-console: the output could not be written\n");
}

TEST_F(ConsoleProgram, EndsWith1WhenWhatItWroteForAPersonIsLost) {
    folder.Write("in", "show tools\n");
    const int status =
        WaitForEnd(StartProgram({Console(), "--suite", suite}, {folder / "in", "/dev/full", folder / "err"}));
    EXPECT_EQ(status, 1);
}

TEST_F(ConsoleProgram, GoesOnAfterAQuoteThatIsNotClosed) {
    const Transcript run = Run("message 2 'abc\nload\nrequest \"Get");
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Errors(), ElementsAre(HasSubstr("single quote"), HasSubstr("double quote")));
    EXPECT_THAT(run.Replies(), ElementsAre("True"));
}

TEST_F(ConsoleProgram, TakesBytesThatNoTextHasAndStaysValidJson) {
    const Transcript run = Run(std::string_view("lo\0ad\nload\nmenu \xFF\xFE\n", 19));
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Replies(), ElementsAre("True"));
    EXPECT_THAT(run.Errors(), ElementsAre(StartsWith(std::string("unknown command \"lo\0ad\"", 23)),
                                          "no menu item \"\uFFFD\uFFFD\""));
    EXPECT_EQ(std::count(run.Output().begin(), run.Output().end(), '\n'),
              static_cast<std::ptrdiff_t>(run.Lines().size()));
}

TEST_F(ConsoleProgram, StopsAtQuit) {
    const Transcript run = Run("quit\nload\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Story(), ElementsAre("done quit"));
}

TEST_F(ConsoleProgram, LeavesOutNothingButCallsWhenQuiet) {
    const char* script = "load\nrequest SelectFixedTab\nmenu mnuToolsSortVersion\nshow list\nunload\n";
    const Transcript all = Run(script);
    const Transcript quiet = RunConsole({"--json", "--quiet", "--suite", suite}, script);
    std::vector<Json> expected = all.Lines();
    std::erase_if(expected, [](const Json& line) { return line.at("is") == "call"; });
    EXPECT_LT(expected.size(), all.Lines().size());
    EXPECT_EQ(quiet.Lines(), expected);
}

TEST_F(ConsoleProgram, WritesTheSameForAPersonWithoutEscapeCodes) {
    const Transcript run = RunConsole({"--suite", suite}, "load\nshow list\nmenu mnuX\n");
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Output(), HasSubstr("Beam & Frame"));
    EXPECT_THAT(run.Output(), HasSubstr("no menu item \"mnuX\""));
    EXPECT_EQ(run.Output().find('\x1B'), std::string::npos);
}

TEST_F(ConsoleProgram, GivesTheProfileToKvTM10WhichShowsPricesToTwoOfThem) {
    Write("drive_c/QUARRA/Arvon/OPTIONS.XML",
          "<Options><ToolOptions><Tool "
          "ID=\"Tobr43\"><Option><Name>chkShowPricing</Name><Value>ON</Value></Option>"
          "</Tool></ToolOptions></Options>");
    const auto prices = [&](const char* profile) {
        const Transcript run =
            RunConsole({"--json", "--profile", profile, "--suite", suite},
                       "load\nrequest GetOptionValue ToolID=Tobr43 OptionName=chkShowPricing\n");
        return run.Replies().back();
    };
    EXPECT_EQ(prices("3"), "ON");
    EXPECT_EQ(prices("5"), "ON");
    EXPECT_EQ(prices("4"), "OFF");
    EXPECT_EQ(prices("guest"), "OFF");
    EXPECT_EQ(prices(""), "OFF");
}

TEST_F(ConsoleProgram, ExplainsItself) {
    const Transcript run = RunConsole({"--help"});
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Output(), HasSubstr("--suite"));
    EXPECT_THAT(run.Output(), HasSubstr("task-permission"));
}

} // namespace scenario
