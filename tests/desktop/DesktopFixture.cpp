#include "tests/desktop/DesktopFixture.h"

#include "desktop/QtText.h"
#include "desktop/trace/TraceDock.h"

#include <QDir>
#include <QFile>
#include <QHeaderView>

namespace desktop {

namespace fs = std::filesystem;

DesktopTest::DesktopTest()
    : suite(fs::path(folder.path().toStdString()) / "suite"),
      layoutFile(folder.filePath(QStringLiteral("desktop.ini"))) {
    fs::copy(ARVON_SUITE, suite, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    answering_.setInterval(20);
    QObject::connect(&answering_, &QTimer::timeout, [this] { AnswerBoxes(); });
    answering_.start();
}

DesktopTest::~DesktopTest() {
    Close();
}

void DesktopTest::Open(const std::string& language) {
    bridge = std::make_unique<HostBridge>(suite);
    window = std::make_unique<MainWindow>(*bridge, layoutFile);
    window->AddTrace(new TraceDock(bridge->Host(), window.get()));
    bridge->Load({ARVON_COMPONENT, {}, language});
    window->Begin();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    Settle();
}

void DesktopTest::Close() {
    if (!window) return;
    WaitUntil([this] { return bridge->IsIdle(); });
    window->close();
    window.reset();
    bridge->Host().WaitForProcesses();
    bridge.reset();
}

void DesktopTest::Settle() {
    EXPECT_TRUE(WaitUntil([this] { return bridge->IsIdle(); }));
    QApplication::processEvents();
}

bool DesktopTest::WaitUntil(const std::function<bool()>& so) {
    return QTest::qWaitFor(so, 10000);
}

void DesktopTest::AnswerBoxes() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) return;
    if (std::function<void(QWidget&)> act = std::exchange(beforeAnswer, {})) act(*box);
    const bool asks = box->objectName() == QLatin1String("confirmBox");
    QString text = box->text();
    if (!box->informativeText().isEmpty()) text += u'\n' + box->informativeText();
    boxes.push_back({text, box->windowTitle(), box->icon()});
    for (QAbstractButton* button : box->buttons()) {
        const bool confirming = box->buttonRole(button) == QMessageBox::DestructiveRole;
        if (!asks || confirming == confirms) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
}

QStringList DesktopTest::Column(int column) {
    QStringList texts;
    for (int row = 0; row < List().model()->rowCount(); ++row)
        texts.append(List().model()->index(row, column).data().toString());
    return texts;
}

QString DesktopTest::StateOf(const QString& name) {
    return RowOf(name, List().model()->columnCount() - 1).data().toString();
}

QModelIndex DesktopTest::RowOf(const QString& name, int column) {
    const qsizetype row = Names().indexOf(name);
    if (row < 0) {
        ADD_FAILURE() << "there is no row \"" << name.toStdString() << '"';
        return {};
    }
    return List().model()->index(static_cast<int>(row), column);
}

void DesktopTest::ClickRow(const QString& name) {
    const QModelIndex index = RowOf(name, 1);
    List().scrollTo(index);
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(index).center());
    Settle();
}

void DesktopTest::OpenRow(const QString& name) {
    const QPoint place = List().visualRect(RowOf(name, 1)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, place);
    Settle();
}

void DesktopTest::ClickHeader(int column) {
    QHeaderView& header = *List().header();
    const QPoint place(header.sectionViewportPosition(column) + 20, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
    Settle();
}

QModelIndex DesktopTest::NodeOf(const QString& caption) {
    const QModelIndexList found = Tree().model()->match(Tree().model()->index(0, 0), Qt::DisplayRole, caption,
                                                        1, Qt::MatchExactly | Qt::MatchRecursive);
    if (!found.isEmpty()) return found.first();
    ADD_FAILURE() << "there is no node \"" << caption.toStdString() << '"';
    return {};
}

void DesktopTest::Press(const QKeySequence& keys) {
    if (!QApplication::activeWindow()) { // no window manager gives the focus back when a dialog closes
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    QWidget* focus = QApplication::focusWidget();
    const QKeyCombination pressed = keys[0];
    QTest::keyClick(focus ? focus : window.get(), pressed.key(), pressed.keyboardModifiers());
    Settle();
}

QAction* DesktopTest::ActionOf(const char* key) {
    auto* action = window->findChild<QAction*>(QLatin1String(key));
    EXPECT_NE(action, nullptr) << "there is no menu item \"" << key << '"';
    return action;
}

QString DesktopTest::StatusText() {
    return window->statusBar()->currentMessage();
}

void DesktopTest::TakePicture(QWidget& widget, const QString& name) {
    const QString place = qEnvironmentVariable("ARVON_PICTURES");
    if (place.isEmpty()) return;
    QDir().mkpath(place);
    QApplication::processEvents();
    const QPixmap picture = widget.grab();
    EXPECT_TRUE(picture.save(QDir(place).filePath(name + QLatin1String(".png"))));
}

fs::path DesktopTest::File(const std::string& belowQuarra) const {
    return suite / "drive_c/QUARRA" / belowQuarra;
}

QByteArray DesktopTest::Read(const std::string& belowQuarra) const {
    QFile file(ToQt(File(belowQuarra).string()));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << belowQuarra;
    return file.readAll();
}

} // namespace desktop
