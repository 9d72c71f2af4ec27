// What the component reports to the host, as the user of the desktop sees it.

#include "tests/desktop/DesktopFixture.h"

#include <QAbstractItemModel>
#include <QLabel>
#include <QTreeView>

namespace desktop {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class ReportsTest : public DesktopTest {
protected:
    QLabel& Line() { return *Find<QLabel>("report"); }
    /// A start that fails inside the component, which reports it.
    void FailToStart() {
        bridge->Host().FailNext("Loader.Load");
        OpenRow(QStringLiteral("Beam & Frame"));
    }
    static arvon::host::ParameterRecord Text(const char* name, const char* value) {
        return {name, 2, base::Value(value)};
    }
    void Report(const char* description) {
        const std::vector<arvon::host::ParameterRecord> parameters{Text("ErrorDescription", description)};
        bridge->Host().SendEvent({0, "ErrorMessage", 20, 9}, parameters, "Vn21", "SnapIn");
    }
};

TEST_F(ReportsTest, TellsWhatTheHostFoundWrongWithTheInstallation) {
    QFile registry(QString::fromStdString((suite / "registry.reg").string()));
    ASSERT_TRUE(registry.open(QIODevice::Append));
    registry.write("# mine\r\n");
    registry.close();
    Open();
    EXPECT_THAT(window->statusBar()->currentMessage().toStdString(), HasSubstr("registry.reg"));
}

TEST_F(ReportsTest, StandInTheStatusBarUntilTheNextAction) {
    Open();
    EXPECT_EQ(Line().text(), QString());
    FailToStart();
    EXPECT_EQ(Line().text(), QStringLiteral("Failure: Loader.Load failed"));
    EXPECT_TRUE(Line().isVisible());
    EXPECT_THAT(boxes, IsEmpty());
    QTest::qWait(100);
    EXPECT_EQ(Line().text(), QStringLiteral("Failure: Loader.Load failed"));
    ClickRow(QStringLiteral("Layout"));
    EXPECT_EQ(Line().text(), QStringLiteral("Failure: Loader.Load failed")) << "nothing was done";
    OpenRow(QStringLiteral("Layout"));
    EXPECT_EQ(Line().text(), QString());
    EXPECT_EQ(Line().toolTip(), QString());
}

TEST_F(ReportsTest, AreWholeInTheToolTipAndInTheTrace) {
    Open();
    FailToStart();
    const std::string whole = Line().accessibleDescription().toStdString();
    EXPECT_THAT(whole, HasSubstr("Loader.Load failed\nSource: Arvon110\nNumber: 1001\nProcedure: "));
    EXPECT_THAT(whole, HasSubstr("LaunchTool"));
    EXPECT_THAT(Line().toolTip().toStdString(), HasSubstr("Source: Arvon110<br>Number: 1001<br>"));
    const QAbstractItemModel& trace = *Find<QTreeView>("messages")->model();
    EXPECT_TRUE(WaitUntil([&] {
        return !trace
                    .match(trace.index(0, 0), Qt::DisplayRole, QStringLiteral("ErrorMessage"), 1,
                           Qt::MatchContains | Qt::MatchRecursive)
                    .isEmpty();
    }));
}

TEST_F(ReportsTest, ThatComeInRowsAreCountedAndTheFirstIsShown) {
    Open();
    for (const char* description : {"the first\nof <b>many</b> %2", "second", "third"})
        Report(description);
    EXPECT_EQ(Line().text(), QStringLiteral("Failure: the first of <b>many</b> %2 (3 in all)"));
    EXPECT_THAT(Line().toolTip().toStdString(), HasSubstr("of &lt;b&gt;many&lt;/b&gt;"));
    for (int i = 0; i < 50; ++i)
        Report("another");
    EXPECT_THAT(Line().accessibleDescription().toStdString(), testing::EndsWith("\n\nand 45 more"));
}

TEST_F(ReportsTest, OfAnyLengthMakeTheWindowNoWider) {
    Open();
    const int narrowest = window->minimumSizeHint().width();
    Report(std::string(2000, 'w').c_str());
    Settle();
    EXPECT_TRUE(Line().isVisible());
    EXPECT_EQ(window->minimumSizeHint().width(), narrowest);
}

TEST_F(ReportsTest, AreToldInTheLanguageInForce) {
    Open("1031");
    FailToStart();
    EXPECT_EQ(Line().text(), QStringLiteral("Fehler: Loader.Load failed"));
    EXPECT_THAT(Line().accessibleDescription().toStdString(),
                HasSubstr("\nQuelle: Arvon110\nNummer: 1001\n"));
}

} // namespace
} // namespace desktop
