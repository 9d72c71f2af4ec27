#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "core/contract/EventShapes.h"

#include <algorithm>
#include <exception>
#include <iterator>

namespace kvtm {

void ToolMain::CreateTaskViews() {
    const std::string images = m_oFramework->ImageFolder();
    const std::string resourceBase = "res://" + m_oFramework->ComponentFolder() + "\\" +
                                     m_oServices.systemInfo->ModuleFile().stem().string() + ".dll/GIF/";

    const std::shared_ptr<arvon::ITaskView> pane = m_oFramework->TaskViews().NewTaskView();
    pane->SetTitle(LoadResString(17));
    pane->SetTexts(LoadResString(18), LoadResString(19));
    pane->SetListControl(view::ToolList);
    pane->SetResourceBase(resourceBase);

    const auto add = [&](std::string_view key, std::string_view caption, std::string_view picture,
                         std::string_view description) {
        const std::string icon = images + "\\" + std::string(picture);
        pane->AddTask(key, caption, icon, icon, description);
    };
    add(task::LaunchTool, "Launch Program", "WIZARD.GIF", "Launch the currently selected Program");
    add(task::RemoveTool, "Remove Program", "Delete.gif", "Remove the currently selected Program");
    add(task::EditTool, LoadResString(20), "EDIT.GIF", LoadResString(21));

    pane->SetVisible(true);
    m_oFramework->TaskViews().Add(view::ToolTasks, arvon::ViewKind::TaskPane, pane, Self);
}

void ToolMain::HandleTaskEvent(const EventRef& event) {
    struct Row {
        std::string_view key;
        void (ToolMain::*carryOut)(const EventRef& event);
    };
    static constexpr Row rows[] = {
        {task::LaunchTool, &ToolMain::Task_LaunchTool}, {task::RemoveTool, &ToolMain::Task_RemoveTool},
        {task::EditTool, &ToolMain::Task_EditTool},     {task::UpdateTool, &ToolMain::Task_UpdateTool},
        {task::AddTool, &ToolMain::Task_AddTool},       {task::ShowAll, &ToolMain::Task_ShowAll},
    };

    Guarded("HandleTaskEvent", [&] {
        const std::string key = event->Name();
        const auto row =
            std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return r.key == key; });
        if (row != std::end(rows)) (this->*row->carryOut)(event);
    });
}

void ToolMain::Task_LaunchTool(const EventRef&) {
    if (const ToolRecord tool = SelectedTool()) LaunchShownTool(tool);
}

void ToolMain::Task_RemoveTool(const EventRef&) {
    const ToolRecord tool = SelectedTool();
    if (!tool) return;
    RemoveTool(tool->Get(property::Vrex).ToText(), tool->Get(property::Name).ToText(), {},
               tool->Get(property::ProgramType).ToText());
}

void ToolMain::Task_EditTool(const EventRef&) {
    const ToolRecord tool = SelectedTool();
    if (!tool) return;
    // an edit that could not be saved has changed the record all the same
    const std::exception_ptr unsaved = Caught([&] { m_oFramework->Tools().Edit(tool, "HandleTaskEvent"); });
    RelistTools();
    if (unsaved) std::rethrow_exception(unsaved);
    BringToolsTabForward();
    BuildToolNodes(view::ToolsNode, true);
    RebuildToolMenus(!m_bShowAllTools);
    RefreshToolsNode(true); // selecting alone asks for no rows where the node is in front already
}

void ToolMain::Task_UpdateTool(const EventRef& event) {
    RequestUpdates(ParameterValue(*event, arvon::eventParameter::Flag).ToBoolean());
}

void ToolMain::Task_AddTool(const EventRef&) {
    RequestUpdates(true);
}

void ToolMain::Task_ShowAll(const EventRef&) {
    const std::shared_ptr<arvon::ITaskView> pane = m_oFramework->TaskViews().Item(view::ToolTasks);
    const std::optional<bool> state = pane ? pane->TaskState(task::ShowAll) : std::nullopt;
    if (!state) throw OwnError(5, "HandleTaskEvent", "the task pane \"tvTools\" has no task \"tskShowAll\"");
    m_bShowAllTools = *state;
    LoadToolsCollection();
    RebuildToolMenus(!m_bShowAllTools);
    LoadTools(view::ToolsNode, !m_bShowAllTools);
}

} // namespace kvtm
