#pragma once

#include <QString>
#include <QStringList>

namespace desktop {

/// For finding: without letter case and marks, so that "lozyska" finds "Łożyska".
QString Folded(const QString& text);

/// Whether every word is in the text; all of them folded.
bool HasAllWords(const QString& folded, const QStringList& foldedWords);

/// The folded words of what the user typed.
QStringList FoldedWords(const QString& typed);

} // namespace desktop
