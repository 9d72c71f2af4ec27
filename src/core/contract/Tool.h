#pragma once

#include "base/Collection.h"
#include "base/Value.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// What every tool of the suite implements. A tool is one object that offers these interfaces; the host finds
/// them by dynamic_pointer_cast on the ITool that the library's entry point made.
namespace arvon {

class IFramework;

/// One task that the user's profile permits.
class IProfileTask {
public:
    virtual ~IProfileTask() = default;
    virtual std::string Name() const = 0;       // e.g. "Can Launch"
    virtual std::string SecondText() const = 0; // the tool that the permission is for
};

class IProfileTasks {
public:
    virtual ~IProfileTasks() = default;
    virtual std::size_t Count() const = 0;
    /// From 1. Throws OutOfRange.
    virtual std::shared_ptr<IProfileTask> Item(std::size_t position) const = 0;
};

class ITool {
public:
    virtual ~ITool() = default;
    virtual bool IsLoaded() const = 0;
    /// Brings the tool up in the host; true when loaded, false when the tool declines. May throw: the host
    /// then counts the tool as not loaded.
    virtual bool Load(const std::shared_ptr<IFramework>& framework) = 0;
    virtual void Unload() = 0;
};

/// The current user's profile, given before Load.
class IProfile {
public:
    virtual ~IProfile() = default;
    virtual base::Value ID() const = 0;
    virtual void SetID(base::Value id) = 0;
    virtual std::shared_ptr<IProfileTasks> Tasks() const = 0;
    virtual void SetTasks(std::shared_ptr<IProfileTasks> tasks) = 0;
};

/// The host's key, kept for it by the tool.
class ISecure {
public:
    virtual ~ISecure() = default;
    virtual std::shared_ptr<IFramework> Framework() const = 0;
    virtual void SetFramework(const std::shared_ptr<IFramework>& framework) = 0;
    virtual base::Value Key() const = 0;
    virtual void SetKey(base::Value key) = 0;
};

/// Records benchmark texts while it is switched on.
class IBenchmarkRecorder {
public:
    virtual ~IBenchmarkRecorder() = default;
    virtual void SetEnabled(bool enabled) = 0;
    virtual void Record(std::string_view text) = 0;
};

/// What the host's support library offers to a tool before it has a framework.
class ISupport {
public:
    virtual ~ISupport() = default;
    virtual std::shared_ptr<IBenchmarkRecorder> NewBenchmarkRecorder() = 0;
};

class IToolRecord;
class IRequest;

/// What the tool manager offers in the process, beside what it answers to messages.
class IToolManager {
public:
    using SortedTools = base::Collection<std::shared_ptr<IToolRecord>>;

    virtual ~IToolManager() = default;

    /// Remembers a tool that is to hear of new options. Known identifiers (exact) are not added twice.
    virtual void AddSubscriber(std::string_view sToolID) = 0;

    /// Sends a request to a listener and returns its reply. Empty text, and nothing sent, for a destination
    /// that nobody registered; empty text and an error report when the delivery fails.
    virtual std::string SendRequestMessage(const std::shared_ptr<IRequest>& oRequest,
                                           std::string_view sDest) = 0;

    /// Records one call's length (in the caller's unit) with the benchmark recorder. `sPars`: further
    /// elements, formatted by the caller.
    virtual void AddBenchmark(std::string_view sMethod, double lLengthInCall, std::string_view sTypeName,
                              std::string_view sPars) = 0;

    /// Text of the host's string module "Tools" by number; what the framework gives under the number when the
    /// module lacks it; empty without a module; "Missing String:" and the number when that fails. Never
    /// throws.
    virtual std::string LoadResString(std::int32_t lResID) = 0;

    /// A sorted copy of the listed tools, without keys. `blnCompareNumeric`: compare as dates. Throws what
    /// reading or converting a property throws.
    virtual SortedTools Sort(std::string_view strPropertyName, bool bDescend, bool blnCompareNumeric) = 0;
};

/// The one symbol that a tool's shared library exports: makes the tool's object. On failure `*tool` stays
/// null.
using CreateToolFunction = void (*)(ISupport* support, std::shared_ptr<ITool>* tool);
inline constexpr const char* CreateToolSymbol = "ArvonCreateTool";

} // namespace arvon
