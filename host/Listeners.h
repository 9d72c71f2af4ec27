#pragma once

#include "core/contract/Messages.h"
#include "host/Loader.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace arvon::host {

/// A listener that answers every message by the same text.
class ScriptedListener final : public IMessageListener {
public:
    ScriptedListener(std::string_view id, std::string_view reply) : id_(id), reply_(reply) {}
    std::string id() const override { return id_; }
    std::string ReceiveMessage(const std::shared_ptr<IMessage>&) override { return reply_; }

private:
    std::string id_, reply_;
};

/// The host's own listener, "SnapIn". It answers "GetWindowHandle", and unloads the tool that an event
/// "Tool_Unload" names by "vrex".
class Shell final : public IMessageListener {
public:
    Shell(Loader& loader, LoadedTools& loaded) : loader_(loader), loaded_(loaded) {}
    std::string id() const override;
    std::string ReceiveMessage(const std::shared_ptr<IMessage>& message) override;

    void SetWindowHandle(std::int32_t handle) { windowHandle_ = handle; }
    /// Answers this to every message from now on, its work done all the same.
    void SetReply(std::string_view reply) { reply_ = reply; }

private:
    Loader& loader_;
    LoadedTools& loaded_;
    std::int32_t windowHandle_ = 1;
    std::optional<std::string> reply_;
};

} // namespace arvon::host
