#pragma once

#include <cstdio>

namespace arvon::console {

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
