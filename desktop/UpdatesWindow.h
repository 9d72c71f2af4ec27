#pragma once

#include "desktop/HostBridge.h"

#include <QDialog>

class QLabel;
class QTreeWidget;

namespace desktop {

/// What the updates component offers: new programs, or newer versions of installed ones.
class UpdatesWindow final : public QDialog {
public:
    UpdatesWindow(const HostBridge& bridge, QWidget* parent);

    /// `xml`: the component's own description of it. Brings the window to the front.
    void Offer(const QString& xml);

private:
    const HostBridge& bridge_;
    QLabel* title_;
    QTreeWidget* programs_;
};

} // namespace desktop
