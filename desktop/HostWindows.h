#pragma once

#include "desktop/HostBridge.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <vector>

class QDialog;
class QWidget;

namespace desktop {

class ControlObject;

/// The host's control views: their controls as widgets, and the windows that the host has open. Goes with the
/// main window.
class HostWindows final : public QObject {
    Q_OBJECT

public:
    HostWindows(HostBridge& bridge, QWidget& mainWindow);
    ~HostWindows() override;

    /// Opens, changes and closes windows as the host's model says.
    void Draw();
    /// The control's widget of a view, for showing it in place; null when the view has no control.
    QWidget* WidgetOf(const QString& viewKey);
    /// Every control shows the texts of the language in force.
    void Retranslate();
    /// The controls that can be seen ask the component anew.
    void RefreshControls();
    /// True when a control in sight shows it.
    bool TakeOffer(const std::string& answer);
    /// Whether closing a window that is open would lose what was typed.
    bool HasChanges() const;
    QDialog* Window(const QString& viewKey) const { return windows_.value(viewKey); }

private:
    class Window_;

    std::shared_ptr<ControlObject> ControlOf(const QString& viewKey) const;
    std::vector<std::shared_ptr<ControlObject>> Controls() const;
    void Bury(QDialog* window);

    HostBridge& bridge_;
    QWidget& mainWindow_;
    QHash<QString, QDialog*> windows_;      // by view key
    std::vector<QPointer<QDialog>> buried_; // closed while their own click is still under way
    QTimer burial_;
};

} // namespace desktop
