#pragma once

#include "desktop/HostBridge.h"
#include "desktop/Pictures.h"
#include "host/Model.h"

#include <QScrollArea>

#include <map>
#include <vector>

class QAction;
class QCheckBox;
class QLabel;
class QToolButton;
class QVBoxLayout;

namespace desktop {

/// A task pane of the host: what can be done with the list's current row.
class TaskPane final : public QScrollArea {
    Q_OBJECT

public:
    TaskPane(HostBridge& bridge, const Pictures& pictures);

    void Draw(const arvon::host::model::TaskView& pane);
    /// Without a current row there is nothing to do anything with, and the pane says so.
    void SetCurrent(const QString& rowText);
    /// Clicks the task of that key, asking first where that is due.
    void Click(const QString& taskKey);
    /// The Tab key goes from that widget through the tasks from top to bottom.
    void OrderTabs(QWidget* before);
    /// Keys that tasks are given, beside those of the menus.
    static QKeySequence ShortcutOf(const QString& taskKey);

private:
    void DrawTasks(const std::vector<arvon::host::model::Task>& tasks);
    void DrawShortcuts(const std::vector<arvon::host::model::Task>& tasks);
    void DrawHint();

    HostBridge& bridge_;
    const Pictures& pictures_;
    QLabel* title_;
    QLabel* hint_;
    QVBoxLayout* tasks_;
    QCheckBox* showAll_;
    std::vector<QToolButton*> buttons_;
    std::map<QString, QAction*> shortcuts_; // by task key
    QString usual_, noCurrent_, current_;
};

} // namespace desktop
