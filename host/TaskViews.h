#pragma once

#include "base/Collection.h"
#include "core/contract/Views.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

/// The task of every pane that turns its show-all switch.
inline constexpr std::string_view showAllTask = "tskShowAll";

class TaskView final : public ITaskView {
public:
    explicit TaskView(Trace& trace) : trace_(trace) {}

    void SetTitle(std::string_view title) override;
    void SetTexts(std::string_view second, std::string_view third) override;
    void SetListControl(std::string_view viewName) override;
    void SetResourceBase(std::string_view resourceBase) override;
    /// Throws DuplicateKey.
    void AddTask(std::string_view key, std::string_view caption, std::string_view icon,
                 std::string_view highlightedIcon, std::string_view description) override;
    void SetVisible(bool visible) override;
    void SetShowAll(bool showAll) override;
    /// The switch's state for showAllTask, False for a task that was added.
    std::optional<bool> TaskState(std::string_view key) const override;

    bool HasTask(std::string_view key) const { return tasks_.Find(key) != nullptr; }
    bool IsVisible() const noexcept { return fields_.visible; }
    bool ShowsAll() const noexcept { return fields_.showAll; }
    /// By the user; returns the new state.
    bool TurnShowAll();
    model::TaskView Snapshot(const std::string& key, ViewKind kind, const std::string& owner) const;

private:
    void Changed() { trace_.Changed(ModelPart::TaskViews); }

    Trace& trace_;
    model::TaskView fields_;
    base::Collection<model::Task> tasks_;
};

class TaskViews final : public ITaskViews {
public:
    explicit TaskViews(Trace& trace) : trace_(trace) {}

    std::shared_ptr<ITaskView> NewTaskView() override;
    void Add(std::string_view key, ViewKind kind, const std::shared_ptr<ITaskView>& taskView,
             std::string_view owner) override;
    std::shared_ptr<ITaskView> Item(std::string_view key) override;

    struct Pane {
        std::shared_ptr<TaskView> view;
        std::string key;
        ViewKind kind = ViewKind::TaskPane;
        std::string owner;
    };
    /// The first visible pane with that task, else the first of the hidden ones; null when there is none.
    const Pane* WithTask(std::string_view taskKey) const;
    /// The first pane; null when there is none.
    const Pane* First() const;
    std::vector<model::TaskView> Snapshot() const;

private:
    Trace& trace_;
    base::Collection<Pane> panes_;
};

} // namespace arvon::host
