#include "desktop/SystemTexts.h"

#include "desktop/HostBridge.h"
#include "desktop/QtText.h"

#include <algorithm>
#include <array>

namespace desktop {

namespace {

namespace model = arvon::host::model;

constexpr int programPrefix = 16;
constexpr int tabCaption = 4;
constexpr int nodeCaption = 5;
constexpr int paneTitle = 17;
constexpr int paneHint = 18; // and the one without a current row behind it

constexpr std::string_view toolsTab = "tabQRV";
constexpr std::string_view toolsNode = "nodTools";
constexpr std::string_view toolTasks = "lvTools";

struct Numbers {
    std::string_view key;
    int caption, description;
};
constexpr std::array menuNumbers{Numbers{"mnuTool", 6, 7}, Numbers{"mnuToolOptions", 61, 62}};
constexpr std::array taskNumbers{Numbers{"tskEditTool", 20, 21}};
constexpr std::array columnNumbers{Numbers{"name", 1, 0}, Numbers{"version", 2, 0},
                                   Numbers{"lastupdated", 3, 0}, Numbers{"classification", 1033, 0}};

template <class Table> const Numbers* NumbersOf(const Table& table, std::string_view key) {
    const auto found = std::ranges::find(table, key, &Numbers::key);
    return found == table.end() ? nullptr : &*found;
}

} // namespace

void SystemTexts::Remember() {
    language_ = bridge_.Model().Language();
    prefix_ = FromQt(bridge_.Text(programPrefix));
}

bool SystemTexts::IsSwitched() const {
    return bridge_.Model().Language() != language_;
}

void SystemTexts::Put(std::string& caption, int id) const {
    if (const QString now = bridge_.Text(id); !now.isEmpty()) caption = FromQt(now);
}

void SystemTexts::PutPrefix(std::string& text) const {
    if (prefix_.empty() || !text.starts_with(prefix_)) return;
    std::string now;
    Put(now, programPrefix);
    if (!now.empty()) text.replace(0, prefix_.size(), now);
}

void SystemTexts::PutItems(std::vector<model::MenuItem>& items) const {
    for (model::MenuItem& item : items) {
        if (const Numbers* numbers = NumbersOf(menuNumbers, item.key)) {
            Put(item.caption, numbers->caption);
            Put(item.description, numbers->description);
        } else {
            PutPrefix(item.description);
        }
        PutItems(item.items);
    }
}

std::vector<model::Menu> SystemTexts::Menus() const {
    std::vector<model::Menu> menus = bridge_.Model().Menus();
    if (!IsSwitched()) return menus;
    for (model::Menu& menu : menus) {
        if (const Numbers* numbers = NumbersOf(menuNumbers, menu.key)) {
            Put(menu.caption, numbers->caption);
            Put(menu.description, numbers->description);
        }
        PutItems(menu.items);
    }
    return menus;
}

std::vector<model::Button> SystemTexts::Toolbar() const {
    std::vector<model::Button> buttons = bridge_.Model().Toolbar();
    if (!IsSwitched()) return buttons;
    for (model::Button& button : buttons)
        PutPrefix(button.toolTip);
    return buttons;
}

std::vector<model::Tab> SystemTexts::Tabs() const {
    std::vector<model::Tab> tabs = bridge_.Model().Tabs();
    if (!IsSwitched()) return tabs;
    for (model::Tab& tab : tabs) {
        if (tab.key != toolsTab) continue;
        Put(tab.caption, tabCaption);
        for (model::Node& node : tab.nodes)
            if (node.key == toolsNode) Put(node.caption, nodeCaption);
    }
    return tabs;
}

std::vector<model::Column> SystemTexts::Columns(std::string_view viewKey) const {
    std::vector<model::Column> columns = bridge_.Model().Columns(viewKey);
    if (!IsSwitched()) return columns;
    for (model::Column& column : columns)
        if (const Numbers* numbers = NumbersOf(columnNumbers, column.key))
            Put(column.caption, numbers->caption);
    return columns;
}

std::vector<model::TaskView> SystemTexts::TaskViews() const {
    std::vector<model::TaskView> panes = bridge_.Model().TaskViews();
    if (!IsSwitched()) return panes;
    for (model::TaskView& pane : panes) {
        if (pane.listControl != toolTasks) continue;
        Put(pane.title, paneTitle);
        for (std::size_t i = 0; i < std::min<std::size_t>(pane.texts.size(), 2); ++i)
            Put(pane.texts[i], paneHint + static_cast<int>(i));
        for (model::Task& task : pane.tasks) {
            const Numbers* numbers = NumbersOf(taskNumbers, task.key);
            if (!numbers) continue;
            Put(task.caption, numbers->caption);
            Put(task.description, numbers->description);
        }
    }
    return panes;
}

} // namespace desktop
