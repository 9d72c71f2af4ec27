#pragma once

#include "desktop/HostBridge.h"
#include "desktop/ToolListModel.h"

#include <QString>
#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QTreeView;

namespace desktop {

/// A list view of the host with its filter.
class ToolListPage final : public QWidget {
    Q_OBJECT

public:
    ToolListPage(HostBridge& bridge, const ToolStates& states, const Pictures& pictures,
                 const QString& viewKey);

    void Draw();
    void RefreshStates();
    void FocusFilter();
    /// Text of the host's current row; empty when there is none.
    QString Current() const { return current_; }
    /// Where the list's order came from, for the arrow in the header: key of a column.
    void ShowOrder(const QString& columnKey, bool descending);
    /// Widths and order of columns, for remembering.
    QByteArray HeaderState() const;
    void RestoreHeader(const QByteArray& state);
    QTreeView& List() const { return *list_; }
    QLineEdit& Filter() const { return *filter_; }

signals:
    void CurrentChanged(const QString& rowText);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class View;

    void SetFilter(const QString& typed);
    void DrawColumns();
    void DrawCount();
    void ShowCurrent();
    void TellSelected(const QModelIndex& index);
    void Open(const QModelIndex& index);
    void ClickHeader(int column);
    void DrawOrder();

    HostBridge& bridge_;
    QString viewKey_, current_, orderKey_;
    bool orderDescends_ = false;
    QLineEdit* filter_;
    QLabel* count_;
    QTreeView* list_;
    ToolListModel* rows_;
    QTimer clock_; // while something runs
    const ToolStates& states_;
    bool columnsPlaced_ = false;
    bool drawing_ = false;
};

} // namespace desktop
