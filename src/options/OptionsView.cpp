#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "options/OptionErrors.h"
#include "options/OptionNames.h"
#include "options/OptionsDocument.h"
#include "options/ToolOptions.h"

namespace kvtm {

bool ToolMain::LoadOptionsForView() {
    m_sOptionsXML = getOptionData("");
    if (m_sOptionsXML.empty()) return false;
    if (!m_oToolOptions) m_oToolOptions = std::make_unique<ToolOptions>(m_oServices);
    m_oToolOptions->Load(m_sOptionsXML);
    return true;
}

void ToolMain::ShowOptionsView() {
    constexpr std::int32_t widthTwips = 7800;
    constexpr std::int32_t heightTwips = 9500;
    constexpr std::int32_t mode = 3;
    constexpr std::int32_t caption = 35;

    const arvon::ControlViewDefinition definition{std::string(control::Options)};
    std::shared_ptr<arvon::IView> view = m_oFramework->Views().Item(view::ToolOptions);
    if (!view) {
        view = m_oFramework->Views().Add(view::ToolOptions, arvon::ViewKind::Control, definition, Self);
    }
    view->SetSize(widthTwips, heightTwips);
    view->SetMode(mode);
    view->SetCaption(LoadResString(caption));
    view = m_oFramework->Views().Item(view::ToolOptions);
    if (!view)
        throw OwnError(optionError::NoView, "ShowOptionsView", "the host has no view \"ocxToolOptions\"");
    view->Show();
}

void ToolMain::CloseOptionsView() {
    const std::shared_ptr<arvon::IWindow> window = m_oFramework->Windows().Item(view::ToolOptions);
    if (window) window->Close();
}

// No guard, and the pointer is left as it is: the dispatcher reports failures and sets the pointer back.
void ToolMain::UpdateOptions(const RequestRef& request) {
    if (TextParameter(*request, parameter::UnloadOptionsTool) == "-1") CloseOptionsView();
    m_oFramework->SetMousePointer(arvon::pointer::Hourglass);

    const std::string sOptions = TextParameter(*request, parameter::Options);
    auto edited = std::make_unique<OptionsDocument>();
    // a text that is not well-formed, or no options text, ends it here, with nothing changed
    edited->LoadText(sOptions);
    if (!edited->HoldsTools()) {
        throw OwnError(optionError::NoOptionsText, "UpdateOptions",
                       "the options are to be replaced by a text without any \"Tool\" in it");
    }
    if (!m_oToolOptions) m_oToolOptions = std::make_unique<ToolOptions>(m_oServices);
    m_oToolOptions->Load(sOptions);
    m_oToolOptions->SaveOrThrow(sOptions, OptionsFile());
    m_oOptionsDoc = std::move(edited);

    if (m_colLoadedTools.IsEmpty()) SetToolOrder();
    NewOptions(sOptions);
    SwitchToChosenLanguage();
}

void ToolMain::SwitchToChosenLanguage() {
    if (!m_oOptionsDoc) return;
    const base::XmlNode option = m_oOptionsDoc->FirstOption(optionName::Language);
    const base::XmlNode value = option ? option.SelectSingle("Value") : base::XmlNode();
    if (!value) return;
    const std::string language = value.Text();
    if (language != m_sLocaleID) SetNewLang(language);
}

} // namespace kvtm
