#pragma once

#include "base/Collection.h"
#include "base/XmlDocument.h"
#include "core/contract/Tools.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace platform {
class Files;
}

namespace arvon::host {

/// Properties of a record, in the order in which they are shown; each is an attribute of the Tool element.
enum class ToolField : std::size_t {
    Name,
    Vrex,
    Identifier,
    Classification,
    ShowInList,
    Version,
    LastUpdated,
    Kind,
    Brand,
    ProgramType,
    Path,
    CommandLine,
};
inline constexpr std::array<const char*, 12> toolFieldNames{
    "Name",        "VREX", "Identifier", "Classification", "ShowInList", "version",
    "LastUpdated", "Kind", "Brand",      "ProgramType",    "Path",       "CommandLine"};

/// One Tool element of the catalogue. It lives on when the catalogue is read again.
class ToolRecord final : public IToolRecord {
public:
    /// Values that mean nothing (a Kind that is no number) are told as problems and read as missing ones.
    ToolRecord(Trace& trace, base::XmlNode element);

    std::string Name() const override;
    std::string Classification() const override;
    bool ShowInList() const override;
    base::Value Get(std::string_view member) const override;
    /// Throws InvalidCall for "XML", TypeMismatch for a value that does not fit.
    void Set(std::string_view member, const base::Value& value) override;

    const std::string& Text(ToolField field) const noexcept {
        return texts_[static_cast<std::size_t>(field)];
    }
    /// What the record is found by in a file that was written since it was read: name and VREX as they were
    /// then.
    std::pair<std::string, std::string> Origin() const;
    std::vector<std::pair<std::string, std::string>> ChangedAttributes() const;
    void MarkSaved();
    model::Tool Snapshot() const;

private:
    Trace& trace_;
    base::XmlNode element_;
    std::array<std::string, toolFieldNames.size()> texts_;
    bool showInList_ = true;
    std::int32_t kind_ = 0;
    mutable std::optional<base::Value> lastUpdated_; // read when first asked for
    std::bitset<toolFieldNames.size()> changed_;
    std::optional<std::pair<std::string, std::string>> origin_; // once name or VREX were changed
};

/// The catalogue Tools.xml as a collection of records.
class ToolRecords final : public IToolRecords {
public:
    using Editor = std::function<bool(IToolRecord& record)>;

    /// Reads the catalogue. A missing file is an empty catalogue; a broken one too, and a problem.
    ToolRecords(Trace& trace, platform::Files& files, std::filesystem::path file, Editor editor);

    std::size_t Count() const override;
    std::shared_ptr<IToolRecord> Item(std::size_t position) const override;
    std::shared_ptr<IToolRecord> Item(std::string_view name) const override;
    /// From the collection; the file follows with Save.
    void Remove(std::string_view name) override;
    /// Writes what was changed and removed into the file as it stands on the disk by now: everything else in
    /// it stays as it is. Throws when it cannot be read or written, or is damaged.
    void Save() override;
    void Reload() override;
    void Edit(const std::shared_ptr<IToolRecord>& record, std::string_view caller) override;

    /// Without a call's record; null when there is none.
    std::shared_ptr<ToolRecord> Find(std::string_view name) const;
    /// The first record whose VREX or identifier (exact) it is; null when there is none.
    std::shared_ptr<ToolRecord> FindById(std::string_view id) const;
    std::vector<model::Tool> Snapshot() const;

private:
    void Read();
    void Take(std::shared_ptr<ToolRecord> record);
    std::vector<base::XmlNode> ToolElements(const base::XmlDocument& document) const;
    const std::string* KeyOf(std::string_view name) const;

    Trace& trace_;
    platform::Files& files_;
    std::filesystem::path file_;
    Editor editor_;
    base::Collection<std::shared_ptr<ToolRecord>>
        records_; // keyed by name; a repeated name gets a key of its own
    std::unordered_map<std::string, std::deque<std::string>> repeated_; // those keys, by name
    std::vector<std::shared_ptr<ToolRecord>> removed_;                  // since the last save
};

} // namespace arvon::host
