#pragma once

#include <QAbstractTableModel>

#include <string>
#include <vector>

namespace desktop {

/// What the updates component offers: a table of programs.
class UpdateOffers final : public QAbstractTableModel {
public:
    enum Column { Name, Installed, Offered, LastUpdated, Description, Columns };

    /// Takes the answer to "ShowUpdates". True when it brings other rows; those that are there already stay,
    /// with whatever a view has selected of them. Throws ComponentError, rows unchanged, for an answer that
    /// cannot be read.
    bool Load(const std::string& xml);
    bool Clear();
    /// For `LastUpdated`, as DateText takes it. The captions are told anew, too.
    void Retranslate(const QString& dateFormat);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Offer {
        QString name, installed, offered, lastUpdated, description;
        bool operator==(const Offer&) const = default;
    };
    bool Take(std::vector<Offer> offers);
    QString TextAt(const Offer& offer, int column) const;

    std::vector<Offer> offers_;
    QString dateFormat_ = "yyyy-mm-dd";
};

} // namespace desktop
