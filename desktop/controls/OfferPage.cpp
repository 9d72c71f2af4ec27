#include "desktop/controls/OfferPage.h"

#include "base/ComponentError.h"
#include "base/XmlDocument.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/Parts.h"

#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

#include <utility>

namespace desktop {

OfferPage::OfferPage(Sort sort) : sort_(sort), table_(new QTreeView), message_(PlainLabel()) {
    table_->setModel(&offers_);
    table_->setRootIsDecorated(false);
    table_->setUniformRowHeights(true);
    table_->setAlternatingRowColors(true);
    table_->setAllColumnsShowFocus(true);
    message_->setAlignment(Qt::AlignCenter);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(table_);
    column->addWidget(message_);
    Show({});
}

OfferPage::~OfferPage() {
    table_->setModel(nullptr); // the model goes before the view
}

void OfferPage::Show(Sort sort, const std::string& answer) {
    bool isOther = std::exchange(sort_, sort) != sort;
    const bool isNew = sort == Sort::New;
    QString text = text::Of(answer.empty() ? text::updates::NoAnswer
                            : isNew        ? text::updates::NoNew
                                           : text::updates::NoUpdates);
    try {
        isOther = (answer.empty() ? offers_.Clear() : offers_.Load(answer)) || isOther;
    } catch (const base::ComponentError& error) {
        offers_.Clear();
        text = text::Of(text::updates::Unreadable).arg(ToQt(error.Description()));
    }
    table_->setAccessibleName(text::Of(isNew ? text::updates::New : text::updates::Updates));
    table_->setColumnHidden(UpdateOffers::Installed, isNew);
    ShowMessage(text);
    if (isOther) FitColumns();
    if (!table_->currentIndex().isValid() && offers_.rowCount() > 0)
        table_->setCurrentIndex(offers_.index(0, 0));
}

void OfferPage::Wait() {
    offers_.Clear();
    ShowMessage(text::Of(text::updates::Asking));
}

void OfferPage::ShowMessage(const QString& text) {
    const bool any = offers_.rowCount() > 0;
    message_->setText(text);
    table_->setVisible(any);
    message_->setVisible(!any);
}

void OfferPage::FitColumns() {
    for (int column = 0; column < UpdateOffers::Description; ++column) {
        table_->resizeColumnToContents(column);
        table_->setColumnWidth(column, table_->columnWidth(column) + 12);
    }
}

void OfferPage::Retranslate(const QString& dateFormat) {
    offers_.Retranslate(dateFormat);
    FitColumns();
}

OfferPage::Sort SortOfOffer(const std::string& answer) {
    try {
        base::XmlDocument document;
        document.LoadText(answer);
        return document.Root().Attribute("ShowNew") == "-1" ? OfferPage::Sort::New : OfferPage::Sort::Updates;
    } catch (const base::ComponentError&) {
        return OfferPage::Sort::Updates;
    }
}

} // namespace desktop
