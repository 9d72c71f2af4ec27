#pragma once

#include <string_view>

/// Names that travel between the component, its host and other tools: written once, here.
namespace kvtm {

inline constexpr std::string_view Self =
    "KvTM10"; // listener identifier, and owner of all that is added to the host

inline constexpr std::string_view Title = Self; // of message boxes that have no other

namespace listener {
inline constexpr std::string_view Shell = "SnapIn";
inline constexpr std::string_view Launcher = "Zarn11";
inline constexpr std::string_view Updates = "Qillo110";
inline constexpr std::string_view Workflow = "WORKFLOW";
} // namespace listener

namespace request {
inline constexpr std::string_view GetResourceModule = "GetResourceModule";
inline constexpr std::string_view GetToolProperties = "GetToolProperties";
inline constexpr std::string_view SaveToolProperties = "SaveToolProperties";
inline constexpr std::string_view CancelToolProperties = "CancelToolProperties";
inline constexpr std::string_view LaunchTool = "LaunchTool";
inline constexpr std::string_view Initialize = "Initialize";
inline constexpr std::string_view UnloadTool = "UnloadTool";
inline constexpr std::string_view UnloadUpdateView = "UnloadUpdateView";
inline constexpr std::string_view InitializeOptions = "InitializeOptions";
inline constexpr std::string_view GetOptionData = "GetOptionData";
inline constexpr std::string_view UpdateOptions = "UpdateOptions";
inline constexpr std::string_view UnloadOptionsTool = "UnloadOptionsTool";
inline constexpr std::string_view EnumPrinters = "EnumPrinters";
inline constexpr std::string_view LoadedVantors = "LoadedVantors";
inline constexpr std::string_view SelectFixedTab = "SelectFixedTab";
inline constexpr std::string_view GetResourcePath = "GetResourcePath";
inline constexpr std::string_view SetOptionValue = "SetOptionValue";
inline constexpr std::string_view GetOptionValue = "GetOptionValue";
// sent
inline constexpr std::string_view GetWindowHandle = "GetWindowHandle";
inline constexpr std::string_view RefreshZarnMenus = "RefreshZarnMenus";
inline constexpr std::string_view SelectTab = "SelectTab";
inline constexpr std::string_view NewOptions = "NewOptions";
inline constexpr std::string_view ShowUpdates = "ShowUpdates";
inline constexpr std::string_view ShowOptions = "ShowOptions";
} // namespace request

namespace event {
inline constexpr std::string_view ShellProcessComplete = "ShellProcessComplete";
// sent
inline constexpr std::string_view ErrorMessage = "ErrorMessage";
inline constexpr std::string_view ToolLoad = "Tool_Load";
inline constexpr std::string_view ToolProcessEnded = "Tool_UnLoad"; // capital L: an outside program has ended
inline constexpr std::string_view ToolUnload = "Tool_Unload";       // a tool was unloaded on request
inline constexpr std::string_view ToolUnloaded = "ToolUnloaded";    // the same, told to the workflow listener
} // namespace event

namespace parameter {
inline constexpr std::string_view ToolName = "ToolName";
inline constexpr std::string_view ToolID = "ToolID";
inline constexpr std::string_view ToolIDOfUnload = "toolID";
inline constexpr std::string_view Vrex = "vrex";
inline constexpr std::string_view ProcessID = "ProcessID";
inline constexpr std::string_view Key = "key";
inline constexpr std::string_view ShowNew = "ShowNew";
inline constexpr std::string_view Options = "Options";
inline constexpr std::string_view OptionName = "OptionName";
inline constexpr std::string_view OptionValue = "OptionValue";
inline constexpr std::string_view AddMissing = "AddMissing";
inline constexpr std::string_view AddSubscriber = "AddSubscriber";
inline constexpr std::string_view SubscriberID = "SubscriberID";
inline constexpr std::string_view UnloadOptionsTool = "UnloadOptionsTool";
inline constexpr std::string_view ErrorDescription = "ErrorDescription";
inline constexpr std::string_view ErrorSource = "ErrorSource";
inline constexpr std::string_view ErrorNumber = "ErrorNumber";
inline constexpr std::string_view ProcName = "ProcName";
} // namespace parameter

/// Properties of tool records, by name.
namespace property {
inline constexpr std::string_view Name = "Name";
inline constexpr std::string_view Vrex = "VREX";
inline constexpr std::string_view Identifier = "Identifier";
inline constexpr std::string_view Classification = "Classification";
inline constexpr std::string_view ShowInList = "ShowInList";
inline constexpr std::string_view Version = "version";
inline constexpr std::string_view LastUpdated = "lastupdated";
inline constexpr std::string_view Kind = "Kind";
inline constexpr std::string_view Brand = "Brand";
inline constexpr std::string_view ProgramType = "ProgramType";
inline constexpr std::string_view Path = "Path";
inline constexpr std::string_view CommandLine = "CommandLine";
inline constexpr std::string_view Xml = "XML";
} // namespace property

/// Views, windows, controls, tabs and nodes in the host.
namespace view {
inline constexpr std::string_view ToolProperties = "ocxToolProperties";
inline constexpr std::string_view ToolsUpdate = "ocxToolsUpdate";
inline constexpr std::string_view ToolOptions = "ocxToolOptions";
inline constexpr std::string_view UpdateTools = "UpdateTools";
inline constexpr std::string_view ToolList = "lvTools";
inline constexpr std::string_view ToolTasks = "tvTools";
inline constexpr std::string_view Navigator = "tabQRV";
inline constexpr std::string_view ToolsNode = "nodTools";
} // namespace view

namespace control {
inline constexpr std::string_view ToolProperties = "KvTMU110.ctlToolProperties";
inline constexpr std::string_view ToolsUpdate = "KvTMU110.ctlToolsUpdate";
inline constexpr std::string_view Options = "KvTMU110.ctlOptions";
} // namespace control

/// Menu items. A tool's own item is ToolPrefix and the tool's identifier.
namespace menu {
inline constexpr std::string_view Tools = "mnuTool";
inline constexpr std::string_view ToolPrefix = "mnu";
inline constexpr std::string_view ToolsSeparator = "mnuToolsSep1";
inline constexpr std::string_view ToolOptions = "mnuToolOptions";
inline constexpr std::string_view ToolContextTask = "mnuToolContextTask";
inline constexpr std::string_view Launch = "mnuLaunch";
// the host's own, answered here
inline constexpr std::string_view InstallTools = "mnuInstallTools";
inline constexpr std::string_view UpdateTools = "mnuUpdateTools";
inline constexpr std::string_view UpdateSettings = "mnuUpdateSettings";
inline constexpr std::string_view SortByName = "mnuToolsSortName";
inline constexpr std::string_view SortByVersion = "mnuToolsSortVersion";
inline constexpr std::string_view SortByUpdate = "mnuToolsSortUPDATED";
inline constexpr std::string_view SortByType = "mnuToolsSortType";
} // namespace menu

/// Toolbar buttons. A tool's own button is ToolPrefix and the tool's identifier.
namespace button {
inline constexpr std::string_view ToolPrefix = "btn";
inline constexpr std::string_view FirstSeparator = "KvTM10_Sep1"; // before the tool buttons
inline constexpr std::string_view LastSeparator = "KvTM10_Sep2";  // after them
inline constexpr std::string_view UpdateTools = "btnUpdateTools"; // the host's own, answered here
} // namespace button

/// Tasks, of the component's pane and of the host's own controls.
namespace task {
inline constexpr std::string_view LaunchTool = "tskLaunchTool";
inline constexpr std::string_view RemoveTool = "tskRemoveTool";
inline constexpr std::string_view EditTool = "tskEditTool";
// the host's own, answered here
inline constexpr std::string_view UpdateTool = "tskUpdateTool";
inline constexpr std::string_view AddTool = "tskAddTool";
inline constexpr std::string_view ShowAll = "tskShowAll";
} // namespace task

/// The stored order of the tools.
namespace sortOption {
inline constexpr std::string_view ToolID = "SOV02";
inline constexpr std::string_view Key = "cmbToolSortKey";
inline constexpr std::string_view Order = "optToolSortOrder";
} // namespace sortOption

} // namespace kvtm
