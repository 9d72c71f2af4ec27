#pragma once

#include "base/Collection.h"
#include "core/contract/Views.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace arvon::host {

class ListItem final : public IListItem {
public:
    ListItem(Trace& trace, std::string_view key, std::string_view text)
        : trace_(&trace), key_(key), text_(text) {}

    std::string Key() const override;
    std::string Text() const override;
    bool Checked() const override;
    void SetChecked(bool checked) override;
    void AddSubItem(std::string_view columnKey, std::string_view text) override;

    const std::string& TextText() const noexcept { return text_; }
    bool IsChecked() const noexcept { return checked_; }
    /// By the user.
    void Check(bool checked);
    model::ListRow Snapshot(bool current) const { return {key_, text_, checked_, current, subItems_}; }

private:
    Trace* trace_;
    std::string key_, text_;
    bool checked_ = false;
    std::vector<std::pair<std::string, std::string>> subItems_;
};

/// The rows of a list view. Rows may go without a key; keys that are there are unique.
class ListView final : public IListView {
public:
    ListView(Trace& trace, const ListViewDefinition& definition, bool checkBoxes)
        : trace_(trace), definition_(definition), checkBoxes_(checkBoxes) {}

    bool CheckBoxes() const override;
    void Clear() override;
    IListItem& AddItem(std::string_view key, std::string_view text) override;
    const IListItem* CurrentItem() const override;

    /// The first row of that text; null when there is none.
    ListItem* FindText(std::string_view text);
    void SetCurrent(ListItem* row);
    bool HasColumn(std::string_view key) const;
    std::vector<model::ListRow> Rows() const;
    std::vector<model::Column> Columns() const;

private:
    Trace& trace_;
    ListViewDefinition definition_;
    bool checkBoxes_;
    base::Collection<ListItem> rows_;
    ListItem* current_ = nullptr;
};

} // namespace arvon::host
