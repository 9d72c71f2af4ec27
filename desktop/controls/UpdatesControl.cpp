#include "base/Value.h"
#include "core/contract/Messages.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlKinds.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/OfferPage.h"
#include "desktop/controls/Parts.h"
#include "desktop/controls/WidgetOwner.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace desktop {

namespace {

constexpr std::string_view updatesComponent = "Qillo110";

/// The programs that the updates component offers: newer versions, and new ones.
class UpdatesPanel final : public QWidget {
public:
    explicit UpdatesPanel(const ControlServices& services)
        : services_(services), updates_(new OfferPage(OfferPage::Sort::Updates)),
          new_(new OfferPage(OfferPage::Sort::New)), tabs_(new QTabWidget), again_(new QPushButton),
          close_(new QPushButton) {
        tabs_->setObjectName("offers");
        updates_->Table().setObjectName("updates");
        updates_->Message().setObjectName("updatesMessage");
        new_->Table().setObjectName("new");
        new_->Message().setObjectName("newMessage");
        again_->setObjectName("again");
        close_->setObjectName("close");
        tabs_->addTab(updates_, QString());
        tabs_->addTab(new_, QString());
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
        resize(483, 383);
    }

    void Reload() {
        const QPointer<UpdatesPanel> self(this);
        const std::string updates = Offered(false);
        if (!self) return;
        const std::string fresh = Offered(true);
        if (!self) return;
        if (updates.empty() && fresh.empty() && !looked_) {
            LookFirst();
            return;
        }
        looked_ = true;
        updates_->Show(updates);
        new_->Show(fresh);
        PutTabs();
    }

    /// Shows what somebody else was answered, in front. What the component was answered because this panel
    /// looked again changes nothing about which page is in front.
    void Take(const std::string& answer) {
        OfferPage* page = SortOfOffer(answer) == OfferPage::Sort::New ? new_ : updates_;
        page->Show(answer);
        if (looking_ == 0) tabs_->setCurrentWidget(page);
        PutTabs();
    }

    void Retranslate() {
        setAccessibleName(text::Of(services_, text::resource::Updates, text::updates::Panel));
        tabs_->setAccessibleName(accessibleName());
        tabs_->tabBar()->setAccessibleName(accessibleName());
        const QString format = text::DateFormat(services_);
        updates_->Retranslate(format);
        new_->Retranslate(format);
        NameButton(*again_, text::Of(text::updates::Again), text::Of(text::updates::AgainHint));
        NameButton(*close_, text::Of(text::updates::Close), QString());
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
        ++looking_;
        Ask("SaveToolProperties");
        if (!self) return;
        looked_ = true;
        Reload();
        if (!self) return;
        // what the component was answered meanwhile is given to this panel from the loop, before this
        QTimer::singleShot(0, this, [this] { --looking_; });
    }
    /// Nobody answers: what answers may only not be loaded yet.
    void LookFirst() {
        updates_->Wait();
        new_->Wait();
        PutTabs();
        if (std::exchange(waiting_, true)) return;
        QTimer::singleShot(0, this, [this] { // not from inside the drawing
            const QPointer<UpdatesPanel> self(this);
            if (isVisible() && !looked_) LookAgain();
            if (self) waiting_ = false;
        });
    }
    void Close() { Ask("UnloadUpdateView"); }
    void PutTabs() {
        if (!looked_) { // nothing to count yet
            tabs_->setTabText(0, text::Of(text::updates::Updates));
            tabs_->setTabText(1, text::Of(text::updates::New));
            return;
        }
        tabs_->setTabText(0, text::Of(text::updates::UpdatesCount).arg(updates_->Offers()));
        tabs_->setTabText(1, text::Of(text::updates::NewCount).arg(new_->Offers()));
    }

    ControlServices services_;
    bool looked_ = false;  // there was an answer, or the component has looked for one
    bool waiting_ = false; // for the first look
    int looking_ = 0;      // looks under way
    OfferPage* updates_;
    OfferPage* new_;
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
    bool TakeOffer(const std::string& answer) override {
        UpdatesPanel* panel = widget_.IfAny();
        if (!panel || !panel->isVisible()) return false;
        panel->Take(answer);
        return true;
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
