#include "catalogue/RecordSort.h"
#include "core/Names.h"
#include "core/ToolMain.h"

namespace kvtm {

ToolCollection ToolMain::Sort(std::string_view strPropertyName, bool bDescend, bool blnCompareNumeric) {
    return SortRecords(ListedTools(), {strPropertyName, bDescend, blnCompareNumeric});
}

// No guards here: the callers report. The listed tools stay as they were when the sort fails.

void ToolMain::SortListedTools(std::string_view propertyName, std::string_view direction) {
    const bool asDates = propertyName == property::LastUpdated;
    const bool descending = base::Value(direction).ToBoolean();
    m_colListedTools = std::make_unique<ToolCollection>(Sort(propertyName, descending, asDates));
}

void ToolMain::SortTools(std::string_view propertyName, std::string_view direction, bool selectTab) {
    SortListedTools(propertyName, direction);
    if (m_oFramework->CurrentControl() != view::Navigator) return;
    RefreshToolsNode(selectTab);
    const std::shared_ptr<arvon::ITab> navigator = m_oFramework->Tabs().Item(view::Navigator);
    const std::shared_ptr<arvon::INode> node = navigator ? navigator->FindNode(view::ToolsNode) : nullptr;
    if (node) node->Select();
    m_oFramework->BringPageForward(Self);
}

// An option that could not be read answers "False": as a key it names no property, which is reported and
// leaves the tools in catalogue order; as a direction it means ascending.
ToolMain::ToolOrder ToolMain::StoredToolOrder() {
    const auto stored = [&](std::string_view option, std::string_view whenEmpty) {
        const std::string value = ReadOption(sortOption::ToolID, option);
        return value.empty() ? std::string(whenEmpty) : value;
    };
    return {.key = stored(sortOption::Key, property::Name), .direction = stored(sortOption::Order, "0")};
}

bool ToolMain::SetToolOrder() {
    Guarded("SetToolOrder", [&] {
        const ToolOrder order = StoredToolOrder();
        SortTools(order.key, order.direction, false);
    });
    return true;
}

void ToolMain::RelistTools() {
    LoadToolsCollection();
    Guarded("SetToolOrder", [&] {
        const ToolOrder order = StoredToolOrder();
        SortListedTools(order.key, order.direction);
    });
}

} // namespace kvtm
