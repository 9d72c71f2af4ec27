#include "desktop/UpdatesWindow.h"

#include "base/ComponentError.h"
#include "base/XmlDocument.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace desktop {

namespace {

/// Numbers of string resources.
constexpr int dateFormatText = 13;
constexpr int titleText = 34;

bool OffersNew(const std::string& xml) {
    base::XmlDocument document;
    document.LoadText(xml);
    return document.Root().Attribute("ShowNew") == "-1";
}

} // namespace

UpdatesWindow::UpdatesWindow(const HostBridge& bridge, QWidget* parent)
    : QDialog(parent), bridge_(bridge), title_(new QLabel), programs_(new QTreeView(this)) {
    setObjectName(QStringLiteral("updatesWindow"));
    title_->setObjectName(QStringLiteral("offerTitle"));
    title_->setWordWrap(true);
    programs_->setObjectName(QStringLiteral("offeredPrograms"));
    programs_->setModel(&offers_);
    programs_->setRootIsDecorated(false);
    programs_->setUniformRowHeights(true);
    programs_->setAllColumnsShowFocus(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* close = buttons->button(QDialogButtonBox::Close);
    close->setAccessibleName(close->text().remove(u'&'));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_);
    layout->addWidget(programs_, 1);
    layout->addWidget(buttons);
    resize(760, 320);
}

void UpdatesWindow::Offer(const QString& xml) {
    const QString caption = bridge_.Text(titleText);
    setWindowTitle(caption.isEmpty() ? text::Of(text::updates::Title) : caption);
    setAccessibleName(windowTitle());
    if (const QString format = bridge_.Text(dateFormatText); !format.isEmpty())
        offers_.SetDateFormat(QString(format).replace(u'm', u'M'));
    bool isNew = false;
    QString unreadable;
    try {
        isNew = OffersNew(FromQt(xml));
        offers_.Load(FromQt(xml));
    } catch (const base::ComponentError& failure) {
        offers_.Clear();
        unreadable = text::Of(text::updates::Unreadable).arg(ToQt(failure.Description()));
    }
    const bool none = offers_.rowCount() == 0;
    QString title = text::Of(isNew ? text::updates::New : text::updates::Newer);
    if (none) title = text::Of(isNew ? text::updates::NothingNew : text::updates::NothingNewer);
    title_->setText(unreadable.isEmpty() ? title : unreadable);
    programs_->setAccessibleName(title_->text());
    programs_->setVisible(!none);
    programs_->setColumnHidden(UpdateOffers::Installed, isNew);
    for (int column = 0; column < UpdateOffers::Description; ++column)
        programs_->resizeColumnToContents(column);
    programs_->setCurrentIndex(offers_.index(0, 0));
    show();
    raise();
    activateWindow();
}

} // namespace desktop
