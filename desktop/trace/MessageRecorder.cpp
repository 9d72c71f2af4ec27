#include "desktop/trace/MessageRecorder.h"

#include "core/contract/EventShapes.h"
#include "host/ReferenceHost.h"

#include <algorithm>
#include <utility>

namespace desktop {

using arvon::host::MessageRecord;

namespace {

constexpr std::string_view errorReport = "ErrorMessage";

bool IsTask(const MessageRecord& message) {
    return message.kind == MessageRecord::Kind::Event && !message.malformed &&
           message.objectType == static_cast<int>(arvon::EventObject::Task);
}

bool NeedsBody(const MessageRecord& message) {
    return message.malformed || message.kind == MessageRecord::Kind::Custom;
}

void Cut(std::string& text, std::size_t bytes) {
    if (text.size() <= bytes) return;
    while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0) == 0x80)
        --bytes; // not within a character
    text.resize(bytes);
    text += "\u2026";
    text.shrink_to_fit();
}

void CutTexts(MessageRecord& message, std::size_t bytes) {
    Cut(message.body, bytes);
    Cut(message.reply, bytes);
    for (arvon::host::ParameterRecord& parameter : message.parameters) {
        const std::string* text = parameter.value.TextIfAny();
        if (!text || text->size() <= bytes) continue;
        std::string cut = *text;
        Cut(cut, bytes);
        parameter.value = base::Value(std::move(cut));
    }
}

std::size_t BytesOf(const MessageRecord& message) {
    std::size_t bytes = sizeof(TraceNode) + message.source.size() + message.destination.size() +
                        message.name.size() + message.body.size() + message.reply.size() +
                        message.failure.size();
    for (const arvon::host::ParameterRecord& parameter : message.parameters) {
        const std::string* text = parameter.value.TextIfAny();
        bytes += sizeof parameter + parameter.name.size() + (text ? text->size() : 0);
    }
    return bytes;
}

} // namespace

Trouble TroubleOf(const TraceNode& node) {
    const MessageRecord& message = node.message;
    if (!message.failure.empty()) return Trouble::Failed;
    if (message.malformed) return Trouble::Malformed;
    if (!message.registered) return Trouble::NobodyListens;
    if (message.kind == MessageRecord::Kind::Event && message.name == errorReport)
        return Trouble::ErrorReport;
    return node.finished ? Trouble::None : Trouble::Unfinished;
}

MessageRecorder::MessageRecorder(TraceLimits limits, std::function<bool()> isAtWork,
                                 std::function<void()> finished, std::function<std::string()> currentRow)
    : limits_(limits), isAtWork_(std::move(isAtWork)), finished_(std::move(finished)),
      currentRow_(std::move(currentRow)) {}

bool MessageRecorder::IsByUser(const MessageRecord& message) const {
    if (message.depth > 0 || message.source == arvon::host::listenerId::Component || !isAtWork_())
        return false;
    const bool endOfProgram = message.kind == MessageRecord::Kind::Event && !message.malformed &&
                              message.objectType == static_cast<int>(arvon::EventObject::Process);
    return !endOfProgram;
}

bool MessageRecorder::IsFull(const TraceNode& root) const {
    return root.messages >= limits_.messages || root.bytes >= limits_.bytes;
}

void MessageRecorder::OnMessage(const MessageRecord& message) {
    if (!recording_) return;
    const auto outer = std::find_if(open_.rbegin(), open_.rend(), [](const Open& open) { return open.node; });
    if (outer != open_.rend() && IsFull(*root_)) {
        ++outer->node->omitted;
        open_.push_back({nullptr, message.depth});
        return;
    }
    auto node = std::make_unique<TraceNode>();
    node->message = message;
    node->when = std::chrono::system_clock::now();
    node->byUser = open_.empty() && IsByUser(message);
    if (!NeedsBody(message)) node->message.body.clear();
    if (!node->byUser) CutTexts(node->message, limits_.textBytes);
    if (node->byUser && IsTask(message) && currentRow_) node->currentRow = currentRow_();
    const std::size_t bytes = BytesOf(node->message) + node->currentRow.size();
    const bool isOutermost = outer == open_.rend();
    open_.push_back({node.get(), message.depth});
    if (isOutermost) {
        node->bytes = bytes;
        root_ = std::move(node);
        return;
    }
    ++root_->messages;
    root_->bytes += bytes;
    TraceNode& parent = *open_[open_.size() - 2].node;
    node->parent = &parent;
    node->row = parent.children.size();
    parent.children.push_back(std::move(node));
}

void MessageRecorder::OnReply(const MessageRecord& message) {
    // of a delivery that began before the recording
    if (open_.empty() || open_.back().depth != message.depth) return;
    Close(message);
    if (open_.empty()) HandOut();
}

void MessageRecorder::Close(const MessageRecord& message) {
    TraceNode* node = open_.back().node;
    open_.pop_back();
    if (!node) return;
    node->message.reply = message.reply;
    node->message.failure = message.failure;
    node->message.duration = message.duration;
    if (!node->byUser) CutTexts(node->message, limits_.textBytes);
    node->finished = true;
    const bool isTrouble = TroubleOf(*node) != Trouble::None;
    for (TraceNode* outer = node->parent; outer && isTrouble; outer = outer->parent)
        ++outer->inside;
    root_->bytes += node->message.reply.size() + node->message.failure.size();
}

void MessageRecorder::HandOut() {
    if (!root_) return;
    doneMessages_ += root_->messages;
    done_.push_back(std::move(root_));
    // nobody takes them: the oldest go, as they would later
    std::size_t surplus = 0;
    while (doneMessages_ > limits_.messages && surplus + 1 < done_.size())
        doneMessages_ -= done_[surplus++]->messages;
    done_.erase(done_.begin(), done_.begin() + static_cast<std::ptrdiff_t>(surplus));
    finished_();
}

void MessageRecorder::SetRecording(bool recording) {
    recording_ = recording;
    open_.clear();
    HandOut();
}

std::vector<std::unique_ptr<TraceNode>> MessageRecorder::Take() {
    doneMessages_ = 0;
    return std::exchange(done_, {});
}

} // namespace desktop
