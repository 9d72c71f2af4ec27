#pragma once

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// The files that a program has for standard streams.
struct StandardFiles {
    std::filesystem::path input = "/dev/null";
    std::filesystem::path output = "/dev/null";
    std::filesystem::path errors = "/dev/null";
};

/// Starts a program, the first of the words, and answers its process id; somebody has to wait for it.
inline pid_t StartProgram(std::vector<std::string> words, const StandardFiles& files = {}) {
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    constexpr int Writing = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, files.input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, files.output.c_str(), Writing, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, files.errors.c_str(), Writing, 0600);
    pid_t process = 0;
    const int failure = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error("cannot start " + words.front());
    return process;
}

/// Waits for a program's end; its exit code, or 128 and the signal's number for one that a signal ended.
inline int WaitForEnd(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) throw std::runtime_error("cannot wait for a program");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
