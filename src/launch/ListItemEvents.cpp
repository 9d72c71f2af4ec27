#include "base/Text.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "core/contract/EventShapes.h"

namespace kvtm {

namespace eventKind = arvon::eventKind;
namespace eventParameter = arvon::eventParameter;

void ToolMain::HandleListItemEvent(const EventRef& event) {
    Guarded("HandleListItemEvent", [&] {
        const std::string objectType = TextParameter(*event, eventParameter::ObjectType);
        const std::string secondType = TextParameter(*event, eventParameter::SecondType);
        if (!base::EqualIgnoringCase(objectType, "IListItem") &&
            !base::EqualIgnoringCase(secondType, "IColumnHeader")) {
            return;
        }
        switch (event->Category()) {
        case eventKind::CheckChanged:
            KeepCheck(TextParameter(*event, eventParameter::Text),
                      ParameterValue(*event, eventParameter::Checked).ToBoolean());
            break;
        case eventKind::Opened:
            if (SelectedTool()) LaunchListedTool(TextParameter(*event, eventParameter::Text));
            break;
        case eventKind::ColumnClicked:
            if (objectType == "IColumnHeader") {
                SortTools(TextParameter(*event, eventParameter::Key),
                          TextParameter(*event, eventParameter::Order), true);
            }
            break;
        default:
            break;
        }
    });
}

void ToolMain::KeepCheck(std::string_view sText, bool bChecked) {
    m_sCurrentTool = sText;
    arvon::IToolRecords& tools = m_oFramework->Tools();
    const ToolRecord tool = tools.Item(m_sCurrentTool);
    if (!tool) return;
    tool->Set(property::ShowInList, base::Value(bChecked));
    tools.Save();
}

} // namespace kvtm
