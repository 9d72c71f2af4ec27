#include "base/ComponentError.h"
#include "console/Start.h"
#include "console/TemporarySuite.h"
#include "desktop/ContrastStyle.h"
#include "desktop/DisplayCheck.h"
#include "desktop/HostBridge.h"
#include "desktop/MainWindow.h"
#include "desktop/MessageBox.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"
#include "desktop/ToolListPage.h"
#include "desktop/trace/TraceDock.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QEvent>
#include <QStandardPaths>
#include <QTreeView>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>

namespace {

using namespace desktop;
namespace fs = std::filesystem;

enum ExitStatus { Ended = 0, CannotStart = 2 };

/// Whoever typed it reads standard error: no message box.
class BadCommandLine final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Arguments {
    std::optional<fs::path> suite;
    HostBridge::Start start;
    QString layoutFile;
    bool measure = false;
    bool checkDisplay = false;
};

Arguments ReadArguments(const QStringList& words) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "The programs of an engineering suite in one window.\n\nExit status: 0, or 2 when the command line "
        "or the installation cannot be used."));
    parser.addHelpOption();
    const QCommandLineOption suite(
        QStringLiteral("suite"),
        QStringLiteral(
            "The installation to work on, changed in place. Without it, a fresh copy of the sample "
            "suite, removed at the end."),
        QStringLiteral("DIR"));
    const QCommandLineOption profile(QStringLiteral("profile"), QStringLiteral("The user's profile ID."),
                                     QStringLiteral("ID"));
    const QCommandLineOption language(
        QStringLiteral("language"),
        QStringLiteral("Language of the texts, by the name of its folder (1033)."), QStringLiteral("ID"));
    const QCommandLineOption layout(
        QStringLiteral("layout"),
        QStringLiteral("File in which the arrangement of the window is kept, in place of the user's own."),
        QStringLiteral("FILE"));
    const QCommandLineOption measure(
        QStringLiteral("measure"),
        QStringLiteral("Print the time from start to the first painted list, and end."));
    const QCommandLineOption checkDisplay(
        QStringLiteral("check-display"),
        QStringLiteral("Only find out whether there is a display to draw on, and end."));
    parser.addOptions({suite, profile, language, layout, measure, checkDisplay});
    if (!parser.parse(words)) throw BadCommandLine(FromQt(parser.errorText()));
    parser.process(words); // prints the help and ends where that is asked for
    if (!parser.positionalArguments().isEmpty())
        throw BadCommandLine("expected options only, found \"" +
                             FromQt(parser.positionalArguments().first()) + "\"");
    Arguments read;
    if (parser.isSet(suite)) read.suite = FromQt(parser.value(suite));
    if (parser.isSet(profile))
        read.start.profile = arvon::console::ReadProfileId(FromQt(parser.value(profile)));
    read.start.language = FromQt(parser.value(language));
    read.start.library = arvon::console::FolderOfProgram() / "KvTM10.so";
    read.layoutFile = parser.isSet(layout)
                          ? parser.value(layout)
                          : QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                QLatin1String("/arvon/desktop.ini");
    read.measure = parser.isSet(measure);
    read.checkDisplay = parser.isSet(checkDisplay);
    return read;
}

/// Prints when the watched widget is painted for the first time, and ends the program.
class FirstPaint final : public QObject {
public:
    FirstPaint(QWidget& watched, const QElapsedTimer& since) : since_(since) {
        watched.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !told_) {
            told_ = true;
            QTimer::singleShot(0, this, [this] { // after it is painted
                std::printf("first paint: %lld ms\n", static_cast<long long>(since_.elapsed()));
                QApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const QElapsedTimer& since_;
    bool told_ = false;
};

int Run(const Arguments& arguments, const std::optional<arvon::console::TemporarySuite>& copy,
        const QElapsedTimer& sinceStart) {
    HostBridge bridge(arguments.suite ? *arguments.suite : copy->Folder());
    MainWindow window(bridge, arguments.layoutFile);
    window.AddTrace(new TraceDock(bridge.Host(), &window));
    bridge.Load(arguments.start);
    window.Begin();
    std::optional<FirstPaint> firstPaint;
    if (arguments.measure) firstPaint.emplace(*window.Programs().List().viewport(), sinceStart);
    window.show();
    return QApplication::exec();
}

void TellRefusal(const QString& reason) {
    std::fprintf(stderr, "arvon-desktop: %s\n", reason.toUtf8().constData());
}

/// Ends the process where there is no display to draw on.
void StartToolkit(std::optional<QApplication>& application, int& count, char** words) {
    const DisplayCheck check;
    application.emplace(count, words);
}

} // namespace

int main(int count, char** words) {
    QElapsedTimer sinceStart;
    sinceStart.start();
    std::optional<QApplication> application;
    StartToolkit(application, count, words);
    QApplication::setStyle(new ContrastStyle); // the application owns it
    QApplication::setApplicationName(QStringLiteral("arvon-desktop"));
    QApplication::setApplicationDisplayName(text::Of(text::window::Title));
    try {
        const Arguments arguments = ReadArguments(QApplication::arguments());
        if (arguments.checkDisplay) return Ended;
        std::optional<arvon::console::TemporarySuite> copy;
        if (!arguments.suite) copy.emplace(arvon::console::SampleSuite());
        return Run(arguments, copy, sinceStart);
    } catch (const BadCommandLine& failure) {
        TellRefusal(ToQt(failure.what()));
        return CannotStart;
    } catch (const std::exception& failure) {
        TellRefusal(ToQt(failure.what()));
        ShowMessageBox(nullptr, ToQt(failure.what()), 16, {});
        return CannotStart;
    }
}
