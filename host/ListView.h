#pragma once

#include "base/Collection.h"
#include "core/contract/Views.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

class ListItem final : public IListItem {
public:
    /// `columnKeys` are shared by the rows of a list, and outlive them.
    ListItem(Trace& trace, std::set<std::string, std::less<>>& columnKeys, std::string_view key,
             std::string_view text)
        : trace_(&trace), columnKeys_(&columnKeys), key_(key), text_(text) {}

    std::string Key() const override;
    std::string Text() const override;
    bool Checked() const override;
    void SetChecked(bool checked) override;
    void AddSubItem(std::string_view columnKey, std::string_view text) override;

    const std::string& TextText() const noexcept { return text_; }
    bool IsChecked() const noexcept { return checked_; }
    /// By the user.
    void Check(bool checked);
    model::ListRow Snapshot(bool current) const;

private:
    struct SubItem {
        const std::string* columnKey;
        std::string text;
    };

    Trace* trace_;
    std::set<std::string, std::less<>>* columnKeys_;
    std::string key_, text_;
    bool checked_ = false;
    std::vector<SubItem> subItems_;
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
    std::set<std::string, std::less<>> columnKeys_; // under which rows have texts
    base::Collection<ListItem> rows_;
    ListItem* current_ = nullptr;
};

} // namespace arvon::host
