#pragma once

#include <QMenu>

namespace desktop {

class HostBridge;

/// The languages that the installation has texts in; choosing one switches the host.
class LanguageMenu final : public QMenu {
public:
    explicit LanguageMenu(HostBridge& bridge, QWidget* parent);

    /// Marks the language of the host.
    void MarkCurrent();

private:
    HostBridge& bridge_;
};

} // namespace desktop
