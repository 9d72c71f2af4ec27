// Actions from the event loop, one after the other, and what goes wrong in them.

#include "tests/desktop/DesktopFixture.h"

#include "core/contract/Framework.h"

#include <QLineEdit>
#include <QProgressBar>
#include <QToolBar>

#include <stdexcept>

namespace desktop {
namespace {

class ActionsTest : public DesktopTest {
protected:
    void ShowUpdatesPage() {
        auto* bar = Find<QToolBar>("toolBar");
        auto* updates = bar->findChild<QAction*>(QStringLiteral("btnUpdateTools"));
        ASSERT_NE(updates, nullptr);
        QTest::mouseClick(bar->widgetForAction(updates), Qt::LeftButton);
        Settle();
        ASSERT_FALSE(List().isVisible());
    }
    void ExpectListWithFilter() {
        EXPECT_TRUE(List().isVisible());
        EXPECT_EQ(window->Nodes().SelectedNode(), QStringLiteral("nodTools"));
        EXPECT_EQ(QApplication::focusWidget(), Find<QLineEdit>("filter"));
        bridge->Redraw();
        Settle();
        EXPECT_TRUE(List().isVisible()) << "also when the window is drawn anew";
    }
};

/// Updates that answer nobody.
class BrokenUpdates final : public arvon::IMessageListener {
public:
    std::string id() const override { return "Qillo110"; }
    std::string ReceiveMessage(const std::shared_ptr<arvon::IMessage>&) override {
        ++asked;
        throw std::runtime_error("no updates today");
    }
    int asked = 0;
};

TEST_F(ActionsTest, AnUpdatesComponentThatThrowsIsToldAndNotAskedAgainForIt) {
    Open();
    ShowUpdatesPage();
    const auto broken = std::make_shared<BrokenUpdates>();
    bridge->Host().Framework()->RegisterListener(broken, broken->id());
    bridge->Redraw();
    Settle();
    EXPECT_GT(broken->asked, 0);
    QTest::qWait(300);
    Settle();
    EXPECT_LT(broken->asked, 10) << "once for each of the pages, and perhaps in a first look";
    EXPECT_THAT(StatusText().toStdString(), testing::HasSubstr("no updates today"));
}

TEST_F(ActionsTest, AnActionWaitsUntilTheMessageBoxOfTheOneBeforeIsClosed) {
    Open();
    QStringList order;
    beforeAnswer = [&](QWidget&) {
        bridge->Do([&](arvon::host::ReferenceHost&) { order.append(QStringLiteral("second")); });
        bridge->Do([&](arvon::host::ReferenceHost&) { order.append(QStringLiteral("third")); });
        QTest::qWait(50);
        EXPECT_FALSE(bridge->IsIdle());
        order.append(QStringLiteral("answered"));
    };
    bridge->Do([&](arvon::host::ReferenceHost& host) {
        host.Framework()->ShowMessage("Wait.", 64, "");
        order.append(QStringLiteral("first"));
    });
    Settle();
    EXPECT_EQ(order.join(u' '), QStringLiteral("answered first second third"));
}

TEST_F(ActionsTest, WhateverAnActionThrowsIsToldAndTheProgressEnds) {
    Open();
    bool next = false;
    bridge->Do([](arvon::host::ReferenceHost&) { throw std::runtime_error("out of order"); },
               QStringLiteral("Under way"));
    bridge->Do([&](arvon::host::ReferenceHost&) { next = true; });
    Settle();
    EXPECT_EQ(StatusText(), QStringLiteral("out of order"));
    EXPECT_FALSE(Find<QProgressBar>("progress")->isVisible());
    EXPECT_TRUE(next);
}

TEST_F(ActionsTest, FilteringBringsTheListBackFromAProgramsPageForGood) {
    Open();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Layout")));
    Settle();
    ASSERT_FALSE(List().isVisible());
    Press(QKeySequence::Find);
    ExpectListWithFilter();
}

TEST_F(ActionsTest, FilteringBringsTheListBackFromTheUpdatesForGood) {
    Open();
    ShowUpdatesPage();
    Press(QKeySequence::Find);
    ExpectListWithFilter();
}

} // namespace
} // namespace desktop
