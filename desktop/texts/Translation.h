#pragma once

#include <QString>

#include <functional>

class QObject;

/// The desktop's own texts. English is built in; other languages are string modules beside the program,
/// texts/<language>/Desktop.dll, under the same numbers.
namespace desktop::text {

struct Own {
    int id; // 0: the same in every language
    const char* english;
};

/// In the language in force; in English where that has no such text.
QString Of(const Own& own);

/// `language`: as the host names it ("1031"). One without a module is English.
void UseLanguage(const QString& language);

/// Puts texts now, and again whenever another language is in force, as long as `owner` lives.
void Follow(QObject* owner, std::function<void()> put);

} // namespace desktop::text
