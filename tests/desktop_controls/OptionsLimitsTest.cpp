#include "desktop/controls/OptionsPage.h"
#include "tests/desktop_controls/OptionsPanelFixture.h"

#include <gmock/gmock.h>

namespace desktop::test {

using testing::HasSubstr;

/// What a person would hardly write, and what there is much of.
class OptionsLimitsTest : public OptionsPanelTest {};

TEST_F(OptionsLimitsTest, EmptyAndBrokenTextsAreTold) {
    Open("");
    EXPECT_EQ(Part<QLabel>("empty").text(), "There are no options to show.");
    EXPECT_FALSE(Part<QPushButton>("ok").isEnabled());
    EXPECT_EQ(Unnamed(*panel), QStringList());
    TakePictures(*panel, "options-empty");
    for (const char* broken :
         {"<Options><Tool>", "no xml at all", "<!DOCTYPE a [<!ENTITY e \"x\">]><a>&e;</a>"}) {
        Initialize(broken);
        EXPECT_THAT(Part<QLabel>("empty").text().toStdString(), HasSubstr("cannot be read")) << broken;
        EXPECT_FALSE(Part<QPushButton>("ok").isEnabled());
    }
    Initialize("<Options/>");
    EXPECT_EQ(Part<QLabel>("empty").text(), "There are no options to show.");
    QTest::keyClick(panel.get(), Qt::Key_Return);
    EXPECT_TRUE(peer.Of("UpdateOptions").empty());
}

TEST_F(OptionsLimitsTest, MarkupShortcutMarksAndOtherScriptsStandAsTheyAre) {
    Open(
        "<Options><Tool ID=\"A\"><DisplayName>&lt;b&gt;Bold&lt;/b&gt; &amp;Co "
        "\u05e9\u05dc\u05d5\u05dd</DisplayName>"
        "<Option><Name>chkA</Name><Value>ON</Value></Option>"
        "<Option><Name>lblA</Name><Value>&lt;b&gt;Save &amp;all&lt;/b&gt;</Value></Option>"
        "<Option><Name>txt\u05e9\u05dc\u05d5\u05dd</Name><Value>\u05e2\u05d5\u05dc\u05dd abc</Value></Option>"
        "<Option><Name>lblHint</Name><Value>&lt;img src='x'&gt; plain</Value></Option>"
        "</Tool></Options>");
    EXPECT_EQ(Part<QLabel>("title").text(), "<b>Bold</b> &Co \u05e9\u05dc\u05d5\u05dd");
    EXPECT_EQ(Part<QLabel>("title").textFormat(), Qt::PlainText);
    EXPECT_EQ(Part<QCheckBox>("chkA").text(), "<b>Save &&all</b>");
    EXPECT_TRUE(Part<QCheckBox>("chkA").shortcut().isEmpty());
    EXPECT_EQ(Part<QLabel>("lblHint").textFormat(), Qt::PlainText);
    panel->setLayoutDirection(Qt::RightToLeft);
    TakePictures(*panel, "options-markup");
    panel->setLayoutDirection(Qt::LeftToRight);
    QTest::keyClicks(&Part<QLineEdit>("txt\u05e9\u05dc\u05d5\u05dd"), "!");
    Click(Part<QPushButton>("ok"));
    EXPECT_THAT(Updated(), HasSubstr("!"));
    EXPECT_THAT(Updated(), HasSubstr("&lt;img src='x'&gt; plain"));
}

TEST_F(OptionsLimitsTest, VeryLongAndSeveralLineValuesArePreserved) {
    const std::string lengthy(60'000, 'x');
    Open("<Options><Tool ID=\"A\"><Option><Name>txtLong</Name><Value>" + lengthy +
         "</Value></Option><Option><Name>txtLines</Name><Value>one\u00a0\ntwo</Value></Option>"
         "<Option><Name>cmbLong</Name><Value>" +
         lengthy + "</Value></Option></Tool></Options>");
    auto& lines = Part<QPlainTextEdit>("txtLines");
    lines.moveCursor(QTextCursor::End);
    QTest::keyClicks(&lines, "!");
    auto& longOne = Part<QPlainTextEdit>("txtLong");
    longOne.moveCursor(QTextCursor::End);
    QTest::keyClicks(&longOne, "!");
    Click(Part<QPushButton>("ok"));
    const std::string sent = Updated();
    EXPECT_THAT(sent, HasSubstr("one\u00a0\ntwo!</Value>"));
    EXPECT_NE(sent.find(">" + lengthy + "!</Value>"), std::string::npos);
    EXPECT_NE(sent.find(">" + lengthy + "</Value>"), std::string::npos);
}

TEST_F(OptionsLimitsTest, AnswersThatAreNoPrinterListAreNoPrinters) {
    peer.replies["EnumPrinters"] = "<Printers><";
    peer.doings["EnumPrinters"] = [this] { peer.replies["EnumPrinters"] = "<Printers><"; };
    Open(small);
    auto& printers = Part<QComboBox>("cmbDefaultPrinter");
    EXPECT_EQ(printers.count(), 1);
    EXPECT_EQ(printers.currentData().toByteArray(), "Old printer");
}

TEST_F(OptionsLimitsTest, TenThousandOptionsOnAPageMakeOnlyWhatIsInSight) {
    std::string text = "<Options><Tool ID=\"A\">";
    for (int number = 0; number < 10'000; ++number)
        text += "<Option><Name>txtOption" + std::to_string(number) + "</Name><Value>" +
                std::to_string(number) + "</Value></Option>";
    WorkClock clock;
    Open(text + "</Tool></Options>");
    EXPECT_LT(clock.Restart(), 3000);
    auto& page = *panel->findChild<OptionsPage*>();
    EXPECT_GT(page.RowsMade(), 10U);
    EXPECT_LT(page.RowsMade(), 400U);
    page.verticalScrollBar()->setValue(page.verticalScrollBar()->maximum());
    QCoreApplication::processEvents();
    page.verticalScrollBar()->setValue(page.verticalScrollBar()->maximum());
    EXPECT_LT(page.RowsMade(), 400U);
    auto& last = Part<QLineEdit>("txtOption9999");
    EXPECT_TRUE(last.isVisible());
    QTest::keyClicks(&last, "0");
    clock.Restart();
    QTest::keyClicks(&Part<QLineEdit>("search"), "9999");
    EXPECT_LT(clock.Restart(), 2000);
    EXPECT_EQ(page.RowsMade(), 1U);
    Click(Part<QPushButton>("ok"));
    EXPECT_THAT(Updated(), HasSubstr("<Name>txtOption9999</Name><Value>09999</Value>"));
}

TEST_F(OptionsLimitsTest, TabbingGoesOnThroughRowsThatWereNotThere) {
    std::string text = "<Options><Tool ID=\"A\">";
    for (int number = 0; number < 200; ++number)
        text += "<Option><Name>txtOption" + std::to_string(number) + "</Name><Value/></Option>";
    Open(text + "</Tool></Options>");
    Part<QLineEdit>("txtOption0").setFocus();
    for (int step = 1; step < 200; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_EQ(QApplication::focusWidget()->objectName(), "txtOption" + QString::number(step));
        ASSERT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty()) << step;
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "ok");
}

TEST_F(OptionsLimitsTest, FiveHundredToolsStayUsable) {
    std::string text = "<Options>";
    for (int tool = 0; tool < 500; ++tool) {
        text += "<Tool ID=\"T" + std::to_string(tool) + "\">";
        for (int option = 0; option < 10; ++option)
            text += "<Option><Name>chkOption" + std::to_string(option) + "</Name><Value>ON</Value></Option>";
        text += "</Tool>";
    }
    WorkClock clock;
    Open(text + "</Options>");
    EXPECT_LT(clock.Restart(), 3000);
    auto& pages = Part<QListView>("pages");
    QTest::keyClick(&pages, Qt::Key_End);
    EXPECT_EQ(Part<QLabel>("title").text(), "T499");
    EXPECT_LT(clock.Restart(), 1000);
}

} // namespace desktop::test
