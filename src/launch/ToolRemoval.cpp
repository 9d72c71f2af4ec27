#include "core/Names.h"
#include "core/ToolMain.h"
#include "launch/RemovalFiles.h"
#include "platform/modUtility.h"

namespace kvtm {

// No guard: the caller reports what fails here.
void ToolMain::RemoveTool(std::string_view sVrex, std::string_view sName, std::string_view,
                          std::string_view sProgramType) {
    if (!IsRemovableProgramType(sProgramType)) {
        m_oFramework->ShowMessage("Only programs whose Program Type is 'ORDIX', 'Vantor', 'Plexa', and "
                                  "'QUARRA' can be removed from here.",
                                  arvon::boxStyle::Plain, Title);
        return;
    }
    const platform::FilePaths& paths = *m_oServices.filePaths;
    const RemovalFiles files = RemovalFilesOf(m_oFramework->InstallPath(), sVrex);
    m_oServices.files->Write(paths.ToSystem(files.instruction),
                             m_oServices.codePage->ToAnsi(RemoveIniText(sVrex, sName, files.log)));
    if (paths.Exists(files.program)) {
        platform::modUtility::RunAndWait(m_oServices, files.program);
    } else {
        m_oFramework->ShowMessage("Could not locate 'RemoveProgram' Program", arvon::boxStyle::Critical,
                                  Title);
    }
    if (paths.Exists(files.result)) ForgetRemovedTool(sVrex, sName);
}

void ToolMain::ForgetRemovedTool(std::string_view sVrex, std::string_view sName) {
    const ToolRecord tool = FindTool(sVrex, sName);
    if (tool && tool->Name() == sName) {
        RemoveItemsOfTool(tool->Get(property::Identifier).ToText());
        ForgetRecord(tool);
    }
    RemoveFromListedTools(sName);
    RelistTools(); // a tool that had to stand back behind this one may be listed now
    BuildToolNodes(view::ToolsNode, true);
    RebuildToolMenus(!m_bShowAllTools);
    LoadTools(view::ToolsNode, false);
    RefreshToolsNode(true);
}

void ToolMain::ForgetRecord(const ToolRecord& tool) {
    arvon::IToolRecords& tools = m_oFramework->Tools();
    tools.Remove(tool);
    Guarded("RemoveTool", [&] { tools.Save(); }); // the view follows even when the file cannot
}

void ToolMain::RemoveItemsOfTool(std::string_view sIdentifier) {
    if (sIdentifier.empty()) return; // such a tool has none
    Guarded("RemoveTool", [&] {
        const std::string buttonKey = std::string(button::ToolPrefix) + std::string(sIdentifier);
        if (m_oFramework->Buttons().Item(buttonKey)) m_oFramework->Buttons().Remove(buttonKey);
    });
    Guarded("RemoveTool", [&] {
        const std::string itemKey = std::string(menu::ToolPrefix) + std::string(sIdentifier);
        const std::shared_ptr<arvon::IMenu> toolsMenu = m_oFramework->Menus().Item(menu::Tools);
        if (toolsMenu && toolsMenu->Items().Item(itemKey)) toolsMenu->Items().Remove(itemKey);
    });
}

void ToolMain::RemoveFromListedTools(std::string_view sName) {
    ToolCollection& listed = ListedTools();
    for (std::size_t position = 1; position <= listed.Count(); ++position) {
        if (listed.Item(position)->Get(property::Name).ToText() == sName) {
            listed.Remove(position);
            return;
        }
    }
}

} // namespace kvtm
