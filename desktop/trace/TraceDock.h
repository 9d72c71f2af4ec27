#pragma once

#include <QDockWidget>

namespace arvon::host {
class ReferenceHost;
}

namespace desktop {

/// Every message that went through the host's router, in order and nested as delivered: filtered, inspected,
/// and copied as a script for arvon-console. Records from its making on; keeps the newest messages within a
/// bound that it shows. The host must outlive it.
class TraceDock : public QDockWidget {
public:
    explicit TraceDock(arvon::host::ReferenceHost& host, QWidget* parent = nullptr);

    /// The user's messages among those shown (all of them, or the selected ones) as lines for arvon-console.
    QString Script() const;

private:
    class Panel;
    Panel* panel_; // the dock's widget
};

} // namespace desktop
