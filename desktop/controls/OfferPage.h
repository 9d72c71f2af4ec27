#pragma once

#include "desktop/controls/UpdateOffers.h"

#include <QWidget>

class QLabel;
class QTreeView;

namespace desktop {

/// What the updates component offers of one sort, as a table, or what there is to say instead of one.
class OfferPage final : public QWidget {
public:
    enum class Sort { Updates, New };

    explicit OfferPage(Sort sort);
    ~OfferPage() override;

    Sort Shown() const { return sort_; }
    /// The component's answer to "ShowUpdates"; an empty one is none.
    void Show(Sort sort, const std::string& answer);
    void Show(const std::string& answer) { Show(sort_, answer); }
    /// Shows that the answer is still to come.
    void Wait();
    /// As the string resource has it ("m/d/yyyy").
    void Retranslate(const QString& dateFormat);
    int Offers() const { return offers_.rowCount(); }
    QTreeView& Table() const { return *table_; }
    QLabel& Message() const { return *message_; }

private:
    void ShowMessage(const QString& text);
    void FitColumns();

    Sort sort_;
    UpdateOffers offers_;
    QTreeView* table_;
    QLabel* message_;
};

/// Which of the two an answer of the updates component is about; Updates for one that cannot be read.
OfferPage::Sort SortOfOffer(const std::string& answer);

} // namespace desktop
