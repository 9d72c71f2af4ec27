#pragma once

#include "base/Value.h"
#include "desktop/FailureReport.h"
#include "desktop/Permissions.h"
#include "desktop/SystemTexts.h"
#include "desktop/controls/ControlObject.h"
#include "host/ReferenceHost.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <bitset>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

class QSocketNotifier;

namespace desktop {

/// The view that lists the tools.
inline constexpr auto listView = "lvTools";

/// Parts of the host's model that are to be drawn anew.
class Parts {
public:
    static constexpr std::size_t Count = static_cast<std::size_t>(arvon::host::ModelPart::Page) + 1;

    static Parts All() {
        Parts all;
        all.bits_.set();
        return all;
    }
    void Add(arvon::host::ModelPart part) { bits_.set(static_cast<std::size_t>(part)); }
    bool Has(arvon::host::ModelPart part) const { return bits_.test(static_cast<std::size_t>(part)); }
    bool Any() const { return bits_.any(); }

private:
    std::bitset<Count> bits_;
};

/// The reference host on Qt's event loop. What the user does is carried out from the loop, never from inside
/// a widget's own signal, so that whatever the component does in answer may take that widget away. What
/// changed in the host is told once, from the loop, however many single changes there were.
class HostBridge final : public QObject, private arvon::host::IObserver {
    Q_OBJECT

public:
    using Action = std::function<void(arvon::host::ReferenceHost&)>;

    /// Throws ComponentError when the folder is no installation.
    explicit HostBridge(const std::filesystem::path& installation);
    ~HostBridge() override;

    struct Start {
        std::filesystem::path library;
        std::optional<base::Value> profile;
        std::string language; // empty: as set in the installation
    };
    /// Tells what the host found wrong with the installation, loads the launcher, and then the component.
    /// Throws ComponentError when the component cannot be loaded or the language is none of the suite;
    /// trouble with the launcher is told by Problem.
    void Load(const Start& start);

    arvon::host::ReferenceHost& Host() { return *host_; }
    arvon::host::ReferenceHost::ModelView Model() const { return host_->Model(); }
    /// The same as Model, its captions in the language in force.
    const SystemTexts& Shown() const { return systemTexts_; }
    const ControlServices& Services() const { return services_; }
    /// Whose answer controls are given to "why can this tool not be used".
    void SetProblemSource(std::function<QString(const QString& toolName)> problem);
    /// The window that message boxes and dialogs belong to while none is active.
    void SetDialogParent(QWidget* parent) { dialogParent_ = parent; }
    /// A string resource; empty when there is none of that number.
    QString Text(int id) const;
    /// Folders of the installation's languages ("1033").
    QStringList Languages() const;

    /// Carries the action out from the event loop, after those before it: never while another one, or a
    /// request of a control, is under way, be it that a message box of it waits. `what` is told as progress
    /// meanwhile. What it refuses is told by Refused.
    void Do(Action action, const QString& what = {});
    /// What `begin` has carried out, and whatever that has carried out in turn, is no action of the user's.
    void ByItself(const std::function<void()>& begin);
    /// What changed until now is not told any more: everything is about to be drawn.
    void ForgetChanges() {
        dirty_ = {};
        drawTimer_.stop();
    }
    /// Everything is to be drawn anew, from the loop.
    void Redraw() {
        dirty_ = Parts::All();
        drawTimer_.start();
    }
    /// True while an action, or a request of a control, is under way.
    bool IsWorking() const { return working_ > 0; }
    /// Nothing under way, waiting to be carried out or to be drawn.
    bool IsIdle() const { return working_ == 0 && waiting_.empty() && !drawTimer_.isActive(); }

signals:
    void Changed(const desktop::Parts& parts);
    /// An action of the user's is about to be carried out.
    void ActionBegins();
    /// A component reports a failure. Told from inside its work.
    void FailureReported(const desktop::FailureReport& report);
    /// An action that may take a while begins; empty: it is over.
    void Progress(const QString& what);
    void PointerChanged(int pointer);
    void ProcessStarted(const arvon::host::model::Process& process);
    void ProcessEnded(const arvon::host::model::Process& process, const arvon::host::model::ProcessEnd& end);
    /// The host's own trouble, for a person.
    void Problem(const QString& text);
    /// What the user asked for could not be done.
    void Refused(const QString& text);
    /// The component was answered with what the updates component offers, as XML.
    void UpdatesOffered(const std::string& answer);
    /// The component told the controls of new options.
    void OptionsChanged(const std::string& options);

private:
    class Work;
    struct Waiting {
        Action action;
        QString what;
        bool byItself;
    };

    void OnReply(const arvon::host::MessageRecord& message) override;
    void OnPointer(std::int32_t pointer) override;
    void OnProcessStarted(const arvon::host::model::Process& process) override;
    void OnProcessEnded(const arvon::host::model::Process& process,
                        const arvon::host::model::ProcessEnd& end) override;
    void OnProblem(const std::string& text) override;
    void OnChanged(arvon::host::ModelPart part) override;
    bool WantsCalls() const override { return false; }

    QWidget* DialogParent() const;
    void MakeServices();
    arvon::host::Hooks MakeHooks();
    void TakeNextLater();
    void TakeNext();
    void CarryOut(const Action& action, const QString& what);
    void SelectToolOfPage();
    void FollowSelected(const arvon::host::MessageRecord& message);
    void TakeInEndedProcesses();

    SystemTexts systemTexts_{*this};
    ControlServices services_;
    std::function<QString(const QString&)> problem_;
    QPointer<QWidget> dialogParent_;
    int working_ = 0;
    std::deque<Waiting> waiting_;
    bool byItself_ = false;
    std::string selected_; // the node whose selection was the last thing that the component heard of
    Parts dirty_;
    QTimer drawTimer_;
    std::unique_ptr<arvon::host::ReferenceHost> host_;
    std::optional<Permissions> permissions_;
    QSocketNotifier* processes_ = nullptr;
};

} // namespace desktop
