#include "host/ToolRecord.h"

#include "base/DateText.h"
#include "host/Errors.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace arvon::host {

namespace {

constexpr std::string_view xmlMember = "XML";

/// `member` is made of letters only: upper and lower case of each differ in one bit.
bool SameMember(std::string_view asked, std::string_view member) {
    constexpr unsigned caseBit = 'a' - 'A';
    const auto same = [](char a, char b) {
        return (static_cast<unsigned char>(a) | caseBit) == (static_cast<unsigned char>(b) | caseBit);
    };
    return asked.size() == member.size() && std::equal(asked.begin(), asked.end(), member.begin(), same);
}

constexpr auto members = [] {
    std::array<std::string_view, toolFieldNames.size()> all;
    std::copy(toolFieldNames.begin(), toolFieldNames.end(), all.begin());
    return all;
}();

std::optional<ToolField> FieldOf(std::string_view member) {
    const auto found = std::find_if(members.begin(), members.end(),
                                    [member](std::string_view other) { return SameMember(member, other); });
    if (found == members.end()) return {};
    return static_cast<ToolField>(found - members.begin());
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

} // namespace

ToolRecord::ToolRecord(Trace& trace, base::XmlNode element, std::shared_ptr<bool> renamed)
    : trace_(trace), element_(std::move(element)), renamed_(std::move(renamed)) {
    for (std::size_t index = 0; index < toolFieldNames.size(); ++index)
        texts_[index] = element_.Attribute(toolFieldNames[index]);
    const auto tell = [this](ToolField field, const std::string& fault) {
        trace_.Problem("Tools.xml, tool \"" + Text(ToolField::Name) + "\": " +
                       toolFieldNames[static_cast<std::size_t>(field)] + " \"" + Text(field) + "\" " + fault);
    };
    const auto read = [&](ToolField field, const char* fallback, auto convert) {
        std::string& text = texts_[static_cast<std::size_t>(field)];
        try {
            if (!text.empty()) return convert(base::Value(text));
        } catch (const base::ComponentError&) {
            tell(field, std::string("has no meaning, read as ") + fallback);
        }
        text = fallback;
        return convert(base::Value(text));
    };
    showInList_ =
        read(ToolField::ShowInList, "-1", [](const base::Value& value) { return value.ToBoolean(); });
    kind_ = read(ToolField::Kind, "0", [](const base::Value& value) { return value.ToInteger(); });
    if (!ReadLastUpdated()) tell(ToolField::LastUpdated, "is not a date");
}

bool ToolRecord::ReadLastUpdated() {
    lastUpdated_ = Text(ToolField::LastUpdated);
    if (Text(ToolField::LastUpdated).empty()) return true;
    try {
        lastUpdated_ = base::ToRecordDate(lastUpdated_);
        return true;
    } catch (const base::ComponentError&) {
        return false;
    }
}

std::string ToolRecord::Name() const {
    trace_.Read("Record.Name", Text(ToolField::Name));
    return Text(ToolField::Name);
}

std::string ToolRecord::Classification() const {
    trace_.Read("Record.Classification", Text(ToolField::Name));
    return Text(ToolField::Classification);
}

bool ToolRecord::ShowInList() const {
    trace_.Read("Record.ShowInList", Text(ToolField::Name));
    return showInList_;
}

base::Value ToolRecord::Get(std::string_view member) const {
    trace_.Read("Record.Get", Text(ToolField::Name), member);
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
        return lastUpdated_;
    default:
        return Text(*field);
    }
}

void ToolRecord::Set(std::string_view member, const base::Value& value) {
    trace_.Call("Record.Set", Text(ToolField::Name), member, value);
    Assign(member, value);
}

void ToolRecord::Assign(std::string_view member, const base::Value& value) {
    const auto field = FieldOf(member);
    if (!field) {
        if (!SameMember(member, xmlMember)) NoSuchMember(member);
        Raise(base::errors::InvalidCall, "a record's XML cannot be set");
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
    const auto [saved, isFirstChange] = saved_.try_emplace(*field, texts_[index]);
    if (!isFirstChange && saved->second == text) saved_.erase(saved);
    texts_[index] = std::move(text);
    showInList_ = *field == ToolField::ShowInList ? value.ToBoolean() : showInList_;
    kind_ = *field == ToolField::Kind ? value.ToInteger() : kind_;
    if (*field == ToolField::LastUpdated) ReadLastUpdated();
    if (*field == ToolField::Name) *renamed_ = true;
    trace_.Changed(ModelPart::Tools);
}

std::pair<std::string, std::string> ToolRecord::Origin() const {
    const auto asSaved = [this](ToolField field) {
        const auto saved = saved_.find(field);
        return saved == saved_.end() ? Text(field) : saved->second;
    };
    return {asSaved(ToolField::Name), asSaved(ToolField::Vrex)};
}

std::vector<std::pair<std::string, std::string>> ToolRecord::ChangedAttributes() const {
    std::vector<std::pair<std::string, std::string>> changes;
    for (const auto& [field, saved] : saved_)
        changes.emplace_back(toolFieldNames[static_cast<std::size_t>(field)], Text(field));
    return changes;
}

void ToolRecord::MarkSaved() {
    saved_.clear();
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

} // namespace arvon::host
