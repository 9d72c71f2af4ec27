#include "base/ComponentError.h"
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

[[noreturn]] void NoSuch(std::string_view kind, std::string_view key) {
    throw base::ComponentError(base::errors::InvalidCall, "Arvon110",
                               "no " + std::string(kind) + " \"" + std::string(key) + "\"");
}

[[noreturn]] void CannotBeUsed(std::string_view kind, std::string_view key, std::string_view state) {
    throw base::ComponentError(base::errors::InvalidCall, "Arvon110",
                               std::string(kind) + " \"" + std::string(key) + "\" is " + std::string(state));
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
        inSight = item && item->IsVisible();
    }
    if (!item) NoSuch("menu item", key);
    RequireClickable(*item, inSight);
    const std::string owner = item->OwnerText();
    framework_->events_.Menu(owner, key);
}

void ReferenceHost::ClickButton(std::string_view key) {
    const Button* button = framework_->buttons_.Find(key);
    if (!button) NoSuch("button", key);
    if (button->IsSeparator()) CannotBeUsed("button", key, "a separator");
    if (!button->IsVisible()) CannotBeUsed("button", key, "hidden");
    const std::string owner = button->OwnerText();
    framework_->events_.Button(owner, key);
}

void ReferenceHost::ClickTask(std::string_view key, bool flag) {
    const TaskViews::Pane* pane = framework_->taskViews_.WithTask(key);
    std::string owner = pane ? pane->owner : std::string();
    if (pane) {
        // a task of its own pane
    } else if (key == showAllTask) {
        pane = framework_->taskViews_.First();
        if (!pane) NoSuch("task", key);
        owner = pane->owner;
        flag = pane->view->TurnShowAll();
    } else if (std::find(ownTasks.begin(), ownTasks.end(), key) != ownTasks.end()) {
        owner = listenerId::Component;
    } else {
        NoSuch("task", key);
    }
    framework_->events_.Task(owner, key, flag);
}

void ReferenceHost::NodeEvent(std::string_view tabKey, std::string_view nodeKey, std::int32_t kind) {
    const std::shared_ptr<Tab> tab = framework_->tabs_.Find(tabKey);
    if (!tab) NoSuch("tab", tabKey);
    const std::shared_ptr<Node> node = tab->Find(nodeKey);
    if (!node) NoSuch("node", nodeKey);
    if (kind == eventKind::Selected) {
        node->BecomeSelected(true);
    } else {
        framework_->events_.Node(node->OwnerText(), tabKey, kind, nodeKey);
    }
}

void ReferenceHost::TabEvent(std::string_view tabKey, std::int32_t kind) {
    const std::shared_ptr<Tab> tab = framework_->tabs_.Find(tabKey);
    if (!tab) NoSuch("tab", tabKey);
    if (kind == eventKind::Selected) framework_->tabs_.BringForward(tabKey);
    framework_->events_.Tab(tab->OwnerText(), tabKey, kind, tab->SelectedKey());
}

void ReferenceHost::ListItemEvent(std::string_view viewKey, std::string_view rowText, std::int32_t kind,
                                  std::optional<bool> checked) {
    const std::shared_ptr<View> view = framework_->views_.Find(viewKey);
    ListView* list = view ? view->Rows() : nullptr;
    if (!list) NoSuch("list view", viewKey);
    ListItem* row = list->FindText(rowText);
    if (!row) NoSuch("row", rowText);
    list->SetCurrent(row);
    bool state = checked.value_or(row->IsChecked());
    if (kind == eventKind::CheckChanged) {
        state = checked.value_or(!row->IsChecked());
        row->Check(state);
    }
    framework_->events_.Row(view->OwnerText(), viewKey, kind, rowText, state);
}

void ReferenceHost::SelectRow(std::string_view viewKey, std::string_view rowText) {
    const std::shared_ptr<View> view = framework_->views_.Find(viewKey);
    ListView* list = view ? view->Rows() : nullptr;
    if (!list) NoSuch("list view", viewKey);
    ListItem* row = list->FindText(rowText);
    if (!row) NoSuch("row", rowText);
    list->SetCurrent(row);
}

void ReferenceHost::ColumnClick(std::string_view viewKey, std::string_view columnKey,
                                std::string_view order) {
    const std::shared_ptr<View> view = framework_->views_.Find(viewKey);
    const ListView* list = view ? view->Rows() : nullptr;
    if (!list) NoSuch("list view", viewKey);
    if (!list->HasColumn(columnKey)) NoSuch("column", columnKey);
    framework_->events_.Column(view->OwnerText(), viewKey, columnKey, order);
}

void ReferenceHost::CloseWindow(std::string_view key) {
    if (!framework_->windows_.Close(key)) NoSuch("window", key);
}

void ReferenceHost::UnloadTool(std::string_view name) {
    const std::shared_ptr<LoadedTool> tool = framework_->loadedTools_.Find(name);
    if (!tool) NoSuch("loaded tool", name);
    const std::array parameters{ParameterRecord{"vrex", 2, tool->Names().key},
                                ParameterRecord{"toolID", 2, tool->Identifier()}};
    SendRequest("UnloadTool", parameters, listenerId::Shell);
    // where nobody answered for it, the host unloads it all the same
    if (framework_->loadedTools_.Find(name) == tool) framework_->loader_.Unload(tool);
}

} // namespace arvon::host
