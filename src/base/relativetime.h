#pragma once

#include <QDateTime>
#include <QString>

// How long ago something happened, in the short form that fits a list row: "now", "5 min",
// "3 h", "2 d", and the date itself after a week.
namespace RelativeTime {

QString compact(const QDateTime &time, const QDateTime &now);
// The long form for a time span in milliseconds: "A few seconds ago", "5 minutes ago" ...
// The singular texts cover one second only, so 61 seconds read "1 minutes ago".
QString ago(qint64 milliseconds);

} // namespace RelativeTime
