#pragma once

#include "core/ToolMain.h"

namespace kvtm {

/// The tests' way to single procedures and fields of the tool manager.
struct ToolMainProbe {
    ToolMain& tool;

    std::int32_t CountToolsInCatalog(bool notify) const { return tool.CountToolsInCatalog(notify); }
    bool LoadToolsCollection() const { return tool.LoadToolsCollection(); }
    void LoadTools(std::string_view tabKey, bool useListedTools) const {
        tool.LoadTools(tabKey, useListedTools);
    }
    ToolCollection& ListedTools() const { return tool.ListedTools(); }
    void SortTools(std::string_view property, std::string_view direction, bool selectTab) const {
        tool.SortTools(property, direction, selectTab);
    }
    bool SetToolOrder() const { return tool.SetToolOrder(); }
    bool BuildToolButtons(bool useListedTools) const { return tool.BuildToolButtons(useListedTools); }
    void RebuildToolMenus(bool useListedTools) const { tool.RebuildToolMenus(useListedTools); }
    bool SetMenus(bool enabled) const { return tool.SetMenus(enabled); }
    void BuildContextMenu() const { tool.BuildContextMenu(); }
    void BuildToolNodes(std::string_view parentKey, bool useListedTools) const {
        tool.BuildToolNodes(parentKey, useListedTools);
    }
    void RefreshToolsNode(bool selectTab) const { tool.RefreshToolsNode(selectTab); }
    void ShowOptions() const { tool.ShowOptions(); }
    void PrepareUpdatesBanner() const { tool.PrepareUpdatesBanner(); }
    void OpenUpdateToolsView() const { tool.OpenUpdateToolsView(); }
    std::int32_t GetWindowHandle() const { return tool.GetWindowHandle(); }
    void RefreshZarnMenus() const { tool.RefreshZarnMenus(); }
    std::string SendRequestToOwner(const RequestRef& request, std::string_view destination) const {
        return tool.SendRequestToOwner(request, destination);
    }
    std::string SendEventMessage(const EventRef& event, std::string_view destination) const {
        return tool.SendEventMessage(event, destination);
    }
    RequestRef NewRequest(std::string_view type) const { return tool.NewRequest(type); }
    EventRef NewEvent(std::string_view name) const { return tool.NewEvent(name, 0, 0); }
    void ReportError(const base::ComponentError& error, std::string_view proc) const {
        tool.ReportError(error, proc);
    }
    void RemoveTool(std::string_view vrex, std::string_view name, std::string_view programType) const {
        tool.RemoveTool(vrex, name, "", programType);
    }
    void RequestUpdates(bool showNew) const { tool.RequestUpdates(showNew); }
    void RequestUnloadTool(const RequestRef& request) const { tool.Request_UnloadTool(request); }
    std::string getOptionData(std::string_view toolId) const { return tool.getOptionData(toolId); }
    std::string GetOptionValue(const RequestRef& request) const { return tool.GetOptionValue(request); }
    std::string SetOptionValue(const RequestRef& request) const { return tool.SetOptionValue(request); }
    std::string SetOptionDefault(std::string_view toolId, std::string_view name,
                                 std::string_view value) const {
        return tool.SetOptionDefault(toolId, name, value);
    }
    bool LoadOptionsForView() const { return tool.LoadOptionsForView(); }
    void ShowOptionsView() const { tool.ShowOptionsView(); }
    std::int32_t GetPlatformId() const { return tool.GetPlatformId(); }
    base::Collection<std::string> GetPrinters(std::int32_t platformId) const {
        return tool.GetPrinters(platformId);
    }
    bool IsDefaultPrinter(std::string_view name) const { return tool.IsDefaultPrinter(name); }
    void SetNewLang(std::string_view language) const { tool.SetNewLang(language); }
    void GetLocaleProps() const { tool.GetLocaleProps(); }

    base::Collection<std::string>& LoadedTools() const { return tool.m_colLoadedTools; }
    base::Collection<std::int32_t>& Processes() const { return tool.m_colProcesses; }
    const std::vector<std::string>& Subscribers() const { return tool.m_asSubscribers; }
    std::string& LastNodeKey() const { return tool.m_sLastNodeKey; }
    bool& ShowAllTools() const { return tool.m_bShowAllTools; }
    bool ProfileFlag() const { return tool.m_bProfileFlag; }
    bool Unloading() const { return tool.m_bUnloading; }
    const std::string& Brand() const { return tool.m_sBrand; }
    const std::string& Name() const { return tool.m_sName; }
    std::int32_t KnownToolCount() const { return tool.m_lKnownToolCount; }
    bool Busy() const { return tool.m_bBusy; }
    const std::string& CurrentTool() const { return tool.m_sCurrentTool; }
    std::string& LocaleId() const { return tool.m_sLocaleID; }
    const std::string& FontName() const { return tool.m_sFontName; }
    const std::string& FontSize() const { return tool.m_sFontSize; }
    const std::string& OptionsXml() const { return tool.m_sOptionsXML; }
    const ToolOptions* Options() const { return tool.m_oToolOptions.get(); }
};

} // namespace kvtm
