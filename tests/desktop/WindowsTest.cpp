#include "tests/desktop/DesktopFixture.h"

#include "base/ComponentError.h"
#include "core/contract/Framework.h"
#include "desktop/QtText.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProcess>
#include <QPushButton>

namespace desktop {
namespace {

class WindowsTest : public DesktopTest {};

TEST_F(WindowsTest, TheUpdatesThatTheComponentAsksForAreShown) {
    Open();
    Press(QKeySequence(Qt::CTRL | Qt::Key_U));
    auto* updates = Find<QDialog>("updatesWindow");
    ASSERT_TRUE(WaitUntil([&] { return updates->isVisible(); }));
    EXPECT_EQ(updates->windowTitle(), QStringLiteral("Program Updates"));
    auto* programs = Find<QTreeView>("offeredPrograms");
    QStringList names;
    for (int row = 0; row < programs->model()->rowCount(); ++row)
        names.append(programs->model()->index(row, 0).data().toString());
    EXPECT_THAT(names, testing::Contains(QStringLiteral("Layout")));
    EXPECT_TRUE(Find<QFrame>("banner")->isVisible());
    QTest::keyClick(updates, Qt::Key_Escape);
    EXPECT_FALSE(updates->isVisible());

    Press(QKeySequence(Qt::CTRL | Qt::Key_I));
    ASSERT_TRUE(WaitUntil([&] { return updates->isVisible(); }));
    EXPECT_EQ(Find<QLabel>("offerTitle")->text(), QStringLiteral("Programs that can be installed"));
    QTest::mouseClick(Find<QToolButton>("dismissBanner"), Qt::LeftButton);
    EXPECT_FALSE(Find<QFrame>("banner")->isVisible());
}

TEST_F(WindowsTest, ABannerThatWasDismissedStaysAwayUntilAnotherComes) {
    Open();
    Press(QKeySequence(Qt::CTRL | Qt::Key_U));
    auto* updates = Find<QDialog>("updatesWindow");
    ASSERT_TRUE(WaitUntil([&] { return updates->isVisible(); }));
    QTest::keyClick(updates, Qt::Key_Escape);
    auto* banner = Find<QFrame>("banner");
    ASSERT_TRUE(banner->isVisible());
    bridge->Redraw();
    Settle();
    EXPECT_TRUE(banner->isVisible());
    QTest::mouseClick(Find<QToolButton>("dismissBanner"), Qt::LeftButton);
    Press(QKeySequence(Qt::CTRL | Qt::Key_1));
    bridge->Redraw();
    Settle();
    EXPECT_FALSE(banner->isVisible());

    const auto show = [&](const char* caption) {
        bridge->Do(
            [caption](arvon::host::ReferenceHost& host) { host.Framework()->SetBanner(caption, "", 0); });
        Settle();
    };
    const std::string dismissed = bridge->Model().Banner().caption;
    show("Another banner");
    EXPECT_TRUE(banner->isVisible());
    show(dismissed.c_str());
    EXPECT_TRUE(banner->isVisible()) << "it came anew";
}

TEST_F(WindowsTest, TheWindowsOfTheHostGoWithTheMainWindow) {
    Open();
    const QPointer<HostWindows> windows(&window->Windows());
    Press(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    ASSERT_TRUE(WaitUntil([this] { return window->Windows().Window(QStringLiteral("ocxToolOptions")); }));
    const QPointer<QDialog> options(windows->Window(QStringLiteral("ocxToolOptions")));
    QTest::keyClick(options, Qt::Key_Escape);
    Close();
    EXPECT_TRUE(windows.isNull());
    EXPECT_TRUE(options.isNull());
    QTest::qWait(50); // nothing is left that would look at the host
}

TEST_F(WindowsTest, TheUpdatesButtonShowsTheUpdatesControlInPlaceOfTheList) {
    Open();
    auto* bar = Find<QToolBar>("toolBar");
    QTest::mouseClick(bar->widgetForAction(bar->findChild<QAction*>(QStringLiteral("btnUpdateTools"))),
                      Qt::LeftButton);
    Settle();
    EXPECT_FALSE(List().isVisible());
    EXPECT_NE(
        Find<QStackedWidget>("content")->currentWidget()->findChild<QTabWidget*>(QStringLiteral("offers")),
        nullptr);
}

TEST_F(WindowsTest, TheLanguageIsSwitchedWhileTheWindowIsOpen) {
    Open();
    ActionOf("language1031")->trigger();
    Settle();
    EXPECT_TRUE(ActionOf("language1031")->isChecked());
    EXPECT_EQ(bridge->Model().Language(), "1031");
    EXPECT_EQ(bridge->Text(34), QStringLiteral("Programmaktualisierungen"));
    Press(QKeySequence(Qt::CTRL | Qt::Key_U));
    auto* updates = Find<QDialog>("updatesWindow");
    ASSERT_TRUE(WaitUntil([&] { return updates->isVisible(); }));
    EXPECT_EQ(updates->windowTitle(), QStringLiteral("Programmaktualisierungen"));
    QTest::keyClick(updates, Qt::Key_Escape);

    // its own captions and those of the system's string resources, at once
    EXPECT_EQ(ActionOf("mnuToolOptions")->text(), QStringLiteral("&Optionen..."));
    EXPECT_EQ(Find<QMenu>("mnuTool")->title(), QStringLiteral("&Werkzeuge"));
    EXPECT_EQ(Find<QMenu>("mnuView")->title(), QStringLiteral("&Ansicht"));
    EXPECT_EQ(Find<QLineEdit>("filter")->placeholderText(), QStringLiteral("Liste filtern"));
    EXPECT_EQ(Find<QLabel>("count")->text(), QStringLiteral("13 Programme"));
    EXPECT_EQ(Find<QDockWidget>("traceDock")->windowTitle(), QStringLiteral("Nachrichtenverlauf"));
    EXPECT_EQ(Tree().model()->index(0, 0).data().toString(), QStringLiteral("Werkzeuge"));
    const auto headers = [this] {
        QStringList captions;
        for (int column = 0; column < List().model()->columnCount(); ++column)
            captions.append(List().model()->headerData(column, Qt::Horizontal).toString());
        return captions.join(u' ');
    };
    EXPECT_EQ(headers(), QStringLiteral("Name Version Aktualisiert Klassifizierung Zustand"));
    EXPECT_EQ(Find<QToolBar>("toolBar")->findChild<QAction*>(QStringLiteral("btnLAY43"))->toolTip(),
              QStringLiteral("Programm: Layout"));
    EXPECT_EQ(Find<QToolButton>("tskEditTool")->text(), QStringLiteral("Programm bearbeiten"));
    EXPECT_EQ(StateOf(QStringLiteral("Remote Assistance")), QStringLiteral("Nicht startbar"));

    ActionOf("language1033")->trigger();
    Settle();
    EXPECT_EQ(ActionOf("mnuToolOptions")->text(), QStringLiteral("&Options..."));
    EXPECT_EQ(Find<QMenu>("mnuView")->title(), QStringLiteral("&View"));
    EXPECT_EQ(headers(), QStringLiteral("Name Version Last Updated Classification Status"));
}

TEST_F(WindowsTest, ALanguageThatTheOptionsChooseIsShownAtOnce) {
    Open();
    bridge->Host().SetLanguageAnswer(""); // a switch that the host declines changes nothing
    bridge->Do([](arvon::host::ReferenceHost& host) { host.Framework()->SwitchLanguage("1031"); });
    Settle();
    EXPECT_EQ(Find<QMenu>("mnuView")->title(), QStringLiteral("&View"));
    bridge->Do([](arvon::host::ReferenceHost& host) { host.ClickMenu("mnuToolOptions"); });
    Settle();
    QDialog* options = window->Windows().Window(QStringLiteral("ocxToolOptions"));
    ASSERT_NE(options, nullptr);
    auto* language = options->findChild<QComboBox*>(QStringLiteral("cmbLanguage"));
    ASSERT_NE(language, nullptr);
    language->setCurrentIndex(language->findText(QStringLiteral("Deutsch")));
    QTest::mouseClick(options->findChild<QPushButton*>(QStringLiteral("ok")), Qt::LeftButton);
    ASSERT_TRUE(WaitUntil([this] { return !boxes.empty(); }));
    Settle();
    EXPECT_EQ(boxes[0].title, QStringLiteral("Sprache"));
    EXPECT_EQ(Find<QMenu>("mnuView")->title(), QStringLiteral("&Ansicht"));
    EXPECT_EQ(ActionOf("mnuToolOptions")->text(), QStringLiteral("&Optionen..."));
}

TEST_F(WindowsTest, StartsInTheLanguageThatIsAskedFor) {
    Open("1031");
    EXPECT_EQ(ActionOf("mnuToolOptions")->text(), QStringLiteral("&Optionen..."));
}

TEST_F(WindowsTest, RefusesALanguageThatTheSuiteDoesNotHave) {
    HostBridge own(suite);
    try {
        own.Load({ARVON_COMPONENT, {}, "9999"});
        FAIL() << "loaded";
    } catch (const base::ComponentError& failure) {
        EXPECT_EQ(failure.Description(), "no language \"9999\": expected one of 1031, 1033");
    }
}

TEST_F(WindowsTest, RemembersItsArrangementAndItsPage) {
    Open();
    Press(QKeySequence(Qt::Key_F9));
    Press(QKeySequence(Qt::Key_F12));
    List().header()->resizeSection(0, 333);
    window->resize(900, 555);
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Plot Queue")));
    Settle();
    Close();

    Open();
    EXPECT_EQ(window->Nodes().SelectedNode(), QStringLiteral("Plot Queue"));
    EXPECT_EQ(List().header()->sectionSize(0), 333);
    EXPECT_EQ(window->size(), QSize(900, 555));
    EXPECT_FALSE(Find<QWidget>("taskPane")->isVisible());
    EXPECT_TRUE(Find<QDockWidget>("traceDock")->isVisible());
}

TEST_F(WindowsTest, APageThatIsGoneIsForgotten) {
    Open();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Plot Queue")));
    Settle();
    Close();
    QByteArray catalogue = Read("Arvon/Tools.xml");
    QFile file(ToQt(File("Arvon/Tools.xml").string()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(catalogue.replace("Plot Queue", "Plotter"));
    file.close();
    Open();
    EXPECT_EQ(window->Nodes().SelectedNode(), QStringLiteral("nodTools"));
    EXPECT_TRUE(List().isVisible());
}

TEST_F(WindowsTest, ShowsTheHourglassWhileTheComponentAsksForIt) {
    Open();
    const auto framework = bridge->Host().Framework();
    framework->SetMousePointer(arvon::pointer::Hourglass);
    framework->SetMousePointer(arvon::pointer::Hourglass);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    framework->SetMousePointer(arvon::pointer::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(WindowsTest, TellsWhatTheHostRefused) {
    Open();
    bridge->Do([](arvon::host::ReferenceHost& host) { host.ClickMenu("mnuNone"); });
    Settle();
    EXPECT_EQ(StatusText(), QStringLiteral("no menu item \"mnuNone\""));
}

TEST_F(WindowsTest, EditsAProgramAndKeepsItInTheCatalogue) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    QTimer typing;
    QObject::connect(&typing, &QTimer::timeout, [] {
        QWidget* editor = QApplication::activeModalWidget();
        auto* name = editor ? editor->findChild<QLineEdit*>() : nullptr;
        if (!name) return;
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("Layouter"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    typing.start(50);
    Press(QKeySequence(Qt::Key_F2));
    ASSERT_TRUE(WaitUntil([this] { return Read("Arvon/Tools.xml").contains("Name=\"Layouter\""); }));
    typing.stop();
    Settle();
}

TEST_F(WindowsTest, ShowsAMessageWithItsIconAndTitle) {
    Open();
    bridge->Do([](arvon::host::ReferenceHost& host) {
        host.Framework()->ShowMessage("First.\r\n\tSecond.", 16, "A Title");
        host.Framework()->ShowMessage("Only.", 64, "");
        host.Framework()->ShowMessage("", 0, "Nothing");
    });
    ASSERT_TRUE(WaitUntil([this] { return boxes.size() == 3; }));
    EXPECT_EQ(boxes[0].text, QStringLiteral("First.\nSecond."));
    EXPECT_EQ(boxes[0].title, QStringLiteral("A Title"));
    EXPECT_EQ(boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(boxes[1].title, QStringLiteral("Arvon"));
    EXPECT_EQ(boxes[1].icon, QMessageBox::Information);
    EXPECT_EQ(boxes[2].text, QString());
}

} // namespace
} // namespace desktop
