#include "desktop/WindowLayout.h"

#include "desktop/Navigator.h"
#include "desktop/ToolListPage.h"

#include <QAction>
#include <QMainWindow>
#include <QSettings>
#include <QSplitter>

namespace desktop {

namespace {

namespace key {
constexpr QLatin1String geometry("Window/Geometry");
constexpr QLatin1String state("Window/State");
constexpr QLatin1String splitter("Window/Splitter");
constexpr QLatin1String listSplitter("Window/ListSplitter");
constexpr QLatin1String taskPane("Window/TaskPane");
constexpr QLatin1String header("List/Header");
constexpr QLatin1String node("Page/Node");
} // namespace key

} // namespace

void WindowLayout::Save(const QString& file) const {
    QSettings settings(file, QSettings::IniFormat);
    settings.setValue(key::geometry, window.saveGeometry());
    settings.setValue(key::state, window.saveState());
    settings.setValue(key::splitter, splitter.saveState());
    settings.setValue(key::listSplitter, listSplitter.saveState());
    settings.setValue(key::taskPane, taskPaneSwitch.isChecked());
    settings.setValue(key::header, programs.HeaderState());
    settings.setValue(key::node, navigator.SelectedNode());
}

QString WindowLayout::Restore(const QString& file) const {
    const QSettings settings(file, QSettings::IniFormat);
    window.restoreGeometry(settings.value(key::geometry).toByteArray());
    window.restoreState(settings.value(key::state).toByteArray());
    splitter.restoreState(settings.value(key::splitter).toByteArray());
    listSplitter.restoreState(settings.value(key::listSplitter).toByteArray());
    taskPaneSwitch.setChecked(settings.value(key::taskPane, true).toBool());
    const QByteArray header = settings.value(key::header).toByteArray();
    if (!header.isEmpty()) programs.RestoreHeader(header);
    return settings.value(key::node).toString();
}

} // namespace desktop
