#pragma once

#include <QString>

class QAction;
class QMainWindow;
class QSplitter;

namespace desktop {

class Navigator;
class ToolListPage;

/// What of the main window is remembered from one time to the next.
struct WindowLayout {
    QMainWindow& window;
    QSplitter& splitter;
    QSplitter& listSplitter;
    QAction& taskPaneSwitch;
    ToolListPage& programs;
    Navigator& navigator;

    void Save(const QString& file) const;
    /// Puts the window as the file says, as far as it does. Returns the key of the node that was selected;
    /// empty when there is none.
    QString Restore(const QString& file) const;
};

} // namespace desktop
