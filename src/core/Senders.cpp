#include "core/Names.h"
#include "core/ToolMain.h"

namespace kvtm {

using arvon::MessageType;

// The three senders differ on purpose: these two leave destinations that nobody registered alone;
// SendRequestToOwner does not ask, and keeps its router.

std::string ToolMain::SendRequestMessage(const RequestRef& oRequest, std::string_view sDest) {
    return Guarded("SendRequestMessage", std::string(), [&] {
        RequireObject(m_oFramework, "SendRequestMessage", "there is no framework before Load");
        if (!m_oFramework->Router()->IsRegistered(sDest)) return std::string();
        RequireObject(oRequest, "SendRequestMessage", "there is no request");
        return m_oFramework->Router()->Send(NewEnvelope(MessageType::Request, sDest, oRequest->Xml()));
    });
}

std::string ToolMain::SendEventMessage(const EventRef& oEvent, std::string_view sDest) {
    return Guarded("SendEventMessage", std::string(), [&] {
        if (!m_oFramework->Router()->IsRegistered(sDest)) return std::string();
        return m_oFramework->Router()->Send(NewEnvelope(MessageType::Event, sDest, oEvent->Xml()));
    });
}

std::string ToolMain::SendRequestToOwner(const RequestRef& oRequest, std::string_view sDest) {
    return Guarded("SendRequestToOwner", std::string(), [&] {
        if (!m_oRouter) m_oRouter = m_oFramework->Router();
        if (!oRequest) return std::string();
        return SendBodyToOwner(oRequest->Xml(), sDest);
    });
}

std::string ToolMain::SendBodyToOwner(base::Value body, std::string_view sDest) {
    if (!m_oRouter) m_oRouter = m_oFramework->Router();
    return m_oRouter->Send(NewEnvelope(MessageType::Request, sDest, std::move(body)));
}

std::int32_t ToolMain::GetWindowHandle() {
    const RequestRef request = NewRequest(request::GetWindowHandle);
    request->SetMode(3);
    const std::string reply =
        m_oFramework->Router()->Send(NewEnvelope(MessageType::Request, listener::Shell, request->Xml()));
    return base::Value(reply).ToInteger();
}

void ToolMain::RefreshZarnMenus() {
    const RequestRef request = NewRequest(request::RefreshZarnMenus);
    request->SetMode(2);
    SendRequestMessage(request, listener::Shell);
}

MessageRef ToolMain::NewEnvelope(MessageType type, std::string_view sDest, base::Value body) {
    const MessageRef message = m_oFramework->NewMessage();
    message->SetSource(Self);
    message->SetDestination(sDest);
    message->SetType(static_cast<std::int32_t>(type));
    message->SetBody(std::move(body));
    return message;
}

RequestRef ToolMain::NewRequest(std::string_view type) {
    const RequestRef request = m_oFramework->NewRequest();
    request->SetType(type);
    return request;
}

EventRef ToolMain::NewEvent(std::string_view name, std::int32_t category, std::int32_t level) {
    const EventRef event = m_oFramework->NewEvent();
    event->SetName(name);
    event->SetCategory(category);
    event->SetLevel(level);
    return event;
}

} // namespace kvtm
