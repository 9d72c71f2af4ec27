#include "base/Text.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"

namespace kvtm {

void ToolMain::Request_UnloadTool(const RequestRef& request) {
    Guarded("Request_UnloadTool", [&] {
        if (!request) return;
        const std::string vrexText = TextParameter(*request, parameter::Vrex);
        const std::string sVrex(base::TrimBlanks(vrexText));
        const std::string sToolID = TextParameter(*request, parameter::ToolIDOfUnload);
        if (sVrex.empty()) return;

        const std::shared_ptr<arvon::ILoadedTool> tool = FindLoadedTool(sVrex);
        const std::string sName = tool ? tool->Name() : std::string();
        TellWorkflow(sName);

        const EventRef unload = NewEvent(event::ToolUnload, 2, 9);
        AddText(unload->Parameters(), parameter::Vrex, sVrex);
        AddText(unload->Parameters(), parameter::ToolIDOfUnload, sToolID);
        SendEventMessage(unload, listener::Launcher);
        SendEventMessage(unload, listener::Shell);

        if (!sName.empty()) RemoveToolFromLoadedToolsCollection(sName);
        if (m_bUnloading) return;
        const std::shared_ptr<arvon::ITab> tab = m_oFramework->Tabs().Item(view::Navigator);
        if (!tab) throw OwnError(1, "Request_UnloadTool", "the host has no tab \"tabQRV\"");
        tab->Update();
        SetMenus(true);
    });
}

std::shared_ptr<arvon::ILoadedTool> ToolMain::FindLoadedTool(std::string_view sVrex) {
    arvon::ILoadedTools& tools = m_oFramework->LoadedTools();
    for (std::size_t position = 1; position <= tools.Count(); ++position) {
        const std::shared_ptr<arvon::ILoadedTool> tool = tools.Item(position);
        if (base::EqualIgnoringCase(tool->ProductDataKey(), sVrex)) return tool;
    }
    return nullptr;
}

void ToolMain::TellWorkflow(std::string_view sName) {
    if (!m_oFramework->Router()->IsRegistered(listener::Workflow) || sName.empty()) return;
    const EventRef unloaded = NewEvent(event::ToolUnloaded, 10, 9);
    AddText(unloaded->Parameters(), parameter::ToolName, sName);
    m_oFramework->Router()->Send(NewEnvelope(arvon::MessageType::Event, listener::Workflow, unloaded->Xml()));
}

void ToolMain::RemoveToolFromLoadedToolsCollection(std::string_view sName) {
    Guarded("RemoveToolFromLoadedToolsCollection", [&] {
        for (std::size_t position = 1; position <= m_colLoadedTools.Count(); ++position) {
            if (base::EqualIgnoringCase(m_colLoadedTools.Item(position), sName)) {
                m_colLoadedTools.Remove(position);
                return;
            }
        }
    });
}

} // namespace kvtm
