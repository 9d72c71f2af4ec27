#include "console/OwnStreams.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace arvon::console {

namespace {

int Checked(int result, const char* what) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), what);
    return result;
}

int KeepCopy(int descriptor, const char* what) {
    constexpr int firstOwn = 3;
    return Checked(fcntl(descriptor, F_DUPFD_CLOEXEC, firstOwn), what);
}

} // namespace

void FillStandardStreams() {
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(standard, F_GETFD) < 0) Checked(open("/dev/null", O_RDWR), "/dev/null"); // the lowest free
    }
}

OwnStreams::OwnStreams() : in_(KeepCopy(STDIN_FILENO, "standard input")) {
    const int out = KeepCopy(STDOUT_FILENO, "standard output");
    const int nothing = Checked(open("/dev/null", O_RDONLY | O_CLOEXEC), "/dev/null");
    Checked(dup2(nothing, STDIN_FILENO), "standard input");
    close(nothing);
    // without a standard error either, there is nowhere for others to write
    if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) close(STDOUT_FILENO);
    out_ = fdopen(out, "w");
    if (!out_) throw std::system_error(errno, std::generic_category(), "standard output");
}

OwnStreams::~OwnStreams() {
    close(in_);
    std::fclose(out_);
}

} // namespace arvon::console
