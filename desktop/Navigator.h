#pragma once

#include "desktop/HostBridge.h"
#include "desktop/NodeModel.h"

#include <QWidget>

class QTabBar;
class QTreeView;

namespace desktop {

/// The host's navigator: its tabs, and the nodes of the tab in front.
class Navigator final : public QWidget {
    Q_OBJECT

public:
    Navigator(HostBridge& bridge, const ToolStates& states, const Pictures& pictures);

    void Draw();
    void RefreshStates();
    /// Key of the tab in front; empty when there is none.
    QString Tab() const { return tab_; }
    /// The node that the host says is selected in it.
    QString SelectedNode() const { return selected_; }
    /// Opens the node's parents and then it, as the user would.
    void OpenNode(const QString& nodeKey);
    /// Opens the first top-level node, as the user would; its key, empty when there is none.
    QString OpenFirstNode();
    QTreeView& Tree() const { return *tree_; }

signals:
    /// The user asks for the context menu of a node, which its owner has just made.
    void ContextMenuReady(const QPoint& globalPosition);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void DrawTabs(const std::vector<arvon::host::model::Tab>& tabs);
    void ShowSelected();
    void TellTab(int index);
    void TellSelected(const QModelIndex& index);
    void TellEvent(const QModelIndex& index, int kind);
    void AskForContextMenu(const QPoint& position);

    HostBridge& bridge_;
    QTabBar* tabs_;
    QTreeView* tree_;
    NodeModel* nodes_;
    QString tab_, selected_;
    bool drawing_ = false;
};

} // namespace desktop
