#pragma once

#include "console/Writer.h"

#include <optional>

namespace arvon::console {

/// One JSON object a line, valid UTF-8 always: bytes that are none become U+FFFD.
///
/// A request's line stands where it was delivered and carries the reply, so it is held back until the next
/// thing happens: when that is the reply, the line has it; when it is anything else, the line goes out with
/// an empty reply, and a reply that is not empty follows later in a "messageReply" line.
class JsonWriter final : public Writer {
public:
    JsonWriter(bool calls, std::FILE* out) : calls_(calls), out_(out) {}

    void OnCall(const CallRecord& call) override;
    void OnMessage(const MessageRecord& message) override;
    void OnReply(const MessageRecord& message) override;
    void OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) override;
    void OnPointer(std::int32_t pointer) override;
    void OnProcessStarted(const host::model::Process& process) override;
    void OnProcessEnded(const host::model::Process& process, const host::model::ProcessEnd& end) override;
    void OnProblem(const std::string& text) override;
    bool WantsChanges() const override { return false; }

    void OnScriptLine(std::string_view) override {}
    void OnCommandReply(std::string_view command, std::string_view text) override;
    void OnState(std::string_view what, const Json& value) override;
    void OnHelp(std::string_view command, std::string_view arguments, std::string_view text) override;
    void OnDone(std::string_view command) override;
    void OnError(std::string_view command, std::string_view text) override;

private:
    void Write(const Json& line);
    void WriteHeld();
    void WriteLine(const Json& line);

    bool calls_;
    std::FILE* out_;
    std::optional<Json> held_; // the line of the request delivered last, nothing having happened since
};

} // namespace arvon::console
