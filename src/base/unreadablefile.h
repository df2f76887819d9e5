#pragma once

#include <QCoreApplication>
#include <QString>

// A file of the user's that could not be read keeps its bytes under a name of its own before
// anything may write in its place, for a newer version of the program or for repair by hand.
class UnreadableFile final
{
    Q_DECLARE_TR_FUNCTIONS(UnreadableFile)

public:
    // Copies path to "<path>.unreadable-yyyyMMdd-hhmmss". Returns what the user is told: the
    // failure, and where the file was kept when a copy could be made.
    static QString keep(const QString &path, const QString &failure);
};
