#include "desktop/controls/OptionSheet.h"

#include "base/Text.h"
#include "base/XmlDocument.h"
#include "desktop/Folding.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <map>
#include <utility>

namespace desktop {

namespace {

constexpr const char* toolElement = "Tool";
constexpr const char* optionElement = "Option";

base::XmlNode ChildElement(const base::XmlNode& parent, std::string_view name) {
    for (base::XmlNode child = parent.FirstChild(); child; child = child.NextSibling())
        if (child.IsElement() && child.Name() == name) return child;
    return {};
}

bool HasChildElements(const base::XmlNode& node) {
    for (base::XmlNode child = node.FirstChild(); child; child = child.NextSibling())
        if (child.IsElement()) return true;
    return false;
}

/// Calls `visit` for every tool in document order. Tools may stand inside other elements.
template <class Visit> void ForEachTool(const base::XmlNode& parent, const Visit& visit) {
    for (base::XmlNode child = parent.FirstChild(); child; child = child.NextSibling()) {
        if (!child.IsElement() || child.Name() == optionElement) continue;
        if (child.Name() == toolElement) visit(child);
        ForEachTool(child, visit);
    }
}

std::vector<base::XmlNode> OptionsOf(const base::XmlNode& tool) {
    std::vector<base::XmlNode> options;
    for (base::XmlNode child = tool.FirstChild(); child; child = child.NextSibling())
        if (child.IsElement() && child.Name() == optionElement) options.push_back(child);
    return options;
}

bool IsHidden(const base::XmlNode& option) {
    return base::TrimBlanks(ChildElement(option, "Visible").Text()) == "0";
}

/// A label belongs to the option of the same stem: its text is that option's, and it has no row of its own.
void JoinLabels(std::vector<OptionField>& fields) {
    std::map<std::string_view, OptionField*> owners;
    for (OptionField& field : fields)
        if (field.kind != OptionKind::Note) owners.emplace(StemOfOption(field.name), &field);
    std::vector<bool> joined(fields.size());
    for (std::size_t index = 0; index < fields.size(); ++index) {
        const OptionField& label = fields[index];
        if (label.kind != OptionKind::Note || IsBlankLabel(label.value)) continue;
        const auto owner = owners.find(StemOfOption(label.name));
        if (owner == owners.end()) continue;
        owner->second->label = ToQt(label.value);
        joined[index] = true;
    }
    std::vector<OptionField> left;
    for (std::size_t index = 0; index < fields.size(); ++index)
        if (!joined[index]) left.push_back(std::move(fields[index]));
    fields = std::move(left);
}

/// Radio options side by side that say on or off in words belong together; one that offers choices of its own
/// stands alone.
void GroupRadios(std::vector<OptionField>& fields) {
    int group = -1;
    bool inGroup = false;
    for (OptionField& field : fields) {
        const bool isNumber =
            !field.value.empty() && field.value.find_first_not_of("-0123456789") == std::string::npos;
        const bool isSwitch = field.kind == OptionKind::Radio && !isNumber && SwitchWordsOf(field.value) &&
                              !HasKnownChoices(field.name);
        if (isSwitch && !inGroup) ++group;
        inGroup = isSwitch;
        if (isSwitch) field.radioGroup = group;
    }
}

void PutSearched(OptionField& field) {
    const QString value = ToQt(field.value);
    const QString shown = LabelOfValue(field.name, field.value);
    field.searched = Folded(field.label + '\n' + ToQt(field.name) + '\n' + value + '\n' + shown);
}

bool IsNumber(const std::string& text) {
    bool good = false;
    QLocale::c().toDouble(ToQt(text), &good);
    return good;
}

/// The first character that XML cannot hold; 0 when there is none.
char32_t FirstUnprintable(const std::string& text) {
    for (const char32_t code : base::ToCodePoints(text)) {
        if ((code < 0x20 && code != '\t' && code != '\n' && code != '\r') || code == 0xFFFE || code == 0xFFFF)
            return code;
    }
    return 0;
}

} // namespace

void OptionSheet::Load(const std::string& text) {
    base::XmlDocument document;
    document.LoadText(text);
    text_ = text;
    pages_.clear();
    std::size_t place = 0;
    const auto read = [&](const base::XmlNode& tool) { ReadTool(tool, place); };
    if (document.Root().Name() == toolElement) read(document.Root());
    ForEachTool(document.Root(), read);
}

void OptionSheet::ReadTool(const base::XmlNode& tool, std::size_t& place) {
    OptionPage page;
    page.toolId = tool.Attribute("ID");
    page.title = ToQt(ChildElement(tool, "DisplayName").Text()).simplified();
    if (page.title.isEmpty()) page.title = ToQt(page.toolId);
    for (const base::XmlNode& option : OptionsOf(tool)) {
        const std::size_t here = place++;
        if (IsHidden(option)) continue;
        const base::XmlNode value = ChildElement(option, "Value");
        OptionField field;
        field.name = ChildElement(option, "Name").Text();
        field.label = CaptionOfOption(field.name);
        field.kind = KindOfOption(field.name);
        field.original = field.value = value.Text();
        field.editable = value && !HasChildElements(value);
        field.place = here;
        if (!field.name.empty()) page.fields.push_back(std::move(field));
    }
    JoinLabels(page.fields);
    GroupRadios(page.fields);
    for (OptionField& field : page.fields)
        PutSearched(field);
    if (!page.fields.empty()) pages_.push_back(std::move(page));
}

void OptionSheet::Store(std::size_t page, std::size_t field, std::string value) {
    OptionField& changed = pages_[page].fields[field];
    const bool before = changed.IsChanged();
    changed.value = std::move(value);
    PutSearched(changed);
    if (changed.IsChanged() == before) return;
    if (before) {
        --pages_[page].changes;
    } else {
        ++pages_[page].changes;
    }
}

void OptionSheet::SetValue(std::size_t page, std::size_t field, std::string value) {
    const OptionField& changed = pages_[page].fields[field];
    if (!changed.editable) return;
    if (changed.radioGroup >= 0 && IsOn(value)) {
        for (std::size_t other = 0; other < pages_[page].fields.size(); ++other) {
            const OptionField& sibling = pages_[page].fields[other];
            if (other == field || sibling.radioGroup != changed.radioGroup || !IsOn(sibling.value)) continue;
            const bool wasOff = !IsOn(sibling.original);
            Store(page, other, wasOff ? sibling.original : std::string(SwitchWordsOf(sibling.value)->off));
        }
    }
    Store(page, field, std::move(value));
}

void OptionSheet::Reset(std::size_t page, std::size_t field) {
    const int group = Field(page, field).radioGroup;
    for (std::size_t index = 0; index < pages_[page].fields.size(); ++index) {
        const bool together = group >= 0 && Field(page, index).radioGroup == group;
        if (index == field || together) Store(page, index, Field(page, index).original);
    }
}

void OptionSheet::ResetPage(std::size_t page) {
    for (std::size_t field = 0; field < pages_[page].fields.size(); ++field)
        Store(page, field, Field(page, field).original);
}

std::size_t OptionSheet::Changes() const {
    std::size_t changes = 0;
    for (const OptionPage& page : pages_)
        changes += page.changes;
    return changes;
}

std::vector<std::size_t> OptionSheet::Matching(std::size_t page, const QString& needle) const {
    const OptionPage& searched = pages_[page];
    const QStringList words = FoldedWords(needle);
    const bool all = HasAllWords(Folded(searched.title + '\n' + ToQt(searched.toolId)), words);
    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < searched.fields.size(); ++index)
        if (all || HasAllWords(searched.fields[index].searched, words)) found.push_back(index);
    return found;
}

QString OptionSheet::TroubleOf(const OptionField& field) const {
    if (!field.IsChanged()) return {};
    if (const char32_t code = FirstUnprintable(field.value))
        return text::Of(text::options::Unprintable).arg(field.label, QString::number(std::uint32_t{code}));
    if (field.name == optionName::Language &&
        (field.value.empty() || field.value.find_first_not_of("0123456789") != std::string::npos))
        return text::Of(text::options::NoLanguage).arg(field.label, ToQt(field.value));
    return {};
}

QString OptionSheet::WarningOf(const OptionField& field) const {
    if (!field.IsChanged() || field.kind != OptionKind::Text) return {};
    if (!IsNumber(field.original) || IsNumber(field.value)) return {};
    return text::Of(text::options::NoNumber).arg(ToQt(field.original));
}

std::vector<OptionSheet::Trouble> OptionSheet::Troubles() const {
    std::vector<Trouble> troubles;
    for (std::size_t page = 0; page < pages_.size(); ++page) {
        if (pages_[page].changes == 0) continue;
        for (std::size_t field = 0; field < pages_[page].fields.size(); ++field)
            if (QString trouble = TroubleOf(Field(page, field)); !trouble.isEmpty())
                troubles.push_back({page, field, std::move(trouble)});
    }
    return troubles;
}

std::string OptionSheet::Text() const {
    std::map<std::size_t, const std::string*> changed;
    for (const OptionPage& page : pages_) {
        if (page.changes == 0) continue;
        for (const OptionField& field : page.fields)
            if (field.IsChanged()) changed.emplace(field.place, &field.value);
    }
    if (changed.empty()) return text_;

    base::XmlDocument document;
    document.LoadText(text_);
    std::size_t place = 0;
    const auto write = [&](const base::XmlNode& tool) {
        for (const base::XmlNode& option : OptionsOf(tool)) {
            const auto found = changed.find(place++);
            if (found != changed.end()) ChildElement(option, "Value").SetText(*found->second);
        }
    };
    if (document.Root().Name() == toolElement) write(document.Root());
    ForEachTool(document.Root(), write);
    return document.Text();
}

} // namespace desktop
