#include "desktop/controls/PageList.h"

#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"

#include <QFont>

#include <algorithm>

namespace desktop {

void PageList::Search(const QString& needle) {
    beginResetModel();
    entries_.clear();
    searching_ = !needle.trimmed().isEmpty();
    for (std::size_t page = 0; page < sheet_.Pages().size(); ++page)
        if (auto fields = sheet_.Matching(page, needle); !fields.empty())
            entries_.push_back({page, std::move(fields)});
    endResetModel();
}

void PageList::PageChanged(std::size_t page) {
    if (const int row = RowOf(page); row >= 0) emit dataChanged(index(row), index(row));
}

void PageList::PagesChanged() {
    if (!entries_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
}

int PageList::RowOf(std::size_t page) const {
    const auto found = std::ranges::find(entries_, page, &Entry::page);
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

int PageList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant PageList::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Entry& entry = entries_[static_cast<std::size_t>(index.row())];
    const OptionPage& page = sheet_.Pages()[entry.page];
    switch (role) {
    case Qt::DisplayRole: {
        QString text = page.title.left(200);
        if (searching_) text += QString(" (%1)").arg(entry.fields.size());
        return page.changes > 0 ? QString(QChar(0x25CF)) + ' ' + text : text;
    }
    case Qt::FontRole: {
        QFont font;
        font.setBold(page.changes > 0);
        return font;
    }
    case Qt::ToolTipRole:
        return page.title.left(200).toHtmlEscaped();
    case Qt::AccessibleTextRole: {
        QString text = page.title;
        if (searching_)
            text = text::Of(text::options::PageMatches).arg(text, QString::number(entry.fields.size()));
        if (page.changes > 0)
            text = text::Of(text::options::PageChanges).arg(text, QString::number(page.changes));
        return text;
    }
    default:
        return {};
    }
}

} // namespace desktop
