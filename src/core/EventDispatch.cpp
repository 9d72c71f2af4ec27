#include "base/Text.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "core/contract/EventShapes.h"

#include <algorithm>
#include <iterator>

namespace kvtm {

using arvon::EventObject;

void ToolMain::HandleEvent(const EventRef& event) {
    struct Row {
        EventObject raisedBy;
        void (ToolMain::*handler)(const EventRef& event);
    };
    static constexpr Row rows[] = {
        {EventObject::Process, &ToolMain::HandleProcessEvent},
        {EventObject::Menu, &ToolMain::HandleMenuEvent},
        {EventObject::Button, &ToolMain::HandleButtonEvent},
        {EventObject::Node, &ToolMain::HandleNodeEvent},
        {EventObject::ListItem, &ToolMain::HandleListItemEvent},
        {EventObject::Task, &ToolMain::HandleTaskEvent},
        {EventObject::Tab, &ToolMain::HandleTabEvent},
    };

    Guarded("HandleEvent", [&] {
        const auto raisedBy = static_cast<EventObject>(event->ObjectType());
        const auto row = std::find_if(std::begin(rows), std::end(rows),
                                      [&](const Row& r) { return r.raisedBy == raisedBy; });
        if (row == std::end(rows)) {
            DebugTrace("ToolMain.HandleEvent", " - Unknown Event Object Received", true);
            return;
        }
        (this->*row->handler)(event);
    });
}

namespace {

constexpr std::string_view catalogueGenerator = "BuildToolXML_Arvon11.exe";

/// The vrex that a program's path tells; empty when it tells none.
std::string VrexOfApplication(std::string_view application) {
    constexpr std::string_view wholeVrex = "Tobr43";
    constexpr std::string_view vrexStart = "Jx3";
    constexpr std::size_t vrexLength = 5;
    if (application.find(wholeVrex) != std::string_view::npos) return std::string(wholeVrex);
    const std::size_t start = application.find(vrexStart);
    if (start == std::string_view::npos) return {};
    return std::string(base::FirstCharacters(application.substr(start), vrexLength));
}

} // namespace

void ToolMain::HandleProcessEvent(const EventRef& event) {
    if (!event) return;
    if (event->Name() != event::ShellProcessComplete) {
        DebugTrace("HandleProcessEvent", " - Unknown Process Event (" + event->Name() + ") Received", true);
        return;
    }
    const std::string sApp = TextParameter(*event, arvon::eventParameter::ApplicationNameAndPath);
    if (sApp.find(catalogueGenerator) != std::string::npos) TakeNewCatalogue();

    const std::int32_t lPID = ParameterValue(*event, arvon::eventParameter::ProcessId).ToInteger();
    if (lPID < 1) return;
    ForgetProcess(lPID);

    const EventRef ended = NewEvent(event::ToolProcessEnded, 2, 9);
    const std::string vrex = VrexOfApplication(sApp);
    if (!vrex.empty()) AddText(ended->Parameters(), parameter::Vrex, vrex);
    AddInteger(ended->Parameters(), parameter::ProcessID, lPID);
    SendEventMessage(ended, listener::Launcher);
}

void ToolMain::ForgetProcess(std::int32_t lPID) {
    for (std::size_t position = 1; position <= m_colProcesses.Count(); ++position) {
        if (m_colProcesses.Item(position) == lPID) {
            m_colProcesses.Remove(position);
            return;
        }
    }
}

} // namespace kvtm
