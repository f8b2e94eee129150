#include "views/MomentText.h"

#include <QLocale>
#include <QTimeZone>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString momentText(const QDateTime &moment, const QDateTime &now)
{
    constexpr qint64 daysOfNames = 6;
    // The interface speaks English, whatever the desktop's language.
    const QLocale english(QLocale::English, QLocale::UnitedKingdom);
    const QDateTime local = moment.toTimeZone(now.timeZone());
    const QDate day = local.date();
    const qint64 age = day.daysTo(now.date());
    if (age == 0) {
        return u"Today, "_s + local.time().toString(u"HH:mm"_s);
    }
    if (age == 1) {
        return u"Yesterday"_s;
    }
    if (age > 1 && age <= daysOfNames) {
        return english.toString(day, u"dddd"_s);
    }
    return english.toString(day, day.year() == now.date().year() ? u"d MMMM"_s : u"d MMMM yyyy"_s);
}

} // namespace vantrel
