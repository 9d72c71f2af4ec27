#pragma once

#include "desktop/controls/OptionSheet.h"

#include <QAbstractListModel>

#include <vector>

namespace desktop {

/// The pages of a sheet that hold what is searched for, with how many options do, and which are changed.
class PageList final : public QAbstractListModel {
public:
    explicit PageList(const OptionSheet& sheet) : sheet_(sheet) {}

    /// Takes the pages from the sheet anew, those that hold `needle`.
    void Search(const QString& needle);
    /// Another option of the page is changed, or one less.
    void PageChanged(std::size_t page);
    /// The same for any number of pages.
    void PagesChanged();
    std::size_t PageAt(int row) const { return entries_[static_cast<std::size_t>(row)].page; }
    const std::vector<std::size_t>& FieldsAt(int row) const {
        return entries_[static_cast<std::size_t>(row)].fields;
    }
    /// -1 when the page is not among those shown.
    int RowOf(std::size_t page) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Entry {
        std::size_t page;
        std::vector<std::size_t> fields;
    };
    const OptionSheet& sheet_;
    std::vector<Entry> entries_;
    bool searching_ = false;
};

} // namespace desktop
