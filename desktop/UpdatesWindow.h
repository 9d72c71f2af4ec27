#pragma once

#include "desktop/HostBridge.h"

#include <QDialog>

class QLabel;

namespace desktop {

class OfferPage;

/// What the updates component answered when a command made the component ask it (a menu, a task, a tool's
/// properties): new programs, or newer versions of installed ones. Where the updates control is in sight,
/// that shows the answer, and this window is not needed.
class UpdatesWindow final : public QDialog {
public:
    UpdatesWindow(const HostBridge& bridge, QWidget* parent);

    /// `answer`: the updates component's own description of it. Brings the window to the front.
    void Offer(const std::string& answer);

private:
    const HostBridge& bridge_;
    QLabel* title_;
    OfferPage* page_;
};

} // namespace desktop
