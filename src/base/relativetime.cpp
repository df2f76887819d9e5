#include "base/relativetime.h"

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

QString ago(qint64 milliseconds)
{
    const auto tr = [](const char *text) {
        return QCoreApplication::translate("RelativeTime", text);
    };
    constexpr qint64 minute = 60000;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    const qint64 d = milliseconds;
    if (d < minute)
        return tr("A few seconds ago");
    if (d < minute + 1000)
        return tr("A minute ago");
    if (d < hour)
        return tr("%1 minutes ago").arg(d / minute);
    if (d < hour + 1000)
        return tr("An hour ago");
    if (d < day)
        return tr("%1 hours ago").arg(d / hour);
    if (d < day + 1000)
        return tr("A day ago");
    return tr("%1 days ago").arg(d / day);
}

} // namespace RelativeTime
