#pragma once

#include "base/Collection.h"
#include "core/contract/Messages.h"
#include "host/Trace.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

/// Delivers messages between listeners, which may come and go at any time, during a delivery too.
class Router final : public IRouter {
public:
    explicit Router(Trace& trace) : trace_(trace) {}

    bool IsRegistered(std::string_view listenerId) override;
    /// What a listener throws ends here: the reply is empty then, and observers see the failure. Throws
    /// InvalidCall beyond MaximumDepth deliveries one inside the other.
    std::string Send(const std::shared_ptr<IMessage>& message) override;
    /// Send for the host's own messages: no operation, so it is never made to fail.
    std::string Route(const std::shared_ptr<IMessage>& message);

    /// Takes the place of a listener of the same identifier. Throws InvalidCall for an empty identifier and
    /// ObjectNotSet for no listener.
    void Register(std::string_view id, const std::shared_ptr<IMessageListener>& listener);
    bool Unregister(std::string_view id);
    /// Takes away every registration of one listener.
    void Unregister(const IMessageListener* listener);
    void Clear();
    /// Without a call's record.
    std::shared_ptr<IMessageListener> Find(std::string_view id) const;
    std::vector<std::string> Ids() const;
    /// Keeps an object alive until no delivery is under way: it may be the one that is delivering.
    void Retire(std::shared_ptr<void> object);
    /// Deliveries under way.
    int Depth() const noexcept { return depth_; }

    static constexpr int MaximumDepth = 200;

private:
    std::string Deliver(const std::shared_ptr<IMessage>& message, const std::string& destination,
                        std::string* failure);
    std::string DeliverWatched(const std::shared_ptr<IMessage>& message, const std::string& destination);
    void ReleaseRetired();

    Trace& trace_;
    base::Collection<std::shared_ptr<IMessageListener>> listeners_;
    std::vector<std::shared_ptr<void>> retired_;
    int depth_ = 0;
};

/// The record of a message as observers see it, reply and failure still open.
MessageRecord RecordOf(const IMessage& message);

} // namespace arvon::host
