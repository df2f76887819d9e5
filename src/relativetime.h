#pragma once

#include <QDateTime>
#include <QString>

// How long ago something happened, in the short form that fits a list row: "now", "5 min",
// "3 h", "2 d", and the date itself after a week.
namespace RelativeTime {

QString compact(const QDateTime &time, const QDateTime &now);

} // namespace RelativeTime
