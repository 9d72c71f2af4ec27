#include "host/ListView.h"

#include "host/Errors.h"

#include <algorithm>

namespace arvon::host {

std::string ListItem::Key() const {
    trace_->Read("ListItem.Key", key_);
    return key_;
}

std::string ListItem::Text() const {
    trace_->Read("ListItem.Text", key_);
    return text_;
}

bool ListItem::Checked() const {
    trace_->Read("ListItem.Checked", key_);
    return checked_;
}

void ListItem::SetChecked(bool checked) {
    trace_->Call("ListItem.SetChecked", key_, checked);
    Check(checked);
}

void ListItem::Check(bool checked) {
    checked_ = checked;
    trace_->Changed(ModelPart::List);
}

void ListItem::AddSubItem(std::string_view columnKey, std::string_view text) {
    trace_->Call("ListItem.AddSubItem", key_, columnKey, text);
    for (const SubItem& present : subItems_) {
        if (*present.columnKey != columnKey) continue;
        Raise(base::errors::DuplicateKey,
              "the row \"" + text_ + "\" has a text under \"" + *present.columnKey + "\" already");
    }
    auto known = columnKeys_->find(columnKey);
    if (known == columnKeys_->end()) known = columnKeys_->emplace(columnKey).first;
    if (subItems_.empty()) subItems_.reserve(4);
    subItems_.push_back({&*known, std::string(text)});
    trace_->Changed(ModelPart::List);
}

model::ListRow ListItem::Snapshot(bool current) const {
    model::ListRow row{key_, text_, checked_, current, {}};
    row.subItems.reserve(subItems_.size());
    for (const SubItem& subItem : subItems_)
        row.subItems.emplace_back(*subItem.columnKey, subItem.text);
    return row;
}

bool ListView::CheckBoxes() const {
    trace_.Read("ListView.CheckBoxes");
    return checkBoxes_;
}

void ListView::Clear() {
    trace_.Call("ListView.Clear");
    current_ = nullptr;
    rows_.Clear();
    trace_.Changed(ModelPart::List);
}

IListItem& ListView::AddItem(std::string_view key, std::string_view text) {
    trace_.Call("ListView.AddItem", key, text);
    ListItem& added = rows_.Add(ListItem(trace_, columnKeys_, key, text), key);
    trace_.Changed(ModelPart::List);
    return added;
}

const IListItem* ListView::CurrentItem() const {
    trace_.Read("ListView.CurrentItem");
    return current_;
}

ListItem* ListView::FindText(std::string_view text) {
    for (std::size_t position = 1; position <= rows_.Count(); ++position)
        if (ListItem& row = rows_.Item(position); row.TextText() == text) return &row;
    return nullptr;
}

void ListView::SetCurrent(ListItem* row) {
    if (current_ == row) return;
    current_ = row;
    trace_.Changed(ModelPart::List);
}

bool ListView::HasColumn(std::string_view key) const {
    return std::any_of(definition_.columnHeaders.begin(), definition_.columnHeaders.end(),
                       [key](const auto& column) { return column.key == key; });
}

std::vector<model::ListRow> ListView::Rows() const {
    std::vector<model::ListRow> rows;
    rows.reserve(rows_.Count());
    for (const ListItem& row : rows_)
        rows.push_back(row.Snapshot(&row == current_));
    return rows;
}

std::vector<model::Column> ListView::Columns() const {
    std::vector<model::Column> columns;
    for (const auto& column : definition_.columnHeaders)
        columns.push_back({column.key, column.text, column.widthTwips});
    return columns;
}

} // namespace arvon::host
