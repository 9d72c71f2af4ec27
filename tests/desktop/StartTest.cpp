#include "tests/desktop/DesktopFixture.h"

#include <QProcess>

namespace desktop {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct ProgramRun {
    int exitCode = -1;
    QString output, errors;
};

ProgramRun RunDesktop(const QStringList& arguments, const QProcessEnvironment& environment) {
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(ARVON_DESKTOP), arguments);
    EXPECT_TRUE(program.waitForFinished(30000));
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

TEST(DesktopProgram, SaysOnOneLineWhyItCannotStart) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    const ProgramRun run = RunDesktop({}, environment);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(
        run.errors,
        QStringLiteral("arvon-desktop: there is no display: DISPLAY and WAYLAND_DISPLAY are not set\n"));
}

TEST(DesktopProgram, SaysOnOneLineThatTheDisplayCannotBeReached) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral("no-such-host:47"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    for (const QStringList& arguments : {QStringList(), QStringList{QStringLiteral("--check-display")}}) {
        const ProgramRun run = RunDesktop(arguments, environment);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.errors.toStdString(), StartsWith("arvon-desktop: there is no display: "));
        EXPECT_THAT(run.errors.toStdString(), HasSubstr("no-such-host:47"));
        EXPECT_EQ(run.errors.count(u'\n'), 1) << run.errors.toStdString();
        EXPECT_EQ(run.output, QString());
    }
}

TEST(DesktopProgram, FindsADisplayThatIsThere) {
    const ProgramRun run =
        RunDesktop({QStringLiteral("--check-display")}, QProcessEnvironment::systemEnvironment());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_FALSE(run.errors.contains(QStringLiteral("display"))) << run.errors.toStdString();
}

TEST(DesktopProgram, RefusesABadCommandLineWithStatusTwo) {
    const std::vector<std::pair<QStringList, std::string>> lines{
        {{QStringLiteral("--no-such-option")}, "no-such-option"},
        {{QStringLiteral("--suite")}, "suite"},
        {{QStringLiteral("stray")}, "expected options only, found \"stray\""},
    };
    for (const auto& [arguments, reason] : lines) {
        const ProgramRun run = RunDesktop(arguments, QProcessEnvironment::systemEnvironment());
        EXPECT_EQ(run.exitCode, 2) << reason;
        EXPECT_THAT(run.errors.toStdString(), HasSubstr("arvon-desktop: "));
        EXPECT_THAT(run.errors.toStdString(), HasSubstr(reason));
        EXPECT_EQ(run.output, QString());
    }
}

TEST(DesktopProgram, PrintsItsHelp) {
    const ProgramRun run = RunDesktop({QStringLiteral("--help")}, QProcessEnvironment::systemEnvironment());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output.toStdString(), HasSubstr("--check-display"));
}

TEST(DesktopProgram, PrintsWhenItWasPaintedFirst) {
    QTemporaryDir folder;
    const ProgramRun run = RunDesktop({QStringLiteral("--measure"), QStringLiteral("--layout"),
                                       folder.filePath(QStringLiteral("layout.ini"))},
                                      QProcessEnvironment::systemEnvironment());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^first paint: \\d+ ms\n$")).match(run.output).hasMatch())
        << run.output.toStdString();
}

TEST(DesktopProgram, ShowsABoxForABrokenSuiteAndEndsWithStatusTwo) {
    QProcess program;
    program.start(QStringLiteral(ARVON_DESKTOP),
                  {QStringLiteral("--suite"), QStringLiteral("/no/such/suite")});
    ASSERT_TRUE(program.waitForStarted());
    QByteArray errors;
    for (int i = 0; i < 100 && !errors.contains('\n'); ++i) {
        program.waitForReadyRead(100);
        errors += program.readAllStandardError();
    }
    EXPECT_THAT(errors.toStdString(), HasSubstr("/no/such/suite"));
    EXPECT_EQ(program.state(), QProcess::Running) << "the message waits for its reader";
    program.kill();
    program.waitForFinished();
}

} // namespace
} // namespace desktop
