#include "tests/desktop/DesktopFixture.h"

#include "core/contract/Framework.h"
#include "desktop/QtText.h"
#include "desktop/trace/TraceDock.h"

#include <QTabBar>

namespace desktop {
namespace {

class NavigatorTest : public DesktopTest {
protected:
    /// Opens the window with a second tab in the navigator.
    void OpenWithTwoTabs() {
        Open();
        bridge->Do([](arvon::host::ReferenceHost& host) {
            const auto tab = host.Framework()->Tabs().Add(2, "tabOther", "Test", nullptr, false);
            tab->SetCaption("Other");
            tab->SetVisible(true);
            tab->SetEnabled(true);
        });
        Settle();
        tabs = window->Nodes().findChild<QTabBar*>(QStringLiteral("tabs"));
        ASSERT_NE(tabs, nullptr);
        ASSERT_EQ(tabs->count(), 2);
        ASSERT_EQ(bridge->Model().CurrentControl(), "tabQRV");
        tabs->setFocus();
    }
    void ClickTab(int index) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
        Settle();
    }
    /// How often the component was told that its tab is selected.
    qsizetype TimesToldOfItsTab() {
        const QStringList lines =
            static_cast<TraceDock*>(Find<QDockWidget>("traceDock"))->Script().split(u'\n');
        return lines.count(QStringLiteral("tab 5"));
    }

    QTabBar* tabs = nullptr;
};

TEST_F(NavigatorTest, TabsAreChosenByTheArrowKeys) {
    ASSERT_NO_FATAL_FAILURE(OpenWithTwoTabs());
    QTest::keyClick(tabs, Qt::Key_Right);
    Settle();
    EXPECT_EQ(bridge->Model().CurrentControl(), "tabOther");
    EXPECT_EQ(window->Nodes().Tab(), QStringLiteral("tabOther"));
    EXPECT_EQ(TimesToldOfItsTab(), 0);
    QTest::keyClick(tabs, Qt::Key_Left);
    Settle();
    EXPECT_EQ(bridge->Model().CurrentControl(), "tabQRV");
    EXPECT_EQ(TimesToldOfItsTab(), 1);
}

TEST_F(NavigatorTest, AClickOnATabIsToldOnce) {
    ASSERT_NO_FATAL_FAILURE(OpenWithTwoTabs());
    ClickTab(0);
    EXPECT_EQ(TimesToldOfItsTab(), 1) << "also on the one in front";
    ClickTab(1);
    EXPECT_EQ(bridge->Model().CurrentControl(), "tabOther");
    ClickTab(0);
    EXPECT_EQ(bridge->Model().CurrentControl(), "tabQRV");
    EXPECT_EQ(TimesToldOfItsTab(), 2);
}

TEST_F(NavigatorTest, ATabThatTheHostBringsForwardIsNoClick) {
    ASSERT_NO_FATAL_FAILURE(OpenWithTwoTabs());
    for (const char* key : {"tabOther", "tabQRV"}) {
        bridge->Do(
            [key](arvon::host::ReferenceHost& host) { host.Framework()->Tabs().Item(key)->BringForward(); });
        Settle();
        EXPECT_EQ(window->Nodes().Tab(), QLatin1String(key));
    }
    EXPECT_EQ(TimesToldOfItsTab(), 0);
}

} // namespace
} // namespace desktop
