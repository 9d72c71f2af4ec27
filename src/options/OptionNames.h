#pragma once

#include <array>
#include <string_view>

/// Options that the component itself knows.
namespace kvtm::optionName {

inline constexpr std::string_view UnitOfMeasure = "cmbUnitOfMeasure";
inline constexpr std::string_view DefaultPrinter = "cmbDefaultPrinter";
inline constexpr std::string_view Language = "cmbLanguage";

/// The options that show prices, in the order in which they are handled.
inline constexpr std::array<std::string_view, 6> Pricing = {
    "chkShowPricing",   "chkShowBaseUnitPriceBrkDn", "lblShowPricing",
    "lblShowBUPricing", "chkShowPricingUI",          "lblShowPricingUI",
};

} // namespace kvtm::optionName
