#include "tests/sweep/Commands.h"

namespace kvtm::test {

namespace {

namespace kind = arvon::eventKind;
using arvon::EventObject;
using Act = Session::Act;

// what goes before

void Nothing(Session&) {}
void Loaded(Session& s) {
    s.Begin();
}
void LayoutSelected(Session& s) {
    Loaded(s);
    s.Node("Layout", kind::Selected);
}
void VantorLoaded(Session& s) {
    Loaded(s);
    s.Ask("LaunchTool", {{"ToolName", "Beam"}});
}
void OptionsOpen(Session& s) {
    Loaded(s);
    s.host->ClickMenu("mnuToolOptions");
}
void UpdatesOpen(Session& s) {
    Loaded(s);
    s.Probe().OpenUpdateToolsView();
}
void UpdatesLoaded(Session& s) {
    Loaded(s);
    s.Ask("SaveToolProperties");
}
void ContextMenuOpen(Session& s) {
    LayoutSelected(s);
    s.Node("Layout", kind::ContextMenu);
}
void RowSelected(Session& s) {
    Loaded(s);
    s.host->SelectRow("lvTools", "Layout");
}
void LayoutRuns(Session& s) {
    Loaded(s);
    s.Probe().Processes().Add(4711, "Tobr43");
}
void AnotherTabInFront(Session& s) {
    Loaded(s);
    s.host->Framework()->Tabs().Add(2, "tabOther", "SnapIn", nullptr, true)->BringForward();
}

// what is done

void AsksForModule(Session& s) {
    s.AskForHandle("GetResourceModule");
}

Act Asks(std::string type) {
    return [type](Session& s) { s.Ask(type); };
}
Act Launches(std::string name) {
    return [name](Session& s) { s.Ask("LaunchTool", {{"ToolName", name}}); };
}
Act Unloads(std::string vrex) {
    return [vrex](Session& s) { s.Ask("UnloadTool", {{"vrex", vrex}, {"toolID", "T"}}); };
}
Act Menu(std::string key) {
    return [key](Session& s) { s.host->ClickMenu(key); };
}
Act Button(std::string key) {
    return [key](Session& s) { s.host->ClickButton(key); };
}
Act Task(std::string key) {
    return [key](Session& s) { s.host->ClickTask(key, true); };
}
Act Node(std::string key, std::int32_t nodeKind) {
    return [key, nodeKind](Session& s) { s.Node(key, nodeKind); };
}
Act Row(std::string text, std::int32_t rowKind) {
    return [text, rowKind](Session& s) { s.Row(text, rowKind); };
}
Act Column(std::string key, std::string order) {
    return [key, order](Session& s) { s.host->ColumnClick("lvTools", key, order); };
}
Act Ended(std::string application) {
    return [application](Session& s) { s.ProcessEnded(application, 4711); };
}
void Load(Session& s) {
    s.Load();
}
void Unload(Session& s) {
    s.host->Unload();
}
void Tab(Session& s) {
    s.host->TabEvent("tabQRV", kind::Selected);
}
void AsksForOptionData(Session& s) {
    s.Ask("GetOptionData", {{"ToolID", "A"}});
}
void ReadsAnOption(Session& s) {
    s.Ask("GetOptionValue", {{"ToolID", "A"}, {"OptionName", "n"}});
}
void ReadsASortOptionThatIsMissing(Session& s) {
    s.Ask("GetOptionValue", {{"ToolID", "A"}, {"OptionName", "cmbToolSortKey"}});
}
void WritesAnOption(Session& s) {
    s.Ask("SetOptionValue", {{"ToolID", "A"}, {"OptionName", "n"}, {"OptionValue", "2"}});
}
void UpdatesOptions(Session& s) {
    s.host->SetLanguageAnswer("1031");
    s.Ask("UpdateOptions",
          {{"UnloadOptionsTool", "-1"},
           {"Options", "<Options><ToolOptions><Tool ID=\"SOV02\">"
                       "<Option><Name>cmbToolSortKey</Name><Value>version</Value></Option>"
                       "<Option><Name>optToolSortOrder</Name><Value>1</Value></Option>"
                       "<Option><Name>cmbLanguage</Name><Value>1031</Value></Option></Tool>"
                       "<Tool ID=\"A\"><Option><Name>n</Name><Value>2</Value></Option></Tool>"
                       "</ToolOptions></Options>"}});
}

} // namespace

std::span<const Command> Commands() {
    static const Command commands[] = {
        {"load", Nothing, Load},
        {"unload", Loaded, Unload},
        {"unload under a Vantor", VantorLoaded, Unload},
        {"load after unload", [](Session& s) { Loaded(s), Unload(s); }, Load},
        {"load after unload under a Vantor", [](Session& s) { VantorLoaded(s), Unload(s); }, Load},

        {"request GetResourceModule", Loaded, AsksForModule},
        {"request GetToolProperties", LayoutSelected, Asks("GetToolProperties")},
        {"request SaveToolProperties", Loaded, Asks("SaveToolProperties")},
        {"request SaveToolProperties, updates loaded", UpdatesLoaded, Asks("SaveToolProperties")},
        {"request CancelToolProperties", LayoutSelected, Asks("CancelToolProperties")},
        {"request LaunchTool, outside", Loaded, Launches("Layout")},
        {"request LaunchTool, outside and running", LayoutRuns, Launches("Layout")},
        {"request LaunchTool, Vantor", Loaded, Launches("Beam")},
        {"request LaunchTool, in-process", Loaded, Launches("Units")},
        {"request LaunchTool under a Vantor", VantorLoaded, Launches("Layout")},
        {"request LaunchTool, unknown", Loaded, Launches("Nothing")},
        {"request LaunchTool, no tool selected", Loaded, Asks("LaunchTool")},
        {"request Initialize", LayoutSelected, Asks("Initialize")},
        {"request UnloadTool, Vantor", VantorLoaded, Unloads("Vn21")},
        {"request UnloadTool, unknown", Loaded, Unloads("Vn99")},
        {"request UnloadTool after unload", [](Session& s) { Loaded(s), Unload(s); }, Unloads("Vn99")},
        {"request UnloadUpdateView", UpdatesOpen, Asks("UnloadUpdateView")},
        {"request UnloadUpdateView, none open", Loaded, Asks("UnloadUpdateView")},
        {"request InitializeOptions", OptionsOpen, Asks("InitializeOptions")},
        {"request GetOptionData", Loaded, AsksForOptionData},
        {"request UpdateOptions", OptionsOpen, UpdatesOptions},
        {"request UpdateOptions under a Vantor", VantorLoaded, UpdatesOptions},
        {"request UnloadOptionsTool", OptionsOpen, Asks("UnloadOptionsTool")},
        {"request EnumPrinters", Loaded, Asks("EnumPrinters")},
        {"request LoadedVantors", VantorLoaded, Asks("LoadedVantors")},
        {"request SelectFixedTab", Loaded, Asks("SelectFixedTab")},
        {"request GetResourcePath, language not known",
         [](Session& s) { Loaded(s), s.Probe().LocaleId().clear(); }, Asks("GetResourcePath")},
        {"request SetOptionValue", Loaded, WritesAnOption},
        {"request GetOptionValue", Loaded, ReadsAnOption},
        {"request GetOptionValue of a missing sort option", Loaded, ReadsASortOptionThatIsMissing},
        {"request of no known type", Loaded, Asks("Nothing")},
        {"message of another type", Loaded, [](Session& s) { s.host->SendMessage(3, "any"); }},

        {"program ended", LayoutRuns, Ended("C:\\QUARRA\\Tobr43\\Tobr43.exe")},
        {"catalogue generator ended", Loaded, Ended("C:\\QUARRA\\BuildToolXML_Arvon11.exe")},
        {"event of no known object", Loaded,
         [](Session& s) { s.Event(static_cast<EventObject>(7), "any", {}, 0); }},

        {"menu mnuInstallTools", Loaded, Menu("mnuInstallTools")},
        {"menu mnuUpdateTools", Loaded, Menu("mnuUpdateTools")},
        {"menu mnuUpdateSettings", Loaded, Menu("mnuUpdateSettings")},
        {"menu mnuToolOptions", Loaded, Menu("mnuToolOptions")},
        {"menu mnuToolOptions, open", OptionsOpen, Menu("mnuToolOptions")},
        {"menu mnuToolsSortName", Loaded, Menu("mnuToolsSortName")},
        {"menu mnuToolsSortVersion", Loaded, Menu("mnuToolsSortVersion")},
        {"menu mnuToolsSortUPDATED", Loaded, Menu("mnuToolsSortUPDATED")},
        {"menu mnuToolsSortType", Loaded, Menu("mnuToolsSortType")},
        {"menu mnuToolsSortName, another tab in front", AnotherTabInFront, Menu("mnuToolsSortName")},
        {"menu mnuLaunch", ContextMenuOpen, Menu("mnuLaunch")},
        {"menu mnuLAY43", Loaded, Menu("mnuLAY43")},

        {"button btnUpdateTools", Loaded, Button("btnUpdateTools")},
        {"button btnUpdateTools, another tab in front", AnotherTabInFront, Button("btnUpdateTools")},
        {"button btnLAY43", Loaded, Button("btnLAY43")},

        {"node nodTools selected", LayoutSelected, Node("nodTools", kind::Selected)},
        {"node nodTools expanded", Loaded, Node("nodTools", kind::Expanded)},
        {"node Layout selected", Loaded, Node("Layout", kind::Selected)},
        {"node Layout right-clicked", LayoutSelected, Node("Layout", kind::ContextMenu)},
        // by a host that leaves the last menu to its owner
        {"node Layout right-clicked again", ContextMenuOpen,
         [](Session& s) {
             s.Event(EventObject::Node, "tabQRV", {{"key", "Layout"}}, kind::ContextMenu);
         }},
        {"node Layout opened", Loaded, Node("Layout", kind::Opened)},
        {"tab selected", Loaded, Tab},
        {"tab selected on a tool", LayoutSelected, Tab},

        {"row Layout opened", Loaded, Row("Layout", kind::Opened)},
        {"row Beam opened", Loaded, Row("Beam", kind::Opened)},
        {"row Layout checked", Loaded, Row("Layout", kind::CheckChanged)},
        {"column name clicked", Loaded, Column("name", "0")},
        {"column lastupdated clicked", Loaded, Column("lastupdated", "1")},

        {"task tskLaunchTool", RowSelected, Task("tskLaunchTool")},
        {"task tskRemoveTool", RowSelected, Task("tskRemoveTool")},
        {"task tskEditTool", RowSelected, Task("tskEditTool")},
        {"task tskUpdateTool", Loaded, Task("tskUpdateTool")},
        {"task tskAddTool", Loaded, Task("tskAddTool")},
        {"task tskShowAll", Loaded, Task("tskShowAll")},
        {"task tskShowAll under a Vantor", VantorLoaded, Task("tskShowAll")},
    };
    return commands;
}

} // namespace kvtm::test
