#include "tests/desktop/DesktopFixture.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <ctime>
#include <fstream>

namespace desktop {
namespace {

constexpr int nameColumn = 0;
constexpr int versionColumn = 1;
constexpr int dateColumn = 2;
constexpr int classColumn = 3;

class ListTest : public DesktopTest {
protected:
    void Type(const char* text) {
        Press(QKeySequence::Find);
        QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
        Settle();
    }
    QString Count() { return Find<QLabel>("count")->text(); }
    bool SortedBy(int column, bool descending) {
        const QStringList texts = Column(column);
        const auto before = [descending](const QString& a, const QString& b) {
            return descending ? a.toStdU32String() > b.toStdU32String()
                              : a.toStdU32String() < b.toStdU32String();
        };
        return std::is_sorted(texts.begin(), texts.end(), before);
    }
};

TEST_F(ListTest, ShowsTheProgramsAsTheHostHoldsThem) {
    Open();
    EXPECT_EQ(Names().size(), 13);
    EXPECT_TRUE(Names().contains(QStringLiteral("Łożyska")));
    EXPECT_EQ(Count(), QStringLiteral("13 programs"));
    QStringList headers;
    for (int column = 0; column < List().model()->columnCount(); ++column)
        headers.append(List().model()->headerData(column, Qt::Horizontal).toString());
    EXPECT_EQ(headers.join(u'|'), QStringLiteral("Name|Version|Last Updated|Classification|Status"));
    EXPECT_EQ(RowOf(QStringLiteral("Layout"), versionColumn).data().toString(), QStringLiteral("4.2"));
    EXPECT_EQ(QApplication::focusWidget(), &List());
}

TEST_F(ListTest, SortsByEachColumnBothWays) {
    Open();
    for (const int column : {nameColumn, versionColumn, classColumn}) {
        ClickHeader(column);
        EXPECT_EQ(List().header()->sortIndicatorSection(), column);
        EXPECT_EQ(List().header()->sortIndicatorOrder(), Qt::AscendingOrder);
        EXPECT_TRUE(SortedBy(column, false)) << Column(column).join(u'|').toStdString();
        ClickHeader(column);
        EXPECT_EQ(List().header()->sortIndicatorOrder(), Qt::DescendingOrder);
        EXPECT_TRUE(SortedBy(column, true)) << Column(column).join(u'|').toStdString();
    }
    ClickHeader(dateColumn);
    QList<QDate> dates;
    for (const QString& text : Column(dateColumn))
        dates.append(QDate::fromString(text, QStringLiteral("M/d/yyyy")));
    EXPECT_TRUE(dates.front().isValid());
    EXPECT_TRUE(std::is_sorted(dates.begin(), dates.end())) << Column(dateColumn).join(u'|').toStdString();
    const QStringList order = Names();
    ClickHeader(dateColumn);
    EXPECT_EQ(Names(), order) << "the system leaves the order as it stands by descending date";
}

TEST_F(ListTest, SortsByTheMenuToo) {
    Open();
    Press(QKeySequence(Qt::CTRL | Qt::Key_4));
    EXPECT_TRUE(SortedBy(classColumn, false));
    EXPECT_EQ(List().header()->sortIndicatorSection(), classColumn);
}

TEST_F(ListTest, AClickOnTheStatusHeaderSortsNothing) {
    Open();
    const QStringList order = Names();
    ClickHeader(4);
    EXPECT_EQ(Names(), order);
    EXPECT_FALSE(List().header()->isSortIndicatorShown());
}

TEST_F(ListTest, FiltersWhileOneTypesAndTellsHowManyMatch) {
    Open();
    Type("site");
    EXPECT_THAT(Names(),
                testing::UnorderedElementsAre(QStringLiteral("Grid Check"), QStringLiteral("Level Book"),
                                              QStringLiteral("Site Survey")));
    EXPECT_EQ(Count(), QStringLiteral("3 of 13"));
    Press(QKeySequence(Qt::Key_Escape));
    EXPECT_EQ(Count(), QStringLiteral("13 programs"));
    Type("lozyska");
    EXPECT_EQ(Names(), QStringList(QStringLiteral("Łożyska")));
    Type("nothing of the kind");
    EXPECT_EQ(Count(), QStringLiteral("0 of 13"));
}

TEST_F(ListTest, KeepsTheFilterWhenTheHostChangesTheRows) {
    Open();
    Type("site");
    Press(QKeySequence(Qt::CTRL | Qt::Key_1));
    EXPECT_EQ(Names(), (QStringList{QStringLiteral("Grid Check"), QStringLiteral("Level Book"),
                                    QStringLiteral("Site Survey")}));
}

TEST_F(ListTest, ACurrentRowThatIsFilteredOutIsNobodysTask) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    EXPECT_TRUE(Find<QToolButton>("tskLaunchTool")->isEnabled());
    Type("site");
    EXPECT_FALSE(Find<QToolButton>("tskLaunchTool")->isEnabled());
    Press(QKeySequence(Qt::Key_Escape));
    EXPECT_TRUE(Find<QToolButton>("tskLaunchTool")->isEnabled());
    EXPECT_EQ(window->Programs().Current(), QStringLiteral("Layout"));
}

TEST_F(ListTest, TakesACheckMarkAwayByTheSpaceBarAndKeepsItInTheCatalogue) {
    Open();
    ClickRow(QStringLiteral("Plot Queue"));
    List().setFocus();
    Press(QKeySequence(Qt::Key_Space));
    EXPECT_EQ(RowOf(QStringLiteral("Plot Queue")).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    const QByteArray catalogue = Read("Arvon/Tools.xml");
    const qsizetype tool = catalogue.indexOf("VREX=\"Tobr44\"");
    EXPECT_EQ(catalogue.mid(catalogue.indexOf("ShowInList=", tool), 14), QByteArray("ShowInList=\"0\""));
}

TEST_F(ListTest, TheSpaceBarMeansTheCheckMarkWhereverTheRowWasClicked) {
    Open();
    ClickRow(QStringLiteral("Plot Queue"));
    const QPoint place = List().visualRect(RowOf(QStringLiteral("Plot Queue"), dateColumn)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place); // the row is current already
    Settle();
    EXPECT_EQ(List().currentIndex(), RowOf(QStringLiteral("Plot Queue")));
    List().setFocus();
    Press(QKeySequence(Qt::Key_Space));
    EXPECT_EQ(RowOf(QStringLiteral("Plot Queue")).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
}

TEST_F(ListTest, EnterOnTheNumberPadStartsTheCurrentProgram) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Enter, Qt::KeypadModifier);
    Settle();
    EXPECT_THAT(bridge->Model().Processes(), testing::SizeIs(1));
}

TEST_F(ListTest, ShowsHiddenProgramsOnRequest) {
    Open();
    auto* showAll = Find<QCheckBox>("tskShowAll");
    showAll->setFocus();
    QTest::keyClick(showAll, Qt::Key_Space);
    Settle();
    EXPECT_TRUE(showAll->isChecked());
    EXPECT_TRUE(Names().contains(QStringLiteral("Legacy Import")));
    EXPECT_EQ(Count(), QStringLiteral("14 programs"));
    QTest::keyClick(showAll, Qt::Key_Space);
    Settle();
    EXPECT_FALSE(showAll->isChecked());
    EXPECT_FALSE(Names().contains(QStringLiteral("Legacy Import")));
}

TEST_F(ListTest, SaysWhyAProgramCannotStart) {
    Open();
    EXPECT_EQ(StateOf(QStringLiteral("Layout")), QString());
    EXPECT_EQ(StateOf(QStringLiteral("Remote Assistance")), QStringLiteral("Cannot start"));
    EXPECT_EQ(RowOf(QStringLiteral("Remote Assistance")).data(Qt::ToolTipRole).toString(),
              QStringLiteral("The catalogue names no program file."));
    std::filesystem::remove(File("Tobr43/Tobr43.exe"));
    QEvent activated(QEvent::ActivationChange);
    QApplication::sendEvent(window.get(), &activated);
    EXPECT_EQ(StateOf(QStringLiteral("Layout")), QStringLiteral("Cannot start"));
    EXPECT_EQ(RowOf(QStringLiteral("Layout")).data(Qt::ToolTipRole).toString(),
              QStringLiteral("The program file C:\\QUARRA\\Tobr43\\Tobr43.exe is missing."));
    EXPECT_EQ(bridge->Services().problem(QStringLiteral("Layout")),
              QStringLiteral("The program file C:\\QUARRA\\Tobr43\\Tobr43.exe is missing."));
}

TEST_F(ListTest, FiltersTenThousandProgramsBetweenTwoPictures) {
    {
        std::ofstream catalogue(File("Arvon/Tools.xml"));
        catalogue << "<Tools>\n";
        for (int i = 0; i < 10000; ++i) {
            catalogue << "<Tool Name=\"Program " << i << "\" VREX=\"Tobr" << i << "\" Identifier=\"T" << i
                      << "\" Classification=\"Class " << i % 7 << "\" version=\"1." << i
                      << "\" LastUpdated=\"2024-01-01\" Path=\"C:\\QUARRA\\Tobr43\\Tobr43.exe\"/>\n";
        }
        catalogue << "</Tools>\n";
    }
    Open();
    ASSERT_EQ(Names().size(), 10000);
    Press(QKeySequence::Find);
    auto* filter = Find<QLineEdit>("filter");
    const auto keystroke = [&](const char* typed) {
        const std::clock_t start = std::clock(); // processor time: the machine may be busy otherwise
        filter->setText(QLatin1String(typed));
        List().viewport()->repaint();
        return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    for (const char* typed : {"9", "99", "999", "class 3", "program"}) {
        double best = 1e9;
        for (int attempt = 0; attempt < 5; ++attempt) {
            filter->setText(QStringLiteral("none"));
            best = std::min(best, keystroke(typed));
        }
        std::printf("filter \"%s\": %.1f ms\n", typed, best);
        EXPECT_LT(best, 16.0) << typed;
    }
    EXPECT_EQ(Count(), QStringLiteral("10000 of 10000"));
}

} // namespace
} // namespace desktop
