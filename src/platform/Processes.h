#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace platform {

class FilePaths;

/// Starts command lines and waits for their end.
class Processes {
public:
    virtual ~Processes() = default;
    static std::unique_ptr<Processes> Create(const FilePaths& paths);

    /// A running child; 0 is none. On Linux the process id.
    using Handle = std::int64_t;

    /// Starts a command line in UTF-8 (a program, perhaps quoted, and arguments) with this process's
    /// environment and inheritable handles; never through a shell. An unquoted program path with blanks is
    /// the shortest leading piece, up to a blank, that names a program. 0 when it could not be started.
    virtual Handle Start(std::string_view commandLine) = 0;
    /// Until the child has ended; signals do not end the wait. Returns at once for 0.
    virtual void Wait(Handle handle) = 0;
    /// Gives the handle up; a child that still runs is taken off the system's list later. Whoever follows the
    /// child's end by other means must not close it as well.
    virtual void Close(Handle handle) = 0;
};

} // namespace platform
