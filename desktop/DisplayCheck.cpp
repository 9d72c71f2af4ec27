#include "desktop/DisplayCheck.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace desktop {

namespace {

constexpr int cannotStart = 2;

QStringList& Waiting() {
    static QStringList texts;
    return texts;
}

QString Reason(const QString& fatal) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return QStringLiteral("DISPLAY and WAYLAND_DISPLAY are not set");
    const QString first = Waiting().isEmpty() ? fatal : Waiting().first();
    return first.section(u'\n', 0, 0).trimmed();
}

void TakeMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtFatalMsg) {
        Waiting().append(text);
        return;
    }
    const QString line = QStringLiteral("arvon-desktop: there is no display: %1\n").arg(Reason(text));
    std::fputs(line.toUtf8().constData(), stderr);
    std::_Exit(cannotStart); // the toolkit would abort
}

} // namespace

DisplayCheck::DisplayCheck() {
    qInstallMessageHandler(TakeMessage);
}

DisplayCheck::~DisplayCheck() {
    qInstallMessageHandler(nullptr);
    for (const QString& text : Waiting())
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    Waiting().clear();
}

} // namespace desktop
