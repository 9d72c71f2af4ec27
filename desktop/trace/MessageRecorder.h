#pragma once

#include "host/Observer.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace desktop {

/// A delivery with those that happened inside it.
struct TraceNode {
    arvon::host::MessageRecord message; // without the body where name and parameters say it all
    std::chrono::system_clock::time_point when;
    bool finished = false;   // false: recording stopped before its end
    bool byUser = false;     // what a user did, not what followed from it
    std::string currentRow;  // of the list, when a user's task was sent; empty when there was none
    std::size_t inside = 0;  // troubles of its children, at any depth
    std::size_t omitted = 0; // deliveries inside that were too many to keep
    TraceNode* parent = nullptr;
    std::size_t row = 0; // among its parent's children
    std::vector<std::unique_ptr<TraceNode>> children;

    // of this one and everything below
    std::size_t messages = 1;
    std::size_t bytes = 0;
};

/// What is wrong with a delivery; nothing for None.
enum class Trouble { None, Failed, Malformed, NobodyListens, ErrorReport, Unfinished };
Trouble TroubleOf(const TraceNode& node);

/// How much is kept. Texts of inner deliveries are cut at `textBytes`; what a user sent stays whole.
struct TraceLimits {
    std::size_t messages = 10'000;
    std::size_t bytes = std::size_t{64} << 20;
    std::size_t textBytes = std::size_t{16} << 10;
};

/// Follows the host's messages and hands out each outermost delivery when it is over, nested as delivered.
class MessageRecorder final : public arvon::host::IObserver {
public:
    /// `isAtWork`: whether the component is loaded; what comes before is no user's doing. `finished` is
    /// called at the end of each outermost delivery: it should only note that there is something to take.
    /// `currentRow`: text of the list's current row, which a task is about.
    MessageRecorder(TraceLimits limits, std::function<bool()> isAtWork, std::function<void()> finished,
                    std::function<std::string()> currentRow = {});

    /// What is under way when recording stops is handed out unfinished.
    void SetRecording(bool recording);
    bool IsRecording() const { return recording_; }
    /// The deliveries that ended since the last time, oldest first.
    std::vector<std::unique_ptr<TraceNode>> Take();

    void OnMessage(const arvon::host::MessageRecord& message) override;
    void OnReply(const arvon::host::MessageRecord& message) override;
    bool WantsCalls() const override { return false; }
    bool WantsMessages() const override { return recording_; }
    bool WantsChanges() const override { return false; }

private:
    struct Open {
        TraceNode* node; // null: not kept
        int depth;
    };
    bool IsByUser(const arvon::host::MessageRecord& message) const;
    bool IsFull(const TraceNode& root) const;
    void Close(const arvon::host::MessageRecord& message);
    void HandOut();

    TraceLimits limits_;
    std::function<bool()> isAtWork_;
    std::function<void()> finished_;
    std::function<std::string()> currentRow_;
    bool recording_ = true;
    std::unique_ptr<TraceNode> root_; // under way
    std::vector<Open> open_;
    std::vector<std::unique_ptr<TraceNode>> done_;
    std::size_t doneMessages_ = 0;
};

} // namespace desktop
