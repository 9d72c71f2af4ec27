#pragma once

#include "desktop/Pictures.h"
#include "desktop/ToolStates.h"
#include "host/Model.h"

#include <QAbstractTableModel>
#include <QString>
#include <QStringList>

#include <vector>

class QWidget;

namespace desktop {

/// The rows of a list view of the host, those that match the filter, with what is known of each row's tool.
/// Columns: the host's, and the state of the tool behind them.
class ToolListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    /// `view`: whose palette and style marks are drawn by.
    ToolListModel(const ToolStates& states, const Pictures& pictures, const QWidget& view, QObject* parent);

    void SetColumns(const std::vector<arvon::host::model::Column>& columns);
    /// Rows that are the same but for their checks keep their places and what is selected.
    void SetRows(const std::vector<arvon::host::model::ListRow>& rows);
    void SetCheckBoxes(bool shown);
    void SetFilter(const QString& typed);
    /// The states of tools may have changed: draws them anew.
    void RefreshStates();
    /// Draws the times of what runs anew.
    void RefreshTimes();

    int TotalCount() const { return static_cast<int>(rows_.size()); }
    int ShownCount() const { return static_cast<int>(shown_.size()); }
    QString TextOf(int row) const;
    QString ColumnKey(int column) const;
    /// Row of the host's current one; -1 when there is none or it is filtered out.
    int CurrentRow() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override { return rowCount(parent) > 0; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Tells CheckToggled; the row changes when the host's does.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    void CheckToggled(const QString& rowText, bool checked);

private:
    struct Row {
        QString vrex;
        QStringList cells; // by host column
        QString folded;
        bool checked = false;
        bool current = false;
    };
    struct Column {
        QString key, caption;
    };

    const Row& RowAt(int row) const { return rows_[shown_[static_cast<std::size_t>(row)]]; }
    int StateColumn() const { return static_cast<int>(columns_.size()); }
    QVariant StateData(const Row& row, int role) const;
    QString HintOf(const Row& row) const;
    void ApplyFilter();

    const ToolStates& states_;
    const Pictures& pictures_;
    const QWidget& view_;
    std::vector<Column> columns_;
    std::vector<Row> rows_;
    std::vector<std::size_t> shown_;
    QStringList words_;
    bool checkBoxes_ = true;
};

} // namespace desktop
