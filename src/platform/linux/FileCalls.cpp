#include "platform/linux/FileCalls.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

int FileCalls::Open(const char* path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}
int FileCalls::Stat(const char* path, struct stat& status) {
    return ::stat(path, &status);
}
int FileCalls::StatOpen(int file, struct stat& status) {
    return ::fstat(file, &status);
}
int FileCalls::CheckWritable(const char* path) {
    return ::faccessat(AT_FDCWD, path, W_OK, AT_EACCESS);
}
ssize_t FileCalls::ReadLink(const char* path, char* target, std::size_t size) {
    return ::readlink(path, target, size);
}
ssize_t FileCalls::Read(int file, char* data, std::size_t size) {
    return ::read(file, data, size);
}
ssize_t FileCalls::Write(int file, const char* data, std::size_t size) {
    return ::write(file, data, size);
}
int FileCalls::Truncate(int file, off_t size) {
    return ::ftruncate(file, size);
}
int FileCalls::ChangeOwner(int file, uid_t owner, gid_t group) {
    return ::fchown(file, owner, group);
}
int FileCalls::ChangeMode(int file, mode_t mode) {
    return ::fchmod(file, mode);
}
int FileCalls::StartFlush(int file) {
    return ::sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
}

int FileCalls::Flush(int file) {
    return ::fsync(file);
}
int FileCalls::Close(int file) {
    return ::close(file);
}
int FileCalls::Rename(const char* from, const char* to) {
    return ::rename(from, to);
}
int FileCalls::Unlink(const char* path) {
    return ::unlink(path);
}

} // namespace platform
