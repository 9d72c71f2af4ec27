#include "tests/desktop/DesktopFixture.h"

#include "desktop/QtText.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace desktop {
namespace {

using arvon::host::ParameterRecord;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class OptionsTest : public DesktopTest {
protected:
    void OpenOptions() {
        Press(QKeySequence(Qt::CTRL | Qt::Key_Comma));
        ASSERT_TRUE(WaitUntil([this] { return window->Windows().Window(QStringLiteral("ocxToolOptions")); }));
    }
    QDialog* Options() { return window->Windows().Window(QStringLiteral("ocxToolOptions")); }
    /// The page of that program among the options.
    void OpenPage(const QString& program) {
        auto* pages = Options()->findChild<QAbstractItemView*>(QStringLiteral("pages"));
        ASSERT_NE(pages, nullptr);
        const QModelIndexList found = pages->model()->match(pages->model()->index(0, 0), Qt::DisplayRole,
                                                            program, 1, Qt::MatchStartsWith);
        ASSERT_FALSE(found.isEmpty());
        pages->setCurrentIndex(found.first());
        QApplication::processEvents();
    }
    void Type(const char* option, const QString& value) {
        auto* line = Options()->findChild<QLineEdit*>(QLatin1String(option));
        ASSERT_NE(line, nullptr);
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, value);
    }
    void ClickOk() {
        QTest::mouseClick(Options()->findChild<QPushButton*>(QStringLiteral("ok")), Qt::LeftButton);
        ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Windows().empty() && !Options(); }));
        Settle();
    }
    std::string Saved() { return Read("Arvon/OPTIONS.XML").toStdString(); }
    /// Another tool changes an option through the component.
    void ChangeOutside(const std::string& toolId, const std::string& option, const std::string& value,
                       const std::string& addMissing = "0") {
        const std::vector<ParameterRecord> parameters{{"ToolID", 2, base::Value(toolId)},
                                                      {"OptionName", 2, base::Value(option)},
                                                      {"OptionValue", 2, base::Value(value)},
                                                      {"AddMissing", 2, base::Value(addMissing)}};
        EXPECT_EQ(bridge->Host().SendRequest("SetOptionValue", parameters, "Vn21"), "True");
    }
    std::string ValueOf(const std::string& toolId, const std::string& option) {
        const std::vector<ParameterRecord> parameters{{"ToolID", 2, base::Value(toolId)},
                                                      {"OptionName", 2, base::Value(option)}};
        return bridge->Host().SendRequest("GetOptionValue", parameters);
    }
};

TEST_F(OptionsTest, ChangedOptionsAreNotLostWithoutAQuestion) {
    Open();
    OpenOptions();
    OpenPage(QStringLiteral("Beam & Frame"));
    Type("txtSafetyFactor", QStringLiteral("1.75"));
    confirms = false;
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    ASSERT_THAT(boxes, testing::SizeIs(1));
    EXPECT_THAT(boxes[0].text.toStdString(), HasSubstr("without saving"));
    confirms = true;
    EXPECT_TRUE(window->close());
    EXPECT_THAT(Saved(), Not(HasSubstr("<Value>1.75</Value>")));
}

TEST_F(OptionsTest, NothingIsAskedWhereNoOptionWasChanged) {
    Open();
    OpenOptions();
    EXPECT_TRUE(window->close());
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(OptionsTest, OptionsThatAreChangedLandInTheFile) {
    Open();
    OpenOptions();
    EXPECT_EQ(Options()->windowTitle(), QStringLiteral("Options"));
    OpenPage(QStringLiteral("Beam & Frame"));
    auto* factor = Options()->findChild<QLineEdit*>(QStringLiteral("txtSafetyFactor"));
    ASSERT_NE(factor, nullptr);
    factor->setFocus();
    factor->selectAll();
    QTest::keyClicks(factor, QStringLiteral("1.75"));
    QTest::mouseClick(Options()->findChild<QPushButton*>(QStringLiteral("ok")), Qt::LeftButton);
    ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Windows().empty() && !Options(); }));
    Settle();
    EXPECT_THAT(Read("Arvon/OPTIONS.XML").toStdString(), HasSubstr("<Value>1.75</Value>"));
    EXPECT_EQ(bridge->Host().SendRequest(
                  "GetOptionValue",
                  std::vector<arvon::host::ParameterRecord>{
                      {"ToolID", 2, base::Value("Vn21")}, {"OptionName", 2, base::Value("txtSafetyFactor")}}),
              "1.75");
}

TEST_F(OptionsTest, OptionsCloseByEscapeAndOpenAgain) {
    Open();
    const QByteArray before = Read("Arvon/OPTIONS.XML");
    for (int round = 0; round < 2; ++round) {
        OpenOptions();
        QTest::keyClick(Options(), Qt::Key_Escape);
        ASSERT_TRUE(WaitUntil([this] { return !Options(); }));
        EXPECT_THAT(bridge->Model().Windows(), IsEmpty());
    }
    EXPECT_EQ(Read("Arvon/OPTIONS.XML"), before);
}

TEST_F(OptionsTest, WhatOthersChangeWhileTheWindowIsOpenIsKept) {
    Open();
    EXPECT_EQ(ValueOf("Tobr43", "txtGridSpacing"), "2.5"); // the component has read its options
    OpenOptions();
    OpenPage(QStringLiteral("Layout"));
    Type("txtGridSpacing", QStringLiteral("7.25"));
    ChangeOutside("Tobr43", "cmbSheet", "A1");
    ChangeOutside("Tobr43", "txtGridSpacing", "9");
    ChangeOutside("Vn21", "txtAdded", "new & strange", "-1");
    auto* sheet = Options()->findChild<QComboBox*>(QStringLiteral("cmbSheet"));
    EXPECT_TRUE(WaitUntil([&] {
        sheet = Options()->findChild<QComboBox*>(QStringLiteral("cmbSheet"));
        return sheet && sheet->currentText() == QStringLiteral("A1");
    })) << "shown while the window is open";
    EXPECT_EQ(Options()->findChild<QLineEdit*>(QStringLiteral("txtGridSpacing"))->text(),
              QStringLiteral("7.25"));
    ClickOk();

    EXPECT_EQ(ValueOf("Tobr43", "txtGridSpacing"), "7.25") << "the user's own change wins";
    EXPECT_EQ(ValueOf("Tobr43", "cmbSheet"), "A1");
    EXPECT_EQ(ValueOf("Vn21", "txtAdded"), "new & strange");
    EXPECT_THAT(Saved(), HasSubstr("<Name>txtGridSpacing</Name><Value>7.25</Value>"));
    EXPECT_THAT(Saved(), HasSubstr("<Name>cmbSheet</Name><Value>A1</Value>"));
    EXPECT_THAT(Saved(), HasSubstr("<Name>txtAdded</Name><Value>new &amp; strange</Value>"));
    EXPECT_THAT(Saved(), HasSubstr("<DisplayName>Tool Manager</DisplayName>"));
    EXPECT_THAT(Saved(), HasSubstr("<Template>C:\\QUARRA\\Tobr43\\Sheets\\A3 landscape.qst</Template>"));
}

TEST_F(OptionsTest, WithoutAChangeOkOverwritesNothing) {
    Open();
    OpenOptions();
    ChangeOutside("Tobr43", "cmbSheet", "A0");
    ClickOk();
    EXPECT_THAT(Saved(), HasSubstr("<Name>cmbSheet</Name><Value>A0</Value>"));
}

TEST_F(OptionsTest, ThatCannotBeReadLeaveTheProgramsInPlaceAndAreReported) {
    Open();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Plot Queue")));
    Settle();
    Close();
    const auto damage = [this] {
        QFile file(ToQt(File("Arvon/OPTIONS.XML").string()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("<Options><Tool");
    };
    damage();

    Open();
    const auto reported = [this] { return Find<QLabel>("report")->text().toStdString(); };
    EXPECT_EQ(window->Nodes().SelectedNode(), QStringLiteral("Plot Queue")) << "as it was left";
    EXPECT_THAT(reported(), HasSubstr("OPTIONS.XML")) << "nothing was done yet";
    EXPECT_THAT(boxes, IsEmpty());
    Close();

    ASSERT_TRUE(QFile::remove(layoutFile));
    Open();
    EXPECT_EQ(window->Nodes().SelectedNode(), QStringLiteral("nodTools"));
    EXPECT_TRUE(List().isVisible());
    EXPECT_EQ(Names().size(), 13);
    EXPECT_EQ(Find<QLabel>("count")->text(), QStringLiteral("13 programs"));
    EXPECT_TRUE(NodeOf(QStringLiteral("Layout")).isValid());
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Layout")));
    Settle();
    EXPECT_EQ(reported(), "");
    OpenOptions();
    EXPECT_THAT(reported(), HasSubstr("OPTIONS.XML"));
}

TEST_F(OptionsTest, CancelLeavesWhatOthersChanged) {
    Open();
    OpenOptions();
    OpenPage(QStringLiteral("Layout"));
    Type("txtGridSpacing", QStringLiteral("4"));
    ChangeOutside("Tobr43", "cmbSheet", "A0");
    QTest::keyClick(Options(), Qt::Key_Escape);
    ASSERT_TRUE(WaitUntil([this] { return !Options(); }));
    EXPECT_THAT(Saved(), HasSubstr("<Name>cmbSheet</Name><Value>A0</Value>"));
    EXPECT_THAT(Saved(), Not(HasSubstr("<Name>txtGridSpacing</Name><Value>4</Value>")));
}

} // namespace
} // namespace desktop
