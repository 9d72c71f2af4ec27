#include "desktop/UpdatesWindow.h"

#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/OfferPage.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTreeView>
#include <QVBoxLayout>

namespace desktop {

UpdatesWindow::UpdatesWindow(const HostBridge& bridge, QWidget* parent)
    : QDialog(parent), bridge_(bridge), title_(new QLabel), page_(new OfferPage(OfferPage::Sort::Updates)) {
    setObjectName(QStringLiteral("updatesWindow"));
    title_->setObjectName(QStringLiteral("offerTitle"));
    title_->setWordWrap(true);
    page_->Table().setObjectName(QStringLiteral("offeredPrograms"));
    page_->Message().setObjectName(QStringLiteral("offerMessage"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* close = buttons->button(QDialogButtonBox::Close);
    text::Follow(this, [close] {
        close->setText(text::Of(text::updates::Close));
        close->setAccessibleName(close->text().remove(u'&'));
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_);
    layout->addWidget(page_, 1);
    layout->addWidget(buttons);
    resize(QSize(760, 320).boundedTo(screen()->availableSize()));
}

void UpdatesWindow::Offer(const std::string& answer) {
    const ControlServices& services = bridge_.Services();
    setWindowTitle(text::Of(services, text::resource::Updates, text::updates::Panel));
    setAccessibleName(windowTitle());
    page_->Retranslate(text::DateFormat(services));
    page_->Show(SortOfOffer(answer), answer);
    const bool isNew = page_->Shown() == OfferPage::Sort::New;
    title_->setText(text::Of(isNew ? text::updates::NewOffered : text::updates::UpdatesOffered));
    title_->setVisible(page_->Offers() > 0);
    show();
    raise();
    activateWindow();
}

} // namespace desktop
