#pragma once

#include "platform/linux/FileCalls.h"

#include <cerrno>
#include <filesystem>
#include <map>
#include <string>
#include <unistd.h>

namespace kvtm::test {

/// File calls over a disk that harms one of them: it fails, or the machine goes down before or after it. With
/// the machine goes whatever was written and not flushed.
class FaultyDisk final : public platform::FileCalls {
public:
    enum class Fault { Fail, DownBefore, DownAfter };
    static constexpr int ExitStatus = 77; // of a process that went down

    FaultyDisk(Fault fault, int chosenCall) : fault_(fault), chosenCall_(chosenCall) {}

    /// The harmed call; empty when there were not so many.
    const std::string& Harmed() const { return harmed_; }

    int Open(const char* path, int flags, mode_t mode) override {
        return Do("open", [&] { return FileCalls::Open(path, flags, mode); });
    }
    int Stat(const char* path, struct stat& status) override {
        return Do("stat", [&] { return FileCalls::Stat(path, status); });
    }
    int StatOpen(int file, struct stat& status) override {
        return Do("fstat", [&] { return FileCalls::StatOpen(file, status); });
    }
    int CheckWritable(const char* path) override {
        return Do("access", [&] { return FileCalls::CheckWritable(path); });
    }
    ssize_t ReadLink(const char* path, char* target, std::size_t size) override {
        return Do("readlink", [&] { return FileCalls::ReadLink(path, target, size); });
    }
    ssize_t Read(int file, char* data, std::size_t size) override {
        return Do("read", [&] { return FileCalls::Read(file, data, size); });
    }
    ssize_t Write(int file, const char* data, std::size_t size) override {
        return Do("write", [&] {
            unflushed_[file] = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file));
            return FileCalls::Write(file, data, size);
        });
    }
    int Truncate(int file, off_t size) override {
        return Do("truncate", [&] { return FileCalls::Truncate(file, size); });
    }
    int ChangeOwner(int file, uid_t owner, gid_t group) override {
        return Do("chown", [&] { return FileCalls::ChangeOwner(file, owner, group); });
    }
    int ChangeMode(int file, mode_t mode) override {
        return Do("chmod", [&] { return FileCalls::ChangeMode(file, mode); });
    }
    int Flush(int file) override {
        return Do("fsync", [&] {
            unflushed_.erase(file);
            return FileCalls::Flush(file);
        });
    }
    int Close(int file) override {
        const int result = FileCalls::Close(file); // a close that fails has closed all the same
        return Do("close", [&] { return result; });
    }
    int Rename(const char* from, const char* to) override {
        return Do("rename", [&] {
            for (auto& [file, path] : unflushed_) {
                if (path == from) path = to;
            }
            return FileCalls::Rename(from, to);
        });
    }
    int Unlink(const char* path) override {
        return Do("unlink", [&] { return FileCalls::Unlink(path); });
    }

private:
    template <class Call> auto Do(const char* name, Call&& call) -> decltype(call()) {
        if (++calls_ != chosenCall_) return call();
        harmed_ = name;
        if (fault_ == Fault::DownBefore) GoDown();
        if (fault_ == Fault::DownAfter) {
            call();
            GoDown();
        }
        errno = EIO;
        return -1;
    }

    [[noreturn]] void GoDown() {
        for (const auto& [file, path] : unflushed_) {
            if (std::filesystem::exists(path)) std::filesystem::resize_file(path, 0);
        }
        ::_exit(ExitStatus);
    }

    const Fault fault_;
    const int chosenCall_;
    int calls_ = 0;
    std::string harmed_;
    std::map<int, std::filesystem::path> unflushed_; // by the descriptor that they were written through
};

} // namespace kvtm::test
