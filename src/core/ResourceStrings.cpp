#include "core/ToolMain.h"

namespace kvtm {

std::string ToolMain::LoadResString(std::int32_t lResID) {
    try {
        return TextOfResource(lResID);
    } catch (...) {
        return "Missing String:" + std::to_string(lResID); // what the user sees is the report
    }
}

std::string ToolMain::TextOfResource(std::int32_t lResID) {
    constexpr std::size_t bufferCharacters = 2048;
    constexpr std::string_view category = "Tools";
    RequireObject(m_oFramework, "LoadResString", "there is no framework before Load");
    if (m_hResModule == 0) m_hResModule = m_oFramework->GetResource(category, "").ToInteger();
    if (m_hResModule == 0) return {};
    const std::string ansi = m_oServices.stringModules->LoadString(
        m_hResModule, static_cast<std::uint32_t>(lResID), bufferCharacters);
    if (!ansi.empty()) return m_oServices.codePage->FromAnsi(ansi);
    return m_oFramework->GetResource(category, std::to_string(lResID)).ToText();
}

} // namespace kvtm
