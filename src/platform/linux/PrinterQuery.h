#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// What the printing system says. Names are UTF-8; the default one is empty when there is none.
struct PrinterAnswer {
    std::vector<std::string> names;
    std::string defaultName;
};

/// One question to CUPS, asked on a thread of its own: name look-up and a server that never answers cannot be
/// bounded otherwise. The asker waits as long as it likes; a question given up runs to its end by itself,
/// holding on to everything that it touches.
class PrinterQuery {
public:
    /// Throws std::system_error when there is no thread to be had. `patience` bounds each single step.
    explicit PrinterQuery(std::chrono::milliseconds patience);
    ~PrinterQuery();
    PrinterQuery(const PrinterQuery&) = delete;
    PrinterQuery& operator=(const PrinterQuery&) = delete;

    /// Whether the question is settled before that moment.
    bool WaitUntil(std::chrono::steady_clock::time_point deadline);
    /// Only once settled. Nothing when the server answered with an error, or not in time; no names when there
    /// is no server.
    std::optional<PrinterAnswer> Answer() const;

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

} // namespace platform
