#pragma once

#include "desktop/HostBridge.h"
#include "desktop/HostWindows.h"
#include "desktop/Pictures.h"
#include "desktop/ToolStates.h"
#include "desktop/texts/Translation.h"

#include <QHash>
#include <QMainWindow>
#include <QString>

class QDockWidget;
class QLabel;
class QProgressBar;
class QSplitter;
class QStackedWidget;

namespace desktop {

class Banner;
class Finder;
class HostMenus;
class LanguageMenu;
class Navigator;
class ReportLine;
class TaskPane;
class ToolListPage;
class UpdatesWindow;
struct WindowLayout;

/// The host's window: everything that the host's model says, drawn.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    /// `layoutFile`: where the arrangement of the window and the last page are remembered.
    MainWindow(HostBridge& bridge, const QString& layoutFile);
    ~MainWindow() override;

    /// Docks the message trace, hidden until it is asked for.
    void AddTrace(QDockWidget* trace);
    /// Draws everything as it stands, then arranges it and opens the page as they were left.
    void Begin();

    ToolListPage& Programs() const { return *programs_; }
    Navigator& Nodes() const { return *navigator_; }
    TaskPane& Tasks() const { return *taskPane_; }
    HostWindows& Windows() const { return *windows_; }
    void OpenFinder();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void BuildContent();
    void BuildOwnMenu();
    void Connect();
    void Retranslate();
    QAction* AddAction(QMenu& menu, const text::Own& caption, const text::Own& hint,
                       const QKeySequence& keys);

    void Draw(const Parts& parts);
    void DrawContent();
    void DrawTaskPane();
    void DrawLanguage();
    void DrawTitle();
    void DrawLoaded();
    void ShowStates();
    void RefreshControls();
    /// The widget of that view in place of the list; the list where the key is empty.
    void ShowView(const QString& viewKey);
    /// The keyboard goes to the filter of the list, which comes to the front by its node.
    void FilterList();
    void UnloadVantor();
    void ShowProgress(const QString& what);
    void ShowPointer(int pointer);
    /// In the status bar, for a while.
    void Tell(const QString& text);
    void TellTrouble(const QString& text);
    void TakeInProblem(const QString& text);
    void TakeInReport(const FailureReport& report);
    void OrderTabs();
    WindowLayout Layout();
    void OpenAsLeft();

    HostBridge& bridge_;
    QString layoutFile_;
    Pictures pictures_;
    ToolStates states_;
    HostWindows* windows_;
    HostMenus* menus_ = nullptr;
    Navigator* navigator_ = nullptr;
    ToolListPage* programs_ = nullptr;
    TaskPane* taskPane_ = nullptr;
    Banner* banner_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QSplitter* listSplitter_ = nullptr;
    QStackedWidget* content_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    QLabel* empty_ = nullptr;
    QProgressBar* progress_ = nullptr;
    ReportLine* report_ = nullptr;
    Finder* finder_ = nullptr;
    UpdatesWindow* updates_ = nullptr;
    QMenu* viewMenu_ = nullptr;
    LanguageMenu* languages_ = nullptr;
    QAction* taskPaneSwitch_ = nullptr;
    QAction* unload_ = nullptr;
    QAction* trace_ = nullptr;
    QString shownNode_, language_;
    bool begun_ = false;
};

} // namespace desktop
