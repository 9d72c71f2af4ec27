#include "host/ProcessFollower.h"

#include "platform/Processes.h"

#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <thread>
#include <utility>

namespace arvon::host {

namespace {

constexpr int signalBase = 128; // exit code of a program that a signal ended, as shells count
constexpr std::chrono::milliseconds waitingPause{20};
constexpr std::uint64_t timerMark = 0; // in the poll set; no process has this number

rlim_t DescriptorLimit() {
    rlimit limit{};
    return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_cur : 0;
}

void RaiseDescriptorLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

/// Children must stay to be asked about their end: with SIGCHLD ignored, or handled with that flag, the
/// system would drop them.
void KeepEndedChildren() {
    struct sigaction action {};
    if (::sigaction(SIGCHLD, nullptr, &action) != 0) return;
    const bool isIgnored = action.sa_handler == SIG_IGN;
    if (!isIgnored && (action.sa_flags & SA_NOCLDWAIT) == 0) return;
    if (isIgnored) action.sa_handler = SIG_DFL;
    action.sa_flags &= ~SA_NOCLDWAIT;
    ::sigaction(SIGCHLD, &action, nullptr);
}

using Clock = std::chrono::steady_clock;

/// However long a caller is ready to wait, the end of it can still be told.
Clock::time_point DeadlineIn(std::chrono::milliseconds timeout) {
    constexpr std::chrono::milliseconds longest = std::chrono::hours(24 * 365);
    return Clock::now() + std::min(timeout, longest);
}

/// How a child ended, which is taken away with it; nothing while it runs. A child that is not there any more
/// counts as ended well.
std::optional<model::ProcessEnd> TakeEndOf(std::int64_t process) {
    siginfo_t info{};
    int result = 0;
    do {
        result = ::waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG);
    } while (result < 0 && errno == EINTR);
    if (result < 0) return model::ProcessEnd{};
    if (info.si_pid == 0) return {};
    if (info.si_code == CLD_EXITED) return model::ProcessEnd{info.si_status, 0};
    return model::ProcessEnd{signalBase + info.si_status, info.si_status};
}

} // namespace

ProcessFollower::ProcessFollower(Trace& trace, platform::Processes& processes, Complete complete)
    : trace_(trace), processes_(processes), complete_(std::move(complete)),
      pollSet_(::epoll_create1(EPOLL_CLOEXEC)),
      timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
    KeepEndedChildren();
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.u64 = timerMark;
    ::epoll_ctl(pollSet_, EPOLL_CTL_ADD, timer_, &event);
}

ProcessFollower::~ProcessFollower() {
    for (const Followed& followed : followed_) {
        if (followed.descriptor >= 0) ::close(followed.descriptor);
        TakeEndOf(followed.process.id);
        processes_.Close(followed.process.id);
    }
    if (timer_ >= 0) ::close(timer_);
    if (pollSet_ >= 0) ::close(pollSet_);
}

std::int32_t ProcessFollower::Start(model::Process process) {
    process.id = processes_.Start(process.commandLine);
    if (process.id <= 0) {
        trace_.Problem("could not be started: " + process.commandLine);
        return 0;
    }
    if (!Watch(followed_.Add({process, -1}, std::to_string(process.id)))) SetTimer(true);
    trace_.Changed(ModelPart::Processes);
    trace_.ProcessStarted(process);
    return static_cast<std::int32_t>(process.id);
}

bool ProcessFollower::Watch(Followed& followed) {
    if (pollSet_ < 0 || !HasRoomForDescriptor()) return false;
    const long opened = ::syscall(SYS_pidfd_open, static_cast<pid_t>(followed.process.id), 0);
    if (opened < 0) return false;
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.u64 = static_cast<std::uint64_t>(followed.process.id);
    if (::epoll_ctl(pollSet_, EPOLL_CTL_ADD, static_cast<int>(opened), &event) < 0) {
        ::close(static_cast<int>(opened));
        return false;
    }
    followed.descriptor = static_cast<int>(opened);
    ++watched_;
    return true;
}

bool ProcessFollower::HasRoomForDescriptor() {
    if (watched_ < room_) return true;
    room_ = DescriptorLimit() / 2;
    if (watched_ < room_) return true;
    RaiseDescriptorLimit();
    room_ = DescriptorLimit() / 2;
    return watched_ < room_;
}

void ProcessFollower::WatchWaiting() {
    for (std::size_t position = 1; position <= followed_.Count() && IsAnyWaiting(); ++position) {
        Followed& followed = followed_.Item(position);
        if (followed.descriptor < 0 && !Watch(followed)) break;
    }
    SetTimer(IsAnyWaiting());
}

void ProcessFollower::SetTimer(bool isOn) {
    if (isOn == timerIsOn_) return;
    itimerspec interval{};
    if (isOn) interval.it_interval.tv_nsec = std::chrono::nanoseconds(waitingPause).count();
    interval.it_value = interval.it_interval;
    ::timerfd_settime(timer_, 0, &interval, nullptr);
    timerIsOn_ = isOn;
}

bool ProcessFollower::TakeEnd(const std::string& key) {
    Followed* found = followed_.Find(key);
    if (!found) return false;
    const auto end = TakeEndOf(found->process.id);
    if (!end) return false;
    const auto [process, descriptor] = std::move(*found);
    followed_.Remove(key);
    if (descriptor >= 0) {
        ::close(descriptor);
        --watched_;
    }
    processes_.Close(process.id);
    trace_.Changed(ModelPart::Processes);
    trace_.ProcessEnded(process, *end);
    complete_(process.caller, process.commandLine, static_cast<std::int32_t>(process.id));
    return true;
}

std::size_t ProcessFollower::TakeEndsOfWaiting() {
    std::vector<std::string> keys;
    for (const Followed& followed : followed_)
        if (followed.descriptor < 0) keys.push_back(std::to_string(followed.process.id));
    std::size_t ended = 0;
    for (auto key = keys.begin(); key != keys.end() && ended < MostEndsATurn; ++key)
        ended += TakeEnd(*key) ? 1 : 0;
    return ended;
}

std::size_t ProcessFollower::TakeEndsOfWatched(std::chrono::milliseconds timeout, std::size_t most) {
    std::array<epoll_event, MostEndsATurn> events{};
    const int count = ::epoll_wait(pollSet_, events.data(), static_cast<int>(std::min(most, events.size())),
                                   static_cast<int>(timeout.count()));
    if (count < 0 && errno != EINTR) std::this_thread::sleep_for(timeout); // there is no poll set
    std::size_t ended = 0;
    for (int index = 0; index < count; ++index) {
        const std::uint64_t mark = events[static_cast<std::size_t>(index)].data.u64;
        if (mark == timerMark) {
            std::uint64_t expirations = 0;
            [[maybe_unused]] const auto length = ::read(timer_, &expirations, sizeof expirations);
        } else {
            ended += TakeEnd(std::to_string(mark)) ? 1 : 0;
        }
    }
    return ended;
}

std::size_t ProcessFollower::TakeEnds(std::chrono::milliseconds timeout) {
    constexpr std::chrono::milliseconds none{0}, longest{60'000};
    const auto deadline = DeadlineIn(timeout);
    for (;;) {
        std::size_t ended = 0;
        if (IsAnyWaiting()) {
            ended = TakeEndsOfWaiting();
            WatchWaiting();
        }
        if (followed_.IsEmpty() || ended == MostEndsATurn) return ended;
        const auto left =
            std::max(none, std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()));
        const auto pause = ended > 0 ? none : std::min(left, IsAnyWaiting() ? waitingPause : longest);
        ended += TakeEndsOfWatched(pause, MostEndsATurn - ended);
        if (ended > 0 || left == none) return ended;
    }
}

// Who hears of an end may have the program started again: past the deadline only what was followed by then is
// looked after.
bool ProcessFollower::WaitForAll(std::optional<std::chrono::milliseconds> timeout) {
    const auto deadline = DeadlineIn(timeout.value_or(std::chrono::milliseconds::max()));
    std::optional<std::size_t> late;
    while (!followed_.IsEmpty()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        const bool isOver = left.count() <= 0;
        if (isOver && !late) late = followed_.Count();
        const std::size_t ended = TakeEnds(std::max(left, std::chrono::milliseconds(0)));
        if (!isOver) continue;
        if (ended == 0 || ended >= *late) return followed_.IsEmpty();
        *late -= ended;
    }
    return true;
}

std::vector<model::Process> ProcessFollower::Snapshot() const {
    std::vector<model::Process> rows;
    for (const Followed& followed : followed_)
        rows.push_back(followed.process);
    return rows;
}

} // namespace arvon::host
