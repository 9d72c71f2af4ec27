#include "options/ToolOptions.h"

#include "options/OptionErrors.h"
#include "platform/Services.h"

#include <optional>
#include <unordered_set>

namespace kvtm {

using base::ComponentError;
using base::Value;
using base::XmlDocument;
using base::XmlNode;

namespace {

constexpr const char* source = "ToolOptions";
constexpr const char* setsPath = "//ToolOptions";
constexpr const char* identifierAttribute = "ID";

/// The value of "ID"; nothing for a set without one. Throws for a child that cannot have attributes.
std::optional<std::string> IdentifierOf(const XmlNode& child) {
    if (!child.IsElement()) {
        throw ComponentError(base::errors::ObjectNotSet, source,
                             "the option sets hold a \"" + child.Name() + "\" node, expected elements only");
    }
    if (!child.HasAttribute(identifierAttribute)) return std::nullopt;
    return child.Attribute(identifierAttribute);
}

template <class Operation> bool Succeeds(Operation&& operation) noexcept {
    try {
        operation();
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace

ToolOptions::Record ToolOptions::Item(const Value& vntIndexKey) const {
    if (const std::string* key = vntIndexKey.TextIfAny()) {
        const Record* record = records_.Find(*key);
        return record ? *record : nullptr;
    }
    Record record;
    Succeeds([&] {
        const std::int32_t position = vntIndexKey.ToInteger();
        if (position >= 1) record = records_.Item(static_cast<std::size_t>(position));
    });
    return record;
}

std::size_t ToolOptions::Count() const noexcept {
    return records_.Count();
}

ToolOptions::Enumerator ToolOptions::NewEnum() const {
    return Enumerator(records_.Snapshot());
}

bool ToolOptions::Load(std::string_view OptionSchema) {
    return Succeeds([&] { LoadOrThrow(OptionSchema); });
}

bool ToolOptions::Save(std::string_view OptionSchema, std::string_view URLPath) {
    return Succeeds([&] { SaveOrThrow(OptionSchema, URLPath); });
}

void ToolOptions::Clear() noexcept {
    records_.Clear();
}

ToolOptions::Record ToolOptions::Add(std::string_view identifier, std::string_view key) {
    auto record = std::make_shared<ToolOption>();
    record->Key = identifier;
    return records_.AddKeyed(std::move(record), key.empty() ? identifier : key);
}

void ToolOptions::Remove(std::string_view key) noexcept {
    records_.Remove(key);
}

void ToolOptions::LoadOrThrow(std::string_view OptionSchema) {
    XmlDocument document;
    document.LoadText(OptionSchema);
    const XmlNode sets = document.SelectSingle(setsPath);
    Clear();
    if (!sets) {
        throw ComponentError(base::errors::ObjectNotSet, source,
                             "the options hold no \"ToolOptions\" element");
    }
    for (XmlNode child = sets.FirstChild(); child; child = child.NextSibling()) {
        const std::optional<std::string> identifier = IdentifierOf(child);
        if (!identifier) continue;
        const Record record = Add(*identifier, "");
        record->XMLObject = child;
        record->ReadProperties();
    }
    msXML = document.Text();
}

// The values go into the elements of the last Load, the file gets the text as it was passed: callers rely on
// that.
void ToolOptions::SaveOrThrow(std::string_view OptionSchema, std::string_view URLPath) {
    XmlDocument document;
    document.LoadText(OptionSchema);
    if (const XmlNode sets = document.SelectSingle(setsPath)) {
        for (XmlNode child = sets.FirstChild(); child; child = child.NextSibling()) {
            const std::optional<std::string> identifier = IdentifierOf(child);
            if (!identifier) continue;
            const Record record = Item(Value(*identifier));
            if (!record) {
                throw ComponentError(base::errors::ObjectErrorBase + optionError::UnknownSet, source,
                                     "no option set \"" + *identifier + "\" was read");
            }
            record->WriteProperties();
        }
    }
    services_.files->Replace(services_.filePaths->ToSystem(URLPath), document.Text());
    Load(OptionSchema);
}

void ToolOptions::SaveText(std::string_view text, std::string_view URLPath,
                           const std::function<void()>& work) {
    services_.files->ReplaceWhile(services_.filePaths->ToSystem(URLPath), text, work);
}

bool ToolOptions::AreSound(const XmlNode& sets) {
    std::unordered_set<std::string> identifiers;
    for (XmlNode child = sets.FirstChild(); child; child = child.NextSibling()) {
        if (!child.IsElement()) return false;
        if (!child.HasAttribute(identifierAttribute)) continue;
        if (!identifiers.insert(child.Attribute(identifierAttribute)).second || !IsSound(child)) return false;
    }
    return true;
}

bool ToolOptions::IsSound(const XmlNode& set) {
    ToolOption record;
    record.XMLObject = set;
    return Succeeds([&] { record.ReadProperties(); });
}

} // namespace kvtm
