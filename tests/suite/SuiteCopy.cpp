#include "tests/suite/SuiteCopy.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace suite::test {

namespace fs = std::filesystem;

SuiteCopy::SuiteCopy() {
    std::string pattern = (fs::temp_directory_path() / "suite-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder " + pattern);
    folder_ = pattern;
    unsetenv("ARVON_INSTALLATION"); // the copy's programs find it by themselves
    unsetenv("ARVON_CODE_PAGE");
    fs::copy(KVTM_SUITE_FOLDER, Installation(),
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

SuiteCopy::~SuiteCopy() {
    std::error_code ignored;
    // a test may have taken the right to write away
    for (fs::recursive_directory_iterator entry(folder_, ignored), end; entry != end;
         entry.increment(ignored)) {
        if (entry->is_directory() && !entry->is_symlink())
            fs::permissions(*entry, fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(folder_, ignored);
}

fs::path SuiteCopy::Quarra(const fs::path& below) const {
    return Installation() / "drive_c/QUARRA" / below;
}

std::string SuiteCopy::Read(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + file.string());
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

void SuiteCopy::Write(const fs::path& file, const std::string& content) {
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    if (!(stream << content << std::flush)) throw std::runtime_error("cannot write " + file.string());
}

ProgramEnd SuiteCopy::Run(const fs::path& program, const std::vector<std::string>& arguments) const {
    const fs::path output = Outside("output.txt");
    const fs::path errors = Outside("errors.txt");
    const int exitCode = WaitFor(Start(program, arguments, output, errors));
    return {exitCode, Read(output), Read(errors)};
}

ProgramEnd SuiteCopy::RunUnprivileged(const fs::path& program) const {
    if (geteuid() != 0) return Run(program);
    constexpr uid_t Nobody = 65534;
    const auto giveAway = [](const fs::path& path) {
        if (lchown(path.c_str(), Nobody, Nobody) != 0)
            throw std::runtime_error("cannot give away " + path.string());
    };
    giveAway(folder_);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder_))
        giveAway(entry.path());
    return Run("/usr/bin/setpriv",
               {"--reuid=65534", "--regid=65534", "--clear-groups", "--inh-caps=-all", program.string()});
}

int SuiteCopy::Start(const fs::path& program, const std::vector<std::string>& arguments,
                     const fs::path& outputFile, const fs::path& errorFile) {
    std::string path = program.string();
    std::vector<std::string> words = arguments;
    std::vector<char*> argv{path.data()};
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int Flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 1, outputFile.c_str(), Flags, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errorFile.c_str(), Flags, 0600);
    pid_t processId = 0;
    const int result = posix_spawn(&processId, path.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (result != 0) throw std::runtime_error("cannot start " + path);
    return processId;
}

int SuiteCopy::WaitFor(int processId) {
    int status = 0;
    if (waitpid(processId, &status, 0) != processId) throw std::runtime_error("cannot wait for a program");
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace suite::test
