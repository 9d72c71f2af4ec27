#include "desktop/controls/UpdateOffers.h"

#include "base/XmlDocument.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/DateText.h"

#include <array>
#include <utility>

namespace desktop {

bool UpdateOffers::Load(const std::string& xml) {
    base::XmlDocument document;
    document.LoadText(xml);
    std::vector<Offer> offers;
    for (const base::XmlNode& tool : document.Root().Children()) {
        if (!tool.IsElement()) continue;
        offers.push_back({ToQt(tool.Attribute("Name")), ToQt(tool.Attribute("installed")),
                          ToQt(tool.Attribute("version")), ToQt(tool.Attribute("LastUpdated")),
                          ToQt(tool.Text()).simplified()});
    }
    return Take(std::move(offers));
}

bool UpdateOffers::Clear() {
    return Take({});
}

bool UpdateOffers::Take(std::vector<Offer> offers) {
    if (offers == offers_) return false;
    beginResetModel();
    offers_ = std::move(offers);
    endResetModel();
    return true;
}

void UpdateOffers::Retranslate(const QString& dateFormat) {
    dateFormat_ = dateFormat;
    emit headerDataChanged(Qt::Horizontal, 0, Columns - 1);
    if (!offers_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, Columns - 1));
}

int UpdateOffers::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(offers_.size());
}

int UpdateOffers::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QString UpdateOffers::TextAt(const Offer& offer, int column) const {
    switch (column) {
    case Name:
        return offer.name;
    case Installed:
        return offer.installed;
    case Offered:
        return offer.offered;
    case LastUpdated:
        return DateText(offer.lastUpdated, dateFormat_);
    case Description:
        return offer.description;
    default:
        return {};
    }
}

QVariant UpdateOffers::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Offer& offer = offers_[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole) return TextAt(offer, index.column());
    if (role == Qt::ToolTipRole) return TextAt(offer, index.column()).left(500).toHtmlEscaped();
    return {};
}

QVariant UpdateOffers::headerData(int section, Qt::Orientation orientation, int role) const {
    constexpr std::array captions{text::updates::Name, text::updates::Installed, text::updates::Offered,
                                  text::updates::LastUpdated, text::updates::Description};
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 || section >= Columns)
        return {};
    return text::Of(captions[static_cast<std::size_t>(section)]);
}

} // namespace desktop
