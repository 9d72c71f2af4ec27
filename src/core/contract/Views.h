#pragma once

#include "base/Object.h"
#include "base/Value.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace arvon {

/// View kinds that the host knows.
enum class ViewKind : std::int32_t { TaskPane = 3, List = 4, Control = 5 };

/// What to host in a view: a control of a control library, by its programmatic name ("KvTMU110.ctlOptions").
struct ControlViewDefinition {
    std::string control;
};

/// A list with columns.
struct ListViewDefinition {
    struct ColumnHeader {
        std::string key;
        std::string text;
        std::int32_t widthTwips = 0;
    };
    std::int32_t displayStyle = 0; // 3: report with columns
    std::vector<ColumnHeader> columnHeaders;
};

using ViewDefinition = std::variant<ControlViewDefinition, ListViewDefinition>;

/// One row of a list view.
class IListItem {
public:
    virtual ~IListItem() = default;
    virtual std::string Key() const = 0;
    virtual std::string Text() const = 0;
    virtual bool Checked() const = 0;
    virtual void SetChecked(bool checked) = 0;
    /// Adds the text under a column. Throws DuplicateKey.
    virtual void AddSubItem(std::string_view columnKey, std::string_view text) = 0;
};

class IListView {
public:
    virtual ~IListView() = default;
    virtual bool CheckBoxes() const = 0;
    virtual void Clear() = 0;
    /// Appends a row. Throws DuplicateKey. The row belongs to the list; the reference ends at the next change
    /// of it.
    virtual IListItem& AddItem(std::string_view key, std::string_view text) = 0;
    /// The current row, null when there is none.
    virtual const IListItem* CurrentItem() const = 0;
};

/// A view of the host. Its control or list is made by the host when first asked for.
class IView {
public:
    virtual ~IView() = default;
    virtual std::string Key() const = 0;
    /// The hosted control, members by name; null where the host has no such control.
    virtual std::shared_ptr<base::Object> Control() = 0;
    /// The list of a list view; null for other kinds.
    virtual IListView* List() = 0;
    virtual void SetSize(std::int32_t widthTwips, std::int32_t heightTwips) = 0;
    virtual void SetMode(std::int32_t mode) = 0;
    virtual void SetCaption(std::string_view caption) = 0;
    /// Shows the view in a window of its own, which then stands among IWindows under the view's key.
    virtual void Show() = 0;
};

class IViews {
public:
    virtual ~IViews() = default;
    /// Throws DuplicateKey unless the view of that name has the same owner and kind: then it is replaced.
    virtual std::shared_ptr<IView> Add(std::string_view name, ViewKind kind, const ViewDefinition& definition,
                                       std::string_view owner) = 0;
    /// Null when there is none.
    virtual std::shared_ptr<IView> Item(std::string_view name) = 0;
    /// Throws InvalidCall for an unknown name.
    virtual void Remove(std::string_view name) = 0;
};

/// An open window. By name: "CloseWindow" (call). Closing takes it out of the collection.
class IWindow : public base::Object {
public:
    virtual std::string Key() const = 0;
    /// The hosted control, members by name; null where there is none.
    virtual std::shared_ptr<base::Object> Control() = 0;
    virtual void Close() = 0;
};

class IWindows {
public:
    virtual ~IWindows() = default;
    /// Null when there is none.
    virtual std::shared_ptr<IWindow> Item(std::string_view key) = 0;
};

/// A task pane: a short list of actions beside a list.
class ITaskView {
public:
    virtual ~ITaskView() = default;
    virtual void SetTitle(std::string_view title) = 0;
    virtual void SetTexts(std::string_view second, std::string_view third) = 0;
    virtual void SetListControl(std::string_view viewName) = 0;
    virtual void SetResourceBase(std::string_view resourceBase) = 0; // e.g. "res://...dll/GIF/"
    virtual void AddTask(std::string_view key, std::string_view caption, std::string_view icon,
                         std::string_view highlightedIcon, std::string_view description) = 0;
    virtual void SetVisible(bool visible) = 0;
    /// The pane's show-all switch, which its task "tskShowAll" turns.
    virtual void SetShowAll(bool showAll) = 0;
    /// State of a task that is a switch; nothing when the pane has no such task (exact).
    virtual std::optional<bool> TaskState(std::string_view key) const = 0;
};

class ITaskViews {
public:
    virtual ~ITaskViews() = default;
    virtual std::shared_ptr<ITaskView> NewTaskView() = 0;
    /// Registers a pane under a key; a pane of the same owner is replaced, another's throws DuplicateKey.
    virtual void Add(std::string_view key, ViewKind kind, const std::shared_ptr<ITaskView>& taskView,
                     std::string_view owner) = 0;
    /// Null when there is none.
    virtual std::shared_ptr<ITaskView> Item(std::string_view key) = 0;
};

} // namespace arvon
