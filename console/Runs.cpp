#include "console/Runs.h"

#include <algorithm>

namespace arvon::console {

void Runs::OnProcessStarted(const host::model::Process& process) {
    if (runs_.size() >= MostKept) {
        const auto over =
            std::ranges::find_if(runs_, [](const ProgramRun& run) { return run.end.has_value(); });
        if (over != runs_.end()) runs_.erase(over);
    }
    runs_.push_back({process, std::chrono::system_clock::now(), {}, {}});
}

void Runs::OnProcessEnded(const host::model::Process& process, const host::model::ProcessEnd& end) {
    // the system gives a number again once its program is over
    const auto run = std::find_if(runs_.rbegin(), runs_.rend(), [&](const ProgramRun& each) {
        return each.process.id == process.id && !each.end;
    });
    if (run == runs_.rend()) return;
    run->ended = std::chrono::system_clock::now();
    run->end = end;
}

} // namespace arvon::console
