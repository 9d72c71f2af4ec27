#include "base/Text.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "core/contract/EventShapes.h"

#include <exception>

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
            OpenRow(TextParameter(*event, eventParameter::Text));
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

void ToolMain::OpenRow(std::string_view sText) {
    if (sText.empty() || !SelectedTool()) return;
    if (const ToolRecord tool = ToolOfRow(sText)) {
        LaunchShownTool(tool);
    } else {
        LaunchToolByName(sText); // which tells the user
    }
}

// The file may refuse: the record is changed all the same, and the listed tools follow it.
void ToolMain::KeepCheck(std::string_view sText, bool bChecked) {
    m_sCurrentTool = sText;
    const ToolRecord tool = ToolOfRow(sText);
    if (!tool) return;
    tool->Set(property::ShowInList, base::Value(bChecked));
    const std::exception_ptr unsaved = Caught([&] { m_oFramework->Tools().Save(); });
    RelistTools();
    if (unsaved) std::rethrow_exception(unsaved);
}

} // namespace kvtm
