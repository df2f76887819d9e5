#include "unreadablefile.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>

QString UnreadableFile::keep(const QString &path)
{
    const QString copy = path + QStringLiteral(".unreadable-") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss"));
    if (!QFile::copy(path, copy)) {
        qWarning().noquote() << "Unable to keep a copy of the unreadable file" << path;
        return QString();
    }
    qWarning().noquote() << "Kept a copy of the unreadable file" << path << "as" << copy;
    return copy;
}

QString UnreadableFile::keepAndDescribe(const QString &path, const QString &failure)
{
    const QString copy = keep(path);
    if (copy.isEmpty())
        return failure;
    return failure + QLatin1Char('\n') + tr("The file was kept unchanged as %1").arg(copy);
}
