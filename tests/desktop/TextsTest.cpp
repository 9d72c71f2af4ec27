#include "desktop/Folding.h"
#include "desktop/HostMenus.h"
#include "desktop/ToolStates.h"

#include <gtest/gtest.h>

namespace desktop {
namespace {

TEST(Folding, LeavesLetterCaseAndMarksOut) {
    EXPECT_EQ(Folded(QStringLiteral("Łożyska")), QStringLiteral("lozyska"));
    EXPECT_EQ(Folded(QStringLiteral("WÄRMEBEDARF")), QStringLiteral("warmebedarf"));
    EXPECT_EQ(Folded(QStringLiteral("Straße Ø")), QStringLiteral("strasse o"));
    EXPECT_EQ(Folded(QStringLiteral("Beam & Frame")), QStringLiteral("beam & frame"));
}

TEST(Folding, FindsWordsInAnyOrderAndAnywhere) {
    const QString folded = Folded(QStringLiteral("Site Survey\n2.8.1"));
    EXPECT_TRUE(HasAllWords(folded, FoldedWords(QStringLiteral("  surv SITE "))));
    EXPECT_TRUE(HasAllWords(folded, {}));
    EXPECT_FALSE(HasAllWords(folded, FoldedWords(QStringLiteral("site plan"))));
}

TEST(MenuCaptions, MarkOneLetterAndKeepEveryOtherAmpersand) {
    EXPECT_EQ(MenuCaption("&Beam & Frame"), QStringLiteral("&Beam && Frame"));
    EXPECT_EQ(MenuCaption("R&D &Tools"), QStringLiteral("R&D &&Tools"));
    EXPECT_EQ(MenuCaption("Layout&"), QStringLiteral("Layout&&"));
    EXPECT_EQ(MenuCaption("& Co"), QStringLiteral("&& Co"));
    EXPECT_EQ(MenuCaption(""), QString());
}

TEST(MenuCaptions, ReadWithoutTheMark) {
    EXPECT_EQ(PlainCaption("&Beam & Frame"), QStringLiteral("Beam & Frame"));
    EXPECT_EQ(PlainCaption("Program:&Layout"), QStringLiteral("Program:Layout"));
}

TEST(ElapsedTimes, AreMinutesAndSecondsThenHours) {
    const QDateTime start(QDate(2024, 5, 1), QTime(10, 0), Qt::UTC);
    EXPECT_EQ(ElapsedText(start, start), QStringLiteral("0:00"));
    EXPECT_EQ(ElapsedText(start, start.addSecs(67)), QStringLiteral("1:07"));
    EXPECT_EQ(ElapsedText(start, start.addSecs(3599)), QStringLiteral("59:59"));
    EXPECT_EQ(ElapsedText(start, start.addSecs(3723)), QStringLiteral("1:02:03"));
    EXPECT_EQ(ElapsedText(start, start.addSecs(-5)), QStringLiteral("0:00")) << "the clock was set back";
}

} // namespace
} // namespace desktop
