#pragma once

#include "base/Collection.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
class Processes;
}

namespace arvon::host {

/// Starts programs and follows them to their end, without taking the end of any child that is not its own.
/// Never ends a program.
///
/// Each followed program has a descriptor of its own in one poll set, so that nothing is polled. They take up
/// at most half of what the process may open, which is raised to the system's limit when it is needed.
/// Programs beyond that are looked after at short intervals until a descriptor is free for them.
class ProcessFollower {
public:
    /// Tells the end of a program to the one who had it started.
    using Complete = std::function<void(const std::string& caller, const std::string& commandLine,
                                        std::int32_t processId)>;

    ProcessFollower(Trace& trace, platform::Processes& processes, Complete complete);
    ~ProcessFollower();
    ProcessFollower(const ProcessFollower&) = delete;
    ProcessFollower& operator=(const ProcessFollower&) = delete;

    /// Starts its command line; its id is given by the system. Returns it, 0 when it could not be started.
    std::int32_t Start(model::Process process);

    /// Readable when a program has ended; -1 when the system has none to give.
    int PollDescriptor() const noexcept { return pollSet_; }
    /// Waits up to `timeout` while programs are followed, and takes in ends that were there by then: at most
    /// `MostEndsATurn`. Whatever else ended, or ends while they are told, is left for the next turn. Returns
    /// how many it were.
    std::size_t TakeEnds(std::chrono::milliseconds timeout);
    static constexpr std::size_t MostEndsATurn = 64;
    /// False when some are still running after `timeout`; without one as long as it takes.
    bool WaitForAll(std::optional<std::chrono::milliseconds> timeout);
    std::vector<model::Process> Snapshot() const;

private:
    struct Followed {
        model::Process process;
        int descriptor = -1; // -1: waits for one
    };

    bool Watch(Followed& followed);
    bool HasRoomForDescriptor();
    void WatchWaiting();
    bool TakeEnd(const std::string& key);
    std::size_t TakeEndsOfWaiting();
    /// Waits for as long as nothing is readable; how many ends it took in.
    std::size_t TakeEndsOfWatched(std::chrono::milliseconds timeout, std::size_t most);
    bool IsAnyWaiting() const { return watched_ < followed_.Count(); }
    /// Makes the poll set readable at intervals while programs wait for a descriptor.
    void SetTimer(bool isOn);

    Trace& trace_;
    platform::Processes& processes_;
    Complete complete_;
    int pollSet_, timer_; // -1: the system had none to give
    bool timerIsOn_ = false;
    std::size_t room_ = 0;                // how many may be watched
    base::Collection<Followed> followed_; // keyed by process id
    std::size_t watched_ = 0;
};

} // namespace arvon::host
