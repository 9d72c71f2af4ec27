#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace desktop {

/// The system's texts are UTF-8; what is no UTF-8 shows as U+FFFD.
inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

/// For captions of buttons, menus and tabs, which take "&" as the mark of a shortcut.
inline QString EscapedMnemonics(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace desktop
