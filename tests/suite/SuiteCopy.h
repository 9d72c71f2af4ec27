#pragma once

#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace suite::test {

/// How a program ended, and what it wrote.
struct ProgramEnd {
    int exitCode = -1; // 128 and the signal's number for one that a signal ended
    std::string output;
    std::string errors;
};

/// Tests on a copy of the sample installation, which goes with the test.
class SuiteCopy : public testing::Test {
protected:
    SuiteCopy();

    /// Below drive_c/QUARRA of the copy.
    std::filesystem::path Quarra(const std::filesystem::path& below = {}) const;
    std::filesystem::path Installation() const { return folder_ / "suite"; }
    /// Beside the installation: for what no program may reach.
    std::filesystem::path Outside(const std::filesystem::path& below = {}) const {
        return folder_.Path() / below;
    }

    static std::string Read(const std::filesystem::path& file) { return ReadWholeFile(file); }
    /// Makes the folders that are missing, too.
    static void Write(const std::filesystem::path& file, const std::string& content) {
        WriteWholeFile(file, content);
    }

    /// Starts a program and waits for its end.
    ProgramEnd Run(const std::filesystem::path& program,
                   const std::vector<std::string>& arguments = {}) const;
    /// The same, without the superuser's rights: nothing is protected from the superuser.
    ProgramEnd RunUnprivileged(const std::filesystem::path& program) const;
    /// Starts a program and returns its process id; the test has to wait for it.
    static int Start(const std::filesystem::path& program, const std::vector<std::string>& arguments = {},
                     const std::filesystem::path& outputFile = "/dev/null",
                     const std::filesystem::path& errorFile = "/dev/null");
    static int WaitFor(int processId);

private:
    // the copy's programs find it by themselves
    TestVariable noInstallation_{"ARVON_INSTALLATION", nullptr}, noCodePage_{"ARVON_CODE_PAGE", nullptr};
    WithoutDisplay withoutDisplay_;
    TestFolder folder_;
};

} // namespace suite::test
