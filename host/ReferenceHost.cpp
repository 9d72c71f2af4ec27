#include "host/ReferenceHost.h"

#include "host/Errors.h"
#include "host/HostFramework.h"
#include "host/Messages.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace arvon::host {

namespace {

std::filesystem::path OpenInstallation(const std::filesystem::path& folder) {
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored)) {
        Raise(base::errors::PathNotFound, "no installation: " + folder.string() + " is no folder");
    }
    if (!std::filesystem::is_directory(folder / "drive_c", ignored)) {
        Raise(base::errors::PathNotFound, "no installation: " + folder.string() + " holds no folder drive_c");
    }
    if (!std::filesystem::is_regular_file(folder / "registry.reg", ignored)) {
        Raise(base::errors::FileNotFound,
              "no installation: " + folder.string() + " holds no file registry.reg");
    }
    std::error_code problem;
    const std::filesystem::path installation = std::filesystem::canonical(folder, problem);
    if (problem) {
        Raise(base::errors::PathNotFound, "no installation: " + folder.string() + ": " + problem.message());
    }
    ::setenv(platform::InstallationVariable, installation.c_str(), 1);
    return installation;
}

[[noreturn]] void NoComponent() {
    Raise(base::errors::ObjectNotSet, "no tool manager was opened");
}

void AddParameters(IParameters& parameters, std::span<const ParameterRecord> values) {
    for (const ParameterRecord& value : values)
        parameters.Add(static_cast<ParameterType>(value.type), value.name, value.value, true);
}

} // namespace

ReferenceHost::ReferenceHost(const std::filesystem::path& installation, Hooks hooks)
    : framework_(std::make_shared<HostFramework>(OpenInstallation(installation), std::move(hooks))) {}

ReferenceHost::~ReferenceHost() {
    framework_->Close();
}

std::shared_ptr<IFramework> ReferenceHost::Framework() const {
    return framework_;
}
ISupport& ReferenceHost::Support() const {
    return framework_->support_;
}
std::filesystem::path ReferenceHost::Installation() const {
    return framework_->installation_;
}

void ReferenceHost::Subscribe(IObserver& observer) {
    framework_->trace_.Subscribe(observer);
}
void ReferenceHost::Unsubscribe(IObserver& observer) {
    framework_->trace_.Unsubscribe(observer);
}

// the component
// -------------------------------------------------------------------------------------------------

void ReferenceHost::OpenComponent(const std::filesystem::path& library) {
    Attach(MakeTool(library, framework_->support_));
}

void ReferenceHost::Attach(std::shared_ptr<ITool> component) {
    framework_->component_ = std::move(component);
}

std::shared_ptr<ITool> ReferenceHost::Component() const {
    return framework_->component_;
}

void ReferenceHost::SetProfileId(base::Value id) {
    framework_->profile_.id = std::move(id);
}

void ReferenceHost::AddProfileTask(std::string_view name, std::string_view secondText) {
    framework_->profile_.tasks->Add(name, secondText);
}

void ReferenceHost::SetKey(base::Value key) {
    framework_->profile_.key = std::move(key);
}

bool ReferenceHost::Load() {
    const std::shared_ptr<ITool> component = framework_->component_;
    if (!component) NoComponent();
    return framework_->LoadTool(*component);
}

void ReferenceHost::Unload() {
    const std::shared_ptr<ITool> component = framework_->component_;
    if (!component) NoComponent();
    component->Unload();
}

// messages
// ------------------------------------------------------------------------------------------------------

std::string ReferenceHost::SendRequest(std::string_view type, std::span<const ParameterRecord> parameters,
                                       std::string_view source, std::string_view destination) {
    Request request;
    request.SetType(type);
    AddParameters(request.Parameters(), parameters);
    return SendMessage(static_cast<std::int32_t>(MessageType::Request), request.Xml(), source, destination);
}

std::string ReferenceHost::SendEvent(const EventHead& head, std::span<const ParameterRecord> parameters,
                                     std::string_view source, std::string_view destination) {
    Event event;
    event.SetObjectType(head.objectType);
    event.SetName(head.name);
    event.SetCategory(head.category);
    event.SetLevel(head.level);
    AddParameters(event.Parameters(), parameters);
    return SendMessage(static_cast<std::int32_t>(MessageType::Event), event.Xml(), source, destination);
}

std::string ReferenceHost::SendMessage(std::int32_t type, std::string_view body, std::string_view source,
                                       std::string_view destination) {
    auto message = std::make_shared<Message>();
    message->SetType(type);
    message->SetSource(source);
    message->SetDestination(destination);
    message->SetBody(body);
    return framework_->router_->Route(message);
}

void ReferenceHost::Listen(std::string_view id, std::string_view reply) {
    if (id == listenerId::Shell) {
        framework_->shell_->SetReply(reply);
        framework_->router_->Register(id, framework_->shell_);
    } else {
        framework_->router_->Register(id, std::make_shared<ScriptedListener>(id, reply));
    }
}

void ReferenceHost::Unlisten(std::string_view id) {
    if (framework_->router_->Unregister(id)) return;
    RaiseNoSuch("listener", id);
}

// how the host behaves
// ------------------------------------------------------------------------------------------

void ReferenceHost::SetLanguageAnswer(std::string_view answer) {
    framework_->resources_.SetNextAnswer(answer);
}
void ReferenceHost::Refuse(std::string_view toolName) {
    framework_->loader_.Refuse(toolName);
}

void ReferenceHost::FailNext(std::string_view operation, std::size_t count, std::size_t after) {
    framework_->trace_.FailNext(operation, count, after);
}

std::span<const std::string_view> ReferenceHost::Operations() {
    return OperationNames();
}

std::string ReferenceHost::ProblemOf(std::string_view toolName) const {
    return framework_->loader_.ProblemOf(toolName);
}

std::vector<std::string> ReferenceHost::Problems() const {
    return {framework_->trace_.Problems().begin(), framework_->trace_.Problems().end()};
}

std::vector<std::string> ReferenceHost::Benchmarks() const {
    return {framework_->support_.Texts().begin(), framework_->support_.Texts().end()};
}

void ReferenceHost::SetWindowHandle(std::int32_t handle) {
    framework_->shell_->SetWindowHandle(handle);
}

// processes
// -----------------------------------------------------------------------------------------------------

int ReferenceHost::PollDescriptor() const {
    return framework_->follower_.PollDescriptor();
}

std::size_t ReferenceHost::ProcessEvents(std::chrono::milliseconds timeout) {
    return framework_->follower_.TakeEnds(timeout);
}

bool ReferenceHost::WaitForProcesses(std::optional<std::chrono::milliseconds> timeout) {
    return framework_->follower_.WaitForAll(timeout);
}

// the model
// -----------------------------------------------------------------------------------------------------

ReferenceHost::ModelView ReferenceHost::Model() const {
    return ModelView(*framework_);
}

std::shared_ptr<base::Object> ReferenceHost::ControlOf(std::string_view viewKey) const {
    const auto view = framework_->views_.Find(viewKey);
    return view ? view->HostedControl() : nullptr;
}

} // namespace arvon::host
