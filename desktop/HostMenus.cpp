#include "desktop/HostMenus.h"

#include "desktop/QtText.h"
#include "desktop/Texts.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

#include <array>

namespace desktop {

using arvon::host::ReferenceHost;
using arvon::host::model::MenuItem;

namespace {

/// More entries than these are found faster by typing; what follows the tools stays in reach.
constexpr std::size_t mostEntries = 200;
constexpr std::size_t lastEntries = 5;

struct ItemTraits {
    const char* key;
    const char* keys;          // shortcut
    const char* column;        // sorted by; null: none
    const text::Own* progress; // null: quick
};
constexpr std::array itemTraits{
    ItemTraits{"mnuInstallTools", "Ctrl+I", nullptr, &text::status::LookingForUpdates},
    ItemTraits{"mnuUpdateTools", "Ctrl+U", nullptr, &text::status::LookingForUpdates},
    ItemTraits{"mnuUpdateSettings", "Ctrl+Shift+U", nullptr, nullptr},
    ItemTraits{"mnuToolsSortName", "Ctrl+1", "name", &text::status::Sorting},
    ItemTraits{"mnuToolsSortVersion", "Ctrl+2", "version", &text::status::Sorting},
    ItemTraits{"mnuToolsSortUPDATED", "Ctrl+3", "lastupdated", &text::status::Sorting},
    ItemTraits{"mnuToolsSortType", "Ctrl+4", "classification", &text::status::Sorting},
    ItemTraits{"mnuToolOptions", "Ctrl+,", nullptr, nullptr},
};

const ItemTraits* TraitsOf(std::string_view key) {
    for (const ItemTraits& traits : itemTraits)
        if (key == traits.key) return &traits;
    return nullptr;
}

/// Entries that are shown, and where "more" stands among them (the number of entries: nowhere).
struct Shown {
    std::vector<std::size_t> entries;
    bool more = false;
};
Shown Limited(std::size_t count) {
    Shown shown;
    shown.more = count > mostEntries + lastEntries;
    for (std::size_t i = 0; i < count; ++i)
        if (!shown.more || i < mostEntries || i + lastEntries >= count) shown.entries.push_back(i);
    return shown;
}

/// What is drawn of the items, as a text to compare.
void Describe(QString& text, const std::vector<MenuItem>& items) {
    text += QString::number(items.size());
    for (const std::size_t entry : Limited(items.size()).entries) {
        const MenuItem& item = items[entry];
        for (const std::string* field : {&item.key, &item.caption, &item.description})
            text += ToQt(*field) + u'\x1f';
        text += QLatin1Char(static_cast<char>('0' + item.enabled + 2 * item.visible + 4 * item.separator));
        text += u'(';
        Describe(text, item.items);
        text += u')';
    }
}

} // namespace

QString MenuCaption(const std::string& caption) {
    QString shown;
    bool marked = false;
    const QString text = ToQt(caption);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool marks = text[i] == u'&' && !marked && i + 1 < text.size() && !text[i + 1].isSpace();
        if (text[i] == u'&' && !marks) shown += u'&';
        marked = marked || marks;
        shown += text[i];
    }
    return shown;
}

QString PlainCaption(const std::string& caption) {
    QString plain = MenuCaption(caption);
    for (qsizetype i = 0; i < plain.size(); ++i)
        if (plain[i] == u'&') plain.remove(i, 1);
    return plain;
}

HostMenus::HostMenus(HostBridge& bridge, const Pictures& pictures, QMenuBar& menuBar, QToolBar& toolBar)
    : bridge_(bridge), pictures_(pictures), menuBar_(menuBar), toolBar_(toolBar) {}

HostMenus::~HostMenus() = default;

QKeySequence HostMenus::ShortcutOf(const QString& itemKey) {
    const ItemTraits* traits = TraitsOf(FromQt(itemKey));
    return traits ? QKeySequence(QLatin1String(traits->keys)) : QKeySequence();
}

void HostMenus::DrawMenus() {
    const std::vector<arvon::host::model::Menu> menus = bridge_.Shown().Menus();
    QString described;
    for (const arvon::host::model::Menu& menu : menus) {
        described += ToQt(menu.key) + u'\x1f' + ToQt(menu.caption) + (menu.visible ? u'1' : u'0');
        Describe(described, menu.items);
    }
    if (described == drawnMenus_) return;
    if (QApplication::activePopupWidget()) { // an open menu stays as it is until it is closed
        QTimer::singleShot(100, this, &HostMenus::DrawMenus);
        return;
    }
    drawnMenus_ = described;
    for (QMenu* menu : menus_)
        delete menu;
    menus_.clear();
    for (const arvon::host::model::Menu& menu : menus) {
        if (!menu.visible) continue;
        auto* drawn = new QMenu(MenuCaption(menu.caption), &menuBar_);
        drawn->setObjectName(ToQt(menu.key));
        drawn->setAccessibleName(PlainCaption(menu.caption));
        drawn->menuAction()->setStatusTip(PlainCaption(menu.description));
        Fill(*drawn, menu.items);
        menuBar_.insertMenu(ownMenu_, drawn);
        menus_.push_back(drawn);
    }
}

void HostMenus::Fill(QMenu& menu, const Items& items) {
    const Shown shown = Limited(items.size());
    for (std::size_t i = 0; i < shown.entries.size(); ++i) {
        if (shown.more && i == mostEntries)
            menu.addAction(text::Of(text::window::More), this, [this] { more_(); });
        AddItem(menu, items[shown.entries[i]]);
    }
}

void HostMenus::AddItem(QMenu& menu, const MenuItem& item) {
    if (!item.visible) return;
    if (item.separator) {
        menu.addSeparator()->setObjectName(ToQt(item.key));
        return;
    }
    if (!item.items.empty()) {
        QMenu* below = menu.addMenu(MenuCaption(item.caption));
        below->setObjectName(ToQt(item.key));
        below->setAccessibleName(PlainCaption(item.caption));
        below->setEnabled(item.enabled);
        below->menuAction()->setStatusTip(PlainCaption(item.description));
        Fill(*below, item.items);
        return;
    }
    QAction* action = menu.addAction(MenuCaption(item.caption));
    action->setObjectName(ToQt(item.key));
    action->setEnabled(item.enabled);
    action->setStatusTip(PlainCaption(item.description));
    action->setShortcut(ShortcutOf(ToQt(item.key)));
    connect(action, &QAction::triggered, this, [this, item] { Click(item); });
}

void HostMenus::Click(const MenuItem& item) {
    const ItemTraits* traits = TraitsOf(item.key);
    if (traits && traits->column) emit Sorted(QLatin1String(traits->column));
    bridge_.Do([key = item.key](ReferenceHost& host) { host.ClickMenu(key); },
               traits && traits->progress ? text::Of(*traits->progress) : QString());
}

void HostMenus::ShowContextMenu(const QPoint& globalPosition) {
    const Items items = bridge_.Model().ContextMenu();
    if (items.empty()) return;
    auto* menu = new QMenu(menuBar_.window());
    menu->setObjectName(QStringLiteral("contextMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    Fill(*menu, items);
    menu->popup(globalPosition);
}

void HostMenus::DrawToolbar() {
    const std::vector<arvon::host::model::Button> buttons = bridge_.Shown().Toolbar();
    const Shown shown = Limited(buttons.size());
    QString described = QString::number(buttons.size());
    for (const std::size_t entry : shown.entries) {
        const arvon::host::model::Button& button = buttons[entry];
        for (const std::string* field : {&button.key, &button.toolTip, &button.picture})
            described += ToQt(*field) + u'\x1f';
        described += QLatin1Char(static_cast<char>('0' + button.visible + 2 * button.separator));
    }
    if (described == drawnToolbar_) return;
    drawnToolbar_ = described;
    for (QAction* action : toolBar_.actions())
        delete action;
    for (std::size_t i = 0; i < shown.entries.size(); ++i) {
        if (shown.more && i == mostEntries)
            toolBar_.addAction(text::Of(text::window::More), this, [this] { more_(); });
        const arvon::host::model::Button& button = buttons[shown.entries[i]];
        if (!button.visible) continue;
        if (button.separator) {
            toolBar_.addSeparator()->setObjectName(ToQt(button.key));
            continue;
        }
        QIcon picture = pictures_.OfName(ToQt(button.picture));
        if (picture.isNull()) picture = toolBar_.style()->standardIcon(QStyle::SP_BrowserReload);
        const QString toolTip = ToQt(button.toolTip);
        QAction* action = toolBar_.addAction(picture, EscapedMnemonics(toolTip));
        action->setObjectName(ToQt(button.key));
        action->setToolTip(toolTip);
        action->setStatusTip(toolTip);
        if (QWidget* widget = toolBar_.widgetForAction(action)) {
            widget->setAccessibleName(toolTip);
            widget->setFocusPolicy(Qt::TabFocus);
        }
        connect(action, &QAction::triggered, this, [this, key = button.key, toolTip] {
            bridge_.Do([key](ReferenceHost& host) { host.ClickButton(key); },
                       text::Of(text::status::Launching).arg(toolTip));
        });
    }
}

} // namespace desktop
