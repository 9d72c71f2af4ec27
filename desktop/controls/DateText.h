#pragma once

#include <QString>

namespace desktop {

/// A record's date as a picture such as "m/d/yyyy" shows it; a text that is no date stays as it is.
QString DateText(const QString& text, const QString& picture);

} // namespace desktop
