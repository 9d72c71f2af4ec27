#pragma once

#include "desktop/Pictures.h"
#include "desktop/ToolStates.h"
#include "host/Model.h"

#include <QAbstractItemModel>
#include <QString>

#include <memory>
#include <vector>

class QWidget;

namespace desktop {

/// The nodes of one tab of the host's navigator.
class NodeModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    NodeModel(const ToolStates& states, const Pictures& pictures, const QWidget& view, QObject* parent);
    ~NodeModel() override;

    /// False when these are the nodes shown already.
    bool SetNodes(const std::vector<arvon::host::model::Node>& nodes);
    void RefreshStates();

    QString KeyOf(const QModelIndex& index) const;
    int LevelOf(const QModelIndex& index) const;
    /// Invalid when there is none.
    QModelIndex IndexOf(const QString& key) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    /// A top-level node may get nodes when it is opened.
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Item;

    const Item& ItemAt(const QModelIndex& index) const;
    static void Take(Item& item, const std::vector<arvon::host::model::Node>& nodes);
    static bool Same(const Item& a, const Item& b);
    QModelIndex Find(const Item& below, const QString& key) const;
    void TellChanged(const QModelIndex& parent);

    const ToolStates& states_;
    const Pictures& pictures_;
    const QWidget& view_;
    std::unique_ptr<Item> root_;
};

} // namespace desktop
