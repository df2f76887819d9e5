#include "platform/crashhandler.h"

#include "crashreport.h"

#include <QDebug>
#include <QDir>

bool CrashHandler::initialise(const QString &dataFolder)
{
    const QString folder = reportFolder(dataFolder);
    if (!QDir().mkpath(folder) ||
        !CrashReport::install(QDir::toNativeSeparators(folder).toStdWString())) {
        qWarning() << "Unable to prepare the crash report folder" << folder;
        return false;
    }
    return true;
}
