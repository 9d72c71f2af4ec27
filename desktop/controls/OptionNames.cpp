#include "desktop/controls/OptionNames.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "base/Value.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"

#include <algorithm>
#include <array>

namespace desktop {

namespace {

struct Prefix {
    std::string_view text;
    OptionKind kind;
};
constexpr std::array prefixes{Prefix{"chk", OptionKind::Check}, Prefix{"cmb", OptionKind::Choice},
                              Prefix{"lbl", OptionKind::Note}, Prefix{"opt", OptionKind::Radio},
                              Prefix{"txt", OptionKind::Text}};

const Prefix* PrefixOf(std::string_view name) {
    const auto found =
        std::ranges::find_if(prefixes, [&](const Prefix& prefix) { return name.starts_with(prefix.text); });
    return found == prefixes.end() ? nullptr : &*found;
}

// "0" belongs to the first pair that has it.
constexpr std::array switches{SwitchWords{"ON", "OFF"}, SwitchWords{"-1", "0"}, SwitchWords{"1", "0"},
                              SwitchWords{"True", "False"}, SwitchWords{"Yes", "No"}};

constexpr int ownName = 0; // in no language but this

struct KnownValue {
    std::string_view option, value;
    text::Own label;
};
// The sort keys are the columns' keys to the letter: under any other spelling the date is sorted as text.
constexpr std::array knownValues{
    KnownValue{optionName::SortKey, "name", text::value::SortName},
    KnownValue{optionName::SortKey, "version", text::value::SortVersion},
    KnownValue{optionName::SortKey, "lastupdated", text::value::SortLastUpdated},
    KnownValue{optionName::SortKey, "classification", text::value::SortClassification},
    KnownValue{optionName::SortOrder, "0", text::value::Ascending},
    KnownValue{optionName::SortOrder, "1", text::value::Descending},
    KnownValue{"cmbLanguage", "1033", {ownName, "English"}},
    KnownValue{"cmbLanguage", "1031", {ownName, "Deutsch"}},
    KnownValue{"cmbLanguage", "1036", {ownName, "Français"}},
    KnownValue{"cmbLanguage", "1040", {ownName, "Italiano"}},
    KnownValue{"cmbLanguage", "1034", {ownName, "Español"}},
    KnownValue{"cmbLanguage", "1045", {ownName, "Polski"}},
    KnownValue{"cmbUnitOfMeasure", "English", text::value::English},
    KnownValue{"cmbUnitOfMeasure", "Metric", text::value::Metric},
};
constexpr std::array closedOptions{optionName::SortKey, optionName::SortOrder};

const KnownValue* KnownValueOf(std::string_view option, std::string_view value) {
    const auto known = std::ranges::find_if(
        knownValues, [&](const KnownValue& entry) { return entry.option == option && entry.value == value; });
    return known == knownValues.end() ? nullptr : &*known;
}

/// A word ends before a capital that follows a small letter or a digit, or that a small letter follows.
bool StartsWord(const QString& text, qsizetype at) {
    if (at == 0 || !text[at].isUpper()) return false;
    if (!text[at - 1].isUpper()) return true;
    return at + 1 < text.size() && text[at + 1].isLower();
}

} // namespace

OptionKind KindOfOption(std::string_view name) {
    const Prefix* prefix = PrefixOf(name);
    return prefix ? prefix->kind : OptionKind::Text;
}

std::string_view StemOfOption(std::string_view name) {
    const Prefix* prefix = PrefixOf(name);
    return prefix && name.size() > prefix->text.size() ? name.substr(prefix->text.size()) : name;
}

QString CaptionOfOption(std::string_view name) {
    const QString stem = ToQt(StemOfOption(name)).replace('_', ' ');
    QString caption;
    for (qsizetype at = 0; at < stem.size(); ++at) {
        const bool startsWord = StartsWord(stem, at);
        if (startsWord && !caption.endsWith(' ')) caption += ' ';
        const bool inCapitals = at + 1 < stem.size() && stem[at + 1].isUpper();
        caption += startsWord && !inCapitals && at + 1 < stem.size() ? stem[at].toLower() : stem[at];
    }
    return caption;
}

std::optional<SwitchWords> SwitchWordsOf(std::string_view value) {
    for (const SwitchWords& words : switches)
        if (base::EqualIgnoringCase(value, words.on) || base::EqualIgnoringCase(value, words.off))
            return words;
    return {};
}

bool IsOn(std::string_view value) {
    return std::ranges::any_of(
        switches, [&](const SwitchWords& words) { return base::EqualIgnoringCase(value, words.on); });
}

bool IsBlankLabel(std::string_view value) {
    return value.empty() || SwitchWordsOf(value).has_value();
}

OptionChoices ChoicesOfOption(std::string_view name) {
    OptionChoices choices;
    for (const KnownValue& known : knownValues)
        if (known.option == name) choices.values.push_back({std::string(known.value), text::Of(known.label)});
    choices.closed = std::ranges::find(closedOptions, name) != closedOptions.end();
    return choices;
}

bool HasKnownChoices(std::string_view name) {
    return std::ranges::find(knownValues, name, &KnownValue::option) != knownValues.end();
}

// As the component reads them: a property's name in any letter case, a direction as a boolean. Without a text
// the first choice is in force.
std::string ChoiceOfValue(std::string_view option, std::string_view value) {
    if (option == optionName::SortKey) {
        if (value.empty()) return "name";
        const auto known = std::ranges::find_if(knownValues, [&](const KnownValue& entry) {
            return entry.option == optionName::SortKey && base::EqualIgnoringCase(entry.value, value);
        });
        if (known != knownValues.end()) return std::string(known->value);
    } else if (option == optionName::SortOrder) {
        try {
            return base::Value(value).ToBoolean() ? "1" : "0";
        } catch (const base::ComponentError&) {
            if (value.empty()) return "0";
        }
    }
    return std::string(value);
}

QString LabelOfValue(std::string_view option, std::string_view value) {
    const KnownValue* known = KnownValueOf(option, ChoiceOfValue(option, value));
    return known ? text::Of(known->label) : ToQt(value);
}

} // namespace desktop
