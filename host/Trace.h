#pragma once

#include "host/Observer.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace arvon::host {

/// The names of all host operations, sorted: of calls in CallRecord, and for FailNext.
std::span<const std::string_view> OperationNames();

/// What every part of the host goes through: tells observers what happens and makes operations fail that are
/// to fail. Costs one test a call while nobody observes and nothing is to fail.
class Trace {
public:
    Trace() = default;
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    void Subscribe(IObserver& observer);
    void Unsubscribe(IObserver& observer);
    void UnsubscribeAll();
    /// Throws InvalidCall for a name that is no operation.
    void FailNext(std::string_view operation, std::size_t count, std::size_t after = 0);

    /// First line of every operation. Throws when the operation is to fail. An argument that costs something
    /// to make is given as a function that makes it.
    template <class... Arguments> void Call(std::string_view operation, const Arguments&... arguments) {
        if (heedsCalls_) [[unlikely]]
            Tell(operation, false, watchesCalls_, arguments...);
    }
    /// The same for an operation that only reads: told to those who want reads, and when it is to fail.
    template <class... Arguments> void Read(std::string_view operation, const Arguments&... arguments) {
        if (heedsReads_) [[unlikely]]
            Tell(operation, true, watchesReads_, arguments...);
    }

    void Changed(ModelPart part) {
        if (watchesChanges_) TellChanged(part);
    }
    bool WatchesMessages() const noexcept { return watchesMessages_; }
    void Message(const MessageRecord& message);
    void Reply(const MessageRecord& message);
    void MessageBox(const std::string& text, std::int32_t style, const std::string& title);
    void Pointer(std::int32_t pointer);
    void ProcessStarted(const model::Process& process);
    void ProcessEnded(const model::Process& process, const model::ProcessEnd& end);
    void Problem(const std::string& text);

    const std::deque<std::string>& Problems() const noexcept { return problems_; }

private:
    /// The failures of one operation that are still due: so many calls pass, then so many fail.
    struct Failures {
        std::size_t passing = 0;
        std::size_t failing = 0;
    };

    template <class T> static base::Value Argument(const T& value) {
        if constexpr (std::is_invocable_v<const T&>) {
            return Argument(value());
        } else if constexpr (std::is_enum_v<T>) {
            return base::Value(static_cast<std::int32_t>(value));
        } else if constexpr (std::is_same_v<T, std::optional<std::string_view>>) {
            return value ? base::Value(*value) : base::Value();
        } else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
            return base::Value(static_cast<std::int32_t>(value));
        } else {
            return base::Value(value);
        }
    }
    template <class... Arguments>
    void Tell(std::string_view operation, bool isRead, bool watched, const Arguments&... arguments) {
        CallRecord call{.operation = std::string(operation), .isRead = isRead};
        if (watched) call.arguments = {Argument(arguments)...};
        Tell(std::move(call));
    }
    void Tell(CallRecord call);
    void TellChanged(ModelPart part);
    bool CountsDown(std::string_view operation);
    void RefreshFlags();
    void RefreshHeed();
    template <class Notify> void ForEach(Notify notify);

    std::vector<IObserver*> observers_; // null: unsubscribed while being told
    int telling_ = 0;
    bool watchesCalls_ = false;
    bool watchesReads_ = false;
    bool watchesMessages_ = false;
    bool watchesChanges_ = false;
    bool heedsCalls_ = false; // somebody watches them, or something is to fail
    bool heedsReads_ = false;
    std::map<std::string, Failures, std::less<>> failures_;
    std::deque<std::string> problems_;
};

} // namespace arvon::host
