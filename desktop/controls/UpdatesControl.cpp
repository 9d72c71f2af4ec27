#include "base/ComponentError.h"
#include "base/Value.h"
#include "core/contract/Messages.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlKinds.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/Parts.h"
#include "desktop/controls/UpdateOffers.h"
#include "desktop/controls/WidgetOwner.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include <array>

namespace desktop {

namespace {

constexpr std::string_view updatesComponent = "Qillo110";

/// One of the two offers: a table, or what there is to say instead of one.
struct OfferPage {
    UpdateOffers offers;
    QWidget page;
    QTreeView* table = new QTreeView;
    QLabel* message = PlainLabel();

    OfferPage() {
        table->setModel(&offers);
        table->setRootIsDecorated(false);
        table->setUniformRowHeights(true);
        table->setAlternatingRowColors(true);
        table->setAllColumnsShowFocus(true);
        message->setAlignment(Qt::AlignCenter);
        auto* column = new QVBoxLayout(&page);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(table);
        column->addWidget(message);
    }

    void Show(const std::string& answer, const char* nothing) {
        QString text = ToQt(answer.empty() ? text::updates::NoAnswer : nothing);
        try {
            if (answer.empty()) {
                offers.Clear();
            } else {
                offers.Load(answer);
            }
        } catch (const base::ComponentError& error) {
            offers.Clear();
            text = ToQt(text::updates::Unreadable).arg(ToQt(error.Description()));
        }
        message->setText(text);
        const bool any = offers.rowCount() > 0;
        table->setVisible(any);
        message->setVisible(!any);
        if (!any) return;
        for (int column = 0; column < UpdateOffers::Description; ++column) {
            table->resizeColumnToContents(column);
            table->setColumnWidth(column, table->columnWidth(column) + 12);
        }
        if (!table->currentIndex().isValid()) table->setCurrentIndex(offers.index(0, 0));
    }
};

/// The programs that the updates component offers: newer versions, and new ones.
class UpdatesPanel final : public QWidget {
public:
    explicit UpdatesPanel(const ControlServices& services)
        : services_(services), tabs_(new QTabWidget), again_(new QPushButton), close_(new QPushButton) {
        tabs_->setObjectName("offers");
        updates_.table->setObjectName("updates");
        updates_.message->setObjectName("updatesMessage");
        new_.table->setObjectName("new");
        new_.message->setObjectName("newMessage");
        new_.table->setColumnHidden(UpdateOffers::Installed, true);
        again_->setObjectName("again");
        close_->setObjectName("close");
        tabs_->addTab(&updates_.page, QString());
        tabs_->addTab(&new_.page, QString());
        auto* buttons = new QHBoxLayout;
        buttons->addWidget(again_);
        buttons->addStretch();
        buttons->addWidget(close_);
        auto* column = new QVBoxLayout(this);
        column->addWidget(tabs_, 1);
        column->addLayout(buttons);
        connect(again_, &QPushButton::clicked, this, [this] { LookAgain(); });
        connect(close_, &QPushButton::clicked, this, [this] { Close(); });
        Retranslate();
        updates_.Show({}, text::updates::NoUpdates);
        new_.Show({}, text::updates::NoNew);
        resize(483, 383);
    }
    ~UpdatesPanel() override {
        for (OfferPage* offer : {&updates_, &new_}) {
            offer->page.setParent(nullptr); // a member, not the tabs' own
            offer->table->setModel(nullptr);
        }
    }

    void Reload() {
        const QPointer<UpdatesPanel> self(this);
        const std::string updates = Offered(false);
        if (!self) return;
        const std::string fresh = Offered(true);
        if (!self) return;
        updates_.Show(updates, text::updates::NoUpdates);
        new_.Show(fresh, text::updates::NoNew);
        PutTabs();
    }

    void Retranslate() {
        setAccessibleName(text::Of(services_, text::resource::Updates, text::updates::Panel));
        tabs_->setAccessibleName(accessibleName());
        tabs_->tabBar()->setAccessibleName(accessibleName());
        updates_.table->setAccessibleName(ToQt(text::updates::Updates));
        new_.table->setAccessibleName(ToQt(text::updates::New));
        const QString format =
            text::Of(services_, text::resource::DateFormat, "yyyy-mm-dd").replace('m', 'M');
        updates_.offers.SetDateFormat(format);
        new_.offers.SetDateFormat(format);
        NameButton(*again_, ToQt(text::updates::Again), ToQt(text::updates::AgainHint));
        NameButton(*close_, ToQt(text::updates::Close), QString());
        PutTabs();
    }

protected:
    void showEvent(QShowEvent* event) override {
        QWidget::showEvent(event);
        if (event->spontaneous()) return;
        close_->setVisible(!qobject_cast<QMainWindow*>(window())); // a page of the main window stays
        Reload();
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && close_->isVisible()) {
            close_->click();
        } else {
            QWidget::keyPressEvent(event);
        }
    }

private:
    std::string Offered(bool showNew) const {
        const auto request = services_.requestOf;
        if (!request) return {};
        const std::array parameters{
            arvon::host::ParameterRecord{"ShowNew", static_cast<std::int32_t>(arvon::ParameterType::Text),
                                         base::Value(showNew ? "-1" : "0")}};
        return request(updatesComponent, "ShowUpdates", parameters, controlSource);
    }
    std::string Ask(std::string_view type) const {
        const auto request = services_.request;
        return request ? request(type, {}, controlSource) : std::string();
    }
    /// The component loads what answers, and reads the catalogue anew.
    void LookAgain() {
        const QPointer<UpdatesPanel> self(this);
        Ask("SaveToolProperties");
        if (self) self->Reload();
    }
    void Close() { Ask("UnloadUpdateView"); }
    void PutTabs() {
        tabs_->setTabText(0, ToQt(text::updates::UpdatesCount).arg(updates_.offers.rowCount()));
        tabs_->setTabText(1, ToQt(text::updates::NewCount).arg(new_.offers.rowCount()));
    }

    ControlServices services_;
    OfferPage updates_, new_;
    QTabWidget* tabs_;
    QPushButton* again_;
    QPushButton* close_;
};

class UpdatesControl final : public ControlObject {
public:
    explicit UpdatesControl(const ControlServices& services) : services_(services) {}

    QWidget* Widget() override {
        return widget_.Get([this] { return new UpdatesPanel(services_); });
    }
    void Retranslate() override {
        if (widget_.IfAny()) widget_.IfAny()->Retranslate();
    }
    void Refresh() override {
        if (widget_.IfAny() && widget_.IfAny()->isVisible()) widget_.IfAny()->Reload();
    }

private:
    ControlServices services_;
    WidgetOwner<UpdatesPanel> widget_;
};

} // namespace

std::shared_ptr<ControlObject> MakeToolsUpdate(const ControlServices& services) {
    return std::make_shared<UpdatesControl>(services);
}

} // namespace desktop
