#include "base/Text.h"
#include "catalogue/ToolVisibility.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "core/contract/EventShapes.h"

#include <string>
#include <unordered_set>

namespace kvtm {

namespace eventKind = arvon::eventKind;

namespace {

constexpr std::int32_t topLevel = 1;
constexpr std::int32_t toolLevel = 3;
constexpr std::int32_t toolImage = 5;

bool ComesFromNavigator(const arvon::IEvent& event) {
    const std::string source = event.Name();
    return base::EqualIgnoringCase(base::TrimBlanks(source), view::Navigator);
}

} // namespace

void ToolMain::HandleNodeEvent(const EventRef& event) {
    Guarded("HandleNodeEvent", [&] {
        if (!ComesFromNavigator(*event)) return;
        const std::string keyText = TextParameter(*event, arvon::eventParameter::Key);
        const std::string key(base::TrimBlanks(keyText));
        const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
        const std::shared_ptr<arvon::INode> node = navigator ? navigator->FindNode(key) : nullptr;
        if (!node) return;

        bool handled = false;
        if (node->Level() == topLevel) handled = HandleTopNodeEvent(*node, key, event->Category());
        if (node->Level() == toolLevel) handled = HandleToolNodeEvent(*node, key, event->Category());
        if (handled) m_sLastNodeKey = key;
    });
}

bool ToolMain::HandleTopNodeEvent(arvon::INode& node, const std::string& key, std::int32_t kind) {
    node.SetViewKey(""); // what "btnUpdateTools" or a tool's properties left there
    node.SetTaskViewKey(key == view::ToolsNode ? view::ToolTasks : std::string_view());
    ShowToolsMenu();
    if (kind == eventKind::Expanded) BuildToolNodes(key, true);
    if (kind == eventKind::Selected) LoadTools(key, !m_bShowAllTools);
    return true;
}

bool ToolMain::HandleToolNodeEvent(arvon::INode& node, const std::string& key, std::int32_t kind) {
    switch (kind) {
    case eventKind::Selected:
        ShowToolsMenu();
        node.SetViewKey(view::ToolProperties);
        return true;
    case eventKind::ContextMenu:
        BuildContextMenu();
        return true;
    case eventKind::Opened:
        LaunchToolByName(key);
        return true;
    default:
        return false;
    }
}

void ToolMain::ShowToolsMenu() {
    if (const std::shared_ptr<arvon::IMenu> toolMenu = m_oFramework->Menus().Item(menu::Tools))
        toolMenu->SetVisible(true);
}

// The selected item that the event names does not count: the navigator comes back to the last node.
void ToolMain::HandleTabEvent(const EventRef& event) {
    Guarded("HandleTabEvent", [&] {
        if (!ComesFromNavigator(*event) || event->Category() != eventKind::Selected) return;
        const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
        if (!navigator) return;
        const std::string key = m_sLastNodeKey.empty() ? std::string(view::ToolsNode) : m_sLastNodeKey;
        const std::shared_ptr<arvon::INode> node = navigator->FindNode(key);
        if (!node) return;
        if (!node->IsLoaded()) node->Refresh();
        node->Select();
    });
}

void ToolMain::BuildToolNodes(std::string_view parentKey, bool useListedTools) {
    Guarded("BuildToolNodes", [&] {
        const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
        const std::shared_ptr<arvon::INode> parent = navigator ? navigator->FindNode(parentKey) : nullptr;
        if (!parent) return;

        if (!useListedTools) m_colListedTools = std::make_unique<ToolCollection>();
        arvon::INodes& nodes = parent->Nodes();
        std::unordered_set<std::string> made;
        for (const ToolRecord& tool : ToolsInOrder(useListedTools)) {
            // The show-all switch is the list's concern: nodes are for what is meant to be listed.
            constexpr bool showAllTools = false;
            if (!IsShown(*tool, showAllTools)) continue;
            const std::string name = tool->Name();
            if (!useListedTools) m_colListedTools->Add(tool, name);
            if (name.empty()) continue; // a node without a key could not be found again
            if (nodes.Item(name)) nodes.Remove(name);
            const std::shared_ptr<arvon::INode> node = nodes.Add(name, Self, 3, name, nullptr, true, 0);
            made.insert(name);
            node->SetImage(toolImage);
            node->SetViewKey(view::ToolProperties);
        }
        // ours that are left are of tools that are no longer listed; all others stand behind them
        for (std::size_t position = nodes.Count() - made.size(); position >= 1; --position) {
            const std::shared_ptr<arvon::INode> node = nodes.Item(position);
            if (node->Owner() == Self) nodes.Remove(node->Key());
        }
    });
}

void ToolMain::RefreshToolsNode(bool selectTab) {
    Guarded("RefreshToolsNode", [&] {
        const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
        const std::shared_ptr<arvon::INode> node = navigator ? navigator->FindNode(view::ToolsNode) : nullptr;
        if (!node) return;
        if (selectTab) {
            node->Select();
        } else {
            node->Release();
        }
        node->Refresh();
    });
}

} // namespace kvtm
