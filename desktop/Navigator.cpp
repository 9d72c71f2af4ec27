#include "desktop/Navigator.h"

#include "core/contract/EventShapes.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"
#include "desktop/controls/Parts.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSet>
#include <QTabBar>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace desktop {

namespace eventKind = arvon::eventKind;
using arvon::host::ReferenceHost;

Navigator::Navigator(HostBridge& bridge, const ToolStates& states, const Pictures& pictures)
    : bridge_(bridge), tabs_(new QTabBar), tree_(new QTreeView),
      nodes_(new NodeModel(states, pictures, *tree_, this)) {
    setObjectName(QStringLiteral("navigator"));
    tabs_->setObjectName(QStringLiteral("tabs"));
    text::Follow(this, [this] {
        tabs_->setAccessibleName(text::Of(text::navigator::Tabs));
        tree_->setAccessibleName(text::Of(text::navigator::Tree));
    });
    tabs_->setDrawBase(false);
    tabs_->setExpanding(false);
    tree_->setObjectName(QStringLiteral("tree"));
    tree_->setModel(nodes_);
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setContextMenuPolicy(Qt::CustomContextMenu);
    tree_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree_->setExpandsOnDoubleClick(false);
    tree_->installEventFilter(this);
    DimWithoutFocus(*tree_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tabs_);
    layout->addWidget(tree_);

    connect(tabs_, &QTabBar::currentChanged, this, &Navigator::TellTab);
    // a click on the tab in front changes nothing and is told all the same
    connect(tabs_, &QTabBar::tabBarClicked, this, [this](int index) {
        if (index == tabs_->currentIndex()) TellTab(index);
    });
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, &Navigator::TellSelected);
    // a click on the node that is current already asks for it again, as in after a control took its place
    connect(tree_, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        if (nodes_->KeyOf(index) == selected_) TellEvent(index, eventKind::Selected);
    });
    connect(tree_, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        if (!drawing_ && nodes_->LevelOf(index) == 1) TellEvent(index, eventKind::Expanded);
    });
    connect(tree_, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { TellEvent(index, eventKind::Opened); });
    connect(tree_, &QTreeView::customContextMenuRequested, this, &Navigator::AskForContextMenu);
}

bool Navigator::eventFilter(QObject* watched, QEvent* event) {
    if (watched == tree_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            TellEvent(tree_->currentIndex(), eventKind::Opened);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void Navigator::Draw() {
    const QScopedValueRollback drawing(drawing_, true);
    const std::vector<arvon::host::model::Tab> tabs = bridge_.Shown().Tabs();
    DrawTabs(tabs);
    const auto shown = std::find_if(tabs.begin(), tabs.end(), [this](const arvon::host::model::Tab& tab) {
        return ToQt(tab.key) == tab_;
    });
    if (shown == tabs.end()) {
        nodes_->SetNodes({});
        selected_.clear();
        return;
    }
    selected_ = ToQt(shown->selected);
    QSet<QString> opened;
    const auto remember = [&](const auto& self, const QModelIndex& parent) -> void {
        for (int row = 0; row < nodes_->rowCount(parent); ++row) {
            const QModelIndex index = nodes_->index(row, 0, parent);
            if (!tree_->isExpanded(index)) continue;
            opened.insert(nodes_->KeyOf(index));
            self(self, index);
        }
    };
    remember(remember, {});
    const int scrolled = tree_->verticalScrollBar()->value();
    if (nodes_->SetNodes(shown->nodes)) {
        for (const QString& key : opened)
            tree_->expand(nodes_->IndexOf(key));
        tree_->verticalScrollBar()->setValue(scrolled);
    }
    ShowSelected();
}

void Navigator::DrawTabs(const std::vector<arvon::host::model::Tab>& tabs) {
    const std::string inFront = bridge_.Model().CurrentControl();
    std::vector<const arvon::host::model::Tab*> visible;
    for (const arvon::host::model::Tab& tab : tabs)
        if (tab.visible) visible.push_back(&tab);
    while (tabs_->count() > static_cast<int>(visible.size()))
        tabs_->removeTab(tabs_->count() - 1);
    tab_.clear();
    for (int i = 0; i < static_cast<int>(visible.size()); ++i) {
        const arvon::host::model::Tab& tab = *visible[static_cast<std::size_t>(i)];
        if (i >= tabs_->count()) tabs_->addTab({});
        tabs_->setTabText(i, EscapedMnemonics(ToQt(tab.caption)));
        tabs_->setTabData(i, ToQt(tab.key));
        tabs_->setTabEnabled(i, tab.enabled);
        if (tab.key == inFront || tab_.isEmpty()) {
            tab_ = ToQt(tab.key);
            tabs_->setCurrentIndex(i);
        }
    }
    tabs_->setVisible(tabs_->count() > 0);
}

void Navigator::ShowSelected() {
    const QModelIndex index = nodes_->IndexOf(selected_);
    if (!index.isValid()) {
        tree_->clearSelection();
        return;
    }
    if (tree_->currentIndex() != index || !tree_->selectionModel()->isSelected(index))
        tree_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

void Navigator::RefreshStates() {
    nodes_->RefreshStates();
}

void Navigator::OpenNode(const QString& nodeKey) {
    const QModelIndex index = nodes_->IndexOf(nodeKey);
    if (!index.isValid()) return;
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
        tree_->expand(above);
    tree_->setCurrentIndex(index);
}

QString Navigator::OpenFirstNode() {
    const QModelIndex first = nodes_->index(0, 0);
    if (!first.isValid()) return {};
    tree_->setCurrentIndex(first);
    return nodes_->KeyOf(first);
}

void Navigator::TellTab(int index) {
    if (drawing_ || index < 0) return;
    bridge_.Do([key = FromQt(tabs_->tabData(index).toString())](ReferenceHost& host) { host.TabEvent(key); });
}

void Navigator::TellSelected(const QModelIndex& index) {
    if (!drawing_ && index.isValid()) TellEvent(index, eventKind::Selected);
}

void Navigator::TellEvent(const QModelIndex& index, int kind) {
    if (!index.isValid()) return;
    const QString key = nodes_->KeyOf(index);
    const QString what = kind == eventKind::Opened ? text::Of(text::status::Launching).arg(key) : QString();
    bridge_.Do([tab = FromQt(tab_), node = FromQt(key),
                kind](ReferenceHost& host) { host.NodeEvent(tab, node, kind); },
               what);
}

void Navigator::AskForContextMenu(const QPoint& position) {
    QModelIndex index = tree_->indexAt(position);
    if (!index.isValid()) index = tree_->currentIndex();
    if (!index.isValid()) return;
    const QPoint place = tree_->viewport()->mapToGlobal(tree_->visualRect(index).center());
    bridge_.Do([this, tab = FromQt(tab_), node = FromQt(nodes_->KeyOf(index)), place](ReferenceHost& host) {
        host.NodeEvent(tab, node, eventKind::ContextMenu);
        emit ContextMenuReady(place);
    });
}

} // namespace desktop
