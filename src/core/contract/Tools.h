#pragma once

#include "base/Value.h"
#include "core/contract/Messages.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace arvon {

/// One installed program. By name (any letter case): "Name", "VREX", "Identifier", "Classification",
/// "ShowInList" (boolean), "version", "LastUpdated" (date; empty text when the catalogue gives none, the text
/// itself when it is no date), "Kind" (integer), "Brand", "ProgramType", "Path", "CommandLine", and "XML",
/// the record's own XML text. Setting changes the record in memory; IToolRecords::Save keeps it. Three
/// members are offered early-bound too.
class IToolRecord : public base::Object {
public:
    virtual std::string Name() const = 0;
    virtual std::string Classification() const = 0;
    virtual bool ShowInList() const = 0;
};

/// Kind of a program that runs in-process, one at a time.
inline constexpr std::int32_t VantorKind = 3;

/// The host's whole tool collection, in catalogue order.
class IToolRecords {
public:
    virtual ~IToolRecords() = default;
    virtual std::size_t Count() const = 0;
    /// From 1. Throws OutOfRange.
    virtual std::shared_ptr<IToolRecord> Item(std::size_t position) const = 0;
    /// The first record of that name (exact); null when there is none.
    virtual std::shared_ptr<IToolRecord> Item(std::string_view name) const = 0;
    /// Takes the record out. Throws InvalidCall for one that is not in the collection.
    virtual void Remove(const std::shared_ptr<IToolRecord>& record) = 0;
    /// Writes the collection to Tools.xml in one step.
    virtual void Save() = 0;
    /// Reads Tools.xml again; records already handed out live on unchanged.
    virtual void Reload() = 0;
    /// Lets the user edit a record; the host saves what was changed. `caller`: the procedure that asks.
    virtual void Edit(const std::shared_ptr<IToolRecord>& record, std::string_view caller) = 0;
};

/// A tool that the host has loaded in-process.
class ILoadedTool {
public:
    virtual ~ILoadedTool() = default;
    virtual std::string Name() const = 0;
    virtual std::string ProductDataKey() const = 0; // the VREX of its record; the name where it has none
};

class ILoadedTools {
public:
    virtual ~ILoadedTools() = default;
    virtual std::size_t Count() const = 0;
    /// From 1. Throws OutOfRange.
    virtual std::shared_ptr<ILoadedTool> Item(std::size_t position) const = 0;
};

/// Loads tools in-process. Loading may deliver messages before it returns.
class IToolLoader {
public:
    virtual ~IToolLoader() = default;
    /// `name`: a record's name, or the identifier of a component such as "Qillo110".
    virtual bool IsLoaded(std::string_view name) = 0;
    /// False when the tool is refused: unknown, no tool library, failed or declined to load.
    virtual bool Load(std::string_view name, const std::shared_ptr<IMessageListener>& subscriber) = 0;
};

} // namespace arvon
