#include "snippets/snippetfile.h"

#include "base/appmodes.h"
#include "base/settings.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

QString SnippetFile::fileName(const AppModes &modes)
{
    if (modes.perfTest)
        return QStringLiteral("Snippets-perftest.json");
    if (modes.demo)
        return QStringLiteral("Snippets-demo.json");
    return QStringLiteral("Snippets.json");
}

QString SnippetFile::path(const AppModes &modes)
{
    QString chosen = Settings::value(SettingsKey::SnippetFilePath).toString();
    if (chosen.isEmpty()) {
        chosen = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                 QLatin1Char('/') + QStringLiteral("Snippets.json");
    }
    if (!modes.perfTest && !modes.demo)
        return chosen;
    return QFileInfo(chosen).path() + QLatin1Char('/') + fileName(modes);
}

bool SnippetFile::write(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    // Unbuffered: a short write on a full disk must show before the commit.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(bytes) != bytes.size() || !file.commit()) {
        qWarning().noquote() << path + QStringLiteral(" cannot be opened for writing.");
        return false;
    }
    return true;
}

QString SnippetFile::backupFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1Char('/') +
           QStringLiteral("backups");
}

bool SnippetFile::writeBackup(const QByteArray &bytes, const QDate &today)
{
    QDir folder(backupFolder());
    if (!folder.mkpath(QStringLiteral("."))) {
        qWarning().noquote() << folder.path() + QStringLiteral(" cannot be opened for writing.");
        return false;
    }
    QFileInfoList backups = folder.entryInfoList(QDir::Files, QDir::Time);
    while (backups.size() > KeptBackups) {
        const QString oldest = backups.takeLast().filePath();
        if (QFile::remove(oldest))
            qDebug().noquote() << "Deleted backup file " + oldest;
    }
    const QString path = folder.filePath(
        QStringLiteral("Snippets-%1.json").arg(today.toString(QStringLiteral("yyyy-MM-dd"))));
    if (!write(path, bytes))
        return false;
    qDebug().noquote() << "Wrote backup file " + path;
    return true;
}
