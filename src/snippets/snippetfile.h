#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>

class AppModes;

// Where the snippet file lives, and the daily backups of it.
class SnippetFile final
{
public:
    static constexpr int Version = 7;
    static constexpr qint32 Magic = qint32(0xFEED0001);
    static constexpr int KeptBackups = 20;

    // "Snippets.json", or the file of the performance-test or demo mode.
    static QString fileName(const AppModes &modes);
    // SnippetFilePath; in the performance-test and demo modes their file beside it.
    static QString path(const AppModes &modes);

    // Replaces the file with the bytes in one piece; logs and returns false when it cannot.
    static bool write(const QString &path, const QByteArray &bytes);

    // The folder "backups" in the application data folder.
    static QString backupFolder();
    // Keeps the bytes as the day's backup "Snippets-yyyy-MM-dd.json", the last save of the day
    // winning, after trimming the folder to its newest files.
    static bool writeBackup(const QByteArray &bytes, const QDate &today = QDate::currentDate());
};
