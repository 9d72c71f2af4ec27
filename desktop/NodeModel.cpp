#include "desktop/NodeModel.h"

#include "desktop/QtText.h"

#include <QFont>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace desktop {

struct NodeModel::Item {
    QString key, caption;
    int level = 0;
    int row = 0;
    Item* parent = nullptr;
    std::vector<std::unique_ptr<Item>> items;
};

NodeModel::NodeModel(const ToolStates& states, const Pictures& pictures, const QWidget& view, QObject* parent)
    : QAbstractItemModel(parent), states_(states), pictures_(pictures), view_(view),
      root_(std::make_unique<Item>()) {}

NodeModel::~NodeModel() = default;

void NodeModel::Take(Item& item, const std::vector<arvon::host::model::Node>& nodes) {
    item.items.reserve(nodes.size());
    for (const arvon::host::model::Node& node : nodes) {
        auto taken = std::make_unique<Item>();
        taken->key = ToQt(node.key);
        taken->caption = ToQt(node.caption);
        taken->level = node.level;
        taken->row = static_cast<int>(item.items.size());
        taken->parent = &item;
        Take(*taken, node.nodes);
        item.items.push_back(std::move(taken));
    }
}

bool NodeModel::Same(const Item& a, const Item& b) {
    return a.key == b.key && a.caption == b.caption && a.level == b.level &&
           std::equal(a.items.begin(), a.items.end(), b.items.begin(), b.items.end(),
                      [](const auto& one, const auto& other) { return Same(*one, *other); });
}

bool NodeModel::SetNodes(const std::vector<arvon::host::model::Node>& nodes) {
    auto taken = std::make_unique<Item>();
    Take(*taken, nodes);
    if (Same(*taken, *root_)) return false;
    beginResetModel();
    root_ = std::move(taken);
    endResetModel();
    return true;
}

void NodeModel::RefreshStates() {
    TellChanged({});
}

void NodeModel::TellChanged(const QModelIndex& parent) {
    const int rows = rowCount(parent);
    if (rows == 0) return;
    emit dataChanged(index(0, 0, parent), index(rows - 1, 0, parent));
    for (int row = 0; row < rows; ++row)
        TellChanged(index(row, 0, parent));
}

const NodeModel::Item& NodeModel::ItemAt(const QModelIndex& index) const {
    return index.isValid() ? *static_cast<const Item*>(index.constInternalPointer()) : *root_;
}

QString NodeModel::KeyOf(const QModelIndex& index) const {
    return ItemAt(index).key;
}

int NodeModel::LevelOf(const QModelIndex& index) const {
    return ItemAt(index).level;
}

QModelIndex NodeModel::IndexOf(const QString& key) const {
    return Find(*root_, key);
}

QModelIndex NodeModel::Find(const Item& below, const QString& key) const {
    for (const auto& item : below.items) {
        if (item->key == key) return createIndex(item->row, 0, item.get());
        if (const QModelIndex found = Find(*item, key); found.isValid()) return found;
    }
    return {};
}

QModelIndex NodeModel::index(int row, int column, const QModelIndex& parent) const {
    const Item& item = ItemAt(parent);
    if (column != 0 || row < 0 || row >= static_cast<int>(item.items.size())) return {};
    return createIndex(row, 0, item.items[static_cast<std::size_t>(row)].get());
}

QModelIndex NodeModel::parent(const QModelIndex& index) const {
    const Item* above = index.isValid() ? ItemAt(index).parent : nullptr;
    return above && above != root_.get() ? createIndex(above->row, 0, above) : QModelIndex();
}

int NodeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(ItemAt(parent).items.size());
}

int NodeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool NodeModel::hasChildren(const QModelIndex& parent) const {
    const Item& item = ItemAt(parent);
    return !item.items.empty() || item.level == 1;
}

QVariant NodeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Item& item = ItemAt(index);
    const QString vrex = states_.VrexOf(item.key);
    switch (role) {
    case Qt::DisplayRole:
        return item.caption;
    case Qt::DecorationRole:
        if (const QIcon picture = pictures_.OfName(states_.PictureOf(vrex)); !picture.isNull())
            return picture;
        return view_.style()->standardIcon(item.level == 1 ? QStyle::SP_DirIcon : QStyle::SP_FileIcon);
    case Qt::FontRole: {
        const ToolState::Kind kind = vrex.isEmpty() ? ToolState::Kind::Ready : states_.Of(vrex).kind;
        if (kind != ToolState::Kind::Running && kind != ToolState::Kind::Loaded) return {};
        QFont font = view_.font();
        font.setBold(true);
        return font;
    }
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        return states_.ProblemOf(item.key);
    default:
        return {};
    }
}

} // namespace desktop
