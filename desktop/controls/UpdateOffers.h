#pragma once

#include <QAbstractTableModel>

#include <string>
#include <vector>

namespace desktop {

/// What the updates component offers: a table of programs.
class UpdateOffers final : public QAbstractTableModel {
public:
    enum Column { Name, Installed, Offered, LastUpdated, Description, Columns };

    /// Takes the answer to "ShowUpdates". Throws ComponentError, rows unchanged, for one that cannot be read.
    void Load(const std::string& xml);
    void Clear();
    /// For `LastUpdated`, as QDate::toString takes it.
    void SetDateFormat(const QString& format) { dateFormat_ = format; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Offer {
        QString name, installed, offered, lastUpdated, description;
    };
    QString TextAt(const Offer& offer, int column) const;

    std::vector<Offer> offers_;
    QString dateFormat_ = "yyyy-MM-dd";
};

} // namespace desktop
