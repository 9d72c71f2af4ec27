#pragma once

#include "console/Writer.h"

namespace arvon::console {

/// For a person: a word that says what it is, then the facts; what happens inside a delivery is indented
/// under it. Colour is the caller's choice; without it no escape code is written, whatever the texts hold.
class TextWriter final : public Writer {
public:
    TextWriter(bool calls, bool colour, std::FILE* out) : calls_(calls), colour_(colour), out_(out) {}

    void OnCall(const CallRecord& call) override;
    void OnMessage(const MessageRecord& message) override;
    void OnReply(const MessageRecord& message) override;
    void OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) override;
    void OnPointer(std::int32_t pointer) override;
    void OnProcessStarted(const host::model::Process& process) override;
    void OnProcessEnded(const host::model::Process& process, const host::model::ProcessEnd& end) override;
    void OnProblem(const std::string& text) override;
    bool WantsCalls() const override { return calls_; }
    bool WantsChanges() const override { return false; }

    void OnScriptLine(std::string_view line) override;
    void OnCommandReply(std::string_view command, std::string_view text) override;
    void OnState(std::string_view what, const Json& value) override;
    void OnHelp(std::string_view command, std::string_view arguments, std::string_view text) override;
    void OnDone(std::string_view command) override;
    void OnError(std::string_view command, std::string_view text) override;

private:
    enum class Colour { None, Bold, Dim, Red, Green, Yellow, Blue, Cyan };

    void Write(std::string_view kind, Colour colour, const std::string& facts);
    std::string Coloured(std::string_view text, Colour colour) const;

    bool calls_;
    bool colour_;
    std::FILE* out_;
    std::size_t depth_ = 0; // deliveries under way
};

} // namespace arvon::console
