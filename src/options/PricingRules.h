#pragma once

#include <string_view>

namespace kvtm {

class OptionsDocument;

/// Marks the pricing options visible ("-1") where prices are permitted, else hidden ("0") and "OFF", and
/// gives an empty unit of measure its default.
///
/// Returns the name of the option whose missing "Value" ended it, with the changes before it made; empty when
/// every rule was applied. An option name present several times means the first match in the whole document,
/// for the option, its "Visible" and its "Value" each.
std::string_view ApplyPricingRules(OptionsDocument& document, bool permitted);

} // namespace kvtm
