// Underlined letters, in every language that the desktop speaks.

#include "tests/desktop/DesktopFixture.h"

#include <QAbstractButton>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QToolBar>

namespace desktop {
namespace {

class MnemonicsTest : public DesktopTest, public testing::WithParamInterface<std::string> {
protected:
    /// Captions whose letter another one has already.
    static QStringList Colliding(const QStringList& captions) {
        QMap<QString, QString> given;
        QStringList colliding;
        for (const QString& caption : captions) {
            const QString keys = QKeySequence::mnemonic(caption).toString();
            if (keys.isEmpty()) continue;
            if (given.contains(keys))
                colliding.append(
                    QStringLiteral("%1: \"%2\" and \"%3\"").arg(keys, given.value(keys), caption));
            given.insert(keys, caption);
        }
        return colliding;
    }
    static QStringList CaptionsOf(const QWidget& menu) {
        QStringList captions;
        for (const QAction* action : menu.actions())
            if (action->isVisible()) captions.append(action->text());
        return captions;
    }
    /// The menu bar, and what can be seen in the window.
    QStringList CaptionsOfWindow() {
        QStringList captions = CaptionsOf(*window->menuBar());
        for (const QAbstractButton* button : window->findChildren<QAbstractButton*>())
            if (button->isVisible()) captions.append(button->text());
        for (const QTabBar* tabs : window->findChildren<QTabBar*>())
            for (int i = 0; tabs->isVisible() && i < tabs->count(); ++i)
                captions.append(tabs->tabText(i));
        return captions;
    }
    void ExpectNoneTwice(const QStringList& captions) {
        EXPECT_EQ(Colliding(captions).join(u'\n').toStdString(), "");
    }
};

// The entries of the other menus are the programs' names.
TEST_P(MnemonicsTest, AreGivenOnceInTheWindowsOwnMenu) {
    Open(GetParam());
    const QStringList captions = CaptionsOf(*Find<QMenu>("mnuView"));
    EXPECT_GT(captions.filter(QStringLiteral("&")).size(), 5);
    ExpectNoneTwice(captions);
    ExpectNoneTwice(CaptionsOf(*Find<QMenu>("mnuLanguage")));
}

TEST_P(MnemonicsTest, AreGivenOnceInTheWindowWithTheListAndTheTrace) {
    Open(GetParam());
    Press(QKeySequence(Qt::Key_F12));
    const QStringList captions = CaptionsOfWindow();
    EXPECT_GT(captions.filter(QStringLiteral("&")).size(), 6);
    ExpectNoneTwice(captions);
}

TEST_P(MnemonicsTest, AreGivenOnceInTheWindowWithAProgramsPage) {
    Open(GetParam());
    Press(QKeySequence(Qt::Key_F12));
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Layout")));
    Settle();
    const QStringList captions = CaptionsOfWindow();
    EXPECT_GT(captions.filter(QStringLiteral("&")).size(), 5);
    ExpectNoneTwice(captions);
}

TEST_P(MnemonicsTest, AreGivenOnceInTheWindowWithTheUpdatesAndTheTrace) {
    Open(GetParam());
    Press(QKeySequence(Qt::Key_F12));
    auto* bar = Find<QToolBar>("toolBar");
    QTest::mouseClick(bar->widgetForAction(bar->findChild<QAction*>(QStringLiteral("btnUpdateTools"))),
                      Qt::LeftButton);
    Settle();
    const QStringList captions = CaptionsOfWindow();
    EXPECT_GT(captions.filter(QStringLiteral("&")).size(), 8);
    ExpectNoneTwice(captions);
}

TEST_P(MnemonicsTest, ACollisionIsFound) {
    EXPECT_THAT(Colliding({QStringLiteral("&One"), QStringLiteral("Tw&o"), QStringLiteral("R&&O")}),
                testing::SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Languages, MnemonicsTest, testing::Values("1033", "1031"));

} // namespace
} // namespace desktop
