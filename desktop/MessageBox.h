#pragma once

#include <QString>

class QWidget;

namespace desktop {

/// A message box of the system, answered before this returns. `style`: the icon, 16 (critical), 32
/// (question), 48 (warning), 64 (information), else none. Without a title the host's own stands.
void ShowMessageBox(QWidget* parent, const QString& text, int style, const QString& title);

/// Asks before something that cannot be undone; No is the default.
bool Confirm(QWidget* parent, const QString& title, const QString& question, const QString& consequence,
             const QString& doIt);

} // namespace desktop
