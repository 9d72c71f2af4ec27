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
        OpenWith({{.name = "First", .vrex = "Tobr1"}, {.name = "Second", .vrex = "Tobr2"}});
    }
    /// "name vrex" of the record that a started program is told and listed with.
    std::string OwnerOf(const std::shared_ptr<IToolRecord>& record) {
        EXPECT_GT(Framework().StartProcess(std::string(program) + " exit 0", "caller", record), 0);
        const model::Process process = Model().Processes().back();
        EXPECT_TRUE(Host().WaitForProcesses(30s));
        return process.name + " " + process.vrex;
    }
};

TEST_F(ProgramsOfRecords, AreOfTheRecordThatTheyWereStartedFor) {
    EXPECT_EQ(OwnerOf(Framework().Tools().Item("Second")), "Second Tobr2");
    EXPECT_EQ(OwnerOf(Framework().Tools().Item("First")), "First Tobr1");
    EXPECT_EQ(OwnerOf(nullptr), " ");
}

TEST_F(ProgramsOfRecords, AreOfTheRecordAsItIsByThen) {
    const std::shared_ptr<IToolRecord> record = Framework().Tools().Item("First");
    record->Set("Name", base::Value("Renamed"));
    EXPECT_EQ(OwnerOf(record), "Renamed Tobr1");
}

} // namespace
} // namespace arvon::host::test
