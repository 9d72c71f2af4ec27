#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace platform {

/// The system calls under Files, one member each, with the calls' own results and errno. A test derives from
/// it to make a chosen call fail, or to end the process in the middle.
class FileCalls {
public:
    virtual ~FileCalls() = default;
    virtual int Open(const char* path, int flags, mode_t mode);
    virtual int Stat(const char* path, struct stat& status);
    virtual int StatOpen(int file, struct stat& status);
    virtual int CheckWritable(const char* path);
    virtual ssize_t ReadLink(const char* path, char* target, std::size_t size);
    virtual ssize_t Read(int file, char* data, std::size_t size);
    virtual ssize_t Write(int file, const char* data, std::size_t size);
    virtual int Truncate(int file, off_t size);
    virtual int ChangeOwner(int file, uid_t owner, gid_t group);
    virtual int ChangeMode(int file, mode_t mode);
    virtual int StartFlush(int file); // lets the disk begin; the wait is Flush's
    virtual int Flush(int file);
    virtual int Close(int file);
    virtual int Rename(const char* from, const char* to);
    virtual int Unlink(const char* path);
};

/// Files over other calls than the system's. `calls` must outlive the result.
std::unique_ptr<Files> CreateFilesWith(FileCalls& calls);

} // namespace platform
