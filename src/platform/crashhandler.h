#pragma once

#include <QString>

// Writes a crash report into the "crashes" folder of the given data folder when the program
// dies of a fatal signal or an unhandled exception. The back end of each platform implements it.
class CrashHandler final
{
public:
    static bool initialise(const QString &dataFolder);
    static QString reportFolder(const QString &dataFolder)
    {
        return dataFolder + QStringLiteral("/crashes");
    }
};
