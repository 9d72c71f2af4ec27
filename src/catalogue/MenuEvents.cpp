#include "base/Text.h"
#include "core/Names.h"
#include "core/ToolMain.h"
#include "options/ToolOptions.h"

#include <algorithm>
#include <iterator>

namespace kvtm {

void ToolMain::HandleMenuEvent(const EventRef& event) {
    struct Row {
        std::string_view item;
        void (*act)(ToolMain& self);
    };
    static constexpr Row rows[] = {
        {menu::InstallTools, [](ToolMain& self) { self.RequestUpdates(true); }},
        {menu::UpdateTools, [](ToolMain& self) { self.RequestUpdates(false); }},
        {menu::UpdateSettings, [](ToolMain& self) { self.ShowOptions(); }},
        {menu::ToolOptions, [](ToolMain& self) { self.OpenOptions(); }},
        {menu::SortByName, [](ToolMain& self) { self.SortTools("name", "0", true); }},
        {menu::SortByVersion, [](ToolMain& self) { self.SortTools("version", "0", true); }},
        {menu::SortByUpdate, [](ToolMain& self) { self.SortTools("lastupdated", "0", true); }},
        {menu::SortByType, [](ToolMain& self) { self.SortTools("classification", "0", true); }},
        {menu::Launch, [](ToolMain& self) { self.LaunchToolByName(self.m_sLastNodeKey); }},
        {menu::Tools, [](ToolMain&) {}},
    };

    Guarded("HandleMenuEvent", [&] {
        const std::string name = event->Name();
        const std::shared_ptr<arvon::IMenuItem> item = m_oFramework->Menus().FindItem(name);
        const auto row =
            std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return r.item == name; });
        if (row != std::end(rows)) {
            row->act(*this);
        } else if (item) {
            const std::string caption = item->Caption();
            ShowToolNode(caption.substr(std::min<std::size_t>(1, caption.size()))); // without the "&"
        }
    });
}

// The view is shown even where there are no options to show.
void ToolMain::OpenOptions() {
    m_oToolOptions = std::make_unique<ToolOptions>(m_oServices);
    LoadOptionsForView();
    ShowOptionsView();
}

void ToolMain::ShowToolNode(std::string_view toolName) {
    const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
    if (!navigator) return;
    navigator->BringForward();
    if (const std::shared_ptr<arvon::INode> node = navigator->FindNode(toolName)) node->Select();
}

void ToolMain::HandleButtonEvent(const EventRef& event) {
    Guarded("HandleButtonEvent", [&] {
        const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
        if (!navigator) return;
        if (!base::EqualIgnoringCase(m_oFramework->CurrentControl(), view::Navigator))
            navigator->BringForward();

        const std::string name = event->Name();
        if (!IsShownButton(name) && base::EqualIgnoringCase(name, button::UpdateTools)) {
            ShowUpdatesOnToolsNode(*navigator);
        } else if (const ToolRecord tool = ToolOfButton(name)) {
            LaunchShownTool(tool);
        }
    });
}

void ToolMain::ShowUpdatesOnToolsNode(arvon::ITab& navigator) {
    const std::shared_ptr<arvon::INode> node = navigator.FindNode(view::ToolsNode);
    if (!node) return;
    node->Select();
    node->SetViewKey(view::ToolsUpdate);
    node->Select();
}

} // namespace kvtm
