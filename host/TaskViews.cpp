#include "host/TaskViews.h"

#include "host/Errors.h"

namespace arvon::host {

void TaskView::SetTitle(std::string_view title) {
    trace_.Call("TaskView.SetTitle", title);
    fields_.title = title;
    Changed();
}

void TaskView::SetTexts(std::string_view second, std::string_view third) {
    trace_.Call("TaskView.SetTexts", second, third);
    fields_.texts = {std::string(second), std::string(third)};
    Changed();
}

void TaskView::SetListControl(std::string_view viewName) {
    trace_.Call("TaskView.SetListControl", viewName);
    fields_.listControl = viewName;
    Changed();
}

void TaskView::SetResourceBase(std::string_view resourceBase) {
    trace_.Call("TaskView.SetResourceBase", resourceBase);
    fields_.resourceBase = resourceBase;
    Changed();
}

void TaskView::AddTask(std::string_view key, std::string_view caption, std::string_view icon,
                       std::string_view highlightedIcon, std::string_view description) {
    trace_.Call("TaskView.AddTask", key, caption, icon, highlightedIcon, description);
    tasks_.Add(model::Task{std::string(key), std::string(caption), std::string(icon),
                           std::string(highlightedIcon), std::string(description)},
               key);
    Changed();
}

void TaskView::SetVisible(bool visible) {
    trace_.Call("TaskView.SetVisible", visible);
    fields_.visible = visible;
    Changed();
}

void TaskView::SetShowAll(bool showAll) {
    trace_.Call("TaskView.SetShowAll", showAll);
    fields_.showAll = showAll;
    Changed();
}

std::optional<bool> TaskView::TaskState(std::string_view key) const {
    trace_.Call("TaskView.TaskState", key);
    if (key == showAllTask) return fields_.showAll;
    if (HasTask(key)) return false;
    return {};
}

bool TaskView::TurnShowAll() {
    fields_.showAll = !fields_.showAll;
    Changed();
    return fields_.showAll;
}

model::TaskView TaskView::Snapshot(const std::string& key, ViewKind kind, const std::string& owner) const {
    model::TaskView row = fields_;
    row.key = key;
    row.kind = static_cast<std::int32_t>(kind);
    row.owner = owner;
    row.tasks = tasks_.Snapshot();
    return row;
}

std::shared_ptr<ITaskView> TaskViews::NewTaskView() {
    trace_.Call("TaskViews.NewTaskView");
    return std::make_shared<TaskView>(trace_);
}

void TaskViews::Add(std::string_view key, ViewKind kind, const std::shared_ptr<ITaskView>& taskView,
                    std::string_view owner) {
    trace_.Call("TaskViews.Add", key, kind, owner);
    auto own = std::dynamic_pointer_cast<TaskView>(taskView);
    if (!own) {
        Raise(taskView ? base::errors::InvalidCall : base::errors::ObjectNotSet,
              "the pane \"" + std::string(key) + "\" was not made by NewTaskView");
    }
    Pane pane{std::move(own), std::string(key), kind, std::string(owner)};
    Pane* present = panes_.Find(key);
    if (present && present->owner == owner) {
        *present = std::move(pane);
    } else {
        panes_.Add(std::move(pane), key);
    }
    trace_.Changed(ModelPart::TaskViews);
}

std::shared_ptr<ITaskView> TaskViews::Item(std::string_view key) {
    trace_.Call("TaskViews.Item", key);
    const Pane* found = panes_.Find(key);
    return found ? found->view : nullptr;
}

const TaskViews::Pane* TaskViews::WithTask(std::string_view taskKey) const {
    const Pane* hidden = nullptr;
    for (const Pane& pane : panes_) {
        if (!pane.view->HasTask(taskKey)) continue;
        if (pane.view->IsVisible()) return &pane;
        if (!hidden) hidden = &pane;
    }
    return hidden;
}

const TaskViews::Pane* TaskViews::First() const {
    return panes_.IsEmpty() ? nullptr : &panes_.Item(1);
}

std::vector<model::TaskView> TaskViews::Snapshot() const {
    std::vector<model::TaskView> rows;
    for (const Pane& pane : panes_)
        rows.push_back(pane.view->Snapshot(pane.key, pane.kind, pane.owner));
    return rows;
}

} // namespace arvon::host
