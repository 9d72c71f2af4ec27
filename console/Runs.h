#pragma once

#include "host/Observer.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>

namespace arvon::console {

/// A program that was started. `ended` and `end` are empty while it runs.
struct ProgramRun {
    host::model::Process process;
    std::chrono::system_clock::time_point started;
    std::optional<std::chrono::system_clock::time_point> ended;
    std::optional<host::model::ProcessEnd> end;
};

/// Follows the host's programs and remembers them, oldest first: all that run, and of the others the newest.
class Runs final : public host::IObserver {
public:
    static constexpr std::size_t MostKept = 10'000;

    const std::deque<ProgramRun>& All() const { return runs_; }

    void OnProcessStarted(const host::model::Process& process) override;
    void OnProcessEnded(const host::model::Process& process, const host::model::ProcessEnd& end) override;
    bool WantsCalls() const override { return false; }
    bool WantsMessages() const override { return false; }
    bool WantsChanges() const override { return false; }

private:
    std::deque<ProgramRun> runs_;
};

} // namespace arvon::console
