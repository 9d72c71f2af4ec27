#include "tests/desktop_controls/OptionsPanelFixture.h"

#include "base/ComponentError.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace desktop::test {

namespace {

using testing::HasSubstr;

std::string SampleText() {
    std::ifstream file(std::string(KVTM_SUITE_FOLDER) + "/drive_c/QUARRA/Arvon/OPTIONS.XML",
                       std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

TEST_F(OptionsPanelTest, AsksToBeInitializedWhenShown) {
    Open(small);
    EXPECT_THAT(peer.Types(), testing::ElementsAre("InitializeOptions", "GetOptionData", "EnumPrinters"));
    EXPECT_EQ(peer.Of("GetOptionData")[0].parameters.at("ToolID"), "KvTMU110");
    EXPECT_EQ(control->Get("Options").ToText(), small);
    EXPECT_EQ(Part<QListView>("pages").model()->rowCount(), 2);
    EXPECT_EQ(Part<QLabel>("title").text(), "Layout");
}

TEST_F(OptionsPanelTest, DrawsEveryOptionByItsPrefix) {
    Open(small);
    EXPECT_TRUE(Part<QCheckBox>("chkSnapToGrid").isChecked());
    EXPECT_EQ(Part<QLineEdit>("txtGridSpacing").text(), "2.5");
    EXPECT_EQ(Part<QComboBox>("cmbSheet").currentText(), "A3 landscape");
    const auto radios = Part<QWidget>("optToolSortOrder").findChildren<QRadioButton*>();
    ASSERT_EQ(radios.size(), 2);
    EXPECT_TRUE(radios[0]->isChecked());
    EXPECT_EQ(radios[1]->text(), "Descending");
    for (const char* name : {"chkSnapToGrid", "txtGridSpacing", "cmbSheet", "cmbDefaultPrinter"})
        EXPECT_GT(Part<QWidget>(name).visibleRegion().boundingRect().height(), 12) << name;
}

TEST_F(OptionsPanelTest, OffersPrintersAndKeepsOneThatIsGone) {
    Open(small);
    auto& printers = Part<QComboBox>("cmbDefaultPrinter");
    QStringList names;
    for (int index = 0; index < printers.count(); ++index)
        names += printers.itemText(index);
    EXPECT_EQ(names, QStringList({"Office laser", "Plotter", "Old printer (not installed)"}));
    EXPECT_EQ(printers.currentIndex(), 2);
    EXPECT_EQ(peer.Of("EnumPrinters").size(), 1U);
}

TEST_F(OptionsPanelTest, KeyboardAndMouseChangeAndOkSendsTheWholeTextOnce) {
    Open(small);
    Click(Part<QCheckBox>("chkSnapToGrid"));
    auto& spacing = Part<QLineEdit>("txtGridSpacing");
    spacing.setFocus();
    spacing.selectAll();
    QTest::keyClicks(&spacing, "5");
    auto& sheet = Part<QComboBox>("cmbSheet");
    sheet.setFocus();
    sheet.lineEdit()->selectAll();
    QTest::keyClicks(&sheet, "A1");
    QTest::keyClick(Part<QWidget>("optToolSortOrder").findChildren<QRadioButton*>()[1], Qt::Key_Space);
    QTest::keyClick(&Part<QComboBox>("cmbDefaultPrinter"), Qt::Key_Up);
    EXPECT_EQ(Part<QLabel>("state").text(), "5 options changed");
    EXPECT_TRUE(peer.Of("UpdateOptions").empty());

    QTest::keyClick(&spacing, Qt::Key_Return);
    std::string expected = small;
    const auto put = [&](const std::string& from, const std::string& to) {
        expected.replace(expected.find(from), from.size(), to);
    };
    put(">ON<", ">OFF<");
    put(">2.5<", ">5<");
    put(">A3 landscape<", ">A1<");
    put("<Value>0<", "<Value>1<");
    put(">Old printer<", ">Plotter<");
    EXPECT_EQ(Updated(), expected);
    EXPECT_FALSE(peer.Of("UpdateOptions")[0].parameters.contains("UnloadOptionsTool"))
        << "the window must not go before the options are saved";
    EXPECT_EQ(peer.Types().back(), "UnloadOptionsTool");
    EXPECT_EQ(control->Get("Options").ToText(), expected);
}

TEST_F(OptionsPanelTest, WhatCouldNotBeSavedStaysInItsWindowAndIsTold) {
    peer.doings["UpdateOptions"] = [] {}; // nobody is told of new options
    Open(small);
    QTest::keyClicks(&Part<QLineEdit>("txtGridSpacing"), "1");
    Click(Part<QPushButton>("ok"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(peer.Of("UnloadOptionsTool").empty());
    EXPECT_EQ(Part<QLabel>("state").text(),
              "The options could not be saved. Your changes are kept here; OK tries again.");
    EXPECT_TRUE(Part<QLabel>("state").isVisible());
    EXPECT_EQ(Part<QLineEdit>("txtGridSpacing").text(), "12.5");
    EXPECT_TRUE(Part<QPushButton>("resetPage").isEnabled()) << "still a change";
    EXPECT_EQ(control->Get("Options").ToText(), small);
    EXPECT_EQ(Unnamed(*panel), QStringList());
    TakePictures(*panel, "options-not-saved");

    peer.doings["UpdateOptions"] = [this] { Save(); };
    Click(Part<QPushButton>("ok"));
    EXPECT_EQ(peer.Of("UpdateOptions").size(), 2U);
    EXPECT_EQ(peer.Of("UnloadOptionsTool").size(), 1U);
    EXPECT_THAT(control->Get("Options").ToText(), HasSubstr(">12.5<"));
    EXPECT_TRUE(WaitUntil([this] { return Part<QLabel>("state").text().isEmpty(); }));
}

TEST_F(OptionsPanelTest, SendsOnceThoughTheWindowGoesMeanwhile) {
    Open(small);
    peer.doings["UpdateOptions"] = [this] { panel.reset(); };
    QPushButton& ok = Part<QPushButton>("ok");
    Click(ok);
    EXPECT_EQ(peer.Of("UpdateOptions").size(), 1U);
    EXPECT_FALSE(panel);
    EXPECT_NE(control->Widget(), nullptr) << "a new one for the next window";
    panel.reset(control->Widget());
}

TEST_F(OptionsPanelTest, ASecondOkFromInsideTheFirstIsNone) {
    Open(small);
    peer.doings["UpdateOptions"] = [this] { Part<QPushButton>("ok").click(); };
    Part<QPushButton>("ok").click();
    EXPECT_EQ(peer.Of("UpdateOptions").size(), 1U);
}

TEST_F(OptionsPanelTest, WhereTheWindowStaysItGoesOnFromWhatWasSaved) {
    Open(small);
    QTest::keyClicks(&Part<QLineEdit>("txtGridSpacing"), "1");
    Click(Part<QPushButton>("ok"));
    EXPECT_TRUE(WaitUntil([this] { return Part<QLabel>("state").text().isEmpty(); }));
    EXPECT_EQ(Part<QLineEdit>("txtGridSpacing").text(), "12.5");
    EXPECT_FALSE(Part<QPushButton>("resetPage").isEnabled());
}

TEST_F(OptionsPanelTest, CancelChangesNothingAndClosesTheView) {
    Open(small);
    Click(Part<QCheckBox>("chkSnapToGrid"));
    QTest::keyClick(panel.get(), Qt::Key_Escape);
    EXPECT_EQ(peer.Of("UnloadOptionsTool").size(), 1U);
    EXPECT_TRUE(peer.Of("UpdateOptions").empty());
    EXPECT_EQ(control->Get("Options").ToText(), small);
    panel->hide();
    panel->show();
    EXPECT_TRUE(Part<QCheckBox>("chkSnapToGrid").isChecked()) << "opened again, it shows what is in force";
}

TEST_F(OptionsPanelTest, MarksWhatIsChangedAndTakesItBack) {
    Open(small);
    auto& spacing = Part<QLineEdit>("txtGridSpacing");
    QTest::keyClicks(&spacing, "7");
    EXPECT_THAT(spacing.accessibleDescription().toStdString(), HasSubstr("Changed; it was \u201c2.5\u201d"));
    auto& reset = Part<QToolButton>("reset txtGridSpacing");
    EXPECT_TRUE(reset.isVisible());
    const QModelIndex page = Part<QListView>("pages").model()->index(0, 0);
    EXPECT_EQ(page.data(Qt::AccessibleTextRole).toString(), "Layout, 1 changed");
    EXPECT_TRUE(page.data(Qt::FontRole).value<QFont>().bold());
    Click(reset);
    EXPECT_EQ(spacing.text(), "2.5");
    EXPECT_FALSE(reset.isVisible());
    EXPECT_EQ(page.data(Qt::AccessibleTextRole).toString(), "Layout");

    Click(Part<QCheckBox>("chkSnapToGrid"));
    QTest::keyClicks(&spacing, "7");
    Click(Part<QPushButton>("resetPage"));
    EXPECT_TRUE(Part<QCheckBox>("chkSnapToGrid").isChecked());
    EXPECT_EQ(spacing.text(), "2.5");
    EXPECT_FALSE(Part<QPushButton>("resetPage").isEnabled());
}

TEST_F(OptionsPanelTest, EnterPressesTheResetButtonThatHasTheKeyboard) {
    Open(small);
    auto& spacing = Part<QLineEdit>("txtGridSpacing");
    QTest::keyClicks(&spacing, "7");
    auto& reset = Part<QToolButton>("reset txtGridSpacing");
    reset.setFocus();
    QTest::keyClick(&reset, Qt::Key_Return);
    EXPECT_EQ(spacing.text(), "2.5");
    QTest::keyClicks(&spacing, "7");
    auto& resetPage = Part<QPushButton>("resetPage");
    resetPage.setFocus();
    QTest::keyClick(&resetPage, Qt::Key_Enter);
    EXPECT_EQ(spacing.text(), "2.5");
    EXPECT_TRUE(peer.Of("UpdateOptions").empty());
}

TEST_F(OptionsPanelTest, InADialogOkIsTheDefaultButton) {
    peer.doings["InitializeOptions"] = [this] { Initialize(small); };
    control = MakeControl("KvTMU110.ctlOptions", peer.Services());
    QDialog dialog;
    (new QVBoxLayout(&dialog))->addWidget(control->Widget());
    ShowInFront(dialog);
    auto& ok = Child<QPushButton>(dialog, "ok");
    EXPECT_TRUE(ok.isDefault());
    QTest::keyClicks(&Child<QLineEdit>(dialog, "txtGridSpacing"), "7");
    auto& resetPage = Child<QPushButton>(dialog, "resetPage");
    resetPage.setFocus();
    EXPECT_FALSE(resetPage.isDefault());
    EXPECT_TRUE(ok.isDefault());
}

TEST_F(OptionsPanelTest, ALabelThatWasSwitchedOffCaptionsNothing) {
    Open("<Options><Tool ID=\"A\"><Option><Name>chkShowPricing</Name><Value>ON</Value></Option>"
         "<Option><Name>lblShowPricing</Name><Value>OFF</Value></Option></Tool></Options>");
    EXPECT_EQ(Part<QCheckBox>("chkShowPricing").text(), "Show pricing");
    EXPECT_EQ(Part<QLabel>("lblShowPricing").text(), "Show pricing");
    Click(Part<QCheckBox>("chkShowPricing"));
    Click(Part<QPushButton>("ok"));
    EXPECT_THAT(Updated(), HasSubstr("<Name>lblShowPricing</Name><Value>OFF</Value>"));
}

TEST_F(OptionsPanelTest, SearchShowsWhichPagesMatchAndOnlyWhatDoes) {
    Open(small);
    auto& search = Part<QLineEdit>("search");
    QTest::keyClick(panel.get(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(search.hasFocus());
    QTest::keyClicks(&search, "folder");
    auto& pages = Part<QListView>("pages");
    ASSERT_EQ(pages.model()->rowCount(), 1);
    EXPECT_EQ(pages.model()->index(0, 0).data().toString(), "Plot Queue (1)");
    EXPECT_EQ(Part<QLabel>("title").text(), "Plot Queue");
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_TRUE(Part<QLineEdit>("txtFolder").hasFocus());
    search.setFocus();
    QTest::keyClick(&search, Qt::Key_Escape);
    EXPECT_EQ(search.text(), "");
    EXPECT_EQ(pages.model()->rowCount(), 2);
    EXPECT_TRUE(peer.Of("UnloadOptionsTool").empty()) << "the first Escape only empties the search";
    QTest::keyClicks(&search, "nowhere");
    EXPECT_EQ(pages.model()->rowCount(), 0);
    EXPECT_THAT(Part<QLabel>("empty").text().toStdString(), HasSubstr("No option holds \u201cnowhere"));
}

TEST_F(OptionsPanelTest, TheKeyboardReachesEverythingInOrder) {
    Open(small);
    QStringList visited;
    Part<QLineEdit>("search").setFocus();
    for (int step = 0; step < 12; ++step) {
        visited += QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    visited.removeAll("");
    EXPECT_EQ(visited.join(' ').toStdString(),
              "search pages chkSnapToGrid txtGridSpacing cmbSheet cmbDefaultPrinter ok cancel "
              "search pages chkSnapToGrid");
}

TEST_F(OptionsPanelTest, TroubleIsToldAndHoldsOkBack) {
    Open("<Options><Tool "
         "ID=\"A\"><Option><Name>cmbLanguage</Name><Value>1033</Value></Option></Tool></Options>");
    auto& language = Part<QComboBox>("cmbLanguage");
    language.lineEdit()->selectAll();
    QTest::keyClicks(&language, "Klingon");
    EXPECT_THAT(Part<QLabel>("state").text().toStdString(), HasSubstr("found \u201cKlingon\u201d"));
    Part<QListView>("pages").setFocus();
    QTest::keyClick(panel.get(), Qt::Key_Return);
    EXPECT_TRUE(peer.Of("UpdateOptions").empty());
    EXPECT_TRUE(language.hasFocus());
    TakePictures(*panel, "options-trouble");
    language.lineEdit()->selectAll();
    QTest::keyClicks(&language, "Deutsch");
    QTest::keyClick(panel.get(), Qt::Key_Return);
    EXPECT_THAT(Updated(), HasSubstr("<Value>1031</Value>")) << "a label that is known stands for its value";
}

TEST_F(OptionsPanelTest, OkGoesToTheFieldInTroubleAlsoWhereASearchHidesIt) {
    Open("<Options><Tool ID=\"A\"><Option><Name>txtOther</Name><Value>1</Value></Option>"
         "<Option><Name>cmbLanguage</Name><Value>1033</Value></Option></Tool>"
         "<Tool ID=\"B\"><Option><Name>txtFolder</Name><Value>C:</Value></Option></Tool></Options>");
    auto& language = Part<QComboBox>("cmbLanguage");
    language.lineEdit()->selectAll();
    QTest::keyClicks(&language, "Klingon");
    auto& search = Part<QLineEdit>("search");
    for (const char* hiding : {"folder", "other"}) { // another page, another field of the page
        search.setText(hiding);
        Click(Part<QPushButton>("ok"));
        EXPECT_TRUE(peer.Of("UpdateOptions").empty());
        EXPECT_EQ(search.text(), "") << hiding;
        EXPECT_EQ(Part<QLabel>("title").text(), "A") << hiding;
        EXPECT_TRUE(Part<QComboBox>("cmbLanguage").hasFocus()) << hiding;
    }
}

TEST_F(OptionsPanelTest, WhatIsTypedIntoAChoiceIsNotCompleted) {
    Open(small);
    auto& sheet = Part<QComboBox>("cmbSheet");
    sheet.lineEdit()->selectAll();
    QTest::keyClicks(&sheet, "A3");
    EXPECT_EQ(sheet.currentText(), "A3");
    Click(Part<QPushButton>("ok"));
    EXPECT_THAT(Updated(), HasSubstr("<Value>A3</Value>"));
}

TEST_F(OptionsPanelTest, TakesTheLanguagesThatTheHostKnows) {
    peer.choices["cmbLanguage"] = {"1031", "1033", "9999"};
    Open("<Options><Tool "
         "ID=\"A\"><Option><Name>cmbLanguage</Name><Value>1033</Value></Option></Tool></Options>");
    auto& language = Part<QComboBox>("cmbLanguage");
    EXPECT_FALSE(language.isEditable());
    EXPECT_EQ(language.currentText(), "English");
    EXPECT_EQ(language.itemText(2), "9999");
}

TEST_F(OptionsPanelTest, TheWheelScrollsAndChangesNoValue) {
    Open(small);
    auto& printers = Part<QComboBox>("cmbDefaultPrinter");
    Part<QListView>("pages").setFocus();
    QWheelEvent wheel(QPointF(5, 5), printers.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&printers, &wheel);
    EXPECT_EQ(printers.currentIndex(), 2);
}

TEST_F(OptionsPanelTest, EveryControlOfTheSampleHasANameOnEveryPage) {
    Open(SampleText());
    auto& pages = Part<QListView>("pages");
    for (int row = 0; row < pages.model()->rowCount(); ++row) {
        pages.setCurrentIndex(pages.model()->index(row, 0));
        QCoreApplication::processEvents();
        EXPECT_EQ(Unnamed(*panel), QStringList()) << row;
        TakePictures(*panel, "options-" + QString::number(row));
    }
    pages.setCurrentIndex(pages.model()->index(2, 0));
    QTest::keyClicks(&Part<QLineEdit>("txtGridSpacing"), "x");
    Click(Part<QCheckBox>("chkSnapToGrid"));
    EXPECT_EQ(Unnamed(*panel), QStringList());
    TakePictures(*panel, "options-changed");
}

TEST_F(OptionsPanelTest, UnknownMembersAreRefused) {
    Open(small);
    EXPECT_THROW(control->Get("Nothing"), base::ComponentError);
    EXPECT_THROW(control->Call("Nothing", {}), base::ComponentError);
    EXPECT_THROW(control->Set("Options", base::Value("x")), base::ComponentError);
    EXPECT_EQ(MakeControl("KvTMU110.ctlNothing", peer.Services()), nullptr);
    EXPECT_NE(MakeControl("kvtmu110.CTLOPTIONS", peer.Services()), nullptr);
}

} // namespace desktop::test
