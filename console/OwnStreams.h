#pragma once

#include <cstdio>

namespace arvon::console {

/// Opens /dev/null in the place of each standard stream that the starter closed, so that no file of this
/// process becomes one. To be called before any file is opened. Throws std::system_error.
void FillStandardStreams();

/// Standard input and output, kept for the console alone. Tools that run in this process and programs that
/// are started from it find nothing at standard input, and what they write to standard output goes to
/// standard error: neither can eat commands or break up lines.
///
/// One object a process. Throws std::system_error.
class OwnStreams {
public:
    OwnStreams();
    ~OwnStreams();
    OwnStreams(const OwnStreams&) = delete;
    OwnStreams& operator=(const OwnStreams&) = delete;

    int In() const { return in_; }
    std::FILE* Out() const { return out_; }

private:
    int in_;
    std::FILE* out_;
};

} // namespace arvon::console
