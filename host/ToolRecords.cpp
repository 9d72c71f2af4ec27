#include "host/ToolRecords.h"

#include "base/XmlEncoding.h"
#include "host/Errors.h"
#include "host/ToolsXml.h"
#include "platform/Files.h"

#include <map>

namespace arvon::host {

namespace {

/// Stands between a repeated name and what makes its key its own. No name holds it.
constexpr char keyOfRepeated = '\0';

/// The name that a record is keyed by.
std::string KeyedName(std::string_view key) {
    return std::string(key.substr(0, key.find(keyOfRepeated)));
}

} // namespace

ToolRecords::ToolRecords(Trace& trace, platform::Files& files, std::filesystem::path file,
                         const Editor& editor)
    : trace_(trace), files_(files), file_(std::move(file)), editor_(editor) {
    Read();
}

std::size_t ToolRecords::Count() const {
    trace_.Read("Tools.Count");
    return records_.Count();
}

std::shared_ptr<IToolRecord> ToolRecords::Item(std::size_t position) const {
    trace_.Read("Tools.Item", position);
    return records_.Item(position);
}

std::shared_ptr<IToolRecord> ToolRecords::Item(std::string_view name) const {
    trace_.Call("Tools.Item", name);
    return Find(name);
}

std::shared_ptr<ToolRecord> ToolRecords::Find(std::string_view name) const {
    if (*renamed_) KeyByName();
    if (const std::shared_ptr<ToolRecord>* found = records_.Find(name)) return *found;
    const auto repeated = repeated_.find(std::string(name));
    return repeated == repeated_.end() ? nullptr : *records_.Find(repeated->second.front());
}

std::shared_ptr<ToolRecord> ToolRecords::FindById(std::string_view id) const {
    if (id.empty()) return nullptr;
    return FindIf([id](const auto& record) {
        return record->Text(ToolField::Vrex) == id || record->Text(ToolField::Identifier) == id;
    });
}

template <class Test> std::shared_ptr<ToolRecord> ToolRecords::FindIf(const Test& test) const {
    for (const auto& record : records_)
        if (test(record)) return record;
    return nullptr;
}

void ToolRecords::Remove(const std::shared_ptr<IToolRecord>& record) {
    if (!record) Raise(base::errors::ObjectNotSet, "no record to remove");
    const auto name = [&] {
        const auto* own = dynamic_cast<const ToolRecord*>(record.get());
        return own ? own->Text(ToolField::Name) : std::string();
    };
    trace_.Call("Tools.Remove", name);
    const std::size_t position = PositionOf(*record);
    if (position == 0) RaiseNoSuch("tool", name());
    removed_.push_back(records_.Item(position));
    const std::string key = records_.KeyAt(position);
    records_.Remove(position);
    if (const auto repeated = repeated_.find(KeyedName(key)); repeated != repeated_.end()) {
        std::erase(repeated->second, key);
        if (repeated->second.empty()) repeated_.erase(repeated);
    }
    trace_.Changed(ModelPart::Tools);
}

std::size_t ToolRecords::PositionOf(const IToolRecord& record) const {
    std::size_t position = 0;
    for (const auto& present : records_) {
        ++position;
        if (present.get() == &record) return position;
    }
    return 0;
}

ToolRecords::Catalogue ToolRecords::Load() const {
    Catalogue catalogue{files_.Read(file_, base::XmlDocument::MaximumBytes), {}};
    try {
        catalogue.text = base::DecodeXml(std::move(catalogue.text));
        base::XmlDocument document;
        document.LoadText(catalogue.text);
        if (document.Root().Name() != "Tools") {
            Raise(base::errors::InvalidCall,
                  "expected the root \"Tools\", found \"" + document.Root().Name() + "\"");
        }
        catalogue.tools = document.Select("//Tool");
    } catch (const base::ComponentError& error) {
        Raise(error.Number(), file_.string() + ": " + error.Description());
    }
    return catalogue;
}

void ToolRecords::Read() {
    Catalogue catalogue;
    try {
        catalogue = Load();
    } catch (const base::ComponentError& error) {
        trace_.Problem(error.Description());
        return;
    }
    // made first: a record tells of values that mean nothing, and whoever hears it may read the catalogue
    std::vector<std::shared_ptr<ToolRecord>> records;
    records.reserve(catalogue.tools.size());
    for (base::XmlNode& element : catalogue.tools)
        records.push_back(std::make_shared<ToolRecord>(trace_, std::move(element), renamed_));
    records_.Clear();
    repeated_.clear();
    removed_.clear();
    *renamed_ = false;
    for (std::shared_ptr<ToolRecord>& record : records)
        Take(std::move(record));
}

void ToolRecords::Take(std::shared_ptr<ToolRecord> record) const {
    std::string key = record->Text(ToolField::Name);
    if (!key.empty() && records_.Find(key)) {
        std::deque<std::string>& keys = repeated_[key];
        key += keyOfRepeated;
        key += std::to_string(records_.Count());
        keys.push_back(key);
    }
    records_.Add(std::move(record), key);
}

void ToolRecords::KeyByName() const {
    const std::vector<std::shared_ptr<ToolRecord>> records = records_.Snapshot();
    records_.Clear();
    repeated_.clear();
    for (const auto& record : records)
        Take(record);
    *renamed_ = false;
}

void ToolRecords::Reload() {
    trace_.Call("Tools.Reload");
    Read();
    trace_.Changed(ModelPart::Tools);
}

void ToolRecords::Save() {
    trace_.Call("Tools.Save");
    const auto [text, tools] = Load();

    // several elements may have the same name and VREX: they are told apart by their order
    std::map<std::pair<std::string, std::string>, std::deque<std::size_t>> places;
    for (std::size_t index = 0; index < tools.size(); ++index)
        places[{tools[index].Attribute("Name"), tools[index].Attribute("VREX")}].push_back(index);

    std::vector<toolsXml::Edit> edits;
    std::vector<std::size_t> cuts;
    const auto takePlace = [&](const ToolRecord& record) -> std::optional<std::size_t> {
        const auto found = places.find(record.Origin());
        if (found == places.end() || found->second.empty()) return {};
        const std::size_t place = found->second.front();
        found->second.pop_front();
        return place;
    };
    for (const auto& record : removed_)
        if (const auto place = takePlace(*record)) cuts.push_back(*place);
    std::vector<std::string> problems; // told at the end, for whoever hears them may change the catalogue
    for (const auto& record : records_) {
        const auto place = takePlace(*record);
        const auto changes = record->ChangedAttributes();
        if (!place && !changes.empty()) {
            problems.push_back(file_.string() + " holds the tool \"" + record->Origin().first +
                               "\" no more: its changes were not saved");
            continue;
        }
        for (const auto& [attribute, value] : changes)
            edits.push_back({*place, attribute, value});
    }
    if (!edits.empty() || !cuts.empty()) {
        const auto edited = toolsXml::Apply(text, tools.size(), edits, cuts);
        if (!edited) {
            Raise(base::errors::InvalidCall,
                  file_.string() + " holds tools in an XML namespace, and cannot be saved");
        }
        files_.Replace(file_, *edited);
    }
    removed_.clear();
    for (const auto& record : records_)
        record->MarkSaved();
    for (const std::string& problem : problems)
        trace_.Problem(problem);
}

void ToolRecords::Edit(const std::shared_ptr<IToolRecord>& record, std::string_view caller) {
    if (!record) Raise(base::errors::ObjectNotSet, "no record to edit");
    // while the user is at it, the one who asked may let go of the record, and the host may be closed
    const std::shared_ptr<IToolRecord> edited = record;
    const Editor editor = editor_;
    const auto own = std::dynamic_pointer_cast<ToolRecord>(edited);
    const auto name = [&] { return own ? own->Text(ToolField::Name) : std::string(); };
    trace_.Call("Tools.Edit", name, caller);
    if (!editor || !editor(*edited)) return;
    // the catalogue may have been read anew meanwhile
    if (own && !FindIf([&](const auto& present) { return present == own; })) HandOver(*own);
    Save();
}

void ToolRecords::HandOver(ToolRecord& edited) {
    const auto changes = edited.ChangedAttributes();
    if (changes.empty()) return;
    const auto origin = edited.Origin();
    const auto present = FindIf([&](const auto& record) { return record->Origin() == origin; });
    if (!present) {
        trace_.Problem("the catalogue holds the tool \"" + origin.first +
                       "\" no more: its changes were not saved");
        return;
    }
    for (const auto& [attribute, text] : changes)
        present->Assign(attribute, text);
    edited.MarkSaved();
}

std::vector<model::Tool> ToolRecords::Snapshot() const {
    std::vector<model::Tool> rows;
    rows.reserve(records_.Count());
    for (const auto& record : records_)
        rows.push_back(record->Snapshot());
    return rows;
}

} // namespace arvon::host
