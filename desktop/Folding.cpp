#include "desktop/Folding.h"

#include <algorithm>

namespace desktop {

namespace {

bool IsPlain(const QString& text) {
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

/// Letters whose mark is no part of its own that decomposing would split off.
QChar WithoutStroke(QChar c) {
    switch (c.unicode()) {
    case 0x0142:
        return u'l'; // ł
    case 0x00f8:
        return u'o'; // ø
    case 0x0111:
        return u'd'; // đ
    case 0x0131:
        return u'i'; // ı
    default:
        return c;
    }
}

} // namespace

QString Folded(const QString& text) {
    if (IsPlain(text)) return text.toLower();
    QString decomposed = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    decomposed.replace(u'ß', QLatin1String("ss"));
    QString folded;
    folded.reserve(decomposed.size());
    for (const QChar c : decomposed)
        if (!c.isMark()) folded.append(WithoutStroke(c));
    return folded;
}

bool HasAllWords(const QString& folded, const QStringList& foldedWords) {
    return std::all_of(foldedWords.cbegin(), foldedWords.cend(),
                       [&](const QString& word) { return folded.contains(word); });
}

QStringList FoldedWords(const QString& typed) {
    return Folded(typed).split(u' ', Qt::SkipEmptyParts);
}

} // namespace desktop
