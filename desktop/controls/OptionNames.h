#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What an option's name and value tell about how it is shown.
namespace desktop {

/// By the prefix of the name: chk, cmb, lbl, opt; anything else is plain text.
enum class OptionKind { Check, Choice, Note, Radio, Text };
OptionKind KindOfOption(std::string_view name);

/// The name without its prefix: "GridSpacing" of "txtGridSpacing". A label and the option that it belongs to
/// have the same stem.
std::string_view StemOfOption(std::string_view name);
/// The stem as words: "Show pricing UI" of "chkShowPricingUI".
QString CaptionOfOption(std::string_view name);

/// A pair of words for on and off.
struct SwitchWords {
    std::string_view on, off;
};
/// The pair that a value comes from, letter case ignored; nothing for any other text.
std::optional<SwitchWords> SwitchWordsOf(std::string_view value);
bool IsOn(std::string_view value);
/// Whether a label's value is no text to show: an empty one, or a word that switched the label off.
bool IsBlankLabel(std::string_view value);

/// A value that an option can take, and what a person reads.
struct OptionChoice {
    std::string value;
    QString label;
};
struct OptionChoices {
    std::vector<OptionChoice> values;
    bool closed = false; // nothing else can be chosen
};
/// What is known of an option by its name; empty for most.
OptionChoices ChoicesOfOption(std::string_view name);
bool HasKnownChoices(std::string_view name);
/// The value of the choice that a stored value means: "name" for the sort key "Name", or for none. The stored
/// value itself where it means none of them.
std::string ChoiceOfValue(std::string_view option, std::string_view value);
/// What a person reads for the value: "Deutsch" for the language 1031.
QString LabelOfValue(std::string_view option, std::string_view value);

namespace optionName {
inline constexpr std::string_view DefaultPrinter = "cmbDefaultPrinter";
inline constexpr std::string_view Language = "cmbLanguage";
inline constexpr std::string_view SortKey = "cmbToolSortKey";
inline constexpr std::string_view SortOrder = "optToolSortOrder";
} // namespace optionName

} // namespace desktop
