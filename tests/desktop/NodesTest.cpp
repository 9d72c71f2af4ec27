#include "tests/desktop/DesktopFixture.h"

#include "desktop/QtText.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolBar>

namespace desktop {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class NodesTest : public DesktopTest {
protected:
    /// Clicks the node with the right button; the context menu that comes up.
    QMenu* ContextMenuOf(const QString& caption) {
        const QModelIndex node = NodeOf(caption);
        Tree().scrollTo(node);
        const QPoint place = Tree().visualRect(node).center();
        QTest::mouseClick(Tree().viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, Tree().viewport()->mapToGlobal(place));
        QApplication::sendEvent(Tree().viewport(), &event); // comes from the window system otherwise
        EXPECT_TRUE(WaitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    static void ClickItem(QMenu& menu, const char* key) {
        auto* action = menu.findChild<QAction*>(QLatin1String(key));
        ASSERT_NE(action, nullptr) << key;
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    }
    void ClickToolbar(const char* key) {
        auto* bar = Find<QToolBar>("toolBar");
        auto* button = bar->findChild<QAction*>(QLatin1String(key));
        ASSERT_NE(button, nullptr) << key;
        QTest::mouseClick(bar->widgetForAction(button), Qt::LeftButton);
        Settle();
    }
    void LaunchFrom(QMenu& menu) {
        auto* tasks = menu.findChild<QMenu*>(QStringLiteral("mnuToolContextTask"));
        ASSERT_NE(tasks, nullptr);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(tasks->menuAction()).center());
        ASSERT_TRUE(WaitUntil([&] { return tasks->isVisible(); }));
        ClickItem(*tasks, "mnuLaunch");
        Settle();
    }
};

TEST_F(NodesTest, TheContextMenuOfAProgramsNodeLaunchesThatProgram) {
    Open();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Layout")));
    Settle();
    QMenu* menu = ContextMenuOf(QStringLiteral("Plot Queue"));
    ASSERT_NE(menu, nullptr);
    LaunchFrom(*menu);
    ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
    EXPECT_TRUE(StateOf(QStringLiteral("Plot Queue")).startsWith(QStringLiteral("Running")));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(NodesTest, APageStaysWithItsProgramWhileAnotherIsStarted) {
    Open();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Łożyska")));
    Settle();
    auto* title = Find<QLabel>("title");
    ASSERT_EQ(title->text(), QStringLiteral("Łożyska"));
    ClickToolbar("btnPLQ44");
    ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
    EXPECT_EQ(title->text(), QStringLiteral("Łożyska"));
    EXPECT_EQ(Tree().currentIndex().data().toString(), QStringLiteral("Łożyska"));
    ClickToolbar("btnPLQ44"); // refused: it runs, and nothing changes
    ASSERT_TRUE(WaitUntil([this] { return boxes.size() == 1; }));
    Settle();

    QTest::mouseClick(Find<QPushButton>("close"), Qt::LeftButton);
    Settle();
    EXPECT_TRUE(List().isVisible());
    EXPECT_FALSE(title->isVisible());
    ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Processes().empty(); }));
    Settle();
    EXPECT_TRUE(List().isVisible()) << "a page that was closed stays closed";
}

TEST_F(NodesTest, AnOpenContextMenuKeepsItsProgramWhileAnotherEnds) {
    Open();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Layout")));
    Settle();
    ClickToolbar("btnGRD55"); // two seconds
    ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
    emit Tree().customContextMenuRequested(Tree().visualRect(NodeOf(QStringLiteral("Plot Queue"))).center());
    ASSERT_TRUE(WaitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Processes().empty(); }));
    Settle();
    EXPECT_EQ(window->Nodes().SelectedNode(), QStringLiteral("Layout"));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    LaunchFrom(*menu);
    ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
    EXPECT_TRUE(StateOf(QStringLiteral("Plot Queue")).startsWith(QStringLiteral("Running")));
    EXPECT_THAT(boxes, IsEmpty());
    QTest::qWait(150); // the page asks anew when the menu is gone
    Settle();
    EXPECT_EQ(Find<QLabel>("title")->text(), QStringLiteral("Layout"));
}

TEST_F(NodesTest, TheContextMenuGoesByEscapeAndLaunchesNothing) {
    Open();
    QMenu* menu = ContextMenuOf(QStringLiteral("Layout"));
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_Escape);
    Settle();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_THAT(bridge->Model().Processes(), IsEmpty());
}

} // namespace
} // namespace desktop
