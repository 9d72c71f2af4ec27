#pragma once

#include "base/XmlDocument.h"
#include "core/contract/Tools.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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
    /// Values that mean nothing (a Kind that is no number) are told as problems and read as missing ones; so
    /// is a LastUpdated that is no date, but it stays as it is: what cannot show it shall say so. `renamed`
    /// is set when the record gets another name.
    ToolRecord(Trace& trace, base::XmlNode element, std::shared_ptr<bool> renamed);

    std::string Name() const override;
    std::string Classification() const override;
    bool ShowInList() const override;
    base::Value Get(std::string_view member) const override;
    /// Throws InvalidCall for "XML", TypeMismatch for a value that does not fit.
    void Set(std::string_view member, const base::Value& value) override;

    /// What Set does without being called by a tool.
    void Assign(std::string_view member, const base::Value& value);

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
    /// False for a text that is no date; an empty one is none, and no fault.
    bool ReadLastUpdated();

    Trace& trace_;
    base::XmlNode element_;
    std::shared_ptr<bool> renamed_;
    std::array<std::string, toolFieldNames.size()> texts_;
    bool showInList_ = true;
    std::int32_t kind_ = 0;
    base::Value lastUpdated_;                // a date, or the text that is none
    std::map<ToolField, std::string> saved_; // what was changed, as it was saved
};

} // namespace arvon::host
