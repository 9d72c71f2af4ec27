#include "tests/desktop/DesktopFixture.h"

#include <QLineEdit>
#include <QListView>

namespace desktop {
namespace {

class FinderTest : public DesktopTest {
protected:
    void Type(const char* text) {
        Press(QKeySequence(Qt::CTRL | Qt::Key_K));
        QTest::keyClicks(Find<QLineEdit>("finderText"), QLatin1String(text));
    }
    QStringList Found() {
        QStringList texts;
        const QAbstractItemModel& model = *Find<QListView>("finderResults")->model();
        for (int row = 0; row < model.rowCount(); ++row)
            texts.append(model.index(row, 0).data().toString());
        return texts;
    }
    void Enter() {
        QTest::keyClick(Find<QLineEdit>("finderText"), Qt::Key_Return);
        Settle();
    }
};

TEST_F(FinderTest, StartsAProgramByAPartOfItsName) {
    Open();
    Type("grid");
    EXPECT_EQ(Found().first(), QStringLiteral("Grid Check"));
    Enter();
    EXPECT_TRUE(StateOf(QStringLiteral("Grid Check")).startsWith(QStringLiteral("Running")));
    EXPECT_FALSE(Find<QDialog>("finder")->isVisible());
}

TEST_F(FinderTest, PutsWhatBeginsWithTheTypedTextFirst) {
    Open();
    Type("s");
    EXPECT_EQ(Found().first(), QStringLiteral("Site Survey"));
    EXPECT_TRUE(Found().contains(QStringLiteral("Sort by Name")));
}

TEST_F(FinderTest, RunsMenuCommands) {
    Open();
    Type("sort type");
    EXPECT_EQ(Found(), QStringList(QStringLiteral("Sort by Type")));
    Enter();
    EXPECT_EQ(Column(3).first(), QStringLiteral("Drafting"));
}

TEST_F(FinderTest, OffersTasksForTheCurrentProgram) {
    Open();
    Press(QKeySequence::Find);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("zzz"));
    Type("remove");
    EXPECT_TRUE(Found().isEmpty()) << "no program is current that could be removed";
    QTest::keyClick(Find<QLineEdit>("finderText"), Qt::Key_Escape);
    Find<QLineEdit>("filter")->clear();
    ClickRow(QStringLiteral("Layout"));
    Type("remove");
    EXPECT_EQ(Found(), QStringList(QStringLiteral("Remove Program: Layout")));
    confirms = false;
    Enter();
    ASSERT_EQ(boxes.size(), 1U);
}

TEST_F(FinderTest, ChoosesByArrowKeysAndForgetsWhatWasTyped) {
    Open();
    Type("l");
    auto* results = Find<QListView>("finderResults");
    EXPECT_EQ(results->currentIndex().row(), 0);
    QTest::keyClick(Find<QLineEdit>("finderText"), Qt::Key_Down);
    EXPECT_EQ(results->currentIndex().row(), 1);
    QTest::keyClick(Find<QLineEdit>("finderText"), Qt::Key_Escape);
    EXPECT_FALSE(Find<QDialog>("finder")->isVisible());
    Press(QKeySequence(Qt::CTRL | Qt::Key_K));
    EXPECT_EQ(Find<QLineEdit>("finderText")->text(), QString());
}

TEST_F(FinderTest, DoesNothingWhenNothingIsFound) {
    Open();
    Type("no such thing");
    EXPECT_TRUE(Found().isEmpty());
    QTest::keyClick(Find<QLineEdit>("finderText"), Qt::Key_Return);
    EXPECT_TRUE(Find<QDialog>("finder")->isVisible());
}

} // namespace
} // namespace desktop
