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
    void FailNext(std::string_view operation, std::size_t count);

    /// First line of every operation. Throws when the operation is to fail. An argument that costs something
    /// to make is given as a function that makes it.
    template <class... Arguments> void Call(std::string_view operation, const Arguments&... arguments) {
        if (!watchesCalls_ && !failing_) [[likely]]
            return;
        if (watchesCalls_) {
            Tell(operation, {Argument(arguments)...});
            return;
        }
        Check(operation);
    }
    /// First line of a simple read, which is no call: throws when it is to fail.
    void Check(std::string_view operation) {
        if (failing_) [[unlikely]]
            TakeFailure(operation);
    }

    void Changed(ModelPart part) {
        if (watchesChanges_) TellChanged(part);
    }
    bool WatchesMessages() const noexcept { return watchesMessages_; }
    void Message(const MessageRecord& message);
    void Reply(const MessageRecord& message);
    void MessageBox(const std::string& text, std::int32_t style, const std::string& title);
    void Pointer(std::int32_t pointer);
    void ProcessStarted(std::int64_t id, const std::string& commandLine);
    void ProcessEnded(std::int64_t id, int exitCode, const std::string& commandLine);
    void Problem(const std::string& text);

    const std::deque<std::string>& Problems() const noexcept { return problems_; }

private:
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
    void Tell(std::string_view operation, std::vector<base::Value> arguments);
    void TellChanged(ModelPart part);
    void TakeFailure(std::string_view operation);
    bool CountsDown(std::string_view operation);
    void RefreshFlags();
    template <class Notify> void ForEach(Notify notify);

    std::vector<IObserver*> observers_; // null: unsubscribed while being told
    int telling_ = 0;
    bool watchesCalls_ = false;
    bool watchesMessages_ = false;
    bool watchesChanges_ = false;
    bool failing_ = false;
    std::map<std::string, std::size_t, std::less<>> failures_;
    std::deque<std::string> problems_;
};

} // namespace arvon::host
