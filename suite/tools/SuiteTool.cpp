#include "suite/tools/SuiteTool.h"

#include "base/XmlDocument.h"

namespace suite {
namespace {

constexpr std::string_view ToolManager = "KvTM10";
constexpr std::string_view Shell = "SnapIn";

} // namespace

bool SuiteTool::Load(const std::shared_ptr<arvon::IFramework>& framework) {
    if (loaded_) return true;
    if (!framework)
        throw base::ComponentError(base::errors::ObjectNotSet, listenerId_, "no framework was given to Load");
    framework_ = framework;
    try {
        framework_->RegisterListener(shared_from_this(), listenerId_);
        OnLoad();
    } catch (...) {
        framework_.reset();
        throw;
    }
    loaded_ = true;
    return true;
}

void SuiteTool::Unload() {
    if (!loaded_) return;
    loaded_ = false;
    tasks_.reset();
    framework_.reset();
}

std::string SuiteTool::ReceiveMessage(const std::shared_ptr<arvon::IMessage>& message) {
    if (!framework_ || !message) return {};
    try {
        switch (static_cast<arvon::MessageType>(message->Type())) {
        case arvon::MessageType::Event: {
            const std::shared_ptr<arvon::IEvent> event = Host().NewEvent();
            event->SetXml(message->Body().ToText());
            OnEvent(*event);
            return {};
        }
        case arvon::MessageType::Request: {
            const std::shared_ptr<arvon::IRequest> request = Host().NewRequest();
            request->SetXml(message->Body().ToText());
            return OnRequest(*request);
        }
        }
    } catch (const base::ComponentError& error) {
        Report(error, "ReceiveMessage");
    } catch (const std::exception& error) {
        Report({base::errors::InvalidCall, listenerId_, error.what()}, "ReceiveMessage");
    }
    return {};
}

std::string SuiteTool::Ask(std::string_view listener, std::string_view request,
                           TextParameters parameters) const {
    const std::shared_ptr<arvon::IRequest> question = Host().NewRequest();
    question->SetType(request);
    for (const auto& [name, value] : parameters)
        question->Parameters().Add(arvon::ParameterType::Text, name, value, true);
    return Deliver(listener, arvon::MessageType::Request, question->Xml());
}

std::string SuiteTool::Option(std::string_view toolId, std::string_view name, std::string_view fallback) {
    const std::string value = Ask(
        ToolManager, "GetOptionValue",
        {{"OptionName", name}, {"ToolID", toolId}, {"AddSubscriber", "-1"}, {"SubscriberID", listenerId_}});
    return value.empty() || value == "False" ? std::string(fallback) : value;
}

void SuiteTool::Report(const base::ComponentError& error, std::string_view procedure) const noexcept {
    if (!framework_) return;
    try {
        const std::shared_ptr<arvon::IEvent> event = Host().NewEvent();
        event->SetName("ErrorMessage");
        event->SetCategory(20);
        event->SetLevel(9);
        arvon::IParameters& parameters = event->Parameters();
        parameters.Add(arvon::ParameterType::Text, "ErrorDescription", error.Description(), true);
        parameters.Add(arvon::ParameterType::Text, "ErrorSource", error.Source(), true);
        parameters.Add(arvon::ParameterType::Integer, "ErrorNumber", error.Number(), true);
        parameters.Add(arvon::ParameterType::Text, "ProcName", listenerId_ + "." + std::string(procedure),
                       true);
        Deliver(Shell, arvon::MessageType::Event, event->Xml());
    } catch (...) {
        // nobody is left who could be told
    }
}

std::string SuiteTool::Text(arvon::IParameters& parameters, std::string_view name) {
    const std::shared_ptr<arvon::IParameter> parameter = parameters.Item(name);
    return parameter ? parameter->GetValue().ToText() : std::string();
}

double SuiteTool::Number(arvon::IParameters& parameters, std::string_view name) {
    const std::shared_ptr<arvon::IParameter> parameter = parameters.Item(name);
    if (!parameter) {
        throw base::ComponentError(base::errors::InvalidCall, "SuiteTool",
                                   "the parameter \"" + std::string(name) + "\" is missing");
    }
    return parameter->GetValue().ToDouble();
}

std::string SuiteTool::Deliver(std::string_view listener, arvon::MessageType type,
                               const std::string& body) const {
    const std::shared_ptr<arvon::IRouter> router = Host().Router();
    if (!router->IsRegistered(listener)) return {};
    const std::shared_ptr<arvon::IMessage> message = Host().NewMessage();
    message->SetType(static_cast<std::int32_t>(type));
    message->SetSource(listenerId_);
    message->SetDestination(listener);
    message->SetBody(body);
    return router->Send(message);
}

std::optional<std::string> OptionIn(std::string_view optionsXml, std::string_view toolId,
                                    std::string_view name) {
    base::XmlDocument document;
    document.LoadText(optionsXml);
    for (const base::XmlNode& tool : document.Select("//Tool")) {
        if (tool.Attribute("ID") != toolId) continue;
        for (const base::XmlNode& option : tool.Select("Option")) {
            const base::XmlNode optionName = option.SelectSingle("Name");
            if (!optionName || optionName.Text() != name) continue;
            const base::XmlNode value = option.SelectSingle("Value");
            return value ? std::optional(value.Text()) : std::nullopt;
        }
    }
    return {};
}

} // namespace suite
