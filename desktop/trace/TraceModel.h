#pragma once

#include "desktop/trace/MessageRecorder.h"

#include <QAbstractItemModel>
#include <QIcon>
#include <QSortFilterProxyModel>

#include <deque>

namespace desktop {

/// The recorded deliveries as a tree. The oldest go when there are more than the limits allow.
class TraceModel final : public QAbstractItemModel {
public:
    enum Column { Message, Direction, From, To, Duration, State, Parameters, Reply, Columns };

    TraceModel(TraceLimits limits, QIcon warning, QIcon error);

    /// Finished deliveries, oldest first.
    void Append(std::vector<std::unique_ptr<TraceNode>> nodes);
    void Clear();
    std::size_t Messages() const { return messages_; }
    /// Whether older ones had to go since the last Clear.
    bool HasDropped() const { return dropped_; }
    /// Of an index of this model; null for an invalid one.
    static const TraceNode* NodeAt(const QModelIndex& index);
    const TraceNode& RootAt(int row) const { return *roots_[static_cast<std::size_t>(row)]; }

    /// Everything about a delivery, for reading; the first 100,000 characters.
    static QString DetailsOf(const TraceNode& node);
    static QString StateOf(const TraceNode& node);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void DropSurplus();
    static QString TextAt(const TraceNode& node, int column);

    TraceLimits limits_;
    QIcon warning_, error_;
    std::deque<std::unique_ptr<TraceNode>> roots_;
    std::size_t firstRow_ = 0; // the row number that the first root was given
    std::size_t messages_ = 0;
    std::size_t bytes_ = 0;
    bool dropped_ = false;
};

/// Deliveries that a text, a listener or a trouble is found in, with those around them.
class TraceFilter final : public QSortFilterProxyModel {
public:
    TraceFilter() { setRecursiveFilteringEnabled(true); }
    void SetText(const QString& text);
    /// Sender or receiver; empty for all.
    void SetListener(const QString& listener);
    void SetOnlyTroubles(bool only);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QString text_;
    std::string listener_;
    bool onlyTroubles_ = false;
};

} // namespace desktop
