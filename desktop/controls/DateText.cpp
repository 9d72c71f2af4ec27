#include "desktop/controls/DateText.h"

#include "base/ComponentError.h"
#include "base/DateText.h"
#include "desktop/QtText.h"

#include <QDate>

namespace desktop {

QString DateText(const QString& text, const QString& picture) {
    if (text.isEmpty()) return text;
    try {
        const base::CalendarTime time = base::ToCalendar(base::ToRecordDate(base::Value(FromQt(text))));
        return QDate(time.year, time.month, time.day).toString(QString(picture).replace('m', 'M'));
    } catch (const base::ComponentError&) {
        return text;
    }
}

} // namespace desktop
