#include "core/ToolMain.h"
#include "options/OptionErrors.h"
#include "options/OptionsDocument.h"
#include "options/PricingRules.h"

namespace kvtm {

void ToolMain::SetSecureOptions(OptionsDocument& document) {
    Guarded("SetSecureOptions", [&] {
        const std::string_view unfinished = ApplyPricingRules(document, m_bProfileFlag);
        if (unfinished.empty()) return;
        throw OwnError(optionError::NoValue, "SetSecureOptions",
                       "the option \"" + std::string(unfinished) + "\" has no \"Value\"");
    });
}

} // namespace kvtm
