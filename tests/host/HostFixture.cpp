#include "tests/host/HostFixture.h"

#include "tests/support/WrittenValue.h"

namespace arvon::host::test {

namespace {

using kvtm::test::WrittenValue;

template <class Items, class Write> std::string Joined(const Items& items, Write write) {
    std::string text;
    for (const auto& item : items)
        text += (text.empty() ? "" : ", ") + write(item);
    return "(" + text + ")";
}

} // namespace

std::string Written(const MessageRecord& message) {
    std::string text = message.source + ">" + message.destination;
    if (message.kind == MessageRecord::Kind::Custom)
        return text + " custom " + std::to_string(message.type) + " " + message.body;
    const bool isRequest = message.kind == MessageRecord::Kind::Request;
    text += isRequest ? " request " : " event " + std::to_string(message.objectType) + " ";
    text += message.name;
    if (!isRequest) text += " " + std::to_string(message.category) + "/" + std::to_string(message.level);
    text += Joined(message.parameters, [](const ParameterRecord& parameter) {
        return parameter.name + "=" + parameter.value.ToText();
    });
    if (isRequest) text += " mode " + std::to_string(message.mode);
    return message.malformed ? text + " malformed" : text;
}

void Recorder::OnCall(const CallRecord& call) {
    calls.push_back(call.operation +
                    Joined(call.arguments, [](const base::Value& value) { return WrittenValue(value); }) +
                    (call.failed ? " failed" : ""));
}

void Recorder::OnMessage(const MessageRecord& message) {
    messages.push_back(test::Written(message));
    records.push_back(message);
}

void Recorder::OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) {
    boxes.push_back(text + "/" + std::to_string(style) + "/" + title);
}

void Recorder::OnProcessStarted(const model::Process& process) {
    processes.push_back("started " + process.commandLine);
}

void Recorder::OnProcessEnded(const model::Process& process, const model::ProcessEnd& end) {
    processes.push_back("ended " + std::to_string(end.exitCode) + " " + process.commandLine);
}

void HostTest::Open(Hooks hooks) {
    Close();
    host_ = std::make_unique<ReferenceHost>(installation.Folder(), std::move(hooks));
    host_->Subscribe(recorder);
}

void HostTest::OpenWith(const std::vector<CatalogueTool>& tools, Hooks hooks) {
    installation.WriteTools(tools);
    Open(std::move(hooks));
}

void HostTest::Close() {
    host_.reset();
}

ReferenceHost& HostTest::Host() {
    if (!host_) Open();
    return *host_;
}

std::shared_ptr<TestListener> HostTest::Listen(std::string id, TestListener::Answer answer) {
    auto listener = std::make_shared<TestListener>(id, std::move(answer));
    Framework().RegisterListener(listener, id);
    return listener;
}

std::shared_ptr<IMessage> HostTest::NewMessage(std::string_view destination, std::int32_t type,
                                               std::string_view body) {
    auto message = Framework().NewMessage();
    message->SetType(type);
    message->SetSource("Test");
    message->SetDestination(destination);
    message->SetBody(body);
    return message;
}

} // namespace arvon::host::test
