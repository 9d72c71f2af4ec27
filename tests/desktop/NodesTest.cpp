#include "tests/desktop/DesktopFixture.h"

#include "desktop/QtText.h"

#include <QMenu>

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
