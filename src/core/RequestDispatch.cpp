#include "core/Names.h"
#include "core/ToolMain.h"

#include <algorithm>
#include <exception>
#include <iterator>

namespace kvtm {

using arvon::MessageType;

std::string ToolMain::IMessageListener_ReceiveMessage(const MessageRef& message) {
    return Guarded("IMessageListener_ReceiveMessage", std::string(), [&] {
        RequireObject(message, "IMessageListener_ReceiveMessage", "there is no message");
        RequireObject(m_oFramework, "IMessageListener_ReceiveMessage", "there is no framework before Load");
        switch (static_cast<MessageType>(message->Type())) {
        case MessageType::Event: {
            const EventRef event = m_oFramework->NewEvent();
            event->SetXml(message->Body().ToText());
            HandleEvent(event);
            return std::string();
        }
        case MessageType::Request: {
            const RequestRef request = m_oFramework->NewRequest();
            request->SetXml(message->Body().ToText());
            return HandleRequest(request);
        }
        }
        return std::string(); // a custom message
    });
}

std::string ToolMain::HandleRequest(const RequestRef& request) {
    struct Row {
        std::string_view name;
        void (ToolMain::*answer)(const RequestRef& request, std::string& reply);
    };
    static constexpr Row rows[] = {
        {request::GetResourceModule, &ToolMain::Answer_GetResourceModule},
        {request::GetToolProperties, &ToolMain::Answer_GetToolProperties},
        {request::SaveToolProperties, &ToolMain::Answer_SaveToolProperties},
        {request::CancelToolProperties, &ToolMain::Answer_CancelToolProperties},
        {request::LaunchTool, &ToolMain::Answer_LaunchTool},
        {request::Initialize, &ToolMain::Answer_Initialize},
        {request::UnloadTool, &ToolMain::Answer_UnloadTool},
        {request::UnloadUpdateView, &ToolMain::Answer_UnloadUpdateView},
        {request::InitializeOptions, &ToolMain::Answer_InitializeOptions},
        {request::GetOptionData, &ToolMain::Answer_GetOptionData},
        {request::UpdateOptions, &ToolMain::Answer_UpdateOptions},
        {request::UnloadOptionsTool, &ToolMain::Answer_UnloadOptionsTool},
        {request::EnumPrinters, &ToolMain::Answer_EnumPrinters},
        {request::LoadedVantors, &ToolMain::Answer_LoadedVantors},
        {request::SelectFixedTab, &ToolMain::Answer_SelectFixedTab},
        {request::GetResourcePath, &ToolMain::Answer_GetResourcePath},
        {request::SetOptionValue, &ToolMain::Answer_SetOptionValue},
        {request::GetOptionValue, &ToolMain::Answer_GetOptionValue},
    };

    std::string reply;
    const auto answer = [&] {
        const std::string type = request->Type();
        const auto row =
            std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return r.name == type; });
        if (row == std::end(rows)) {
            DebugTrace("HandleRequest", " - Unknown Request Type (" + type + ") Received", true);
        } else {
            (this->*row->answer)(request, reply);
        }
    };
    const std::exception_ptr unreported = Caught([&] { Guarded("HandleRequest", answer); });
    Guarded("HandleRequest", [&] { m_oFramework->SetMousePointer(arvon::pointer::Default); });
    if (unreported) std::rethrow_exception(unreported);
    return reply;
}

} // namespace kvtm
