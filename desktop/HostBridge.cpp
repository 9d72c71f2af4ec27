#include "desktop/HostBridge.h"

#include "base/ComponentError.h"
#include "core/contract/EventShapes.h"
#include "core/contract/Framework.h"
#include "desktop/MessageBox.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlKinds.h"
#include "desktop/editor/RecordEditor.h"
#include "platform/FilePaths.h"

#include <QApplication>
#include <QDir>
#include <QScopedValueRollback>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace desktop {

using arvon::host::ModelPart;

namespace {

/// Keeps the list of running tools; it must listen before the first one is started.
constexpr std::string_view launcherComponent = "Zarn11";

constexpr std::string_view propertiesView = "ocxToolProperties";
constexpr std::string_view errorReport = "ErrorMessage";

/// Requests of controls that the user makes; the others only ask what to show.
constexpr std::array<std::string_view, 4> usersRequests{"LaunchTool", "SaveToolProperties",
                                                        "CancelToolProperties", "UpdateOptions"};
/// Requests that name no tool and are about the component's own.
constexpr std::array<std::string_view, 2> requestsOfPage{"Initialize", "CancelToolProperties"};

bool IsAmong(std::string_view type, std::span<const std::string_view> types) {
    return std::ranges::find(types, type) != types.end();
}

/// Empty when there is none of that name.
std::string TextOf(const arvon::host::MessageRecord& message, std::string_view parameter) {
    const auto found = std::ranges::find(message.parameters, parameter, &arvon::host::ParameterRecord::name);
    return found == message.parameters.end() ? std::string() : found->value.ToText();
}

const arvon::host::model::Node* FindNode(const std::vector<arvon::host::model::Node>& nodes,
                                         const std::string& key) {
    for (const arvon::host::model::Node& node : nodes) {
        if (node.key == key) return &node;
        if (const arvon::host::model::Node* below = FindNode(node.nodes, key)) return below;
    }
    return nullptr;
}

} // namespace

/// While it lives, something is under way.
class HostBridge::Work {
public:
    explicit Work(HostBridge& bridge) : bridge_(bridge) { ++bridge_.working_; }
    ~Work() {
        if (--bridge_.working_ == 0 && !bridge_.waiting_.empty()) bridge_.TakeNextLater();
    }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

private:
    HostBridge& bridge_;
};

HostBridge::HostBridge(const std::filesystem::path& installation) {
    drawTimer_.setSingleShot(true);
    drawTimer_.setInterval(0);
    connect(&drawTimer_, &QTimer::timeout, this, [this] {
        const Parts changed = std::exchange(dirty_, {});
        if (permissions_ && changed.Has(ModelPart::Tools)) permissions_->Grant();
        emit Changed(changed);
    });
    MakeServices();
    host_ = std::make_unique<arvon::host::ReferenceHost>(installation, MakeHooks());
    host_->Subscribe(*this);
    processes_ = new QSocketNotifier(host_->PollDescriptor(), QSocketNotifier::Read, this);
    connect(processes_, &QSocketNotifier::activated, this, &HostBridge::TakeInEndedProcesses);
}

HostBridge::~HostBridge() {
    processes_->setEnabled(false);
    if (host_->Component()) {
        try {
            host_->Unload();
        } catch (const base::ComponentError& failure) {
            qWarning("the tool manager could not be unloaded: %s", failure.what());
        }
    }
    host_->Unsubscribe(*this);
}

void HostBridge::Load(const Start& start) {
    const Work work(*this);
    for (const std::string& problem : host_->Problems()) // of opening the installation
        OnProblem(problem);
    if (!start.language.empty() && host_->Framework()->SwitchLanguage(start.language).empty()) {
        throw base::ComponentError(base::errors::InvalidCall, "arvon-desktop",
                                   "no language \"" + start.language + "\": expected one of " +
                                       Languages().join(QStringLiteral(", ")).toStdString());
    }
    host_->Framework()->Loader().Load(launcherComponent, nullptr); // the host tells what is wrong with it
    systemTexts_.Remember();
    host_->OpenComponent(start.library);
    if (start.profile) host_->SetProfileId(*start.profile);
    permissions_.emplace(*host_).Grant();
    if (!host_->Load()) {
        throw base::ComponentError(base::errors::InvalidCall, "arvon-desktop",
                                   "the tool manager declined to load");
    }
}

QWidget* HostBridge::DialogParent() const {
    QWidget* active = QApplication::activeWindow();
    return active ? active : dialogParent_.data();
}

void HostBridge::MakeServices() {
    services_.request = [this](std::string_view type,
                               std::span<const arvon::host::ParameterRecord> parameters,
                               std::string_view source) {
        const Work work(*this);
        if (IsAmong(type, usersRequests)) emit ActionBegins();
        if (IsAmong(type, requestsOfPage)) SelectToolOfPage();
        return host_->SendRequest(type, parameters, source);
    };
    services_.requestOf = [this](std::string_view destination, std::string_view type,
                                 std::span<const arvon::host::ParameterRecord> parameters,
                                 std::string_view source) {
        const Work work(*this);
        return host_->SendRequest(type, parameters, source, destination);
    };
    services_.text = [this](int id) { return Text(id); };
    services_.problem = [this](const QString& toolName) { return problem_ ? problem_(toolName) : QString(); };
    services_.choices = [this](const QString& optionName) {
        return optionName == QLatin1String("cmbLanguage") ? Languages() : QStringList();
    };
    services_.onNewOptions = [this](QObject* who, const std::function<void(const std::string&)>& told) {
        host_->Listen(controlSource, {});
        connect(this, &HostBridge::OptionsChanged, who, told);
    };
}

arvon::host::Hooks HostBridge::MakeHooks() {
    arvon::host::Hooks hooks;
    hooks.makeControl = [this](std::string_view control, std::string_view) -> std::shared_ptr<base::Object> {
        return MakeControl(control, services_);
    };
    hooks.showMessage = [this](const std::string& text, std::int32_t style, const std::string& title) {
        emit Progress({});
        ShowMessageBox(DialogParent(), ToQt(text), style, ToQt(title));
    };
    hooks.editRecord = [this](arvon::IToolRecord& record) {
        const std::string ownName = record.Name();
        return EditRecord(record, DialogParent(), [this, ownName](const std::string& name) {
            return name != ownName && host_->Framework()->Tools().Item(name) != nullptr;
        });
    };
    return hooks;
}

void HostBridge::SetProblemSource(std::function<QString(const QString& toolName)> problem) {
    problem_ = std::move(problem);
}

QString HostBridge::Text(int id) const {
    try {
        return ToQt(host_->Framework()->GetResource("Tools", std::to_string(id)).ToText());
    } catch (const base::ComponentError&) {
        return {};
    }
}

QStringList HostBridge::Languages() const {
    try {
        const auto paths = platform::FilePaths::CreateFor(host_->Installation());
        const std::string folder = host_->Framework()->AppPath() + "\\resources";
        return QDir(ToQt(paths->ToSystem(folder).string()))
            .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    } catch (const base::ComponentError&) {
        return {};
    }
}

void HostBridge::Do(Action action, const QString& what) {
    waiting_.push_back({std::move(action), what, byItself_});
    TakeNextLater();
}

void HostBridge::TakeNextLater() {
    QTimer::singleShot(0, this, &HostBridge::TakeNext);
}

void HostBridge::TakeNext() {
    if (working_ > 0 || waiting_.empty()) return; // what is under way asks for the next when it ends
    const Waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    const QScopedValueRollback inherited(byItself_, next.byItself);
    if (!next.byItself) emit ActionBegins();
    CarryOut(next.action, next.what);
}

void HostBridge::ByItself(const std::function<void()>& begin) {
    const QScopedValueRollback inherited(byItself_, true);
    begin();
}

void HostBridge::CarryOut(const Action& action, const QString& what) {
    if (!what.isEmpty()) emit Progress(what);
    try {
        const Work work(*this);
        action(*host_);
    } catch (const base::ComponentError& failure) {
        emit Refused(ToQt(failure.Description()));
    } catch (const std::exception& failure) {
        emit Refused(ToQt(failure.what()));
    }
    if (!what.isEmpty()) emit Progress({});
}

void HostBridge::TakeInEndedProcesses() {
    const Work work(*this);
    host_->ProcessEvents();
}

// The component's own tool is the one selected or launched last, wherever that was: a page that asks about it
// means the one of the selected node.
void HostBridge::SelectToolOfPage() {
    const std::string inFront = host_->Model().CurrentControl();
    for (const arvon::host::model::Tab& tab : host_->Model().Tabs()) {
        if (tab.key != inFront || !tab.visible || !tab.enabled || tab.selected.empty()) continue;
        const arvon::host::model::Node* node = FindNode(tab.nodes, tab.selected);
        if (node && node->view == propertiesView && node->key != selected_)
            host_->NodeEvent(tab.key, node->key, arvon::eventKind::Selected);
    }
}

void HostBridge::FollowSelected(const arvon::host::MessageRecord& message) {
    if (message.destination != arvon::host::listenerId::Component || message.source == controlSource) return;
    const bool selects = message.kind == arvon::host::MessageRecord::Kind::Event &&
                         message.objectType == static_cast<std::int32_t>(arvon::EventObject::Node) &&
                         message.category == arvon::eventKind::Selected;
    selected_ = selects ? TextOf(message, arvon::eventParameter::Key) : std::string();
}

void HostBridge::OnReply(const arvon::host::MessageRecord& message) {
    FollowSelected(message);
    if (message.kind == arvon::host::MessageRecord::Kind::Event && message.name == errorReport &&
        message.destination == arvon::host::listenerId::Shell)
        emit FailureReported({ToQt(TextOf(message, "ErrorDescription")), ToQt(TextOf(message, "ErrorSource")),
                              ToQt(TextOf(message, "ErrorNumber")), ToQt(TextOf(message, "ProcName"))});
    if (message.name == "ShowUpdates" && message.source == arvon::host::listenerId::Component &&
        message.registered)
        emit UpdatesOffered(message.reply);
    if (message.name == "NewOptions" && message.destination == controlSource)
        for (const arvon::host::ParameterRecord& parameter : message.parameters)
            if (parameter.name == "Options") emit OptionsChanged(parameter.value.ToText());
}

void HostBridge::OnPointer(std::int32_t pointer) {
    emit PointerChanged(pointer);
}

void HostBridge::OnProcessStarted(const arvon::host::model::Process& process) {
    OnChanged(ModelPart::Processes);
    emit ProcessStarted(process);
}

void HostBridge::OnProcessEnded(const arvon::host::model::Process& process,
                                const arvon::host::model::ProcessEnd& end) {
    OnChanged(ModelPart::Processes);
    emit ProcessEnded(process, end);
}

void HostBridge::OnProblem(const std::string& text) {
    emit Problem(ToQt(text));
}

void HostBridge::OnChanged(ModelPart part) {
    dirty_.Add(part);
    if (!drawTimer_.isActive()) drawTimer_.start();
}

} // namespace desktop
