#include "console/TemporarySuite.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace arvon::console {

namespace fs = std::filesystem;

namespace {

constexpr int EndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

// For the signal handler, which can reach nothing else.
volatile int lifeline = -1; // closed: the watcher removes the folder
volatile pid_t watcher = -1;

[[noreturn]] void ThrowSystemError(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// Programs that still run in the folder may put something into it while it is removed: hence the attempts.
void Remove(const fs::path& folder) {
    for (int attempt = 0; attempt < 20; ++attempt) {
        std::error_code failure;
        fs::remove_all(folder, failure);
        if (!failure) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

[[noreturn]] void Watch(int readEnd, const fs::path& folder) {
    for (const int number : EndingSignals)
        std::signal(number, SIG_IGN);
    if (const int nothing = open("/dev/null", O_RDWR); nothing >= 0) { // whoever reads our output is not kept
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            dup2(nothing, standard);
    }
    char byte;
    while (read(readEnd, &byte, 1) < 0 && errno == EINTR) {
    }
    Remove(folder);
    _exit(0);
}

/// Only calls that a signal handler may make.
void LetGo() {
    if (lifeline < 0) return;
    close(lifeline);
    lifeline = -1;
    while (waitpid(watcher, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void RemoveAndEnd(int number) {
    LetGo();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

fs::path MakeFolder() {
    std::string name = fs::temp_directory_path() / "arvon-suite-XXXXXX";
    if (!mkdtemp(name.data())) ThrowSystemError(name.c_str());
    return name;
}

void StartWatcher(const fs::path& folder) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) ThrowSystemError("pipe");
    const pid_t child = fork();
    if (child < 0) ThrowSystemError("fork");
    if (child == 0) {
        close(ends[1]);
        Watch(ends[0], folder);
    }
    close(ends[0]);
    lifeline = ends[1];
    watcher = child;
    for (const int number : EndingSignals) {
        // what the starter has us ignore (nohup) stays ignored
        if (std::signal(number, &RemoveAndEnd) == SIG_IGN) std::signal(number, SIG_IGN);
    }
}

} // namespace

TemporarySuite::TemporarySuite(const fs::path& original) : folder_(MakeFolder()) {
    StartWatcher(folder_);
    try {
        fs::copy(original, folder_, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    } catch (...) {
        LetGo();
        throw;
    }
}

TemporarySuite::~TemporarySuite() {
    for (const int number : EndingSignals)
        std::signal(number, SIG_DFL);
    LetGo();
}

} // namespace arvon::console
