#include "tests/support/ComponentFixture.h"

#include "core/Names.h"
#include "core/contract/EventShapes.h"
#include "tests/support/WrittenValue.h"

#include <algorithm>

namespace kvtm::test {

using arvon::host::CallRecord;
using arvon::host::MessageRecord;
using arvon::host::ParameterRecord;

namespace {

std::vector<ParameterRecord>
TextParameters(const std::initializer_list<std::pair<std::string_view, std::string_view>>& parameters) {
    std::vector<ParameterRecord> records;
    for (const auto& [name, value] : parameters)
        records.push_back({std::string(name), 2, base::Value(value)});
    return records;
}

template <class Items, class Write> std::string Joined(const Items& items, Write write) {
    std::string text;
    for (const auto& item : items)
        text += (text.empty() ? "" : ", ") + write(item);
    return "(" + text + ")";
}

std::string KindOf(const MessageRecord& message) {
    if (message.kind == MessageRecord::Kind::Custom) return "custom " + std::to_string(message.type);
    if (message.kind == MessageRecord::Kind::Request) return "request " + std::to_string(message.mode);
    const std::string raisedBy =
        message.objectType == 0 ? "" : " object " + std::to_string(message.objectType);
    return "event " + std::to_string(message.category) + "/" + std::to_string(message.level) + raisedBy;
}

/// The whole message but its source.
std::string Written(const MessageRecord& message) {
    return message.destination + ":" + message.name + "{" + KindOf(message) + "}" +
           Joined(message.parameters,
                  [](const ParameterRecord& parameter) {
                      return parameter.name + ":" + std::to_string(parameter.type) + "=" +
                             WrittenValue(parameter.value);
                  }) +
           (message.malformed ? " malformed " + message.body : "");
}

} // namespace

ComponentTest::~ComponentTest() {
    if (host) host->Unsubscribe(*this);
}

void ComponentTest::TearDown() {
    for (const Report& report : reports_) {
        ADD_FAILURE() << "unclaimed error report of " << report.procedure << ": " << report.description
                      << " (" << report.number << ", " << report.source << ")";
    }
    for (const Box& box : boxes_)
        ADD_FAILURE() << "unclaimed message box: " << box.text;
}

void ComponentTest::LoadWith(const std::vector<CatalogueTool>& tools, arvon::host::Hooks hooks) {
    installation.WriteTools(tools);
    CreateHost(std::move(hooks));
    CreateTool();
    ASSERT_TRUE(Load());
    ForgetCalls();
}

void ComponentTest::CreateHost(arvon::host::Hooks hooks) {
    host = std::make_unique<arvon::host::ReferenceHost>(installation.Folder(), std::move(hooks));
    host->Subscribe(*this);
}

void ComponentTest::CreateTool(platform::Services services) {
    tool = ToolMain::Create(host->Support(), std::move(services));
    host->Attach(tool);
}

std::string ComponentTest::Request(std::string_view type, Parameters parameters) {
    return host->SendRequest(type, TextParameters(parameters));
}

void ComponentTest::Event(arvon::EventObject raisedBy, std::string_view name, Parameters parameters,
                          std::int32_t category) {
    host->SendEvent({static_cast<std::int32_t>(raisedBy), std::string(name), category, 0},
                    TextParameters(parameters));
}

void ComponentTest::ProcessEnded(std::string_view application, std::int32_t id) {
    const ParameterRecord parameters[] = {{"sApplicationNameAndPath", 2, base::Value(application)},
                                          {"lProcessID", 3, base::Value(id)}};
    host->SendEvent({0, "ShellProcessComplete", 0, 0}, parameters, listener::Shell);
}

std::vector<std::string> ComponentTest::RowTexts() const {
    std::vector<std::string> texts;
    for (const auto& row : host->Model().List("lvTools"))
        texts.push_back(row.text);
    return texts;
}

std::vector<std::string> ComponentTest::ListedNames() const {
    std::vector<std::string> names;
    for (const ToolRecord& record : Probe().ListedTools())
        names.push_back(record->Name());
    return names;
}

std::vector<std::string> ComponentTest::CallsOf(std::string_view operation) const {
    const std::string start = std::string(operation) + "(";
    std::vector<std::string> found;
    for (const auto* made : {&calls_, &reads_})
        std::copy_if(made->begin(), made->end(), std::back_inserter(found),
                     [&](const std::string& call) { return call.compare(0, start.size(), start) == 0; });
    return found;
}

void ComponentTest::ForgetCalls() {
    calls_.clear();
    reads_.clear();
    sent_.clear();
}

ComponentTest::Report ComponentTest::ClaimReport(std::string_view procedure) {
    if (reports_.empty()) {
        ADD_FAILURE() << "no error report of " << procedure;
        return {};
    }
    Report report = reports_.front();
    reports_.erase(reports_.begin());
    EXPECT_EQ(report.procedure, Probe().Name() + "." + std::string(procedure));
    return report;
}

ComponentTest::Box ComponentTest::ClaimBox() {
    if (boxes_.empty()) {
        ADD_FAILURE() << "no message box";
        return {};
    }
    Box box = boxes_.front();
    boxes_.erase(boxes_.begin());
    return box;
}

void ComponentTest::OnCall(const CallRecord& call) {
    (call.isRead ? reads_ : calls_).push_back(call.operation + Joined(call.arguments, [](const auto& value) {
                                                  return WrittenValue(value);
                                              }));
}

void ComponentTest::OnMessage(const MessageRecord& message) {
    if (message.source != Self) return;
    if (message.name == event::ErrorMessage) {
        ReportSent(message);
    } else {
        sent_.push_back(Written(message));
    }
}

void ComponentTest::ReportSent(const MessageRecord& message) {
    const auto parameter = [&](std::string_view name) {
        const auto found = std::find_if(message.parameters.begin(), message.parameters.end(),
                                        [&](const ParameterRecord& p) { return p.name == name; });
        return found == message.parameters.end() ? base::Value() : found->value;
    };
    const Report& report = reports_.emplace_back(
        Report{parameter("ErrorDescription").ToText(), parameter("ErrorSource").ToText(),
               parameter("ProcName").ToText(), parameter("ErrorNumber").ToInteger()});
    EXPECT_EQ(Written(message), "SnapIn:ErrorMessage{event 20/9}(ErrorDescription:2=\"" + report.description +
                                    "\", ErrorSource:2=\"" + report.source +
                                    "\", ErrorNumber:3=" + std::to_string(report.number) + ", ProcName:2=\"" +
                                    report.procedure + "\")");
}

void ComponentTest::OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) {
    boxes_.push_back({text, style, title});
}

} // namespace kvtm::test
