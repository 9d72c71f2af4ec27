// Which record a started program belongs to.

#include "tests/host/HostFixture.h"

#include <chrono>
#include <filesystem>

namespace arvon::host::test {
namespace {

using namespace std::chrono_literals;

class ProgramsOfRecords : public HostTest {
protected:
    static constexpr const char* program = "C:\\QUARRA\\Ender.exe";

    ProgramsOfRecords() {
        std::filesystem::copy_file(ENDER_PROGRAM, installation.File("Ender.exe"));
        OpenWith({{.name = "First", .vrex = "Tobr1", .path = program, .commandLine = "exit 0"},
                  {.name = "Second", .vrex = "Tobr2", .path = program, .commandLine = "exit 0"},
                  {.name = "Blanks", .vrex = "Tobr3", .path = program, .commandLine = "  exit 3 "},
                  {.name = "Plain", .vrex = "Tobr4", .path = program},
                  {.name = "None", .vrex = "Tobr5"}});
    }
    /// "name vrex" of the record that the program of this command line is taken for.
    std::string OwnerOf(const std::string& commandLine) {
        EXPECT_GT(Framework().StartProcess(commandLine, "caller"), 0);
        const model::Process process = Model().Processes().back();
        EXPECT_TRUE(Host().WaitForProcesses(30s));
        return process.name + " " + process.vrex;
    }
    static std::string With(const std::string& arguments) { return std::string(program) + " " + arguments; }
};

TEST_F(ProgramsOfRecords, AreOfTheRecordThatHasTheirCommandLine) {
    EXPECT_EQ(OwnerOf(program), "Plain Tobr4");
    EXPECT_EQ(OwnerOf(With("exit 3")), "Blanks Tobr3");
    EXPECT_EQ(OwnerOf(With("exit 0")), "First Tobr1");
}

TEST_F(ProgramsOfRecords, AreOfTheOneAskedForLastAmongSeveral) {
    Framework().Tools().Item("Second");
    EXPECT_EQ(OwnerOf(With("exit 0")), "Second Tobr2");
    EXPECT_EQ(OwnerOf(With("exit 3")), "Blanks Tobr3"); // whichever was asked for
    Framework().Tools().Item("First");
    EXPECT_EQ(OwnerOf(With("exit 0")), "First Tobr1");
    Framework().Tools().Item("Second");
    Framework().Tools().Item("nobody");
    EXPECT_EQ(OwnerOf(With("exit 0")), "First Tobr1");
}

TEST_F(ProgramsOfRecords, AreNobodysWithAnotherCommandLine) {
    Framework().Tools().Item("Plain");
    EXPECT_EQ(OwnerOf(With("exit 1")), " ");
    EXPECT_EQ(OwnerOf(With("exit 0 exit 0")), " ");
}

TEST_F(ProgramsOfRecords, AreOfTheCatalogueAsItIsByThen) {
    Framework().Tools().Item("First");
    installation.WriteTools({{.name = "Renamed", .vrex = "Tobr1", .path = program, .commandLine = "exit 0"}});
    Framework().Tools().Reload();
    EXPECT_EQ(OwnerOf(With("exit 0")), "Renamed Tobr1");
    Framework().Tools().Item("Renamed")->Set("Name", base::Value("Again"));
    EXPECT_EQ(OwnerOf(With("exit 0")), "Again Tobr1");
}

} // namespace
} // namespace arvon::host::test
