#include "core/ToolMain.h"
#include "options/OptionErrors.h"

namespace kvtm {

void ToolMain::SetNewLang(std::string_view language) {
    constexpr std::int32_t switchedText = 1034;
    constexpr std::int32_t title = 1035;
    constexpr std::int32_t notSwitchedText = 1036;
    Guarded("cToolMain.SetNewLang", [&] {
        const bool switched = !m_oFramework->SwitchLanguage(language).empty();
        m_oFramework->ShowMessage(LoadResString(switched ? switchedText : notSwitchedText),
                                  arvon::boxStyle::Information, LoadResString(title));
        if (switched) m_sLocaleID = language;
    });
}

void ToolMain::GetLocaleProps() {
    Guarded("GetLocaleProps", [&] {
        const std::shared_ptr<arvon::ISettings> settings = m_oFramework->GetSettings("Framework");
        if (!settings) {
            throw OwnError(optionError::NoLocaleSettings, "GetLocaleProps",
                           "the host has no settings \"Framework\"");
        }
        m_sFontName = settings->GetItem("FontName").ToText();
        m_sFontSize = settings->GetItem("FontSize").ToText();
        m_sLocaleID = settings->GetItem("LocaleID").ToText();
        if (m_sFontName.empty() || m_sFontSize.empty()) {
            throw OwnError(optionError::NoLocaleSettings, "GetLocaleProps",
                           "the settings \"Framework\" lack \"FontName\" or \"FontSize\"");
        }
    });
}

} // namespace kvtm
