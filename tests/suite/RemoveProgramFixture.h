#pragma once

#include "tests/suite/SuiteCopy.h"

#include <gmock/gmock.h>
#include <map>

namespace suite::test {

/// Runs the suite's removal program on a copy of the suite.
class RemoveProgram : public SuiteCopy {
protected:
    void WriteRequest(const std::string& vrex, const std::string& name = "Demo") {
        Write(Quarra("Enviro/Remove.ini"), "[Program]\r\nVREX=" + vrex + "\r\nName=" + name +
                                               "\r\nLogfile=C:\\QUARRA\\" + vrex + "\\Install.log\r\n");
    }
    ProgramEnd Remove() { return Run(Quarra("Enviro/KT4-RemoveProgram.exe")); }
    ProgramEnd Remove(const std::string& vrex) {
        WriteRequest(vrex);
        return Remove();
    }

    /// A program X1 with this install log, and files with the given places below its folder.
    void Install(const std::string& log, const std::vector<std::string>& files) {
        for (const std::string& file : files)
            Write(Quarra("X1") / file, "content of " + file);
        Write(Quarra("X1/Install.log"), log);
    }

    bool HasResult() const { return std::filesystem::exists(Quarra("Enviro/ResultOK.txt")); }
    std::string Report() { return Read(Quarra("Enviro/RemoveProgram.log")); }

    /// Every path below the copy's temporary folder, with the content of files and the target of links: all
    /// but what the removal program and the test itself write.
    std::map<std::string, std::string> Snapshot() {
        std::map<std::string, std::string> found;
        for (const std::filesystem::directory_entry& entry :
             std::filesystem::recursive_directory_iterator(Outside())) {
            const std::string path = std::filesystem::relative(entry.path(), Outside()).string();
            if (path == "output.txt" || path == "errors.txt" || path.ends_with("/Enviro/RemoveProgram.log"))
                continue;
            if (entry.is_symlink())
                found[path] = "-> " + std::filesystem::read_symlink(entry.path()).string();
            else if (entry.is_regular_file())
                found[path] = Read(entry.path());
            else
                found[path] = "folder";
        }
        return found;
    }

    /// The removal is refused with this reason, and nothing at all is taken away or changed.
    void ExpectRefused(const std::string& reason) {
        const auto before = Snapshot();
        const ProgramEnd end = Remove();
        EXPECT_EQ(end.exitCode, 1);
        EXPECT_THAT(end.errors,
                    testing::AllOf(testing::HasSubstr("KT4-RemoveProgram: "), testing::HasSubstr(reason)));
        EXPECT_THAT(Report(),
                    testing::AllOf(testing::HasSubstr("not removed: "), testing::HasSubstr(reason)));
        EXPECT_FALSE(HasResult());
        EXPECT_EQ(Snapshot(), before);
    }
};

} // namespace suite::test
