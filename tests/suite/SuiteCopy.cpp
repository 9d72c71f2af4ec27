#include "tests/suite/SuiteCopy.h"

#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestProgram.h"

namespace suite::test {

namespace fs = std::filesystem;

SuiteCopy::SuiteCopy() {
    fs::copy(KVTM_SUITE_FOLDER, Installation(),
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

fs::path SuiteCopy::Quarra(const fs::path& below) const {
    return Installation() / "drive_c/QUARRA" / below;
}

ProgramEnd SuiteCopy::Run(const fs::path& program, const std::vector<std::string>& arguments) const {
    const fs::path output = Outside("output.txt");
    const fs::path errors = Outside("errors.txt");
    const int exitCode = WaitFor(Start(program, arguments, output, errors));
    return {exitCode, Read(output), Read(errors)};
}

ProgramEnd SuiteCopy::RunUnprivileged(const fs::path& program) const {
    if (geteuid() != 0) return Run(program);
    HandOver(folder_.Path(), Nobody);
    return Run("/usr/bin/setpriv",
               {"--reuid=65534", "--regid=65534", "--clear-groups", "--inh-caps=-all", program.string()});
}

int SuiteCopy::Start(const fs::path& program, const std::vector<std::string>& arguments,
                     const fs::path& outputFile, const fs::path& errorFile) {
    std::vector<std::string> words{program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return StartProgram(std::move(words), {.output = outputFile, .errors = errorFile});
}

int SuiteCopy::WaitFor(int processId) {
    return WaitForEnd(processId);
}

} // namespace suite::test
