#include "host/Trace.h"

#include "host/Errors.h"

#include <algorithm>

namespace arvon::host {

namespace {

constexpr std::size_t maximumProblems = 1000;
constexpr std::int32_t injectedFailure = 1001;

} // namespace

template <class Notify> void Trace::ForEach(Notify notify) {
    ++telling_;
    const std::size_t count = observers_.size(); // who subscribes meanwhile is told from the next time on
    for (std::size_t index = 0; index < count; ++index)
        if (IObserver* observer = observers_[index]) notify(*observer);
    if (--telling_ == 0) std::erase(observers_, nullptr);
}

void Trace::Subscribe(IObserver& observer) {
    if (std::find(observers_.begin(), observers_.end(), &observer) == observers_.end())
        observers_.push_back(&observer);
    RefreshFlags();
}

void Trace::Unsubscribe(IObserver& observer) {
    std::replace(observers_.begin(), observers_.end(), &observer, static_cast<IObserver*>(nullptr));
    if (telling_ == 0) std::erase(observers_, nullptr);
    RefreshFlags();
}

void Trace::UnsubscribeAll() {
    std::fill(observers_.begin(), observers_.end(), nullptr);
    if (telling_ == 0) observers_.clear();
    RefreshFlags();
}

void Trace::RefreshFlags() {
    const auto any = [this](bool (IObserver::*wants)() const) {
        return std::any_of(observers_.begin(), observers_.end(),
                           [wants](const IObserver* observer) { return observer && (observer->*wants)(); });
    };
    watchesCalls_ = any(&IObserver::WantsCalls);
    watchesReads_ = any(&IObserver::WantsReads);
    watchesMessages_ = any(&IObserver::WantsMessages);
    watchesChanges_ = any(&IObserver::WantsChanges);
    RefreshHeed();
}

void Trace::RefreshHeed() {
    heedsCalls_ = watchesCalls_ || !failures_.empty();
    heedsReads_ = watchesReads_ || !failures_.empty();
}

void Trace::FailNext(std::string_view operation, std::size_t count, std::size_t after) {
    const auto known = OperationNames();
    if (!std::binary_search(known.begin(), known.end(), operation)) RaiseNoSuch("host operation", operation);
    if (count == 0) {
        if (const auto found = failures_.find(operation); found != failures_.end()) failures_.erase(found);
    } else {
        failures_.insert_or_assign(std::string(operation), Failures{after, count});
    }
    RefreshHeed();
}

bool Trace::CountsDown(std::string_view operation) {
    const auto found = failures_.find(operation);
    if (found == failures_.end()) return false;
    Failures& due = found->second;
    if (due.passing > 0) {
        --due.passing;
        return false;
    }
    if (--due.failing == 0) {
        failures_.erase(found);
        RefreshHeed();
    }
    return true;
}

void Trace::Tell(CallRecord call) {
    call.failed = CountsDown(call.operation);
    ForEach([&](IObserver& observer) {
        const bool wants = call.isRead && !call.failed ? observer.WantsReads() : observer.WantsCalls();
        if (wants) observer.OnCall(call);
    });
    if (call.failed) Raise(injectedFailure, call.operation + " failed");
}

void Trace::TellChanged(ModelPart part) {
    ForEach([part](IObserver& observer) {
        if (observer.WantsChanges()) observer.OnChanged(part);
    });
}

void Trace::Message(const MessageRecord& message) {
    ForEach([&](IObserver& observer) {
        if (observer.WantsMessages()) observer.OnMessage(message);
    });
}

void Trace::Reply(const MessageRecord& message) {
    ForEach([&](IObserver& observer) {
        if (observer.WantsMessages()) observer.OnReply(message);
    });
}

void Trace::MessageBox(const std::string& text, std::int32_t style, const std::string& title) {
    ForEach([&](IObserver& observer) { observer.OnMessageBox(text, style, title); });
}

void Trace::Pointer(std::int32_t pointer) {
    ForEach([&](IObserver& observer) { observer.OnPointer(pointer); });
}

void Trace::ProcessStarted(const model::Process& process) {
    ForEach([&](IObserver& observer) { observer.OnProcessStarted(process); });
}

void Trace::ProcessEnded(const model::Process& process, const model::ProcessEnd& end) {
    ForEach([&](IObserver& observer) { observer.OnProcessEnded(process, end); });
}

void Trace::Problem(const std::string& text) {
    if (problems_.size() == maximumProblems) problems_.pop_front();
    problems_.push_back(text);
    ForEach([&](IObserver& observer) { observer.OnProblem(text); });
}

} // namespace arvon::host
