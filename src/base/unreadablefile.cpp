#include "base/unreadablefile.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>

QString UnreadableFile::keep(const QString &path, const QString &failure)
{
    const QString copy = path + QStringLiteral(".unreadable-") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss"));
    if (!QFile::copy(path, copy)) {
        qWarning().noquote() << "Unable to keep a copy of the unreadable file" << path;
        return failure;
    }
    qWarning().noquote() << "Kept a copy of the unreadable file" << path << "as" << copy;
    return failure + QLatin1Char('\n') + tr("The file was kept unchanged as %1").arg(copy);
}
