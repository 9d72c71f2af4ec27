#pragma once

#include <array>
#include <string_view>

namespace kvtm {

class OptionsDocument;

/// The options that show prices, in the order in which they are handled.
inline constexpr std::array<std::string_view, 6> pricingOptions = {
    "chkShowPricing",   "chkShowBaseUnitPriceBrkDn", "lblShowPricing",
    "lblShowBUPricing", "chkShowPricingUI",          "lblShowPricingUI",
};

inline constexpr std::string_view unitOfMeasureOption = "cmbUnitOfMeasure";
inline constexpr std::string_view defaultUnitOfMeasure = "English";

/// Marks the pricing options visible ("-1") where prices are permitted, else hidden ("0") and "OFF", and
/// gives an empty unit of measure its default.
///
/// Returns the name of the option whose missing "Value" ended it, with the changes before it made; empty when
/// every rule was applied. An option name present several times means the first match in the whole document,
/// for the option, its "Visible" and its "Value" each.
std::string_view ApplyPricingRules(OptionsDocument& document, bool permitted);

} // namespace kvtm
