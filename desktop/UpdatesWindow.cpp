#include "desktop/UpdatesWindow.h"

#include "base/ComponentError.h"
#include "base/XmlDocument.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace desktop {

namespace {

/// Numbers of string resources.
constexpr int nameText = 1;
constexpr int versionText = 2;
constexpr int lastUpdatedText = 3;
constexpr int titleText = 34;

QString Resource(const HostBridge& bridge, int id, const char* own = "") {
    const QString text = bridge.Text(id);
    return text.isEmpty() ? text::Of(own) : text;
}

} // namespace

UpdatesWindow::UpdatesWindow(const HostBridge& bridge, QWidget* parent)
    : QDialog(parent), bridge_(bridge), title_(new QLabel), programs_(new QTreeWidget) {
    setObjectName(QStringLiteral("updatesWindow"));
    title_->setWordWrap(true);
    programs_->setObjectName(QStringLiteral("offeredPrograms"));
    programs_->setRootIsDecorated(false);
    programs_->setUniformRowHeights(true);
    programs_->setAllColumnsShowFocus(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_);
    layout->addWidget(programs_, 1);
    layout->addWidget(buttons);
    resize(680, 320);
}

void UpdatesWindow::Offer(const QString& xml) {
    setWindowTitle(Resource(bridge_, titleText, text::updates::Title));
    setAccessibleName(windowTitle());
    programs_->clear();
    base::XmlDocument document;
    QString unreadable;
    try {
        document.LoadText(FromQt(xml));
    } catch (const base::ComponentError& failure) {
        unreadable = text::Of(text::updates::Unreadable).arg(ToQt(failure.Description()));
    }
    const bool isNew = unreadable.isEmpty() && document.Root().Attribute("ShowNew") == "-1";
    QStringList headers{Resource(bridge_, nameText), Resource(bridge_, versionText)};
    if (!isNew) headers.append(text::Of(text::updates::Installed));
    headers << Resource(bridge_, lastUpdatedText) << text::Of(text::updates::Description);
    programs_->setColumnCount(static_cast<int>(headers.size()));
    programs_->setHeaderLabels(headers);
    if (unreadable.isEmpty()) {
        for (const base::XmlNode& tool : document.Select("/Updates/Tool")) {
            QStringList cells{ToQt(tool.Attribute("Name")), ToQt(tool.Attribute("version"))};
            if (!isNew) cells.append(ToQt(tool.Attribute("installed")));
            cells << ToQt(tool.Attribute("LastUpdated")) << ToQt(tool.Text());
            auto* row = new QTreeWidgetItem(programs_, cells);
            row->setToolTip(static_cast<int>(cells.size()) - 1, cells.last());
        }
    }
    for (int column = 0; column < programs_->columnCount(); ++column)
        programs_->resizeColumnToContents(column);

    const bool none = programs_->topLevelItemCount() == 0;
    programs_->setVisible(!none);
    QString title = text::Of(isNew ? text::updates::New : text::updates::Newer);
    if (none) title = text::Of(isNew ? text::updates::NothingNew : text::updates::NothingNewer);
    title_->setText(unreadable.isEmpty() ? title : unreadable);
    programs_->setAccessibleName(title_->text());
    if (!none) programs_->setCurrentItem(programs_->topLevelItem(0));
    show();
    raise();
    activateWindow();
}

} // namespace desktop
