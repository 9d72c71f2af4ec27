#include "core/Names.h"
#include "core/ToolMain.h"

namespace kvtm {

// No guards: the callers report what fails here.

void ToolMain::OpenUpdateToolsView() {
    constexpr std::int32_t widthTwips = 7250;
    constexpr std::int32_t heightTwips = 5750;
    constexpr std::int32_t mode = 2;
    arvon::IViews& views = m_oFramework->Views();
    std::shared_ptr<arvon::IView> view = views.Item(view::UpdateTools);
    if (!view) {
        const arvon::ControlViewDefinition definition{std::string(control::ToolsUpdate)};
        view = views.Add(view::UpdateTools, arvon::ViewKind::Control, definition, Self);
    }
    view->SetSize(widthTwips, heightTwips);
    view->SetMode(mode);
    view->SetCaption(LoadResString(34));

    const std::shared_ptr<arvon::IView> shown = views.Item(view::UpdateTools);
    if (!shown) throw OwnError(1, "OpenUpdateToolsView", "the host has no view \"UpdateTools\"");
    shown->Show();
}

void ToolMain::RequestUpdates(bool bShowNew) {
    PrepareUpdatesBanner();
    CountToolsInCatalog(false);
    LoadUpdatesComponent();
    const RequestRef request = NewRequest(request::ShowUpdates);
    request->Parameters().Add(arvon::ParameterType::Text, parameter::ShowNew, base::Value(bShowNew), true);
    SendRequestToOwner(request, listener::Updates);
    m_oFramework->RefreshViews(0);
}

} // namespace kvtm
