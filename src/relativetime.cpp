#include "relativetime.h"

#include <QCoreApplication>
#include <QLocale>

namespace RelativeTime {

QString compact(const QDateTime &time, const QDateTime &now)
{
    const qint64 seconds = qMax<qint64>(0, time.secsTo(now));
    if (seconds < 60)
        return QCoreApplication::translate("RelativeTime", "now");
    if (seconds < 3600)
        return QCoreApplication::translate("RelativeTime", "%1 min").arg(seconds / 60);
    if (seconds < 86400)
        return QCoreApplication::translate("RelativeTime", "%1 h").arg(seconds / 3600);
    if (seconds < 7 * 86400)
        return QCoreApplication::translate("RelativeTime", "%1 d").arg(seconds / 86400);
    const QDate date = time.date();
    const QString format =
        date.year() == now.date().year() ? QStringLiteral("d MMM") : QStringLiteral("d MMM yyyy");
    return QLocale().toString(date, format);
}

} // namespace RelativeTime
