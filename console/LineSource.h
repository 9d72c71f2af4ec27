#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace arvon::console {

/// Something besides the next line that is waited for: when `descriptor` becomes readable, `act` is called.
struct SideWatch {
    int descriptor = -1;
    std::function<void()> act;
};

/// Where commands come from, a line at a time. While it waits for the next line it serves its side watch;
/// without having to wait it serves it once before each line.
class LineSource {
public:
    virtual ~LineSource() = default;
    /// The next line without its end (LF or CRLF); nothing at the end. The last line needs no end. A byte
    /// order mark at the very start is no part of the first line.
    virtual std::optional<std::string> Next() = 0;

    /// Reads an open descriptor to its end and leaves it open.
    static std::unique_ptr<LineSource> OfDescriptor(int descriptor, SideWatch watch);
    /// Reads a terminal, with a prompt, line editing and a history. `screen`: where that is shown.
    static std::unique_ptr<LineSource> OfTerminal(int descriptor, std::FILE* screen, SideWatch watch);
};

} // namespace arvon::console
