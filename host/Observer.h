#pragma once

#include "base/Value.h"
#include "host/Model.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace arvon::host {

/// One operation that a tool called on the host, as it came in. One that only reads (a count, a key, a
/// record's value) is told to those who want reads, and to all who want calls when it was made to fail.
struct CallRecord {
    std::string operation;                   // "Menus.Add"; host/README.md lists them all
    std::vector<base::Value> arguments = {}; // in call order: text, number, boolean; empty for one left out
    bool failed = false;                     // made to fail by FailNext: the caller gets a ComponentError
    bool isRead = false; // only reads; its arguments: the key or name of what is read, a position, a member
};

struct ParameterRecord {
    std::string name;
    std::int32_t type = 0; // 2: text, 3: integer
    base::Value value;
};

/// One delivery through the router.
struct MessageRecord {
    enum class Kind { Event, Request, Custom };

    Kind kind = Kind::Custom;
    std::int32_t type = 0; // the envelope's number
    std::string source;
    std::string destination;
    std::string name;            // request type or event name; empty when malformed or custom
    std::int32_t mode = 0;       // request
    std::int32_t objectType = 0; // event
    std::int32_t category = 0;   // event
    std::int32_t level = 0;      // event
    std::vector<ParameterRecord> parameters;
    std::string body;       // as sent
    bool malformed = false; // an event or request whose body is not of the form
    bool registered = true; // false: nobody listens under the destination
    int depth = 0;          // deliveries under way around this one

    // known when the delivery is over
    std::string reply;
    std::string failure; // what the listener threw; empty when it did not
    std::chrono::nanoseconds duration{0};
};

/// Parts of the host's model, for observers that draw it.
enum class ModelPart {
    Tools,
    List, // rows, checks and the current row of a list view
    Menus,
    Toolbar,
    ContextMenu,
    Tabs,
    Views,
    Windows,
    TaskViews,
    Loaded,
    Processes,
    Listeners,
    Settings, // the language too
    Page,     // banner and page in front
};

/// Follows what happens in the host. Every member is called on the user-interface thread, in the order in
/// which things happen, and does nothing unless overridden. An observer may subscribe and unsubscribe
/// observers, itself included, from inside a call; it must not throw.
class IObserver {
public:
    virtual ~IObserver() = default;

    /// Before the call is carried out.
    virtual void OnCall(const CallRecord&) {}
    /// A message is about to be delivered; what the receiver does follows. Reply, failure and duration are
    /// not known yet.
    virtual void OnMessage(const MessageRecord&) {}
    /// The same message after its delivery, nested deliveries in between.
    virtual void OnReply(const MessageRecord&) {}
    virtual void OnMessageBox(const std::string& /*text*/, std::int32_t /*style*/,
                              const std::string& /*title*/) {}
    virtual void OnPointer(std::int32_t /*pointer*/) {}
    virtual void OnProcessStarted(const model::Process&) {}
    virtual void OnProcessEnded(const model::Process&, const model::ProcessEnd&) {}
    /// The host's own trouble, for a person: a tool that could not be loaded, a broken Tools.xml, a listener
    /// that threw.
    virtual void OnProblem(const std::string& /*text*/) {}
    /// Something in this part of the model changed; ask ReferenceHost::Model for what it is now. Called for
    /// every single change: mark and draw later.
    virtual void OnChanged(ModelPart) {}

    /// What is costly to tell is only told to those who ask for it. Asked while subscribing, and again before
    /// each telling: an answer may turn to false at any time, and to true by subscribing once more.
    virtual bool WantsCalls() const { return true; }
    /// Reads too: there are far more of them than of other calls.
    virtual bool WantsReads() const { return false; }
    virtual bool WantsMessages() const { return true; }
    virtual bool WantsChanges() const { return true; }
};

} // namespace arvon::host
