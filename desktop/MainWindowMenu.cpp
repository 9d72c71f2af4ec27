// The window's own menu, and its own texts.

#include "core/contract/EventShapes.h"
#include "desktop/HostMenus.h"
#include "desktop/LanguageMenu.h"
#include "desktop/MainWindow.h"
#include "desktop/Navigator.h"
#include "desktop/Texts.h"
#include "desktop/ToolListPage.h"

#include <QAction>
#include <QMenuBar>
#include <QProgressBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolBar>

#include <algorithm>
#include <string_view>

namespace desktop {

namespace {

/// The node whose page is the list.
constexpr std::string_view listNode = "nodTools";

} // namespace

QAction* MainWindow::AddAction(QMenu& menu, const text::Own& caption, const text::Own& hint,
                               const QKeySequence& keys) {
    QAction* action = menu.addAction(QString());
    text::Follow(action, [action, caption, hint] {
        action->setText(text::Of(caption));
        action->setStatusTip(text::Of(hint));
    });
    action->setShortcut(keys);
    return action;
}

void MainWindow::BuildOwnMenu() {
    viewMenu_ = menuBar()->addMenu(QString());
    viewMenu_->setObjectName(QStringLiteral("mnuView"));
    menus_->SetOwnMenu(viewMenu_->menuAction());

    connect(
        AddAction(*viewMenu_, text::window::Find, text::window::FindHint, QKeySequence(Qt::CTRL | Qt::Key_K)),
        &QAction::triggered, this, &MainWindow::OpenFinder);
    connect(AddAction(*viewMenu_, text::window::Filter, text::window::FilterHint, QKeySequence::Find),
            &QAction::triggered, this, &MainWindow::FilterList);
    viewMenu_->addSeparator();
    taskPaneSwitch_ =
        AddAction(*viewMenu_, text::window::TaskPane, text::window::TaskPaneHint, QKeySequence(Qt::Key_F9));
    taskPaneSwitch_->setCheckable(true);
    taskPaneSwitch_->setChecked(true);
    connect(taskPaneSwitch_, &QAction::toggled, this, [this] { DrawTaskPane(); });
    viewMenu_->addAction(toolBar_->toggleViewAction());
    trace_ = viewMenu_->addSeparator(); // the trace's switch stands before it
    languages_ = new LanguageMenu(bridge_, viewMenu_);
    viewMenu_->addMenu(languages_);
    unload_ = AddAction(*viewMenu_, text::window::Unload, text::window::UnloadHint,
                        QKeySequence(Qt::CTRL | Qt::Key_W));
    connect(unload_, &QAction::triggered, this, &MainWindow::UnloadVantor);
    viewMenu_->addSeparator();
    connect(
        AddAction(*viewMenu_, text::window::Quit, text::window::QuitHint, QKeySequence(Qt::CTRL | Qt::Key_Q)),
        &QAction::triggered, this, &QWidget::close);
    text::Follow(this, [this] { Retranslate(); });
}

void MainWindow::FilterList() {
    if (content_->currentWidget() == listSplitter_) {
        programs_->FocusFilter();
        return;
    }
    bridge_.Do([this](arvon::host::ReferenceHost& host) {
        for (const arvon::host::model::Tab& tab : host.Model().Tabs()) {
            const bool holds =
                std::ranges::find(tab.nodes, listNode, &arvon::host::model::Node::key) != tab.nodes.end();
            if (!holds || !tab.visible || !tab.enabled) continue;
            if (tab.key != host.Model().CurrentControl()) host.TabEvent(tab.key);
            host.NodeEvent(tab.key, listNode, arvon::eventKind::Selected);
            break;
        }
        navigator_->Draw();
        DrawContent();
        programs_->FocusFilter();
    });
}

void MainWindow::Retranslate() {
    toolBar_->setWindowTitle(text::Of(text::window::ToolBar));
    toolBar_->setAccessibleName(toolBar_->windowTitle());
    QAction* toolBarSwitch = toolBar_->toggleViewAction(); // takes the title of its own accord
    toolBarSwitch->setText(text::Of(text::window::ToolBarSwitch));
    toolBarSwitch->setStatusTip(text::Of(text::window::ToolBarHint));
    progress_->setAccessibleName(text::Of(text::status::Busy));
    viewMenu_->setTitle(text::Of(text::window::ViewMenu));
    viewMenu_->menuAction()->setStatusTip(text::Of(text::window::ViewMenuHint));
}

} // namespace desktop
