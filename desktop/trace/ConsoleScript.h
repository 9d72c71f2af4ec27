#pragma once

#include "desktop/trace/MessageRecorder.h"

#include <optional>
#include <string>
#include <string_view>

namespace desktop {

/// The text as one word of an arvon-console line, quoted where that is needed. Nothing for a text that no
/// line can hold: one with line breaks or other control characters.
std::optional<std::string> ConsoleWord(std::string_view text);

/// The command that does what this message did: "menu KEY" for a click on a menu item, "request TYPE ..." for
/// a request, and so on. Nothing when there is none, as for a message to somebody else than KvTM10.
std::optional<std::string> ConsoleLine(const arvon::host::MessageRecord& message);

/// Deliveries as a script that arvon-console runs: what the user did, in order. Where programs ended in
/// between, the script waits for that. What cannot be written as a command stands as a comment.
class ConsoleScript {
public:
    /// An outermost delivery.
    void Add(const TraceNode& node);
    const std::string& Text() const { return text_; }

private:
    std::string text_ = "# arvon-console runs this on a fresh copy of the sample suite\nload\n";
    bool waits_ = false;
};

} // namespace desktop
