#include "catalogue/DateFormat.h"
#include "catalogue/ToolFailure.h"
#include "catalogue/ToolVisibility.h"
#include "core/Names.h"
#include "core/ToolMain.h"

namespace kvtm {

// No guard: the caller reports. The list stays as far as it was filled.
void ToolMain::LoadTools(std::string_view tabKey, bool useListedTools) {
    const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
    if (!navigator || !navigator->FindNode(tabKey)) return;

    const std::shared_ptr<arvon::IView> listView = m_oFramework->Views().Item(view::ToolList);
    arvon::IListView* list = listView ? listView->List() : nullptr;
    if (!list) throw OwnError(0, "LoadTools", LoadResString(12) + std::string(tabKey));
    list->Clear();

    const std::shared_ptr<arvon::ITaskView> taskPane = m_oFramework->TaskViews().Item(view::ToolTasks);
    RequireObject(taskPane, "LoadTools", "the host has no task pane \"tvTools\"");
    taskPane->SetShowAll(m_bShowAllTools);

    const DateNames names = DateNames::OfUser();
    const DateFormat dateFormat(LoadResString(13), names);
    if (useListedTools) {
        for (const ToolRecord& tool : ListedTools().Snapshot())
            LoadToolIntoListView(tool, *list, dateFormat);
    } else {
        arvon::IToolRecords& tools = m_oFramework->Tools();
        for (std::size_t position = 1; position <= tools.Count(); ++position) {
            LoadToolIntoListView(tools.Item(position), *list, dateFormat);
        }
    }
}

bool ToolMain::LoadToolIntoListView(const ToolRecord& tool, arvon::IListView& list,
                                    const DateFormat& dateFormat) {
    if (!IsShown(*tool, m_bShowAllTools)) return false;
    arvon::IListItem& row =
        list.AddItem(tool->Get(property::Vrex).ToText(), tool->Get(property::Name).ToText());
    if (list.CheckBoxes()) row.SetChecked(tool->Get(property::ShowInList).ToBoolean());
    row.AddSubItem("version", tool->Get(property::Version).ToText());
    const base::Value lastUpdated = tool->Get(property::LastUpdated);
    row.AddSubItem("lastupdated", NamingToolOnFailure(tool, [&] { return dateFormat.Format(lastUpdated); }));
    row.AddSubItem("classification", tool->Get(property::Classification).ToText());
    return true;
}

} // namespace kvtm
