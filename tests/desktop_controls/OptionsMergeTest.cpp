#include "base/ComponentError.h"
#include "tests/desktop_controls/OptionTexts.h"
#include "tests/desktop_controls/OptionsPanelFixture.h"

#include <gmock/gmock.h>

namespace desktop::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string Options(const std::string& inside) {
    return "<Options><Tool ID=\"A\"><DisplayName>Layout</DisplayName>" + inside + "</Tool></Options>";
}
std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

} // namespace

TEST(OptionRebase, TakesEverythingThatWasNotChangedHereFromTheNewText) {
    OptionSheet sheet = Sheet(Options(Option("txtA", "1") + Option("txtB", "1")));
    sheet.SetValue(0, 0, "mine");
    const std::string outside = Options(Option("txtA", "1") + Option("txtB", "theirs"));
    const OptionSheet::Rebased rebased = sheet.Rebase(outside);
    EXPECT_TRUE(rebased.looksTheSame);
    EXPECT_THAT(rebased.lost, IsEmpty());
    EXPECT_EQ(sheet.Changes(), 1U);
    EXPECT_EQ(sheet.Text(), Options(Option("txtA", "mine") + Option("txtB", "theirs")));
}

TEST(OptionRebase, TheUsersValueWinsWhereBothChangedOne) {
    OptionSheet sheet = Sheet(Options(Option("txtA", "1")));
    sheet.SetValue(0, 0, "mine");
    sheet.Rebase(Options(Option("txtA", "theirs")));
    EXPECT_EQ(sheet.Field(0, 0).value, "mine");
    EXPECT_EQ(sheet.Field(0, 0).original, "theirs");
    sheet.Reset(0, 0);
    EXPECT_EQ(sheet.Field(0, 0).value, "theirs");
}

TEST(OptionRebase, WhatOthersChangedToTheSameIsNoChangeAnyMore) {
    OptionSheet sheet = Sheet(Options(Option("txtA", "1")));
    sheet.SetValue(0, 0, "2");
    sheet.Rebase(Options(Option("txtA", "2")));
    EXPECT_EQ(sheet.Changes(), 0U);
}

TEST(OptionRebase, FindsAnOptionThatMovedAndTellsOneThatIsGone) {
    OptionSheet sheet = Sheet(Options(Option("txtA", "1") + Option("txtGoing", "1")));
    sheet.SetValue(0, 0, "mine");
    sheet.SetValue(0, 1, "mine too");
    const OptionSheet::Rebased rebased = sheet.Rebase(Options(Option("txtNew", "0") + Option("txtA", "1")));
    EXPECT_FALSE(rebased.looksTheSame);
    EXPECT_THAT(rebased.lost, ElementsAre(QString("Going")));
    EXPECT_EQ(sheet.Text(), Options(Option("txtNew", "0") + Option("txtA", "mine")));
}

TEST(OptionRebase, TellsToolsAndOptionsOfTheSameNameApartByTheirOrder) {
    const std::string before = "<Options><Tool ID=\"A\">" + Option("txtA", "1") + Option("txtA", "2") +
                               "</Tool><Tool ID=\"A\">" + Option("txtA", "3") + "</Tool></Options>";
    OptionSheet sheet = Sheet(before);
    sheet.SetValue(0, 1, "second");
    sheet.SetValue(1, 0, "third");
    sheet.Rebase(Replaced(before, ">1<", ">theirs<"));
    EXPECT_EQ(sheet.Text(),
              Replaced(Replaced(Replaced(before, ">1<", ">theirs<"), ">2<", ">second<"), ">3<", ">third<"));
}

TEST(OptionRebase, OneRadioOptionOfAGroupStaysOn) {
    const auto group = [](const char* a, const char* b, const char* c) {
        return Options(Option("optA", a) + Option("optB", b) + Option("optC", c));
    };
    OptionSheet sheet = Sheet(group("ON", "OFF", "OFF"));
    sheet.SetValue(0, 1, "ON");
    sheet.Rebase(group("OFF", "OFF", "ON"));
    EXPECT_EQ(sheet.Text(), group("OFF", "ON", "OFF"));
}

TEST(OptionRebase, ATextThatIsNotWellFormedChangesNothing) {
    OptionSheet sheet = Sheet(Options(Option("txtA", "1")));
    sheet.SetValue(0, 0, "mine");
    EXPECT_THROW(sheet.Rebase("<Options>"), base::ComponentError);
    EXPECT_EQ(sheet.Text(), Options(Option("txtA", "mine")));
}

/// Others change options while the window is open.
class OptionsMergeTest : public OptionsPanelTest {
protected:
    void ChangeOutside(const std::string& options) {
        ASSERT_TRUE(peer.newOptions) << "the control did not ask to be told";
        peer.newOptions(options);
    }
};

TEST_F(OptionsMergeTest, AChangeFromOutsideShowsWhereTheUserChangedNothing) {
    Open(small);
    auto& spacing = Part<QLineEdit>("txtGridSpacing");
    spacing.setFocus();
    QTest::keyClicks(&spacing, "7");
    std::string outside = Replaced(small, ">ON<", ">OFF<");
    outside = Replaced(outside, ">2.5<", ">9<");
    outside = Replaced(outside, ">Old printer<", ">Third printer<");
    outside = Replaced(outside, "<Value>0<", "<Value>7<");
    ChangeOutside(outside);
    EXPECT_TRUE(Part<QCheckBox>("chkSnapToGrid").isChecked()) << "not from inside the delivery";
    ASSERT_TRUE(WaitUntil([&] { return !Part<QCheckBox>("chkSnapToGrid").isChecked(); }));
    EXPECT_EQ(Part<QComboBox>("cmbDefaultPrinter").currentData().toByteArray(), "Third printer");
    const auto radios = Part<QWidget>("optToolSortOrder").findChildren<QRadioButton*>();
    EXPECT_TRUE(radios.back()->isChecked());
    EXPECT_EQ(&spacing, QApplication::focusWidget()) << "what the user is at stays as it is";
    EXPECT_EQ(spacing.text(), "72.5");
    EXPECT_EQ(spacing.cursorPosition(), 1);
    EXPECT_EQ(Part<QLabel>("state").text(), "1 option changed");
    Click(Part<QPushButton>("ok"));
    EXPECT_EQ(Updated(), Replaced(outside, ">9<", ">72.5<"));
}

TEST_F(OptionsMergeTest, OkTakesInWhatCameAtTheLastMoment) {
    Open(small);
    Click(Part<QCheckBox>("chkSnapToGrid"));
    const std::string outside = Replaced(small, ">C:\\QUARRA<", ">D:\\Plots<");
    ChangeOutside(outside);
    Part<QPushButton>("ok").click();
    EXPECT_EQ(Updated(), Replaced(outside, ">ON<", ">OFF<"));
}

TEST_F(OptionsMergeTest, AnOptionThatIsGoneIsToldBeforeAnythingIsSent) {
    Open(small);
    QTest::keyClicks(&Part<QLineEdit>("txtGridSpacing"), "7");
    const std::string outside =
        Replaced(small, "<Option><Name>txtGridSpacing</Name><Value>2.5</Value></Option>", "");
    ChangeOutside(outside);
    Click(Part<QPushButton>("ok"));
    EXPECT_THAT(peer.Of("UpdateOptions"), IsEmpty());
    EXPECT_EQ(Part<QLabel>("state").text(), "No longer there, and not changed: Grid spacing");
    EXPECT_EQ(Part<QLabel>("title").text(), "Layout") << "the page stays";
    Click(Part<QPushButton>("ok"));
    EXPECT_EQ(Updated(), outside);
}

TEST_F(OptionsMergeTest, AnOptionThatComesIsShownAndTheCursorStaysInItsField) {
    Open(small);
    auto& pages = Part<QListView>("pages");
    pages.setCurrentIndex(pages.model()->index(1, 0));
    Part<QLineEdit>("txtFolder").setFocus();
    ChangeOutside(Replaced(small, "</Tool></Options>",
                           "<Option><Name>txtCopies</Name><Value>3</Value></Option></Tool></Options>"));
    ASSERT_TRUE(WaitUntil([&] { return panel->findChild<QLineEdit*>("txtCopies") != nullptr; }));
    EXPECT_EQ(Part<QLabel>("title").text(), "Plot Queue");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtFolder");
}

TEST_F(OptionsMergeTest, ABrokenTextFromOutsideIsPassedOver) {
    Open(small);
    Click(Part<QCheckBox>("chkSnapToGrid"));
    ChangeOutside("<Options>");
    QCoreApplication::processEvents();
    Click(Part<QPushButton>("ok"));
    EXPECT_EQ(Updated(), Replaced(small, ">ON<", ">OFF<"));
}

TEST_F(OptionsMergeTest, WhatOthersSaveWhileItSendsIsNoProofThatItsOwnWasSaved) {
    Open(small);
    QTest::keyClicks(&Part<QLineEdit>("txtGridSpacing"), "7");
    peer.doings["UpdateOptions"] = [this] { ChangeOutside(Replaced(small, ">ON<", ">OFF<")); };
    Click(Part<QPushButton>("ok"));
    EXPECT_THAT(peer.Of("UnloadOptionsTool"), IsEmpty());
    EXPECT_THAT(Part<QLabel>("state").text().toStdString(), HasSubstr("could not be saved"));
    EXPECT_FALSE(Part<QCheckBox>("chkSnapToGrid").isChecked());
    EXPECT_EQ(Part<QLineEdit>("txtGridSpacing").text(), "72.5");
}

TEST_F(OptionsMergeTest, WhatItSentItselfIsNoChangeFromOutside) {
    Open(small);
    QTest::keyClicks(&Part<QLineEdit>("txtGridSpacing"), "7");
    peer.doings["UpdateOptions"] = [this] { ChangeOutside(Updated()); };
    Click(Part<QPushButton>("ok"));
    QCoreApplication::processEvents();
    EXPECT_EQ(peer.Of("UpdateOptions").size(), 1U);
    EXPECT_EQ(Part<QLineEdit>("txtGridSpacing").text(), "72.5");
}

} // namespace desktop::test
