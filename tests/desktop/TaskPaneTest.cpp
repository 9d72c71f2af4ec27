#include "tests/desktop/DesktopFixture.h"

#include <QToolButton>

namespace desktop {
namespace {

using arvon::host::ReferenceHost;
using testing::IsEmpty;
using testing::SizeIs;

class TaskPaneTest : public DesktopTest {
protected:
    /// Opens the window, and asks for the current program's removal while something else happens.
    void RemoveLoadTables(const std::function<void(ReferenceHost&)>& meanwhile) {
        Open();
        ClickRow(QStringLiteral("Load Tables"));
        beforeAnswer = [this, meanwhile](QWidget&) {
            bridge->Do(meanwhile);
            EXPECT_TRUE(WaitUntil([this] { return bridge->IsIdle(); }));
        };
        Press(QKeySequence(Qt::CTRL | Qt::Key_Delete));
        ASSERT_TRUE(WaitUntil([this] { return boxes.size() == 1; }));
        Settle();
        EXPECT_TRUE(boxes[0].text.startsWith(QStringLiteral("Remove \"Load Tables\"")));
    }
};

TEST_F(TaskPaneTest, RemovesTheProgramThatTheQuestionNamed) {
    RemoveLoadTables([](ReferenceHost& host) { host.SelectRow("lvTools", "Layout"); });
    EXPECT_FALSE(Names().contains(QStringLiteral("Load Tables")));
    EXPECT_TRUE(Names().contains(QStringLiteral("Layout")));
    EXPECT_EQ(Names().size(), 12);
}

TEST_F(TaskPaneTest, RemovesNoOtherProgramWhenTheNamedOneIsGone) {
    RemoveLoadTables([](ReferenceHost& host) {
        host.ClickTask("tskRemoveTool");
        host.SelectRow("lvTools", "Layout");
    });
    EXPECT_EQ(Names().size(), 12);
    EXPECT_TRUE(Names().contains(QStringLiteral("Layout")));
    EXPECT_EQ(StatusText(), QStringLiteral("no row \"Load Tables\""));
}

TEST_F(TaskPaneTest, ItsKeysWorkWhileItIsHidden) {
    Open();
    Press(QKeySequence(Qt::Key_F9));
    ASSERT_FALSE(Find<QWidget>("taskPane")->isVisible());
    confirms = false;
    ClickRow(QStringLiteral("Layout"));
    Press(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    ASSERT_TRUE(WaitUntil([this] { return boxes.size() == 1; }));
    Settle();
    Press(QKeySequence(Qt::CTRL | Qt::Key_Return));
    EXPECT_THAT(bridge->Model().Processes(), SizeIs(1));
}

TEST_F(TaskPaneTest, ItsKeysWorkOnceWhileItIsShown) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    ASSERT_TRUE(Find<QToolButton>("tskRemoveTool")->isVisible());
    confirms = false;
    Press(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    Settle();
    EXPECT_THAT(boxes, SizeIs(1));
}

TEST_F(TaskPaneTest, ItsKeysDoNothingWhileTheListIsOutOfSight) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Plot Queue")));
    Settle();
    ASSERT_FALSE(List().isVisible());
    Press(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    EXPECT_THAT(boxes, IsEmpty()) << "nobody sees which program is current";
}

} // namespace
} // namespace desktop
