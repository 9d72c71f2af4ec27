#include "host/Router.h"

#include "host/Errors.h"
#include "host/MessageXml.h"

#include <chrono>
#include <exception>
#include <utility>

namespace arvon::host {

namespace {

void ReadBody(MessageRecord& record) {
    try {
        const bool isRequest = record.kind == MessageRecord::Kind::Request;
        const auto root = isRequest ? messageXml::Root::Request : messageXml::Root::Event;
        messageXml::Content content = messageXml::Read(root, record.body);
        record.name = std::move(content.name);
        if (isRequest) {
            record.mode = content.numbers[0];
        } else {
            record.objectType = content.numbers[0];
            record.category = content.numbers[1];
            record.level = content.numbers[2];
        }
        for (const auto& parameter : content.parameters)
            record.parameters.push_back({parameter->NameText(), parameter->Type(), parameter->Content()});
    } catch (const base::ComponentError&) {
        record.malformed = true;
    }
}

/// Empty for a body that is no text: the message is malformed then, unless it is a custom one.
std::string TextOf(const Value& body) {
    if (const std::string* text = body.TextIfAny()) return *text;
    try {
        return body.ToText();
    } catch (const base::ComponentError&) {
        return {};
    }
}

/// The text of the exception in flight.
std::string TextOfException() {
    try {
        throw;
    } catch (const base::ComponentError& error) {
        return error.Description() + " (" + error.Source() + ", " + std::to_string(error.Number()) + ")";
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "an exception of unknown kind";
    }
}

class DepthCount {
public:
    explicit DepthCount(int& depth) : depth_(depth) { ++depth_; }
    ~DepthCount() { --depth_; }
    DepthCount(const DepthCount&) = delete;
    DepthCount& operator=(const DepthCount&) = delete;

private:
    int& depth_;
};

} // namespace

MessageRecord RecordOf(const IMessage& message) {
    MessageRecord record;
    record.type = message.Type();
    record.source = message.Source();
    record.destination = message.Destination();
    record.body = TextOf(message.Body());
    if (record.type == static_cast<std::int32_t>(MessageType::Event)) {
        record.kind = MessageRecord::Kind::Event;
    } else if (record.type == static_cast<std::int32_t>(MessageType::Request)) {
        record.kind = MessageRecord::Kind::Request;
    } else {
        return record;
    }
    ReadBody(record);
    return record;
}

void Router::Register(std::string_view id, const std::shared_ptr<IMessageListener>& listener) {
    if (!listener) {
        Raise(base::errors::ObjectNotSet, "no listener to register under \"" + std::string(id) + "\"");
    }
    if (id.empty()) {
        Raise(base::errors::InvalidCall, "a listener needs an identifier, found an empty text");
    }
    if (std::shared_ptr<IMessageListener>* present = listeners_.Find(id)) {
        *present = listener;
    } else {
        listeners_.Add(listener, id);
    }
    trace_.Changed(ModelPart::Listeners);
}

bool Router::Unregister(std::string_view id) {
    const bool removed = listeners_.Remove(id);
    if (removed) trace_.Changed(ModelPart::Listeners);
    return removed;
}

void Router::Unregister(const IMessageListener* listener) {
    for (const std::string& id : Ids())
        if (Find(id).get() == listener) Unregister(id);
}

std::shared_ptr<IMessageListener> Router::Find(std::string_view id) const {
    const std::shared_ptr<IMessageListener>* found = listeners_.Find(id);
    return found ? *found : nullptr;
}

std::vector<std::string> Router::Ids() const {
    std::vector<std::string> ids;
    for (std::size_t position = 1; position <= listeners_.Count(); ++position)
        ids.push_back(listeners_.KeyAt(position));
    return ids;
}

bool Router::IsRegistered(std::string_view listenerId) {
    trace_.Call("Router.IsRegistered", listenerId);
    return listeners_.Find(listenerId) != nullptr;
}

std::string Router::Send(const std::shared_ptr<IMessage>& message) {
    trace_.Read("Router.Send");
    return Route(message);
}

std::string Router::Route(const std::shared_ptr<IMessage>& message) {
    if (!message) Raise(base::errors::ObjectNotSet, "no message to send");
    if (depth_ >= MaximumDepth) {
        Raise(base::errors::InvalidCall, "messages are nested deeper than " + std::to_string(MaximumDepth));
    }
    const std::string destination = message->Destination();
    if (trace_.WatchesMessages()) return DeliverWatched(message, destination);
    return Deliver(message, destination, nullptr);
}

std::string Router::Deliver(const std::shared_ptr<IMessage>& message, const std::string& destination,
                            std::string* failure) {
    const std::shared_ptr<IMessageListener> listener = Find(destination);
    if (!listener) return {};
    std::string reply;
    try {
        const DepthCount count(depth_);
        reply = listener->ReceiveMessage(message);
    } catch (...) {
        const std::string text = TextOfException();
        if (failure) *failure = text;
        trace_.Problem("the listener \"" + destination + "\" threw: " + text);
    }
    if (depth_ == 0 && !retired_.empty()) ReleaseRetired();
    return reply;
}

void Router::Retire(std::shared_ptr<void> object) {
    if (depth_ > 0) retired_.push_back(std::move(object));
}

void Router::ReleaseRetired() {
    const std::vector<std::shared_ptr<void>> released = std::exchange(retired_, {});
}

void Router::Clear() {
    const base::Collection<std::shared_ptr<IMessageListener>> released = std::exchange(listeners_, {});
    ReleaseRetired();
}

std::string Router::DeliverWatched(const std::shared_ptr<IMessage>& message, const std::string& destination) {
    MessageRecord record = RecordOf(*message);
    record.registered = listeners_.Find(destination) != nullptr;
    record.depth = depth_;
    trace_.Message(record);
    const auto start = std::chrono::steady_clock::now();
    record.reply = Deliver(message, destination, &record.failure);
    record.duration = std::chrono::steady_clock::now() - start;
    trace_.Reply(record);
    return record.reply;
}

} // namespace arvon::host
