#pragma once

#include "desktop/HostBridge.h"

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>

namespace platform {
class FilePaths;
}

namespace desktop {

/// What is the matter with a tool at this moment.
struct ToolState {
    enum class Kind { Ready, Running, Loaded, Problem };

    Kind kind = Kind::Ready;
    QDateTime since;    // Running, Loaded
    qint64 process = 0; // Running
    QString problem;    // a sentence; empty when there is none
};

/// Which tools run, which are loaded, and which cannot be used, from the host's model and from the files on
/// disk. Knows nothing before the first Refresh. Files are looked for when first asked about.
class ToolStates {
public:
    explicit ToolStates(HostBridge& bridge);
    ~ToolStates();

    /// Takes in what changed in the model.
    void Refresh(const Parts& parts);
    void ProcessStarted(const arvon::host::model::Process& process);
    void ProcessEnded(const arvon::host::model::Process& process);
    /// Files are looked for anew: the user may have mended what was missing.
    void ForgetFiles() { problems_.clear(); }

    /// By VREX.
    ToolState Of(const QString& vrex) const;
    /// By name; empty when the tool can be used or is none.
    QString ProblemOf(const QString& toolName) const;
    QString VrexOf(const QString& toolName) const { return vrexByName_.value(toolName); }
    /// Names of the programs that are open in the window, in the order of their loading. Components of the
    /// framework are none.
    QStringList OpenPrograms() const;
    /// Of these, the one that is to be closed first: the Vantor, else the last one. Empty when there is none.
    QString ProgramToUnload() const;
    /// The name by which the host finds the tool's picture; empty for an unknown tool.
    QString PictureOf(const QString& vrex) const;
    /// Name of the tool that a process belongs to, as it is by now; the command line's program when it is
    /// nobody's.
    QString NameOfProgram(const arvon::host::model::Process& process) const;
    bool AnythingRuns() const { return !processes_.isEmpty() || !loaded_.isEmpty(); }

private:
    struct Tool {
        QString name, picture, path;
        int kind = 0;
    };
    struct Process {
        qint64 id = 0;
        QDateTime since;
        QString vrex; // empty for a program of no tool
    };

    void ReadTools();
    void ReadLoaded();
    int KindOf(const QString& vrex) const { return tools_.value(vrex).kind; }
    QString FindProblem(const Tool& tool) const;

    HostBridge& bridge_;
    std::unique_ptr<platform::FilePaths> paths_;
    QHash<QString, Tool> tools_; // by VREX
    QHash<QString, QString> vrexByName_;
    QHash<qint64, Process> processes_;
    QHash<QString, QDateTime> loaded_;         // by VREX; no components
    QStringList open_;                         // by VREX, in the order of loading
    mutable QHash<QString, QString> problems_; // by VREX; looked up once
};

/// "0:07", "12:30", "1:02:03".
QString ElapsedText(const QDateTime& since, const QDateTime& now);

} // namespace desktop
