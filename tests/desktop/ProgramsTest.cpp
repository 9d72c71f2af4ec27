#include "tests/desktop/DesktopFixture.h"

#include "desktop/QtText.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QRegularExpression>

namespace desktop {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class ProgramsTest : public DesktopTest {
protected:
    QStringList MenuCaptions() {
        QStringList captions;
        for (const QAction* action : window->findChild<QMenu*>(QStringLiteral("mnuTool"))->actions())
            captions.append(action->text());
        return captions;
    }
    bool HasButton(const QString& key) {
        return window->findChild<QToolBar*>(QStringLiteral("toolBar"))->findChild<QAction*>(key) != nullptr;
    }
    void MakeBroken(const std::string& file) {
        QFile broken(ToQt(File(file).string()));
        ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
        broken.write("this is no library");
    }
    /// Before the window opens.
    void SetProgram(const QString& name, const QString& path, const QString& arguments) {
        QFile file(ToQt(File("Arvon/Tools.xml").string()));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QString catalogue = QString::fromUtf8(file.readAll());
        file.close();
        const qsizetype begin = catalogue.indexOf(QStringLiteral("Name=\"%1\"").arg(name));
        const qsizetype end = catalogue.indexOf(u'>', begin);
        ASSERT_GE(begin, 0);
        QString tag = catalogue.mid(begin, end - begin);
        tag.replace(QRegularExpression(QStringLiteral(" Path=\"[^\"]*\"")),
                    QStringLiteral(" Path=\"%1\"").arg(path));
        tag.replace(QRegularExpression(QStringLiteral(" CommandLine=\"[^\"]*\"")),
                    QStringLiteral(" CommandLine=\"%1\"").arg(arguments));
        catalogue.replace(begin, end - begin, tag);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(catalogue.toUtf8());
    }
    void ExpectOnlyRunning(const QString& running) {
        for (const QString& name :
             {QStringLiteral("Layout"), QStringLiteral("Plot Queue"), QStringLiteral("Grid Check")})
            EXPECT_EQ(StateOf(name).startsWith(QStringLiteral("Running")), name == running)
                << name.toStdString();
    }
    void Start(const QString& name) {
        OpenRow(name);
        ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
        EXPECT_EQ(StatusText(), name + QStringLiteral(" started"));
        ExpectOnlyRunning(name);
        ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Processes().empty(); }));
        Settle();
        EXPECT_EQ(StatusText(), name + QStringLiteral(" ended"));
        ExpectOnlyRunning(QString());
    }
    const QString layoutPath = QStringLiteral("C:\\QUARRA\\Tobr43\\Tobr43.exe");
};

TEST_F(ProgramsTest, AnOutsideProgramIsMarkedWhileItRuns) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    List().setFocus();
    Press(QKeySequence(Qt::Key_Return));
    ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
    EXPECT_TRUE(StateOf(QStringLiteral("Layout")).startsWith(QStringLiteral("Running 0:0")));
    EXPECT_TRUE(RowOf(QStringLiteral("Layout")).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(RowOf(QStringLiteral("Layout"), 4).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_TRUE(NodeOf(QStringLiteral("Layout")).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(StatusText(), QStringLiteral("Layout started"));
    EXPECT_EQ(StateOf(QStringLiteral("Plot Queue")), QString());

    ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Processes().empty(); }));
    Settle();
    EXPECT_EQ(StateOf(QStringLiteral("Layout")), QString());
    EXPECT_FALSE(RowOf(QStringLiteral("Layout")).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(StatusText(), QStringLiteral("Layout ended"));
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(ProgramsTest, OfProgramsThatShareTheirFileTheOneThatRunsIsMarked) {
    for (const char* name : {"Layout", "Plot Queue", "Grid Check"})
        SetProgram(QLatin1String(name), layoutPath, QString());
    Open();
    for (const char* name : {"Plot Queue", "Layout", "Grid Check"})
        Start(QLatin1String(name));
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(ProgramsTest, BlanksAroundTheArgumentsDoNotMarkAnother) {
    SetProgram(QStringLiteral("Layout"), layoutPath, QStringLiteral("--seconds 1"));
    SetProgram(QStringLiteral("Plot Queue"), layoutPath, QStringLiteral("  --seconds 1 "));
    SetProgram(QStringLiteral("Grid Check"), layoutPath, QStringLiteral("   "));
    Open();
    for (const char* name : {"Plot Queue", "Layout", "Grid Check"})
        Start(QLatin1String(name));
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(ProgramsTest, AProgramThatIsRenamedWhileItRunsStaysMarked) {
    Open();
    OpenRow(QStringLiteral("Plot Queue"));
    ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
    const auto record = bridge->Host().Framework()->Tools().Item("Plot Queue");
    record->Set("Name", base::Value("Spooler"));
    record->Set("CommandLine", base::Value("--seconds 9"));
    Settle();
    ExpectOnlyRunning(QStringLiteral("Plot Queue")); // the row is the component's, and as it was
    ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Processes().empty(); }));
    Settle();
    EXPECT_EQ(StatusText(), QStringLiteral("Spooler ended"));
    ExpectOnlyRunning(QString());
}

TEST_F(ProgramsTest, TheLauncherKnowsWhatRunsInTheDesktop) {
    Open();
    const auto running = [this] {
        return bridge->Host().SendRequest("RunningTools", {}, "Console", "Zarn11");
    };
    EXPECT_EQ(running(), "");
    OpenRow(QStringLiteral("Layout"));
    ASSERT_THAT(bridge->Model().Processes(), SizeIs(1));
    EXPECT_EQ(running(), "Layout\tTobr43\t" + std::to_string(bridge->Model().Processes()[0].id));
    OpenRow(QStringLiteral("Beam & Frame"));
    EXPECT_THAT(running(), testing::EndsWith("\nBeam & Frame\tVn21\t0"));
    ASSERT_TRUE(WaitUntil([this] { return bridge->Model().Processes().empty(); }));
    Settle();
    EXPECT_EQ(running(), "Beam & Frame\tVn21\t0");
    Press(QKeySequence(Qt::CTRL | Qt::Key_W));
    EXPECT_EQ(running(), "");
}

TEST_F(ProgramsTest, TheLauncherIsNoProgramThatIsOpenInTheWindow) {
    Open();
    EXPECT_THAT(bridge->Model().Loaded(), SizeIs(1));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Arvon"));
    QAction* unload = nullptr;
    for (QAction* action : window->findChild<QMenu*>(QStringLiteral("mnuView"))->actions())
        if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_W)) unload = action;
    ASSERT_NE(unload, nullptr);
    EXPECT_FALSE(unload->isEnabled());
    OpenRow(QStringLiteral("Unit Converter"));
    OpenRow(QStringLiteral("Beam & Frame"));
    EXPECT_THAT(boxes, IsEmpty()) << "one Vantor may be open";
    EXPECT_TRUE(unload->isEnabled());
    Press(QKeySequence(Qt::CTRL | Qt::Key_W));
    EXPECT_EQ(StateOf(QStringLiteral("Beam & Frame")), QString()) << "the Vantor goes first";
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Unit Converter – Arvon"));
    Press(QKeySequence(Qt::CTRL | Qt::Key_W));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Arvon"));
    EXPECT_FALSE(unload->isEnabled());
    EXPECT_THAT(bridge->Model().Loaded(), SizeIs(1));
}

TEST_F(ProgramsTest, ALauncherThatCannotBeLoadedIsToldInTheStatusBar) {
    MakeBroken("Arvon/Bin/Zarn11.dll");
    Open();
    EXPECT_TRUE(StatusText().startsWith(QStringLiteral("tool \"Zarn11\" was not loaded")))
        << StatusText().toStdString();
    EXPECT_THAT(boxes, IsEmpty());
    OpenRow(QStringLiteral("Layout"));
    EXPECT_THAT(bridge->Model().Processes(), SizeIs(1));
}

TEST_F(ProgramsTest, TheTimeOfARunningProgramGoesOn) {
    Open();
    OpenRow(QStringLiteral("Plot Queue")); // runs for three seconds
    const QString first = StateOf(QStringLiteral("Plot Queue"));
    EXPECT_TRUE(WaitUntil([&] { return StateOf(QStringLiteral("Plot Queue")) != first; }));
    EXPECT_EQ(StateOf(QStringLiteral("Plot Queue")), QStringLiteral("Running 0:01"));
}

TEST_F(ProgramsTest, AProgramThatRunsAlreadyIsNotStartedAgain) {
    Open();
    OpenRow(QStringLiteral("Plot Queue"));
    OpenRow(QStringLiteral("Plot Queue"));
    ASSERT_TRUE(WaitUntil([this] { return !boxes.empty(); }));
    Settle();
    EXPECT_EQ(boxes[0].title, QStringLiteral("Already Open"));
    EXPECT_EQ(boxes[0].icon, QMessageBox::Information);
    EXPECT_THAT(bridge->Model().Processes(), SizeIs(1));
}

TEST_F(ProgramsTest, AToolbarButtonStartsItsProgram) {
    Open();
    auto* button = window->findChild<QToolBar*>(QStringLiteral("toolBar"))
                       ->findChild<QAction*>(QStringLiteral("btnGRD55"));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(window->findChild<QToolBar*>(QStringLiteral("toolBar"))->widgetForAction(button),
                      Qt::LeftButton);
    Settle();
    EXPECT_TRUE(StateOf(QStringLiteral("Grid Check")).startsWith(QStringLiteral("Running")));
}

TEST_F(ProgramsTest, ASecondVantorIsRefusedUntilTheFirstIsUnloaded) {
    Open();
    OpenRow(QStringLiteral("Beam & Frame"));
    EXPECT_TRUE(StateOf(QStringLiteral("Beam & Frame")).startsWith(QStringLiteral("Open 0:0")));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Beam & Frame – Arvon"));

    OpenRow(QStringLiteral("Wärmebedarf"));
    ASSERT_TRUE(WaitUntil([this] { return !boxes.empty(); }));
    Settle();
    EXPECT_EQ(boxes[0].text, QStringLiteral("A Vantor is already open, and only one can be open at a time.\n"
                                            "Unload the current Vantor before starting a new one."));
    EXPECT_EQ(boxes[0].icon, QMessageBox::NoIcon);
    EXPECT_FALSE(boxes[0].title.isEmpty());

    Press(QKeySequence(Qt::CTRL | Qt::Key_W));
    EXPECT_EQ(StateOf(QStringLiteral("Beam & Frame")), QString());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Arvon"));
    OpenRow(QStringLiteral("Wärmebedarf"));
    EXPECT_TRUE(StateOf(QStringLiteral("Wärmebedarf")).startsWith(QStringLiteral("Open")));
    EXPECT_THAT(boxes, SizeIs(1));
}

TEST_F(ProgramsTest, MenuItemsOfProgramsAreDisabledWhileAVantorIsOpen) {
    Open();
    EXPECT_TRUE(ActionOf("mnuLAY43")->isEnabled());
    OpenRow(QStringLiteral("Beam & Frame"));
    EXPECT_FALSE(ActionOf("mnuLAY43")->isEnabled());
    Press(QKeySequence(Qt::CTRL | Qt::Key_W));
    EXPECT_TRUE(ActionOf("mnuLAY43")->isEnabled());
}

TEST_F(ProgramsTest, AProgramWhoseLibraryIsBrokenSaysSo) {
    MakeBroken("Vn21/Vn21.dll");
    Open();
    OpenRow(QStringLiteral("Beam & Frame"));
    ASSERT_TRUE(WaitUntil([this] { return !boxes.empty(); }));
    Settle();
    EXPECT_TRUE(boxes[0].text.startsWith(QStringLiteral("The program could not be loaded.")));
    EXPECT_EQ(StateOf(QStringLiteral("Beam & Frame")), QStringLiteral("Cannot start"));
    EXPECT_TRUE(RowOf(QStringLiteral("Beam & Frame"))
                    .data(Qt::ToolTipRole)
                    .toString()
                    .startsWith(QStringLiteral("The program could not be loaded: ")));
}

TEST_F(ProgramsTest, AProgramThatEndsBadlySaysSo) {
    QFile catalogue(ToQt(File("Arvon/Tools.xml").string()));
    ASSERT_TRUE(catalogue.open(QIODevice::ReadOnly));
    QByteArray text = catalogue.readAll();
    catalogue.close();
    text.replace("--seconds 3 &quot;Ground floor.qdr&quot;", "--seconds 0 --exit-code 7");
    ASSERT_TRUE(catalogue.open(QIODevice::WriteOnly));
    catalogue.write(text);
    catalogue.close();
    Open();
    OpenRow(QStringLiteral("Plot Queue"));
    EXPECT_TRUE(WaitUntil([this] {
        return StatusText() == QStringLiteral("Plot Queue ended with exit code 7");
    })) << StatusText().toStdString();
}

TEST_F(ProgramsTest, RemovingAsksFirstAndThenTakesTheProgramEverywhereAway) {
    Open();
    ASSERT_TRUE(HasButton(QStringLiteral("btnLDT10")));
    ClickRow(QStringLiteral("Load Tables"));
    confirms = false;
    Press(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    ASSERT_TRUE(WaitUntil([this] { return boxes.size() == 1; }));
    Settle();
    EXPECT_TRUE(boxes[0].text.startsWith(QStringLiteral("Remove \"Load Tables\" from this computer?")));
    EXPECT_TRUE(Names().contains(QStringLiteral("Load Tables")));

    confirms = true;
    Press(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    ASSERT_TRUE(WaitUntil([this] { return boxes.size() == 2; }));
    ASSERT_TRUE(WaitUntil([this] { return !Names().contains(QStringLiteral("Load Tables")); }));
    Settle();
    EXPECT_THAT(boxes, SizeIs(2));
    EXPECT_FALSE(MenuCaptions().contains(QStringLiteral("&Load Tables")));
    EXPECT_FALSE(HasButton(QStringLiteral("btnLDT10")));
    EXPECT_FALSE(std::filesystem::exists(File("Jx310/Jx310.exe")));
    EXPECT_FALSE(Read("Arvon/Tools.xml").contains("Jx310"));
    EXPECT_FALSE(Find<QToolButton>("tskRemoveTool")->isEnabled());
}

TEST_F(ProgramsTest, AMessageWaitsWhileProgramsEndBehindIt) {
    Open();
    OpenRow(QStringLiteral("Layout")); // two seconds
    bool endedBehind = false;
    beforeAnswer = [&](QWidget&) {
        endedBehind = WaitUntil([this] { return StateOf(QStringLiteral("Layout")).isEmpty(); });
        QTest::qWait(50);
        EXPECT_FALSE(window->close()) << "the window may not go while a message waits";
    };
    OpenRow(QStringLiteral("Layout"));
    ASSERT_TRUE(WaitUntil([this] { return !boxes.empty(); }));
    Settle();
    EXPECT_TRUE(endedBehind);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(Find<QProgressBar>("progress")->isVisible());
}

TEST_F(ProgramsTest, ANodeShowsPropertiesAndStartsItsProgramByReturn) {
    Open();
    Tree().setFocus();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Site Survey")));
    Settle();
    auto* content = Find<QStackedWidget>("content");
    EXPECT_EQ(content->currentWidget()->accessibleName(), QStringLiteral("Properties of the program"));
    EXPECT_EQ(content->currentWidget()->findChild<QLabel*>(QStringLiteral("title"))->text(),
              QStringLiteral("Site Survey"));
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Layout")));
    Settle();
    EXPECT_EQ(content->currentWidget()->findChild<QLabel*>(QStringLiteral("title"))->text(),
              QStringLiteral("Layout"));
    Press(QKeySequence(Qt::Key_Return));
    EXPECT_TRUE(StateOf(QStringLiteral("Layout")).startsWith(QStringLiteral("Running")));
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Tools")));
    Settle();
    EXPECT_TRUE(List().isVisible());
}

TEST_F(ProgramsTest, AMenuItemOfAProgramOpensItsPage) {
    Open();
    ActionOf("mnuBMF21")->trigger();
    Settle();
    EXPECT_EQ(window->Nodes().SelectedNode(), QStringLiteral("Beam & Frame"));
    EXPECT_EQ(Tree().currentIndex().data().toString(), QStringLiteral("Beam & Frame"));
    EXPECT_FALSE(List().isVisible());
}

} // namespace
} // namespace desktop
