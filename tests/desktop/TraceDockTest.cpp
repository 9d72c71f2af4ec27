#include "tests/desktop/DesktopFixture.h"

#include "desktop/QtText.h"
#include "desktop/trace/TraceDock.h"
#include "desktop/trace/TraceModel.h"

#include <QProcess>
#include <QTextDocument>

#include <fstream>

namespace desktop {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class TraceDockTest : public DesktopTest {
protected:
    std::string Script() { return FromQt(static_cast<TraceDock*>(Find<QDockWidget>("traceDock"))->Script()); }
    /// Runs a script on a fresh copy of the suite; the catalogue afterwards.
    std::string CatalogueAfter(const std::string& script) {
        const fs::path below(folder.path().toStdString());
        const fs::path copy = below / "second";
        fs::copy(ARVON_SUITE, copy, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
        const fs::path file = below / "script.arvon";
        std::ofstream(file) << script;
        QProcess console;
        console.start(QStringLiteral(ARVON_CONSOLE), {QStringLiteral("--quiet"), QStringLiteral("--suite"),
                                                      ToQt(copy.string()), ToQt(file.string())});
        EXPECT_TRUE(console.waitForFinished(30000));
        EXPECT_EQ(console.exitCode(), 0) << script << console.readAllStandardOutput().toStdString();
        std::ifstream catalogue(copy / "drive_c/QUARRA/Arvon/Tools.xml");
        return {std::istreambuf_iterator<char>(catalogue), std::istreambuf_iterator<char>()};
    }
};

TEST_F(TraceDockTest, ACopiedTaskIsAboutTheSameProgramInTheConsole) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    ClickRow(QStringLiteral("Load Tables"));
    Press(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    ASSERT_TRUE(WaitUntil([this] { return !Names().contains(QStringLiteral("Load Tables")); }));
    Settle();
    const std::string script = Script();
    EXPECT_THAT(script, HasSubstr("\nitem 'Load Tables' 5\ntask tskRemoveTool\n"));
    const std::string catalogue = CatalogueAfter(script);
    EXPECT_THAT(catalogue, HasSubstr("Tobr43"));
    EXPECT_THAT(catalogue, Not(HasSubstr("Jx310"))) << script;
    EXPECT_EQ(catalogue, Read("Arvon/Tools.xml").toStdString());
}

TEST_F(TraceDockTest, ATaskThatIsAboutNoProgramStandsWithoutOne) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    window->Tasks().Click(QStringLiteral("tskShowAll"));
    Settle();
    EXPECT_THAT(Script(), HasSubstr("task tskShowAll\n"));
    EXPECT_THAT(Script(), Not(HasSubstr("\nitem ")));
}

TEST_F(TraceDockTest, AToolTipReadsLikeItsCell) {
    Open();
    const std::vector<arvon::host::ParameterRecord> parameters{{"key", 2, base::Value("R&D")}};
    bridge->Host().SendRequest("LoadedVantors", parameters);
    ASSERT_THAT(Script(), HasSubstr("LoadedVantors")); // takes in what waits
    const QAbstractItemModel& messages = *Find<QTreeView>("messages")->model();
    const QModelIndex cell = messages.index(messages.rowCount() - 1, TraceModel::Parameters);
    ASSERT_EQ(cell.data().toString(), QStringLiteral("key=\"R&D\""));
    const QString tip = cell.data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(Qt::mightBeRichText(tip)) << "its escapes would be shown: " << tip.toStdString();
    QTextDocument document;
    document.setHtml(tip);
    EXPECT_EQ(document.toPlainText(), cell.data().toString());
}

} // namespace
} // namespace desktop
