#include "desktop/ToolListModel.h"

#include "desktop/Folding.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"

#include <QFont>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace desktop {

namespace {

QString TimeText(const QDateTime& time) {
    return QLocale().toString(time.time(), QLocale::ShortFormat);
}

} // namespace

ToolListModel::ToolListModel(const ToolStates& states, const Pictures& pictures, const QWidget& view,
                             QObject* parent)
    : QAbstractTableModel(parent), states_(states), pictures_(pictures), view_(view) {}

void ToolListModel::SetColumns(const std::vector<arvon::host::model::Column>& columns) {
    std::vector<Column> taken;
    for (const arvon::host::model::Column& column : columns)
        taken.push_back({ToQt(column.key), ToQt(column.caption)});
    const auto same = [](const Column& a, const Column& b) { return a.key == b.key; };
    if (taken.size() == columns_.size() && std::equal(taken.begin(), taken.end(), columns_.begin(), same)) {
        columns_.swap(taken);
        emit headerDataChanged(Qt::Horizontal, 0, StateColumn());
        return;
    }
    beginResetModel();
    columns_.swap(taken);
    rows_.clear();
    shown_.clear();
    endResetModel();
}

void ToolListModel::SetRows(const std::vector<arvon::host::model::ListRow>& rows) {
    std::vector<Row> taken;
    taken.reserve(rows.size());
    for (const arvon::host::model::ListRow& row : rows) {
        Row read;
        read.vrex = ToQt(row.key);
        read.checked = row.checked;
        read.current = row.current;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            // the first column holds the row's own text
            read.cells.append(ToQt(i == 0 ? row.text : row.SubItem(FromQt(columns_[i].key))));
        }
        taken.push_back(std::move(read));
    }
    const auto same = [](const Row& a, const Row& b) { return a.vrex == b.vrex && a.cells == b.cells; };
    if (taken.size() == rows_.size() && std::equal(taken.begin(), taken.end(), rows_.begin(), same)) {
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            rows_[i].checked = taken[i].checked;
            rows_[i].current = taken[i].current;
        }
        RefreshStates();
        return;
    }
    for (Row& row : taken)
        row.folded = Folded(row.cells.join(u'\n'));
    beginResetModel();
    rows_.swap(taken);
    ApplyFilter();
    endResetModel();
}

void ToolListModel::SetCheckBoxes(bool shown) {
    if (std::exchange(checkBoxes_, shown) != shown) RefreshStates();
}

void ToolListModel::SetFilter(const QString& typed) {
    QStringList words = FoldedWords(typed);
    if (words == words_) return;
    beginResetModel();
    words_.swap(words);
    ApplyFilter();
    endResetModel();
}

void ToolListModel::ApplyFilter() {
    shown_.clear();
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (HasAllWords(rows_[i].folded, words_)) shown_.push_back(i);
}

void ToolListModel::RefreshStates() {
    if (!shown_.empty()) emit dataChanged(index(0, 0), index(ShownCount() - 1, StateColumn()));
}

void ToolListModel::RefreshTimes() {
    if (shown_.empty()) return;
    emit dataChanged(index(0, StateColumn()), index(ShownCount() - 1, StateColumn()), {Qt::DisplayRole});
}

QString ToolListModel::TextOf(int row) const {
    return RowAt(row).cells.value(0);
}

QString ToolListModel::ColumnKey(int column) const {
    return column >= 0 && column < StateColumn() ? columns_[static_cast<std::size_t>(column)].key : QString();
}

int ToolListModel::CurrentRow() const {
    const auto found =
        std::find_if(shown_.begin(), shown_.end(), [&](std::size_t row) { return rows_[row].current; });
    return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

int ToolListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ShownCount();
}

int ToolListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || columns_.empty() ? 0 : StateColumn() + 1;
}

QVariant ToolListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= ShownCount()) return {};
    const Row& row = RowAt(index.row());
    if (role == Qt::ToolTipRole) return HintOf(row);
    if (role == Qt::FontRole) {
        const ToolState::Kind kind = states_.Of(row.vrex).kind;
        if (kind != ToolState::Kind::Running && kind != ToolState::Kind::Loaded) return {};
        QFont font = view_.font();
        font.setBold(true);
        return font;
    }
    if (index.column() == StateColumn()) return StateData(row, role);
    switch (role) {
    case Qt::DisplayRole:
        return row.cells.value(index.column());
    case Qt::CheckStateRole:
        if (index.column() != 0 || !checkBoxes_) return {};
        return row.checked ? Qt::Checked : Qt::Unchecked;
    case Qt::DecorationRole:
        if (index.column() != 0) return {};
        return ToolPicture(pictures_, states_.PictureOf(row.vrex), view_);
    case Qt::AccessibleDescriptionRole:
        return HintOf(row);
    default:
        return {};
    }
}

QVariant ToolListModel::StateData(const Row& row, int role) const {
    const ToolState state = states_.Of(row.vrex);
    const auto timed = [&](const text::Own& form) {
        return text::Of(form).arg(ElapsedText(state.since, QDateTime::currentDateTime()));
    };
    if (role == Qt::DecorationRole) {
        switch (state.kind) {
        case ToolState::Kind::Running:
        case ToolState::Kind::Loaded:
            return RunningMark(view_);
        case ToolState::Kind::Problem:
            return ProblemMark(view_);
        case ToolState::Kind::Ready:
            return {};
        }
    }
    if (role != Qt::DisplayRole) return {};
    switch (state.kind) {
    case ToolState::Kind::Running:
        return timed(text::state::Running);
    case ToolState::Kind::Loaded:
        return timed(text::state::Loaded);
    case ToolState::Kind::Problem:
        return text::Of(text::state::Problem);
    case ToolState::Kind::Ready:
        return {};
    }
    return {};
}

QString ToolListModel::HintOf(const Row& row) const {
    const ToolState state = states_.Of(row.vrex);
    switch (state.kind) {
    case ToolState::Kind::Running:
        return text::Of(text::state::RunningHint).arg(TimeText(state.since), QString::number(state.process));
    case ToolState::Kind::Loaded:
        return text::Of(text::state::LoadedHint).arg(TimeText(state.since));
    case ToolState::Kind::Problem:
        return state.problem;
    case ToolState::Kind::Ready:
        return {};
    }
    return {};
}

QVariant ToolListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    if (section == StateColumn()) return text::Of(text::list::Status);
    return section < StateColumn() ? columns_[static_cast<std::size_t>(section)].caption : QString();
}

Qt::ItemFlags ToolListModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index.column() == 0 && checkBoxes_ ? flags | Qt::ItemIsUserCheckable : flags;
}

bool ToolListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != 0) return false;
    emit CheckToggled(TextOf(index.row()), value.toInt() == Qt::Checked);
    return true;
}

} // namespace desktop
