#include "base/XmlDocument.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"

namespace kvtm {

using base::Value;

void ToolMain::Answer_GetResourceModule(const RequestRef&, std::string& reply) {
    reply = std::to_string(m_hResModule);
}

void ToolMain::Answer_GetToolProperties(const RequestRef&, std::string& reply) {
    if (const ToolRecord tool = ListedToolOfLastNode()) reply = tool->Get(property::Xml).ToText();
}

void ToolMain::Answer_SaveToolProperties(const RequestRef&, std::string& reply) {
    RequestUpdates(false);
    reply = "True";
}

void ToolMain::Answer_CancelToolProperties(const RequestRef&, std::string& reply) {
    Skipping([&] {
        const std::shared_ptr<arvon::ITab> tab = m_oFramework->Tabs().Item(view::Navigator);
        const std::shared_ptr<arvon::INode> node = tab ? tab->FindNode(m_sLastNodeKey) : nullptr;
        if (node) node->SetViewKey("");
    });
    Skipping([&] { m_oFramework->Update(); });
    reply = "True";
}

void ToolMain::Answer_LaunchTool(const RequestRef& request, std::string& reply) {
    reply = LaunchTool(request);
}

void ToolMain::Answer_Initialize(const RequestRef&, std::string&) {
    const std::shared_ptr<arvon::IView> view = m_oFramework->Views().Item(view::ToolProperties);
    const std::shared_ptr<base::Object> control = view ? view->Control() : nullptr;
    const ToolRecord tool = ListedToolOfLastNode();
    if (!tool) return;
    if (!control) throw OwnError(2, "HandleRequest", "the view \"ocxToolProperties\" holds no control");

    const auto enable = [&](std::string_view button, std::string_view task) {
        const bool permitted = HasTask(task, tool->Get(property::Name).ToText());
        const std::shared_ptr<base::Object> object = control->Get(button).ToObject();
        if (!object) throw OwnError(2, "HandleRequest", "the tool properties have no " + std::string(button));
        object->Set("Enabled", Value(permitted));
    };
    enable("GetUpdateButton", "Can Update");
    enable("GetLaunchButton", "Can Launch");
}

void ToolMain::Answer_UnloadTool(const RequestRef& request, std::string&) {
    Request_UnloadTool(request);
}

void ToolMain::Answer_UnloadUpdateView(const RequestRef&, std::string&) {
    const std::shared_ptr<arvon::IWindow> window = m_oFramework->Windows().Item(view::UpdateTools);
    if (!window) throw OwnError(3, "HandleRequest", "the host has no window \"UpdateTools\"");
    Skipping([&] { window->Call("CloseWindow", {}); });
}

void ToolMain::Answer_InitializeOptions(const RequestRef&, std::string&) {
    Skipping([&] {
        const std::shared_ptr<arvon::IWindow> window = m_oFramework->Windows().Item(view::ToolOptions);
        const std::shared_ptr<base::Object> control = window ? window->Control() : nullptr;
        const Value arguments[] = {Value(m_sOptionsXML)};
        if (control) control->Call("Initialize", arguments);
    });
}

void ToolMain::Answer_GetOptionData(const RequestRef& request, std::string& reply) {
    const std::string sToolID = TextParameter(*request, parameter::ToolID);
    AddSubscriber(sToolID);
    const std::string sXML = getOptionData(sToolID);
    if (sXML.empty()) return;

    base::XmlDocument document;
    document.LoadText(sXML);
    base::XmlNode tool = document.SelectSingle("//Tool");
    if (!tool) throw OwnError(4, "HandleRequest", "the options hold no \"Tool\" element");
    for (const char* drawn : {"DisplayName", "UIRenderer"}) {
        if (const base::XmlNode child = tool.SelectSingle(drawn)) tool.RemoveChild(child);
    }
    reply = document.Text();
}

void ToolMain::Answer_UpdateOptions(const RequestRef& request, std::string&) {
    UpdateOptions(request);
}

void ToolMain::Answer_UnloadOptionsTool(const RequestRef&, std::string&) {
    Skipping([&] { CloseOptionsView(); });
}

void ToolMain::Answer_EnumPrinters(const RequestRef&, std::string& reply) {
    reply = EnumPrinters();
}

void ToolMain::Answer_LoadedVantors(const RequestRef&, std::string& reply) {
    if (!m_colLoadedTools.IsEmpty()) reply = m_sLastNodeKey;
}

void ToolMain::Answer_SelectFixedTab(const RequestRef&, std::string&) {
    if (!m_colLoadedTools.IsEmpty()) return;
    Skipping([&] {
        const RequestRef select = NewRequest(request::SelectTab);
        select->SetMode(1);
        AddText(select->Parameters(), parameter::Key, "FixedTab");
        SendRequestToOwner(select, listener::Shell);
    });
}

void ToolMain::Answer_GetResourcePath(const RequestRef&, std::string& reply) {
    if (m_sLocaleID.empty()) {
        Skipping([&] {
            const std::shared_ptr<arvon::ISettings> settings = m_oFramework->GetSettings("Framework");
            if (settings) m_sLocaleID = settings->GetItem("LocaleID").ToText();
        });
    }
    reply = m_sAppPath + "\\resources\\" + m_sLocaleID;
}

void ToolMain::Answer_SetOptionValue(const RequestRef& request, std::string& reply) {
    reply = SetOptionValue(request);
}

void ToolMain::Answer_GetOptionValue(const RequestRef& request, std::string& reply) {
    reply = GetOptionValue(request);
}

ToolRecord ToolMain::ListedToolOfLastNode() {
    for (const ToolRecord& tool : ListedTools()) {
        bool found = false;
        Skipping([&] { found = tool->Get(property::Name).ToText() == m_sLastNodeKey; });
        if (found) return tool;
    }
    return nullptr;
}

} // namespace kvtm
