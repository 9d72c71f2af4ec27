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

std::string SystemTexts::Remember() const {
    std::string prefix = FromQt(bridge_.Text(programPrefix));
    if (!prefix.empty()) prefixes_.insert(prefix);
    return prefix;
}

void SystemTexts::Put(std::string& caption, int id) const {
    if (const QString now = bridge_.Text(id); !now.isEmpty()) caption = FromQt(now);
}

void SystemTexts::PutPrefix(std::string& text, const std::string& prefix) const {
    if (prefix.empty() || prefixes_.size() < 2) return;
    std::size_t given = 0; // the longest: one may begin with another
    for (const std::string& known : prefixes_)
        if (text.starts_with(known)) given = std::max(given, known.size());
    if (given > 0) text.replace(0, given, prefix);
}

void SystemTexts::PutItems(std::vector<model::MenuItem>& items, const std::string& prefix) const {
    for (model::MenuItem& item : items) {
        if (const Numbers* numbers = NumbersOf(menuNumbers, item.key)) {
            Put(item.caption, numbers->caption);
            Put(item.description, numbers->description);
        } else {
            PutPrefix(item.description, prefix);
        }
        PutItems(item.items, prefix);
    }
}

std::vector<model::Menu> SystemTexts::Menus() const {
    std::vector<model::Menu> menus = bridge_.Model().Menus();
    const std::string prefix = Remember();
    for (model::Menu& menu : menus) {
        if (const Numbers* numbers = NumbersOf(menuNumbers, menu.key)) {
            Put(menu.caption, numbers->caption);
            Put(menu.description, numbers->description);
        }
        PutItems(menu.items, prefix);
    }
    return menus;
}

std::vector<model::Button> SystemTexts::Toolbar() const {
    std::vector<model::Button> buttons = bridge_.Model().Toolbar();
    const std::string prefix = Remember();
    for (model::Button& button : buttons)
        PutPrefix(button.toolTip, prefix);
    return buttons;
}

std::vector<model::Tab> SystemTexts::Tabs() const {
    std::vector<model::Tab> tabs = bridge_.Model().Tabs();
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
    for (model::Column& column : columns)
        if (const Numbers* numbers = NumbersOf(columnNumbers, column.key))
            Put(column.caption, numbers->caption);
    return columns;
}

std::vector<model::TaskView> SystemTexts::TaskViews() const {
    std::vector<model::TaskView> panes = bridge_.Model().TaskViews();
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
