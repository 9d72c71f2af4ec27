#pragma once

#include "base/Value.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// The shared vocabulary of host and tools. Objects of the host are held by std::shared_ptr; an empty
/// reference is a null pointer; a failing call throws base::ComponentError. Everything runs on the host's
/// user-interface thread.
namespace arvon {

using base::Value;

/// What an envelope's body holds. Other numbers are custom messages.
enum class MessageType : std::int32_t { Event = 1, Request = 2 };

/// Type codes of parameters.
enum class ParameterType : std::int32_t { Text = 2, Integer = 3 };

/// One named value of a request or event.
class IParameter {
public:
    virtual ~IParameter() = default;
    virtual std::string Name() const = 0;
    virtual Value GetValue() const = 0;
};

/// The named values of a request or event, in order.
class IParameters {
public:
    virtual ~IParameters() = default;
    /// Appends a parameter. The flag is passed as the host's classes want it: always true.
    virtual void Add(ParameterType type, std::string_view name, const Value& value, bool flag) = 0;
    virtual std::size_t Count() const = 0;
    /// The parameter at a position from 1. Throws OutOfRange.
    virtual std::shared_ptr<IParameter> Item(std::size_t position) const = 0;
    /// The first parameter of that name (exact); null when there is none.
    virtual std::shared_ptr<IParameter> Item(std::string_view name) const = 0;
};

/// A question to a listener, answered by a text.
class IRequest {
public:
    virtual ~IRequest() = default;
    virtual std::string Type() const = 0; // the request's name
    virtual void SetType(std::string_view type) = 0;
    virtual std::int32_t Mode() const = 0; // numeric class, set by the sender
    virtual void SetMode(std::int32_t mode) = 0;
    virtual IParameters& Parameters() = 0;
    /// The whole request as XML text; assigning throws for a text that is not of the form, and changes
    /// nothing then.
    virtual std::string Xml() const = 0;
    virtual void SetXml(std::string_view xml) = 0;
};

/// A notice to a listener.
class IEvent {
public:
    virtual ~IEvent() = default;
    virtual std::int32_t ObjectType() const = 0; // kind of host object that raised it: see EventShapes.h
    virtual void SetObjectType(std::int32_t type) = 0;
    virtual std::string Name() const = 0;
    virtual void SetName(std::string_view name) = 0;
    virtual std::int32_t Category() const = 0; // for events of views and nodes: the event kind
    virtual void SetCategory(std::int32_t category) = 0;
    virtual std::int32_t Level() const = 0;
    virtual void SetLevel(std::int32_t level) = 0;
    virtual IParameters& Parameters() = 0;
    /// As for the request.
    virtual std::string Xml() const = 0;
    virtual void SetXml(std::string_view xml) = 0;
};

/// The envelope of one delivery; created new for every send.
class IMessage {
public:
    virtual ~IMessage() = default;
    virtual std::int32_t Type() const = 0; // a MessageType, or any number for a custom message
    virtual void SetType(std::int32_t type) = 0;
    virtual std::string Source() const = 0; // listener identifier of the sender
    virtual void SetSource(std::string_view source) = 0;
    virtual std::string Destination() const = 0; // listener identifier of the receiver
    virtual void SetDestination(std::string_view destination) = 0;
    virtual Value Body() const = 0; // XML text of the request or event
    virtual void SetBody(Value body) = 0;
};

/// Receives messages under an identifier.
class IMessageListener {
public:
    virtual ~IMessageListener() = default;
    /// The listener's identifier; always the same text.
    virtual std::string id() const = 0;
    /// Answers one message; may be re-entered while a send of its own is under way. Throws nothing but what
    /// kept an error report from being sent: the router counts that as no reply.
    virtual std::string ReceiveMessage(const std::shared_ptr<IMessage>& message) = 0;
};

/// Synchronous delivery between listeners: a send returns when the receiver has answered, and may re-enter
/// the sender.
class IRouter {
public:
    virtual ~IRouter() = default;
    virtual bool IsRegistered(std::string_view listenerId) = 0;
    /// Delivers to message.Destination() and returns its reply; empty text for a destination that nobody
    /// registered.
    virtual std::string Send(const std::shared_ptr<IMessage>& message) = 0;
};

} // namespace arvon
