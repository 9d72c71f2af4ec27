// The desktop: from the start of the program to the first painted list, and filtering a long list while
// typing.

#include "bench/Ratios.h"
#include "desktop/HostBridge.h"
#include "desktop/MainWindow.h"
#include "desktop/ToolListPage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTreeView>
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace {

namespace fs = std::filesystem;

constexpr int manyTools = 10000;
constexpr int patience = 60000; // milliseconds

/// A copy of the sample suite; `tools` other than 0: with a catalogue of so many tools.
struct SuiteCopy {
    explicit SuiteCopy(int tools) : installation(fs::path(folder.path().toStdString()) / "suite") {
        fs::copy(SAMPLE_SUITE, installation, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
        if (tools == 0) return;
        std::ofstream catalogue(installation / "drive_c/QUARRA/Arvon/Tools.xml");
        catalogue << "<Tools>\n";
        for (int i = 0; i < tools; ++i) {
            catalogue << "<Tool Name=\"Program " << i << "\" VREX=\"Tobr" << i << "\" Identifier=\"T" << i
                      << "\" Classification=\"Class " << i % 7 << "\" version=\"1." << i
                      << "\" LastUpdated=\"2024-01-01\" Path=\"C:\\QUARRA\\Tobr43\\Tobr43.exe\"/>\n";
        }
        catalogue << "</Tools>\n";
    }

    QTemporaryDir folder;
    fs::path installation;
    QString layoutFile = folder.filePath(QStringLiteral("layout.ini"));
};

/// The program as a user starts it, until it says that the list is painted.
void StartToFirstPaint(benchmark::State& state) {
    const SuiteCopy suite(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QProcess program;
        QElapsedTimer clock;
        clock.start();
        program.start(QStringLiteral(ARVON_DESKTOP), {QStringLiteral("--measure"), QStringLiteral("--suite"),
                                                      QString::fromStdString(suite.installation.string()),
                                                      QStringLiteral("--layout"), suite.layoutFile});
        QByteArray output;
        while (!output.contains('\n') && program.waitForReadyRead(patience))
            output += program.readAllStandardOutput();
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) / 1e9);
        program.waitForFinished(patience);
        if (!output.startsWith("first paint: ")) return state.SkipWithError("nothing was painted");
    }
}
BENCHMARK(StartToFirstPaint)->Arg(0)->Arg(manyTools)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The window over a long list.
struct OpenWindow {
    OpenWindow() : bridge(suite.installation), window(bridge, suite.layoutFile) {
        bridge.Load({COMPONENT_LIBRARY, {}, {}});
        window.Begin();
        window.show();
        do {
            QApplication::processEvents();
        } while (!bridge.IsIdle());
    }
    SuiteCopy suite{manyTools};
    desktop::HostBridge bridge;
    desktop::MainWindow window;
};

constexpr const char* typedTexts[] = {"9", "999", "program"};

/// A keystroke in the filter, until the list is painted.
void FilterKeystroke(benchmark::State& state) {
    OpenWindow open;
    QLineEdit& filter = open.window.Programs().Filter();
    const QString typed = QLatin1String(typedTexts[state.range(0)]);
    for (auto _ : state) {
        filter.setText(QStringLiteral("none"));
        QApplication::processEvents();
        QElapsedTimer clock;
        clock.start();
        filter.setText(typed);
        open.window.Programs().List().viewport()->repaint();
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) / 1e9);
    }
    if (open.window.Programs().List().model()->rowCount() == 0) state.SkipWithError("nothing is listed");
}
BENCHMARK(FilterKeystroke)->DenseRange(0, 2)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    int ownCount = 1; // the options are Google Benchmark's
    const QApplication application(ownCount, argv);
    using namespace bench;
    return RunAndCompare(
        argc, argv,
        {Milliseconds("start of the program to the first painted list, sample suite", "StartToFirstPaint/0"),
         Milliseconds("start of the program to the first painted list, 10,000 tools",
                      "StartToFirstPaint/10000"),
         Milliseconds("filter \"9\" over 10,000 rows, to the painted list", "FilterKeystroke/0", 16),
         Milliseconds("filter \"999\" over 10,000 rows, to the painted list", "FilterKeystroke/1", 16),
         Milliseconds("filter \"program\" over 10,000 rows (all match), to the painted list",
                      "FilterKeystroke/2", 16)});
}
