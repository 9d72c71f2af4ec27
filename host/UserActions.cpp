#include "host/Errors.h"
#include "host/HostFramework.h"
#include "host/ReferenceHost.h"

#include <algorithm>
#include <array>
#include <string>

/// What a user does, as verbs of the host: find the thing, refuse what a user could not do, change the model
/// as the screen would and raise the event.
namespace arvon::host {

namespace {

/// Tasks that the host's own controls offer besides those of the pane.
constexpr std::array<std::string_view, 3> ownTasks{"tskUpdateTool", "tskAddTool", "tskEditTool"};

[[noreturn]] void CannotBeUsed(std::string_view kind, std::string_view key, std::string_view state) {
    Raise(base::errors::InvalidCall,
          std::string(kind) + " \"" + std::string(key) + "\" is " + std::string(state));
}

std::shared_ptr<Tab> UsableTab(const Tabs& tabs, std::string_view key) {
    const std::shared_ptr<Tab> tab = tabs.Find(key);
    if (!tab) RaiseNoSuch("tab", key);
    if (!tab->IsVisible()) CannotBeUsed("tab", key, "hidden");
    if (!tab->IsEnabled()) CannotBeUsed("tab", key, "disabled");
    return tab;
}

std::shared_ptr<View> ListViewOf(const Views& views, std::string_view viewKey) {
    const std::shared_ptr<View> view = views.Find(viewKey);
    if (!view || !view->Rows()) RaiseNoSuch("list view", viewKey);
    return view;
}

ListItem& RowOf(const View& view, std::string_view rowText) {
    ListItem* row = view.Rows()->FindText(rowText);
    if (!row) RaiseNoSuch("row", rowText);
    return *row;
}

void RequireClickable(const MenuItem& item, bool inSight) {
    if (item.IsSeparator()) CannotBeUsed("menu item", item.KeyText(), "a separator");
    if (!inSight) CannotBeUsed("menu item", item.KeyText(), "hidden");
    if (!item.IsEnabled()) CannotBeUsed("menu item", item.KeyText(), "disabled");
}

} // namespace

void ReferenceHost::ClickMenu(std::string_view key) {
    const HostFramework& host = *framework_;
    const MenuItem* item = host.menus_.Find(key);
    bool inSight = item && host.menus_.IsInSight(*item);
    if (!item) {
        item = host.contextMenu_.Find(key);
        inSight = item && item->IsInSight();
    }
    if (!item) RaiseNoSuch("menu item", key);
    RequireClickable(*item, inSight);
    const std::string owner = item->OwnerText();
    framework_->events_.Menu(owner, key);
}

void ReferenceHost::ClickButton(std::string_view key) {
    const Button* button = framework_->buttons_.Find(key);
    if (!button) RaiseNoSuch("button", key);
    if (button->IsSeparator()) CannotBeUsed("button", key, "a separator");
    if (!button->IsVisible()) CannotBeUsed("button", key, "hidden");
    const std::string owner = button->OwnerText();
    framework_->events_.Button(owner, key);
}

void ReferenceHost::ClickTask(std::string_view key, bool flag) {
    const TaskViews::Pane* pane = framework_->taskViews_.WithTask(key);
    const bool isSwitch = !pane && key == showAllTask;
    if (isSwitch) pane = framework_->taskViews_.First();
    std::string owner;
    if (pane) {
        const std::shared_ptr<TaskView> view = pane->view; // may be replaced by whoever hears of the switch
        if (!view->IsVisible()) CannotBeUsed("task", key, "hidden");
        owner = pane->owner;
        if (isSwitch) flag = view->TurnShowAll();
    } else if (std::find(ownTasks.begin(), ownTasks.end(), key) != ownTasks.end()) {
        owner = listenerId::Component;
    } else {
        RaiseNoSuch("task", key);
    }
    framework_->events_.Task(owner, key, flag);
}

void ReferenceHost::NodeEvent(std::string_view tabKey, std::string_view nodeKey, std::int32_t kind) {
    const std::shared_ptr<Tab> tab = UsableTab(framework_->tabs_, tabKey);
    const std::shared_ptr<Node> node = tab->Find(nodeKey);
    if (!node) RaiseNoSuch("node", nodeKey);
    if (kind == eventKind::Selected) {
        node->BecomeSelected(true);
    } else {
        if (kind == eventKind::ContextMenu) framework_->contextMenu_.Empty();
        framework_->events_.Node(node->OwnerText(), tabKey, kind, nodeKey);
    }
}

void ReferenceHost::TabEvent(std::string_view tabKey, std::int32_t kind) {
    const std::shared_ptr<Tab> tab = UsableTab(framework_->tabs_, tabKey);
    if (kind == eventKind::Selected) framework_->tabs_.BringForward(tabKey);
    framework_->events_.Tab(tab->OwnerText(), tabKey, kind, tab->SelectedKey());
}

void ReferenceHost::ListItemEvent(std::string_view viewKey, std::string_view rowText, std::int32_t kind,
                                  std::optional<bool> checked) {
    const std::shared_ptr<View> view = ListViewOf(framework_->views_, viewKey);
    view->Rows()->SetCurrent(&RowOf(*view, rowText));
    ListItem& row = RowOf(*view, rowText); // whoever heard of it may have filled the list anew
    const bool isChange = kind == eventKind::CheckChanged;
    const bool state = checked.value_or(row.IsChecked() != isChange);
    if (isChange) row.Check(state);
    framework_->events_.Row(view->OwnerText(), viewKey, kind, rowText, state);
}

void ReferenceHost::SelectRow(std::string_view viewKey, std::string_view rowText) {
    const std::shared_ptr<View> view = ListViewOf(framework_->views_, viewKey);
    view->Rows()->SetCurrent(&RowOf(*view, rowText));
}

void ReferenceHost::ColumnClick(std::string_view viewKey, std::string_view columnKey,
                                std::string_view order) {
    const std::shared_ptr<View> view = ListViewOf(framework_->views_, viewKey);
    if (!view->Rows()->HasColumn(columnKey)) RaiseNoSuch("column", columnKey);
    framework_->events_.Column(view->OwnerText(), viewKey, columnKey, order);
}

void ReferenceHost::CloseWindow(std::string_view key) {
    if (!framework_->windows_.Close(key)) RaiseNoSuch("window", key);
}

void ReferenceHost::UnloadTool(std::string_view name) {
    const std::shared_ptr<LoadedTool> tool = framework_->loadedTools_.Find(name);
    if (!tool) RaiseNoSuch("loaded tool", name);
    const std::array parameters{ParameterRecord{"vrex", 2, tool->Names().key},
                                ParameterRecord{"toolID", 2, tool->Identifier()}};
    SendRequest("UnloadTool", parameters, listenerId::Shell);
    // where nobody answered for it, the host unloads it all the same
    if (framework_->loadedTools_.Find(name) == tool) framework_->loader_.Unload(tool);
}

} // namespace arvon::host
