#include "desktop/HostWindows.h"

#include "desktop/Pictures.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlObject.h"

#include <QDialog>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace desktop {

using arvon::host::ReferenceHost;

/// Shows the control of a view. Closing it is asked of the host; it goes when the host's window does.
class HostWindows::Window_ final : public QDialog {
public:
    Window_(HostBridge& bridge, const QString& viewKey, QWidget* parent)
        : QDialog(parent), bridge_(bridge), viewKey_(viewKey) {
        setObjectName(viewKey);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
    }
    void reject() override {
        bridge_.Do([key = FromQt(viewKey_)](ReferenceHost& host) { host.CloseWindow(key); });
    }
    void Describe(const arvon::host::model::View& view) {
        setWindowTitle(ToQt(view.caption));
        setAccessibleName(windowTitle());
        if (view.widthTwips <= 0 || view.heightTwips <= 0 || isVisible()) return;
        const QSize asked(PixelsOfTwips(*this, view.widthTwips), PixelsOfTwips(*this, view.heightTwips));
        resize(asked.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize()));
    }

private:
    HostBridge& bridge_;
    QString viewKey_;
};

HostWindows::HostWindows(HostBridge& bridge, QWidget& mainWindow)
    : QObject(&mainWindow), bridge_(bridge), mainWindow_(mainWindow) {
    burial_.setInterval(std::chrono::milliseconds(20));
    connect(&burial_, &QTimer::timeout, this, [this] {
        if (bridge_.IsWorking()) return;
        burial_.stop();
        for (const QPointer<QDialog>& window : std::exchange(buried_, {}))
            delete window;
    });
    // without it nothing is under way that a window would have to wait for
    connect(&bridge, &QObject::destroyed, &burial_, &QTimer::stop);
}

HostWindows::~HostWindows() {
    for (const QPointer<QDialog>& window : buried_)
        delete window;
    for (QDialog* window : windows_)
        delete window;
}

std::shared_ptr<ControlObject> HostWindows::ControlOf(const QString& viewKey) const {
    return std::dynamic_pointer_cast<ControlObject>(bridge_.Host().ControlOf(FromQt(viewKey)));
}

QWidget* HostWindows::WidgetOf(const QString& viewKey) {
    const std::shared_ptr<ControlObject> control = ControlOf(viewKey);
    return control ? control->Widget() : nullptr;
}

void HostWindows::Draw() {
    const std::vector<arvon::host::model::View> open = bridge_.Model().Windows();
    for (const QString& key : windows_.keys()) {
        const bool stays = std::any_of(open.begin(), open.end(), [&](const arvon::host::model::View& view) {
            return ToQt(view.key) == key;
        });
        if (!stays) Bury(windows_.take(key));
    }
    for (const arvon::host::model::View& view : open) {
        const QString key = ToQt(view.key);
        if (QDialog* shown = windows_.value(key)) {
            static_cast<Window_*>(shown)->Describe(view);
            continue;
        }
        QWidget* widget = WidgetOf(key);
        if (!widget) continue;
        auto* window = new Window_(bridge_, key, &mainWindow_);
        window->layout()->addWidget(widget);
        widget->show();
        window->Describe(view);
        windows_.insert(key, window);
        window->show();
    }
}

void HostWindows::Bury(QDialog* window) {
    window->hide();
    buried_.emplace_back(window);
    burial_.start();
}

std::vector<std::shared_ptr<ControlObject>> HostWindows::Controls() const {
    std::vector<std::shared_ptr<ControlObject>> controls;
    for (const arvon::host::model::View& view : bridge_.Model().Views()) {
        if (view.control.empty()) continue;
        if (std::shared_ptr<ControlObject> control = ControlOf(ToQt(view.key))) controls.push_back(control);
    }
    return controls;
}

void HostWindows::Retranslate() {
    for (const std::shared_ptr<ControlObject>& control : Controls())
        control->Retranslate();
}

bool HostWindows::TakeOffer(const std::string& answer) {
    bool taken = false;
    for (const std::shared_ptr<ControlObject>& control : Controls())
        taken = control->TakeOffer(answer) || taken;
    return taken;
}

bool HostWindows::HasChanges() const {
    return std::any_of(windows_.keyBegin(), windows_.keyEnd(), [this](const QString& viewKey) {
        const std::shared_ptr<ControlObject> control = ControlOf(viewKey);
        return control && control->HasChanges();
    });
}

void HostWindows::RefreshControls() {
    for (const std::shared_ptr<ControlObject>& control : Controls())
        control->Refresh();
}

} // namespace desktop
