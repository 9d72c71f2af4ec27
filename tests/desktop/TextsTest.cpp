#include "desktop/Folding.h"
#include "desktop/HostMenus.h"
#include "desktop/ToolStates.h"

#include "desktop/texts/Translation.h"

#include <QDirIterator>
#include <QRegularExpression>
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

/// The own texts as the headers of texts in the source have them: number and English text.
QList<std::pair<int, QString>> OwnTexts() {
    QList<std::pair<int, QString>> texts;
    const QRegularExpression own(QStringLiteral(R"(\{(\d+),\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\})"));
    QDirIterator headers(QStringLiteral(ARVON_DESKTOP_SOURCE), {QStringLiteral("*Texts.h")}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (headers.hasNext()) {
        QFile header(headers.next());
        if (!header.open(QIODevice::ReadOnly)) continue;
        const QString content = QString::fromUtf8(header.readAll());
        for (const QRegularExpressionMatch& match : own.globalMatch(content))
            texts.append({match.captured(1).toInt(), match.captured(2)});
    }
    return texts;
}

QString Placeholders(const QString& text) {
    QStringList found;
    for (const QRegularExpressionMatch& match : QRegularExpression(QStringLiteral("%\\d")).globalMatch(text))
        found.append(match.captured());
    found.sort();
    return found.join(u' ');
}

TEST(OwnTexts, HaveNumbersOfTheirOwn) {
    QSet<int> numbers;
    for (const auto& [number, english] : OwnTexts()) {
        EXPECT_FALSE(numbers.contains(number)) << number << ' ' << english.toStdString();
        numbers.insert(number);
    }
    EXPECT_GT(numbers.size(), 150);
}

TEST(OwnTexts, StandInGermanWithTheSamePlaceholders) {
    text::UseLanguage(QStringLiteral("1031"));
    const QString none = QStringLiteral("(none)");
    for (const auto& [number, english] : OwnTexts()) {
        const QString german = text::Of({number, "(none)"});
        EXPECT_NE(german, none) << number << ' ' << english.toStdString();
        EXPECT_EQ(Placeholders(german), Placeholders(english)) << number << ' ' << german.toStdString();
        EXPECT_EQ(german.contains(u'&'), english.contains(u'&')) << number << ' ' << german.toStdString();
    }
    text::UseLanguage({});
}

TEST(OwnTexts, AreEnglishInALanguageThatHasNoModule) {
    const text::Own own{141, "&View"};
    QObject follower;
    QStringList put;
    text::Follow(&follower, [&] { put.append(text::Of(own)); });
    for (const char* language : {"1031", "9999", "../texts/1031", "1031"})
        text::UseLanguage(QLatin1String(language));
    EXPECT_EQ(put.join(u' '), QStringLiteral("&View &Ansicht &View &View &Ansicht"));
    text::UseLanguage({});
}

TEST(OwnTexts, AreNoLongerPutForWhoIsGone) {
    int puts = 0;
    {
        QObject follower;
        text::Follow(&follower, [&] { ++puts; });
    }
    text::UseLanguage(QStringLiteral("1031"));
    EXPECT_EQ(puts, 1);
    text::UseLanguage({});
}

} // namespace
} // namespace desktop
