#include "desktop/MainWindow.h"

#include "base/ComponentError.h"
#include "core/contract/EventShapes.h"
#include "core/contract/Framework.h"
#include "desktop/Banner.h"
#include "desktop/FinderEntries.h"
#include "desktop/HostMenus.h"
#include "desktop/LanguageMenu.h"
#include "desktop/MessageBox.h"
#include "desktop/Navigator.h"
#include "desktop/QtText.h"
#include "desktop/ReportLine.h"
#include "desktop/TaskPane.h"
#include "desktop/Texts.h"
#include "desktop/ToolListPage.h"
#include "desktop/UpdatesWindow.h"
#include "desktop/WindowLayout.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace desktop {

using arvon::host::ModelPart;
using arvon::host::ReferenceHost;
using arvon::host::model::Process;
using arvon::host::model::ProcessEnd;

namespace {

constexpr int messageTime = 8000; // milliseconds

} // namespace

MainWindow::MainWindow(HostBridge& bridge, const QString& layoutFile)
    : bridge_(bridge), layoutFile_(layoutFile),
      pictures_(bridge.Host().Installation(), ToQt(bridge.Host().Framework()->ImageFolder())),
      states_(bridge), windows_(new HostWindows(bridge, *this)) {
    setObjectName(QStringLiteral("mainWindow"));
    bridge_.SetDialogParent(this);
    bridge_.SetProblemSource([this](const QString& toolName) { return states_.ProblemOf(toolName); });
    BuildContent();
    BuildOwnMenu();
    Connect();
    resize(QSize(1040, 640).boundedTo(screen()->availableSize()));
}

MainWindow::~MainWindow() {
    bridge_.SetProblemSource({});
    bridge_.disconnect(this);
}

// building
// ------------------------------------------------------------------------------------------------------

void MainWindow::BuildContent() {
    toolBar_ = addToolBar(QString());
    toolBar_->setObjectName(QStringLiteral("toolBar"));
    toolBar_->setIconSize(QSize(20, 20));
    toolBar_->setMovable(false);

    navigator_ = new Navigator(bridge_, states_, pictures_);
    programs_ = new ToolListPage(bridge_, states_, pictures_, QLatin1String(listView));
    taskPane_ = new TaskPane(bridge_, pictures_);
    banner_ = new Banner(pictures_);
    empty_ = new QLabel;
    listSplitter_ = new QSplitter;
    listSplitter_->setObjectName(QStringLiteral("listSplitter"));
    listSplitter_->addWidget(programs_);
    listSplitter_->addWidget(taskPane_);
    listSplitter_->setStretchFactor(0, 1);
    listSplitter_->setCollapsible(0, false);
    content_ = new QStackedWidget;
    content_->setObjectName(QStringLiteral("content"));
    content_->addWidget(listSplitter_);
    content_->addWidget(empty_);

    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(banner_);
    layout->addWidget(content_, 1);
    splitter_ = new QSplitter;
    splitter_->setObjectName(QStringLiteral("splitter"));
    splitter_->addWidget(navigator_);
    splitter_->addWidget(column);
    splitter_->setStretchFactor(1, 1);
    splitter_->setChildrenCollapsible(false);
    splitter_->setSizes({210, 830});
    listSplitter_->setSizes({620, 200});
    auto* central = new QWidget;
    auto* around = new QVBoxLayout(central);
    around->setContentsMargins(6, 6, 6, 0);
    around->addWidget(splitter_);
    setCentralWidget(central);

    progress_ = new QProgressBar;
    progress_->setObjectName(QStringLiteral("progress"));
    progress_->setRange(0, 0);
    progress_->setTextVisible(false);
    progress_->setMaximumWidth(120);
    progress_->hide();
    statusBar()->setObjectName(QStringLiteral("statusBar"));
    statusBar()->addPermanentWidget(progress_);
    report_ = new ReportLine;
    statusBar()->addWidget(report_, 1); // what is told for a while covers it for that while

    finder_ = new Finder(this);
    updates_ = new UpdatesWindow(bridge_, this);
    menus_ = new HostMenus(bridge_, pictures_, *menuBar(), *toolBar_);
    menus_->setParent(this);
    menus_->SetMore([this] { OpenFinder(); });
}

void MainWindow::Connect() {
    connect(&bridge_, &HostBridge::Changed, this, &MainWindow::Draw);
    connect(&bridge_, &HostBridge::Progress, this, &MainWindow::ShowProgress);
    connect(&bridge_, &HostBridge::PointerChanged, this, &MainWindow::ShowPointer);
    connect(&bridge_, &HostBridge::Problem, this, &MainWindow::TakeInProblem);
    connect(&bridge_, &HostBridge::Refused, this, &MainWindow::TellTrouble);
    connect(&bridge_, &HostBridge::FailureReported, this, &MainWindow::TakeInReport);
    connect(&bridge_, &HostBridge::ActionBegins, report_, [this] { report_->Clear(); });
    connect(&bridge_, &HostBridge::UpdatesOffered, this, [this](const std::string& answer) {
        QTimer::singleShot(0, this, [this, answer] { // not from inside the delivery
            if (!windows_->TakeOffer(answer)) updates_->Offer(answer);
        });
    });
    connect(&bridge_, &HostBridge::ProcessStarted, this, [this](const Process& process) {
        states_.ProcessStarted(process);
        Tell(text::Of(text::status::Started).arg(states_.NameOfProgram(process)));
    });
    connect(&bridge_, &HostBridge::ProcessEnded, this, [this](const Process& process, const ProcessEnd& end) {
        states_.ProcessEnded(process);
        const QString name = states_.NameOfProgram(process);
        Tell(end.exitCode == 0 ? text::Of(text::status::Ended).arg(name)
                               : text::Of(text::status::EndedBadly).arg(name).arg(end.exitCode));
    });
    connect(navigator_, &Navigator::ContextMenuReady, menus_, &HostMenus::ShowContextMenu);
    connect(programs_, &ToolListPage::CurrentChanged, taskPane_, &TaskPane::SetCurrent);
    connect(menus_, &HostMenus::Sorted, this,
            [this](const QString& column) { programs_->ShowOrder(column, false); });
}

void MainWindow::AddTrace(QDockWidget* trace) {
    if (trace->objectName().isEmpty()) trace->setObjectName(QStringLiteral("trace"));
    addDockWidget(Qt::BottomDockWidgetArea, trace);
    trace->hide();
    QAction* action = trace->toggleViewAction();
    action->setShortcut(QKeySequence(Qt::Key_F12));
    text::Follow(action, [action] { action->setStatusTip(text::Of(text::window::TraceHint)); });
    viewMenu_->insertAction(trace_, action);
}

void MainWindow::Begin() {
    bridge_.ForgetChanges();
    Draw(Parts::All());
    bridge_.ByItself([this] { OpenAsLeft(); });
    begun_ = true;
    OrderTabs();
    programs_->List().setFocus();
}

void MainWindow::OrderTabs() {
    const QList<QWidget*> parts{navigator_->findChild<QTabBar*>(), &navigator_->Tree(), &programs_->Filter(),
                                &programs_->List()};
    for (qsizetype i = 1; i < parts.size(); ++i)
        setTabOrder(parts[i - 1], parts[i]);
    taskPane_->OrderTabs(parts.last());
}

// drawing
// -------------------------------------------------------------------------------------------------------

void MainWindow::Draw(const Parts& parts) {
    states_.Refresh(parts);
    if (parts.Has(ModelPart::Settings)) DrawLanguage();
    if (parts.Has(ModelPart::Menus)) menus_->DrawMenus();
    if (parts.Has(ModelPart::Toolbar)) menus_->DrawToolbar();
    if (parts.Has(ModelPart::Tabs)) navigator_->Draw();
    if (parts.Has(ModelPart::List) || parts.Has(ModelPart::Views)) programs_->Draw();
    if (parts.Has(ModelPart::TaskViews)) DrawTaskPane();
    if (parts.Has(ModelPart::Tabs) || parts.Has(ModelPart::Views)) DrawContent();
    if (parts.Has(ModelPart::Windows)) windows_->Draw();
    if (parts.Has(ModelPart::Page)) banner_->Draw(bridge_.Model().Banner());
    if (parts.Has(ModelPart::Tools) || parts.Has(ModelPart::Loaded) || parts.Has(ModelPart::Processes))
        ShowStates();
}

void MainWindow::ShowStates() {
    programs_->RefreshStates();
    navigator_->RefreshStates();
    DrawLoaded();
    DrawTitle();
    RefreshControls();
}

// A page that asks anew has its own tool selected. What waits to be carried out may mean the tool that the
// component heard of last, and so may an open context menu: they come first.
void MainWindow::RefreshControls() {
    if (QApplication::activePopupWidget()) {
        QTimer::singleShot(std::chrono::milliseconds(100), this, &MainWindow::RefreshControls);
        return;
    }
    bridge_.ByItself([this] {
        bridge_.Do([this](ReferenceHost&) {
            if (QApplication::activePopupWidget()) {
                RefreshControls();
            } else {
                windows_->RefreshControls();
            }
        });
    });
}

void MainWindow::DrawLoaded() {
    unload_->setEnabled(!states_.ProgramToUnload().isEmpty());
}

void MainWindow::DrawTitle() {
    QString title = text::Of(text::window::Title);
    for (const QString& program : states_.OpenPrograms())
        title = program + QStringLiteral(" – ") + title;
    setWindowTitle(title);
}

void MainWindow::DrawLanguage() {
    languages_->MarkCurrent();
    const QString language = ToQt(bridge_.Model().Language());
    if (std::exchange(language_, language) == language) return;
    text::UseLanguage(language);
    if (!begun_) return;
    windows_->Retranslate();
    bridge_.Redraw();
}

void MainWindow::DrawTaskPane() {
    const std::vector<arvon::host::model::TaskView> panes = bridge_.Shown().TaskViews();
    const auto pane = std::find_if(panes.begin(), panes.end(), [](const arvon::host::model::TaskView& one) {
        return one.listControl == listView && one.visible;
    });
    taskPane_->setVisible(pane != panes.end() && taskPaneSwitch_->isChecked());
    if (pane == panes.end()) return;
    taskPane_->Draw(*pane);
    taskPane_->SetCurrent(programs_->Current());
}

void MainWindow::DrawContent() {
    const std::vector<arvon::host::model::Tab> tabs = bridge_.Model().Tabs();
    const QString selected = navigator_->SelectedNode();
    QString view;
    const auto find = [&](const auto& self, const std::vector<arvon::host::model::Node>& nodes) -> void {
        for (const arvon::host::model::Node& node : nodes) {
            if (ToQt(node.key) == selected) view = ToQt(node.view);
            self(self, node.nodes);
        }
    };
    for (const arvon::host::model::Tab& tab : tabs)
        if (ToQt(tab.key) == navigator_->Tab()) find(find, tab.nodes);
    ShowView(view);
    if (std::exchange(shownNode_, selected) != selected && !view.isEmpty()) windows_->RefreshControls();
}

void MainWindow::ShowView(const QString& viewKey) {
    QWidget* shown = viewKey.isEmpty() ? listSplitter_ : windows_->WidgetOf(viewKey);
    const bool hasList = !bridge_.Model().Columns(listView).empty();
    if (!shown || (shown == listSplitter_ && !hasList)) shown = empty_;
    if (content_->indexOf(shown) < 0) content_->addWidget(shown);
    content_->setCurrentWidget(shown);
}

// what is told
// --------------------------------------------------------------------------------------------------

void MainWindow::ShowProgress(const QString& what) {
    progress_->setVisible(!what.isEmpty());
    if (what.isEmpty()) {
        if (statusBar()->property("progress").toBool()) statusBar()->clearMessage();
        statusBar()->setProperty("progress", false);
        return;
    }
    statusBar()->showMessage(what);
    statusBar()->setProperty("progress", true);
    // what is under way keeps the event loop waiting: it is painted before it begins
    if (statusBar()->layout()) statusBar()->layout()->activate();
    statusBar()->repaint();
    progress_->repaint();
}

void MainWindow::ShowPointer(int pointer) {
    if (pointer == arvon::pointer::Hourglass) {
        if (!QApplication::overrideCursor()) QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void MainWindow::Tell(const QString& text) {
    statusBar()->setProperty("progress", false);
    statusBar()->setProperty("trouble", false);
    statusBar()->showMessage(text, messageTime);
}

void MainWindow::TellTrouble(const QString& text) {
    Tell(text);
    statusBar()->setProperty("trouble", true);
}

void MainWindow::TakeInReport(const FailureReport& report) {
    report_->Add(report);
    // old news make room; the host's own word on what went wrong, and what is under way, do not
    const bool covered =
        statusBar()->property("trouble").toBool() || statusBar()->property("progress").toBool();
    if (!covered) statusBar()->clearMessage();
}

void MainWindow::TakeInProblem(const QString& text) {
    TellTrouble(text);
    states_.ForgetFiles(); // it may be about a program that could not be loaded
    // told from inside a delivery, perhaps of what a control asks: the controls must not ask again
    programs_->RefreshStates();
    navigator_->RefreshStates();
}

void MainWindow::UnloadVantor() {
    const QString program = states_.ProgramToUnload();
    if (program.isEmpty()) return;
    bridge_.Do([name = FromQt(program)](ReferenceHost& host) { host.UnloadTool(name); });
}

void MainWindow::OpenFinder() {
    finder_->Open(
        FinderEntriesOf({bridge_, states_, pictures_, *programs_, *taskPane_, *menus_, *viewMenu_}));
}

// the window itself
// ---------------------------------------------------------------------------------------------

WindowLayout MainWindow::Layout() {
    return {*this, *splitter_, *listSplitter_, *taskPaneSwitch_, *programs_, *navigator_};
}

void MainWindow::OpenAsLeft() {
    const QString node = Layout().Restore(layoutFile_);
    // the component selects none where it fails, as with options that cannot be read
    const QString selected = navigator_->SelectedNode();
    const QString first = selected.isEmpty() ? navigator_->OpenFirstNode() : selected;
    if (first.isEmpty()) return;
    // the nodes of a top-level node come when it is opened
    navigator_->Tree().expand(navigator_->Tree().currentIndex());
    if (node.isEmpty() || node == first) return;
    bridge_.Do([this, node](ReferenceHost&) {
        navigator_->Draw();
        navigator_->OpenNode(node);
    });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (bridge_.IsWorking()) { // a message box or a dialog waits for its answer
        event->ignore();
        return;
    }
    if (windows_->HasChanges() &&
        !Confirm(this, text::Of(text::leaving::Title), text::Of(text::leaving::Question),
                 text::Of(text::leaving::Consequence), text::Of(text::leaving::Leave))) {
        event->ignore();
        return;
    }
    Layout().Save(layoutFile_);
    event->accept();
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && begun_) {
        states_.ForgetFiles();
        programs_->RefreshStates();
    }
    if (event->type() == QEvent::PaletteChange && begun_) {
        menus_->RefreshPictures();
        DrawTaskPane();
    }
    QMainWindow::changeEvent(event);
}

} // namespace desktop
