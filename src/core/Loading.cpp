#include "core/Names.h"
#include "core/ToolMain.h"
#include "platform/modRegistry.h"

#include <limits>

namespace kvtm {

using arvon::ViewKind;
namespace modRegistry = platform::modRegistry;

// No guard here: the host is to see why a load failed. The order is the one that the host relies on.
bool ToolMain::ITool_Load(const std::shared_ptr<arvon::IFramework>& framework) {
    RequireObject(framework, "ITool_Load", "there is no framework");
    m_oFramework = framework;
    m_bUnloading = false;
    m_oFramework->RegisterListener(shared_from_this(), Self);
    m_sAppPath = m_oFramework->AppPath();
    AddControlView(view::ToolProperties, control::ToolProperties);
    AddControlView(view::ToolsUpdate, control::ToolsUpdate);
    AddToolListView();
    const std::shared_ptr<arvon::ITab> tab = AddToolsTab();
    m_bProfileFlag = m_vProfileID.EqualsNumber(3) || m_vProfileID.EqualsNumber(5);
    CreateTaskViews();
    LoadToolsCollection();
    AddToolsNode(*tab);
    AddToolsMenu();
    SetToolOrder();
    RebuildToolMenus(true);
    GetLocaleProps();
    m_sBrand = modRegistry::getRegistryStringValue(m_oServices, platform::HkeyLocalMachine,
                                                   modRegistry::FrameworkKey, "Brand", "");
    if (m_sBrand.empty()) m_sBrand = "Veltrane";
    m_bLoaded = true;
    return true;
}

// The view "ocxToolsUpdate", the tab and the listener registration stay with the host.
void ToolMain::ITool_Unload() {
    std::shared_ptr<arvon::ITab> tab;
    Guarded("ITool_Unload", [&] {
        RequireObject(m_oFramework, "ITool_Unload", "there is no framework before Load");
        tab = m_oFramework->Tabs().Item(view::Navigator);
        if (!tab) throw OwnError(1, "ITool_Unload", "the host has no tab \"tabQRV\"");
    });
    if (!tab) return;

    m_bUnloading = true;
    Skipping([&] { m_oFramework->Menus().Remove(menu::Tools); });
    Skipping([&] { tab->Nodes().Remove(view::ToolsNode); });
    Skipping([&] { m_oFramework->Views().Remove(view::ToolList); });
    Skipping([&] { m_oFramework->Views().Remove(view::ToolProperties); });
    m_bLoaded = false;
}

void ToolMain::AddControlView(std::string_view name, std::string_view control) {
    const arvon::ControlViewDefinition definition{std::string(control)};
    m_oFramework->Views().Add(name, ViewKind::Control, definition, Self);
}

void ToolMain::AddToolListView() {
    constexpr std::int32_t reportWithColumns = 3;
    struct Column {
        const char* key;
        std::int32_t captionResource;
        std::int32_t widthTwips;
    };
    static constexpr Column columns[] = {
        {"name", 1, 2880},
        {"version", 2, 1440},
        {"lastupdated", 3, 1440},
        {"classification", 1033, 1440},
    };

    arvon::ListViewDefinition definition;
    definition.displayStyle = reportWithColumns;
    for (const Column& column : columns) {
        definition.columnHeaders.push_back(
            {column.key, LoadResString(column.captionResource), column.widthTwips});
    }
    m_oFramework->Views().Add(view::ToolList, ViewKind::List, definition, Self);
}

std::shared_ptr<arvon::ITab> ToolMain::AddToolsTab() {
    arvon::ITabs& tabs = m_oFramework->Tabs();
    const std::size_t index = tabs.Count() + 1;
    if (index > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        throw base::ComponentError(base::errors::Overflow, FullProcName("ITool_Load"),
                                   "the host's tabs are too many to be counted");
    }
    const std::shared_ptr<arvon::ITab> tab =
        tabs.Add(static_cast<std::int32_t>(index), view::Navigator, Self, nullptr, true);
    tab->SetCaption(LoadResString(4));
    tab->SetVisible(true);
    tab->SetEnabled(true);
    tab->Refresh();
    return tab;
}

void ToolMain::AddToolsNode(arvon::ITab& tab) {
    const std::shared_ptr<arvon::INode> node =
        tab.Nodes().Add(view::ToolsNode, Self, 3, LoadResString(5), nullptr, true, 0);
    node->SetImage(1);
    node->SetTaskViewKey(view::ToolTasks);
}

void ToolMain::AddToolsMenu() {
    m_oFramework->Menus().Add(menu::Tools, LoadResString(6), LoadResString(7), Self, std::nullopt,
                              std::nullopt, 0, 0, true);
}

} // namespace kvtm
