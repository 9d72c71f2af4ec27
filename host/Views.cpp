#include "host/Views.h"

#include "base/Text.h"
#include "host/Errors.h"

namespace arvon::host {

// Window
// --------------------------------------------------------------------------------------------------------

std::string Window::Key() const {
    trace_.Read("Window.Key", view_->Fields().key);
    return view_->Fields().key;
}

std::shared_ptr<base::Object> Window::Control() {
    trace_.Call("Window.Control", view_->Fields().key);
    return view_->HostedControl();
}

void Window::Close() {
    trace_.Call("Window.Close", view_->Fields().key);
    windows_.Close(*this);
}

base::Value Window::Call(std::string_view member, std::span<const base::Value>) {
    if (!base::EqualIgnoringCase(member, "CloseWindow")) NoSuchMember(member);
    trace_.Call("Window.CloseWindow", view_->Fields().key);
    windows_.Close(*this);
    return {};
}

std::shared_ptr<IWindow> Windows::Item(std::string_view key) {
    trace_.Call("Windows.Item", key);
    const std::shared_ptr<Window>* found = windows_.Find(key);
    return found ? *found : nullptr;
}

void Windows::Open(const std::shared_ptr<View>& view) {
    if (windows_.Find(view->Fields().key)) return;
    windows_.Add(std::make_shared<Window>(*this, trace_, view), view->Fields().key);
    trace_.Changed(ModelPart::Windows);
}

bool Windows::Close(std::string_view key) {
    const std::shared_ptr<Window>* found = windows_.Find(key);
    if (!found) return false;
    const std::shared_ptr<Window> window = *found; // may be closing itself
    windows_.Remove(key);
    trace_.Changed(ModelPart::Windows);
    return true;
}

void Windows::Close(const Window& window) {
    const std::string key = window.Shown().Fields().key; // may go with the window
    const std::shared_ptr<Window>* found = windows_.Find(key);
    if (found && found->get() == &window) Close(key);
}

std::vector<model::View> Windows::Snapshot() const {
    std::vector<model::View> rows;
    for (const auto& window : windows_)
        rows.push_back(window->Shown().Fields());
    return rows;
}

// View
// ----------------------------------------------------------------------------------------------------------

View::View(Trace& trace, Controls& controls, Windows& windows, std::string_view key, ViewKind kind,
           const ViewDefinition& definition, std::string_view owner, bool checkBoxes)
    : trace_(trace), controls_(controls), windows_(windows) {
    fields_.key = key;
    fields_.kind = static_cast<std::int32_t>(kind);
    fields_.owner = owner;
    if (const auto* list = std::get_if<ListViewDefinition>(&definition); list && kind == ViewKind::List) {
        list_ = std::make_unique<ListView>(trace, *list, checkBoxes);
        fields_.displayStyle = list->displayStyle;
    } else if (const auto* control = std::get_if<ControlViewDefinition>(&definition);
               control && kind == ViewKind::Control) {
        fields_.control = control->control;
    } else {
        Raise(base::errors::InvalidCall, "the view \"" + fields_.key + "\" of kind " +
                                             std::to_string(fields_.kind) + " was given " +
                                             (list ? "a list" : "a control") + " to host");
    }
}

std::string View::Key() const {
    trace_.Read("View.Key", fields_.key);
    return fields_.key;
}

std::shared_ptr<base::Object> View::Control() {
    trace_.Call("View.Control", fields_.key);
    return HostedControl();
}

std::shared_ptr<base::Object> View::HostedControl() {
    if (!controlWanted_ && !list_) {
        controlWanted_ = true;
        control_ = controls_.Make(fields_.control, fields_.key);
    }
    return control_;
}

IListView* View::List() {
    trace_.Read("View.List", fields_.key);
    return list_.get();
}

void View::SetSize(std::int32_t widthTwips, std::int32_t heightTwips) {
    trace_.Call("View.SetSize", fields_.key, widthTwips, heightTwips);
    fields_.widthTwips = widthTwips;
    fields_.heightTwips = heightTwips;
    trace_.Changed(ModelPart::Views);
}

void View::SetMode(std::int32_t mode) {
    trace_.Call("View.SetMode", fields_.key, mode);
    fields_.mode = mode;
    trace_.Changed(ModelPart::Views);
}

void View::SetCaption(std::string_view caption) {
    trace_.Call("View.SetCaption", fields_.key, caption);
    fields_.caption = caption;
    trace_.Changed(ModelPart::Views);
}

void View::Show() {
    trace_.Call("View.Show", fields_.key);
    HostedControl();
    windows_.Open(shared_from_this());
}

// Views
// ---------------------------------------------------------------------------------------------------------

std::shared_ptr<IView> Views::Add(std::string_view name, ViewKind kind, const ViewDefinition& definition,
                                  std::string_view owner) {
    const auto hosted = [&] {
        const auto* control = std::get_if<ControlViewDefinition>(&definition);
        return control ? base::Value(control->control) : base::Value();
    };
    trace_.Call("Views.Add", name, kind, hosted, owner);
    auto view =
        std::make_shared<View>(trace_, controls_, windows_, name, kind, definition, owner, checkBoxes_);
    std::shared_ptr<View>* present = views_.Find(name);
    if (present && (*present)->OwnerText() == owner &&
        (*present)->Fields().kind == static_cast<std::int32_t>(kind)) {
        *present = view;
    } else {
        views_.Add(view, name);
    }
    windows_.Close(name); // one that shows an older view of that name
    trace_.Changed(ModelPart::Views);
    return view;
}

std::shared_ptr<IView> Views::Item(std::string_view name) {
    trace_.Call("Views.Item", name);
    return Find(name);
}

void Views::Remove(std::string_view name) {
    trace_.Call("Views.Remove", name);
    const std::shared_ptr<View> view = Find(name);
    if (!view) RaiseNoSuch("view", name);
    views_.Remove(name);
    windows_.Close(view->Fields().key);
    trace_.Changed(ModelPart::Views);
}

std::shared_ptr<View> Views::Find(std::string_view name) const {
    const std::shared_ptr<View>* found = views_.Find(name);
    return found ? *found : nullptr;
}

std::vector<model::View> Views::Snapshot() const {
    std::vector<model::View> rows;
    for (const auto& view : views_)
        rows.push_back(view->Fields());
    return rows;
}

} // namespace arvon::host
