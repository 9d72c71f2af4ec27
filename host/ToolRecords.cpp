#include "host/ToolRecords.h"

#include "base/ComponentError.h"
#include "host/ToolsXml.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace arvon::host {

namespace {

constexpr std::string_view xmlMember = "XML";

bool SameMember(std::string_view left, std::string_view right) {
    const auto lower = [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
    };
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                     [&](char a, char b) { return lower(a) == lower(b); });
}

std::optional<ToolField> FieldOf(std::string_view member) {
    for (std::size_t index = 0; index < toolFieldNames.size(); ++index)
        if (SameMember(member, toolFieldNames[index])) return static_cast<ToolField>(index);
    return {};
}

std::string IsoText(base::Date date) {
    const base::CalendarTime time = base::ToCalendar(date);
    char text[40];
    if (time.hour == 0 && time.minute == 0 && time.second == 0) {
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", time.year, time.month, time.day);
    } else {
        std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", time.year, time.month, time.day,
                      time.hour, time.minute, time.second);
    }
    return text;
}

base::Value DateOrText(const std::string& text) {
    if (text.empty()) return text;
    try {
        return base::Value(text).ToDate();
    } catch (const base::ComponentError&) {
        return text;
    }
}

} // namespace

// ToolRecord
// ----------------------------------------------------------------------------------------------------

ToolRecord::ToolRecord(Trace& trace, base::XmlNode element) : trace_(trace), element_(std::move(element)) {
    for (std::size_t index = 0; index < toolFieldNames.size(); ++index)
        texts_[index] = element_.Attribute(toolFieldNames[index]);
    const auto read = [this](ToolField field, const char* fallback, auto convert) {
        std::string& text = texts_[static_cast<std::size_t>(field)];
        try {
            if (!text.empty()) return convert(base::Value(text));
        } catch (const base::ComponentError&) {
            trace_.Problem("Tools.xml, tool \"" + Text(ToolField::Name) +
                           "\": " + toolFieldNames[static_cast<std::size_t>(field)] + " \"" + text +
                           "\" has no meaning, read as " + fallback);
        }
        text = fallback;
        return convert(base::Value(text));
    };
    showInList_ =
        read(ToolField::ShowInList, "-1", [](const base::Value& value) { return value.ToBoolean(); });
    kind_ = read(ToolField::Kind, "0", [](const base::Value& value) { return value.ToInteger(); });
}

std::string ToolRecord::Name() const {
    trace_.Check("Record.Name");
    return Text(ToolField::Name);
}

std::string ToolRecord::Classification() const {
    trace_.Check("Record.Classification");
    return Text(ToolField::Classification);
}

bool ToolRecord::ShowInList() const {
    trace_.Check("Record.ShowInList");
    return showInList_;
}

base::Value ToolRecord::Get(std::string_view member) const {
    trace_.Check("Record.Get");
    const auto field = FieldOf(member);
    if (!field) {
        if (SameMember(member, xmlMember)) return element_.Xml();
        NoSuchMember(member);
    }
    switch (*field) {
    case ToolField::ShowInList:
        return showInList_;
    case ToolField::Kind:
        return kind_;
    case ToolField::LastUpdated:
        if (!lastUpdated_) lastUpdated_ = DateOrText(Text(ToolField::LastUpdated));
        return *lastUpdated_;
    default:
        return Text(*field);
    }
}

void ToolRecord::Set(std::string_view member, const base::Value& value) {
    trace_.Call("Record.Set", Text(ToolField::Name), member, value);
    const auto field = FieldOf(member);
    if (!field) {
        if (!SameMember(member, xmlMember)) NoSuchMember(member);
        throw base::ComponentError(base::errors::InvalidCall, "Arvon110", "a record's XML cannot be set");
    }
    const auto index = static_cast<std::size_t>(*field);
    std::string text;
    switch (*field) {
    case ToolField::ShowInList:
        text = value.ToBoolean() ? "-1" : "0";
        break;
    case ToolField::Kind:
        text = std::to_string(value.ToInteger());
        break;
    default:
        text = value.GetKind() == base::Value::Kind::Date ? IsoText(value.ToDate()) : value.ToText();
    }
    if (text == texts_[index]) return;
    element_.SetAttribute(toolFieldNames[index], text);
    if (!origin_ && (*field == ToolField::Name || *field == ToolField::Vrex)) origin_ = Origin();
    texts_[index] = std::move(text);
    changed_.set(index);
    showInList_ = *field == ToolField::ShowInList ? value.ToBoolean() : showInList_;
    kind_ = *field == ToolField::Kind ? value.ToInteger() : kind_;
    lastUpdated_.reset();
    trace_.Changed(ModelPart::Tools);
}

std::pair<std::string, std::string> ToolRecord::Origin() const {
    return origin_ ? *origin_ : std::pair(Text(ToolField::Name), Text(ToolField::Vrex));
}

std::vector<std::pair<std::string, std::string>> ToolRecord::ChangedAttributes() const {
    std::vector<std::pair<std::string, std::string>> changes;
    for (std::size_t index = 0; index < toolFieldNames.size(); ++index)
        if (changed_.test(index)) changes.emplace_back(toolFieldNames[index], texts_[index]);
    return changes;
}

void ToolRecord::MarkSaved() {
    changed_.reset();
    origin_.reset();
}

model::Tool ToolRecord::Snapshot() const {
    return {Text(ToolField::Name),
            Text(ToolField::Vrex),
            Text(ToolField::Identifier),
            Text(ToolField::Classification),
            showInList_,
            Text(ToolField::Version),
            Text(ToolField::LastUpdated),
            kind_,
            Text(ToolField::Brand),
            Text(ToolField::ProgramType),
            Text(ToolField::Path),
            Text(ToolField::CommandLine)};
}

// ToolRecords
// ---------------------------------------------------------------------------------------------------

ToolRecords::ToolRecords(Trace& trace, platform::Files& files, std::filesystem::path file, Editor editor)
    : trace_(trace), files_(files), file_(std::move(file)), editor_(std::move(editor)) {
    Read();
}

std::size_t ToolRecords::Count() const {
    trace_.Check("Tools.Count");
    return records_.Count();
}

std::shared_ptr<IToolRecord> ToolRecords::Item(std::size_t position) const {
    trace_.Check("Tools.Item");
    return records_.Item(position);
}

std::shared_ptr<IToolRecord> ToolRecords::Item(std::string_view name) const {
    trace_.Call("Tools.Item", name);
    return Find(name);
}

const std::string* ToolRecords::KeyOf(std::string_view name) const {
    const auto found = repeated_.find(std::string(name));
    return found == repeated_.end() ? nullptr : &found->second.front();
}

std::shared_ptr<ToolRecord> ToolRecords::Find(std::string_view name) const {
    const std::shared_ptr<ToolRecord>* found = records_.Find(name);
    if (found) return *found;
    if (repeated_.empty()) return nullptr;
    const std::string* key = KeyOf(name);
    return key ? *records_.Find(*key) : nullptr;
}

std::shared_ptr<ToolRecord> ToolRecords::FindById(std::string_view id) const {
    if (id.empty()) return nullptr;
    for (const auto& record : records_)
        if (record->Text(ToolField::Vrex) == id || record->Text(ToolField::Identifier) == id) return record;
    return nullptr;
}

void ToolRecords::Remove(std::string_view name) {
    trace_.Call("Tools.Remove", name);
    const std::shared_ptr<ToolRecord> record = Find(name);
    if (!record) {
        throw base::ComponentError(base::errors::InvalidCall, "Arvon110",
                                   "no tool \"" + std::string(name) + "\"");
    }
    removed_.push_back(record);
    if (!records_.Remove(name)) { // the first of that name went before
        const auto found = repeated_.find(std::string(name));
        records_.Remove(found->second.front());
        found->second.pop_front();
        if (found->second.empty()) repeated_.erase(found);
    }
    trace_.Changed(ModelPart::Tools);
}

std::vector<base::XmlNode> ToolRecords::ToolElements(const base::XmlDocument& document) const {
    if (document.Root().Name() != "Tools") {
        throw base::ComponentError(base::errors::InvalidCall, "Arvon110",
                                   file_.string() + ": expected the root \"Tools\", found \"" +
                                       document.Root().Name() + "\"");
    }
    return document.Select("//Tool");
}

void ToolRecords::Read() {
    records_.Clear();
    repeated_.clear();
    removed_.clear();
    if (!std::filesystem::exists(file_)) return;
    try {
        base::XmlDocument document;
        document.LoadFile(file_);
        for (base::XmlNode& element : ToolElements(document))
            Take(std::make_shared<ToolRecord>(trace_, std::move(element)));
    } catch (const base::ComponentError& error) {
        trace_.Problem(error.Description());
    }
}

void ToolRecords::Take(std::shared_ptr<ToolRecord> record) {
    std::string key = record->Text(ToolField::Name);
    if (!key.empty() && records_.Find(key)) {
        std::deque<std::string>& keys = repeated_[key];
        key += '\0'; // which no name holds
        key += std::to_string(records_.Count());
        keys.push_back(key);
    }
    records_.Add(std::move(record), key);
}

void ToolRecords::Reload() {
    trace_.Call("Tools.Reload");
    Read();
    trace_.Changed(ModelPart::Tools);
}

void ToolRecords::Save() {
    trace_.Call("Tools.Save");
    const std::string text = files_.Read(file_);
    base::XmlDocument document;
    document.LoadText(text);
    std::vector<base::XmlNode> elements = ToolElements(document);

    // several elements may have the same name and VREX: they are told apart by their order
    std::map<std::pair<std::string, std::string>, std::deque<std::size_t>> places;
    for (std::size_t index = 0; index < elements.size(); ++index)
        places[{elements[index].Attribute("Name"), elements[index].Attribute("VREX")}].push_back(index);

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
    for (const auto& record : records_) {
        const auto place = takePlace(*record);
        if (!place) continue;
        for (const auto& [attribute, value] : record->ChangedAttributes())
            edits.push_back({*place, attribute, value});
    }
    if (edits.empty() && cuts.empty()) return;

    if (const auto edited = toolsXml::Apply(text, elements.size(), edits, cuts)) {
        files_.Replace(file_, *edited);
    } else {
        for (const toolsXml::Edit& edit : edits)
            elements[edit.tool].SetAttribute(edit.attribute.c_str(), edit.value);
        for (const std::size_t cut : cuts)
            elements[cut].Parent().RemoveChild(elements[cut]);
        files_.Replace(file_, document.Text());
    }
    removed_.clear();
    const std::vector<std::shared_ptr<ToolRecord>> records = records_.Snapshot();
    records_.Clear();
    repeated_.clear();
    for (const auto& record : records) { // under the names that they have by now
        record->MarkSaved();
        Take(record);
    }
}

void ToolRecords::Edit(const std::shared_ptr<IToolRecord>& record, std::string_view caller) {
    if (!record) throw base::ComponentError(base::errors::ObjectNotSet, "Arvon110", "no record to edit");
    const auto* own = dynamic_cast<const ToolRecord*>(record.get());
    trace_.Call("Tools.Edit", own ? own->Text(ToolField::Name) : std::string(), caller);
    if (editor_ && editor_(*record)) Save();
}

std::vector<model::Tool> ToolRecords::Snapshot() const {
    std::vector<model::Tool> rows;
    rows.reserve(records_.Count());
    for (const auto& record : records_)
        rows.push_back(record->Snapshot());
    return rows;
}

} // namespace arvon::host
