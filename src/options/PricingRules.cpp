#include "options/PricingRules.h"

#include "options/OptionNames.h"
#include "options/OptionsDocument.h"

namespace kvtm {

using base::XmlNode;

namespace {

constexpr std::string_view shown = "-1";
constexpr std::string_view hidden = "0";
constexpr std::string_view switchedOff = "OFF";
constexpr std::string_view defaultUnitOfMeasure = "English";

/// False for a missing "Value".
bool ApplyTo(OptionsDocument& document, std::string_view name, bool permitted) {
    const XmlNode option = document.FirstOption(name);
    if (!option) return true;
    XmlNode visible = document.FirstInOptions(name, "Visible");
    if (!visible) visible = document.AppendElement(option, "Visible");
    document.SetText(visible, permitted ? shown : hidden);
    if (permitted) return true;
    const XmlNode value = document.FirstInOptions(name, "Value");
    if (value) document.SetText(value, switchedOff);
    return static_cast<bool>(value);
}

/// False for a missing "Value".
bool GiveDefaultUnitOfMeasure(OptionsDocument& document) {
    const XmlNode option = document.FirstOption(optionName::UnitOfMeasure);
    if (!option) return true;
    const XmlNode value = option.SelectSingle("Value");
    if (value && value.Text().empty()) document.SetText(value, defaultUnitOfMeasure);
    return static_cast<bool>(value);
}

} // namespace

std::string_view ApplyPricingRules(OptionsDocument& document, bool permitted) {
    for (const std::string_view option : optionName::Pricing) {
        if (!ApplyTo(document, option, permitted)) return option;
    }
    if (!GiveDefaultUnitOfMeasure(document)) return optionName::UnitOfMeasure;
    return {};
}

} // namespace kvtm
