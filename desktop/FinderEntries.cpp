#include "desktop/FinderEntries.h"

#include "core/contract/EventShapes.h"
#include "desktop/HostBridge.h"
#include "desktop/HostMenus.h"
#include "desktop/Pictures.h"
#include "desktop/QtText.h"
#include "desktop/TaskPane.h"
#include "desktop/Texts.h"
#include "desktop/ToolListPage.h"
#include "desktop/ToolStates.h"

#include <QAction>
#include <QMenu>

namespace desktop {

namespace model = arvon::host::model;

namespace {

using Entries = std::vector<FinderEntry>;

QString KeysOf(const QKeySequence& keys) {
    return keys.toString(QKeySequence::NativeText);
}

void AddPrograms(Entries& entries, const FinderSources& from) {
    for (const model::ListRow& row : from.bridge.Model().List(listView)) {
        const QString name = ToQt(row.text);
        const auto open = [&bridge = from.bridge, text = row.text, name] {
            bridge.Do(
                [text](arvon::host::ReferenceHost& host) {
                    host.ListItemEvent(listView, text, arvon::eventKind::Opened);
                },
                text::Of(text::status::Launching).arg(name));
        };
        entries.push_back({name,
                           text::Of(text::finder::Program),
                           from.states.ProblemOf(name),
                           {},
                           from.pictures.OfName(from.states.PictureOf(ToQt(row.key))),
                           open});
    }
}

void AddMenuItems(Entries& entries, HostMenus& menus, const QString& kind,
                  const std::vector<model::MenuItem>& items) {
    for (const model::MenuItem& item : items) {
        if (!item.visible || !item.enabled || item.separator) continue;
        if (!item.items.empty()) {
            AddMenuItems(entries, menus, PlainCaption(item.caption), item.items);
            continue;
        }
        entries.push_back({PlainCaption(item.caption), kind, PlainCaption(item.description),
                           KeysOf(HostMenus::ShortcutOf(ToQt(item.key))), QIcon(),
                           [&menus, item] { menus.Click(item); }});
    }
}

void AddTasks(Entries& entries, const FinderSources& from) {
    const QString program = from.programs.Current();
    if (program.isEmpty()) return;
    for (const model::TaskView& pane : from.bridge.Shown().TaskViews()) {
        for (const model::Task& task : pane.tasks) {
            const QString key = ToQt(task.key);
            entries.push_back({ToQt(task.caption) + QLatin1String(": ") + program,
                               text::Of(text::finder::Task), ToQt(task.description),
                               KeysOf(TaskPane::ShortcutOf(key)), from.pictures.OfFile(ToQt(task.icon)),
                               [&tasks = from.tasks, key] { tasks.Click(key); }});
        }
    }
}

void AddOwnCommands(Entries& entries, const QMenu& menu) {
    for (QAction* action : menu.actions()) {
        if (action->isSeparator() || action->menu() || !action->isEnabled()) continue;
        entries.push_back({PlainCaption(FromQt(action->text())),
                           PlainCaption(FromQt(text::Of(text::window::ViewMenu))), action->statusTip(),
                           KeysOf(action->shortcut()), action->icon(), [action] { action->trigger(); }});
    }
}

} // namespace

Entries FinderEntriesOf(const FinderSources& sources) {
    Entries entries;
    AddPrograms(entries, sources);
    for (const model::Menu& menu : sources.bridge.Shown().Menus())
        if (menu.visible) AddMenuItems(entries, sources.menus, PlainCaption(menu.caption), menu.items);
    AddTasks(entries, sources);
    AddOwnCommands(entries, sources.ownMenu);
    return entries;
}

} // namespace desktop
