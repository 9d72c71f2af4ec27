#include "host/HostFramework.h"
#include "host/ReferenceHost.h"

namespace arvon::host {

std::vector<model::Tool> ReferenceHost::ModelView::Tools() const {
    return framework_->records_.Snapshot();
}

std::vector<model::ListRow> ReferenceHost::ModelView::List(std::string_view viewKey) const {
    const auto view = framework_->views_.Find(viewKey);
    return view && view->Rows() ? view->Rows()->Rows() : std::vector<model::ListRow>();
}

std::vector<model::Column> ReferenceHost::ModelView::Columns(std::string_view viewKey) const {
    const auto view = framework_->views_.Find(viewKey);
    return view && view->Rows() ? view->Rows()->Columns() : std::vector<model::Column>();
}

std::vector<model::Menu> ReferenceHost::ModelView::Menus() const {
    return framework_->menus_.Snapshot();
}
std::vector<model::Button> ReferenceHost::ModelView::Toolbar() const {
    return framework_->buttons_.Snapshot();
}

std::vector<model::MenuItem> ReferenceHost::ModelView::ContextMenu() const {
    return framework_->contextMenu_.Snapshot();
}

std::vector<model::Tab> ReferenceHost::ModelView::Tabs() const {
    return framework_->tabs_.Snapshot();
}
std::vector<model::View> ReferenceHost::ModelView::Views() const {
    return framework_->views_.Snapshot();
}
std::vector<model::View> ReferenceHost::ModelView::Windows() const {
    return framework_->windows_.Snapshot();
}

std::vector<model::TaskView> ReferenceHost::ModelView::TaskViews() const {
    return framework_->taskViews_.Snapshot();
}

std::vector<model::LoadedTool> ReferenceHost::ModelView::Loaded() const {
    return framework_->loadedTools_.Snapshot();
}

std::vector<model::Process> ReferenceHost::ModelView::Processes() const {
    return framework_->follower_.Snapshot();
}

std::vector<std::string> ReferenceHost::ModelView::Listeners() const {
    return framework_->router_->Ids();
}
std::vector<model::Control> ReferenceHost::ModelView::Controls() const {
    return framework_->controls_.Snapshot();
}
model::Banner ReferenceHost::ModelView::Banner() const {
    return framework_->banner_;
}
std::string ReferenceHost::ModelView::Page() const {
    return framework_->page_;
}
std::string ReferenceHost::ModelView::CurrentControl() const {
    return framework_->tabs_.InFront();
}
std::string ReferenceHost::ModelView::Language() const {
    return framework_->settings_.Language();
}
std::int32_t ReferenceHost::ModelView::Pointer() const {
    return framework_->pointer_;
}

} // namespace arvon::host
