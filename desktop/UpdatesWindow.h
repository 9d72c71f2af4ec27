#pragma once

#include "desktop/HostBridge.h"
#include "desktop/controls/UpdateOffers.h"

#include <QDialog>

class QLabel;
class QTreeView;

namespace desktop {

/// What the updates component offered when the component asked it to: new programs, or newer versions of
/// installed ones.
class UpdatesWindow final : public QDialog {
public:
    UpdatesWindow(const HostBridge& bridge, QWidget* parent);

    /// `xml`: the updates component's own description of it. Brings the window to the front.
    void Offer(const QString& xml);

private:
    const HostBridge& bridge_;
    UpdateOffers offers_;
    QLabel* title_;
    QTreeView* programs_;
};

} // namespace desktop
