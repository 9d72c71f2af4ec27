#include "desktop/ToolStates.h"

#include "core/contract/Tools.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"
#include "platform/FilePaths.h"

#include <QFileInfo>

#include <algorithm>

namespace desktop {

using arvon::host::ModelPart;

namespace {

/// Kind of the framework's own components, and of what has no record.
constexpr int componentKind = 0;
/// As many characters of a tool's identifier as its picture is found by.
constexpr qsizetype pictureLength = 3;

} // namespace

ToolStates::ToolStates(HostBridge& bridge)
    : bridge_(bridge), paths_(platform::FilePaths::CreateFor(bridge.Host().Installation())) {}

ToolStates::~ToolStates() = default;

void ToolStates::Refresh(const Parts& parts) {
    if (parts.Has(ModelPart::Tools)) ReadTools();
    if (parts.Has(ModelPart::Tools) || parts.Has(ModelPart::Loaded)) ReadLoaded();
    if (parts.Has(ModelPart::Tools) || parts.Has(ModelPart::Loaded) || parts.Has(ModelPart::Processes))
        ForgetFiles();
}

void ToolStates::ReadTools() {
    tools_.clear();
    vrexByName_.clear();
    for (const arvon::host::model::Tool& tool : bridge_.Model().Tools()) {
        const QString vrex = ToQt(tool.vrex);
        const Tool read{ToQt(tool.name), ToQt(tool.identifier).left(pictureLength), ToQt(tool.path),
                        tool.kind};
        vrexByName_.insert(read.name, vrex);
        tools_.insert(vrex, read);
    }
}

void ToolStates::ReadLoaded() {
    QHash<QString, QDateTime> loaded;
    open_.clear();
    for (const arvon::host::model::LoadedTool& tool : bridge_.Model().Loaded()) {
        const QString vrex = ToQt(tool.key);
        if (KindOf(vrex) == componentKind) continue;
        open_.append(vrex);
        const auto before = loaded_.constFind(vrex);
        loaded.insert(vrex, before == loaded_.constEnd() ? QDateTime::currentDateTime() : *before);
    }
    loaded_.swap(loaded);
}

QStringList ToolStates::OpenPrograms() const {
    QStringList names;
    for (const QString& vrex : open_)
        names.append(tools_.value(vrex).name);
    return names;
}

QString ToolStates::ProgramToUnload() const {
    for (const QString& vrex : open_)
        if (KindOf(vrex) == arvon::VantorKind) return tools_.value(vrex).name;
    return open_.isEmpty() ? QString() : tools_.value(open_.last()).name;
}

void ToolStates::ProcessStarted(const arvon::host::model::Process& process) {
    processes_.insert(process.id, {process.id, QDateTime::currentDateTime(), ToQt(process.vrex)});
}

void ToolStates::ProcessEnded(const arvon::host::model::Process& process) {
    processes_.remove(process.id);
}

QString ToolStates::NameOfProgram(const arvon::host::model::Process& process) const {
    const auto tool = tools_.constFind(ToQt(process.vrex));
    if (!process.vrex.empty() && tool != tools_.constEnd()) return tool->name;
    if (!process.name.empty()) return ToQt(process.name);
    return ToQt(process.commandLine).section(u'\\', -1).section(u' ', 0, 0);
}

ToolState ToolStates::Of(const QString& vrex) const {
    ToolState state;
    const auto tool = tools_.constFind(vrex);
    if (tool != tools_.constEnd()) {
        auto problem = problems_.constFind(vrex);
        if (problem == problems_.constEnd()) problem = problems_.insert(vrex, FindProblem(*tool));
        state.problem = *problem;
    }
    if (!state.problem.isEmpty()) state.kind = ToolState::Kind::Problem;
    if (const auto loaded = loaded_.constFind(vrex); loaded != loaded_.constEnd()) {
        state.kind = ToolState::Kind::Loaded;
        state.since = *loaded;
    }
    for (const Process& process : processes_) {
        if (process.vrex.isEmpty() || process.vrex != vrex) continue;
        state.kind = ToolState::Kind::Running;
        state.since = process.since;
        state.process = process.id;
    }
    return state;
}

QString ToolStates::ProblemOf(const QString& toolName) const {
    const auto vrex = vrexByName_.constFind(toolName);
    return vrex == vrexByName_.constEnd() ? QString() : Of(*vrex).problem;
}

QString ToolStates::PictureOf(const QString& vrex) const {
    const auto tool = tools_.constFind(vrex);
    return tool == tools_.constEnd() ? QString() : tool->picture;
}

QString ToolStates::FindProblem(const Tool& tool) const {
    if (tool.path.isEmpty()) return text::Of(text::state::NoPath);
    if (!paths_->Exists(FromQt(tool.path))) return text::Of(text::state::NoFile).arg(tool.path);
    const std::string refused = bridge_.Host().ProblemOf(FromQt(tool.name));
    return refused.empty() ? QString() : text::Of(text::state::NotLoaded).arg(ToQt(refused));
}

QString ElapsedText(const QDateTime& since, const QDateTime& now) {
    const qint64 seconds = std::max<qint64>(0, since.secsTo(now));
    const QString rest = QStringLiteral("%1:%2");
    const auto twoDigits = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0')); };
    const qint64 minutes = seconds / 60;
    if (minutes < 60) return rest.arg(QString::number(minutes), twoDigits(seconds % 60));
    return QStringLiteral("%1:%2:%3")
        .arg(QString::number(minutes / 60), twoDigits(minutes % 60), twoDigits(seconds % 60));
}

} // namespace desktop
