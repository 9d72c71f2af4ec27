#include "platform/Processes.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "platform/CommandLine.h"
#include "platform/FilePaths.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t LongestCommandLine = 32767; // bytes, as the real process starter

bool IsProgram(const fs::path& file) {
    std::error_code ignored;
    return fs::is_regular_file(file, ignored) && ::faccessat(AT_FDCWD, file.c_str(), X_OK, AT_EACCESS) == 0;
}

/// What a child starts with: no blocked signals, and SIGPIPE as a fresh program expects it, whatever the host
/// does with them.
class StartAttributes {
public:
    StartAttributes() {
        ::posix_spawnattr_init(&attributes_);
        sigset_t none, defaults;
        ::sigemptyset(&none);
        ::sigemptyset(&defaults);
        ::sigaddset(&defaults, SIGPIPE);
        ::posix_spawnattr_setsigmask(&attributes_, &none);
        ::posix_spawnattr_setsigdefault(&attributes_, &defaults);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~StartAttributes() { ::posix_spawnattr_destroy(&attributes_); }
    StartAttributes(const StartAttributes&) = delete;
    StartAttributes& operator=(const StartAttributes&) = delete;
    const posix_spawnattr_t* Get() const noexcept { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

class ChildProcesses final : public Processes {
public:
    explicit ChildProcesses(const FilePaths& paths) : paths_(paths) {}

    Handle Start(std::string_view commandLine) override {
        ReapClosed();
        if (commandLine.size() > LongestCommandLine) return 0;
        for (const ProgramReading& reading : ProgramReadings(commandLine))
            if (const auto program = FindProgram(reading.program)) return Spawn(*program, reading.arguments);
        return 0;
    }

    void Wait(Handle handle) override {
        const auto own = std::find(running_.begin(), running_.end(), handle);
        if (handle <= 0) return;
        int status = 0;
        while (::waitpid(static_cast<pid_t>(handle), &status, 0) < 0 && errno == EINTR) {
        }
        if (own != running_.end()) running_.erase(own);
    }

    void Close(Handle handle) override {
        const auto own = std::find(running_.begin(), running_.end(), handle);
        if (own == running_.end()) return; // waited for: the number may mean another child by now
        running_.erase(own);
        closed_.push_back(handle);
        ReapClosed();
    }

private:
    /// The file of a program as it is written, without a period at its end, or with ".exe"; a bare name also
    /// along PATH.
    std::optional<fs::path> FindProgram(std::string_view piece) const {
        for (const std::string& name :
             {std::string(piece), std::string(WithoutDroppedEnd(piece)), WithProgramExtension(piece)}) {
            if (name.empty()) continue;
            if (auto found = ProgramAt(name)) return found;
            if (name.find_first_of("\\/:") != std::string::npos) continue;
            const char* path = std::getenv("PATH");
            for (const std::string& folder : base::Split(path == nullptr ? "" : path, ':'))
                if (!folder.empty() && IsProgram(fs::path(folder) / name)) return fs::path(folder) / name;
        }
        return std::nullopt;
    }

    std::optional<fs::path> ProgramAt(const std::string& name) const {
        try {
            fs::path file = paths_.ToSystem(name);
            if (IsProgram(file)) return file;
        } catch (const base::ComponentError&) { // a drive that the installation does not have
        }
        return std::nullopt;
    }

    Handle Spawn(const fs::path& program, std::string_view argumentText) {
        std::vector<std::string> words = SplitArguments(argumentText);
        words.insert(words.begin(), program.native());
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        pid_t child = 0;
        const StartAttributes attributes;
        if (::posix_spawn(&child, program.c_str(), nullptr, attributes.Get(), arguments.data(), environ) != 0)
            return 0;
        running_.push_back(child);
        return child;
    }

    /// Children whose handle was closed while they ran leave no dead entry behind for good.
    void ReapClosed() {
        std::erase_if(closed_, [](Handle handle) {
            int status = 0;
            return ::waitpid(static_cast<pid_t>(handle), &status, WNOHANG) != 0;
        });
    }

    const FilePaths& paths_;
    std::vector<Handle> running_; // started, neither waited for nor closed
    std::vector<Handle> closed_;  // closed before they ended
};

} // namespace

std::unique_ptr<Processes> Processes::Create(const FilePaths& paths) {
    return std::make_unique<ChildProcesses>(paths);
}

} // namespace platform
