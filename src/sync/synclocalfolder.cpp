#include "sync/synclocalfolder.h"

#include "base/settings.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTimer>

SyncLocalFolder::SyncLocalFolder(QObject *parent) : ISyncTarget(parent)
{
    readSetting();
}

void SyncLocalFolder::readSetting()
{
    m_configured = Settings::contains(QLatin1String(SettingsKey::SyncFolder));
    m_folder = Settings::value(QLatin1String(SettingsKey::SyncFolder)).toString();
}

bool SyncLocalFolder::isValid() const
{
    return m_configured && !m_folder.isEmpty() && QDir(m_folder).exists();
}

QString SyncLocalFolder::pathOf(const QString &fileName) const
{
    return m_folder + QLatin1Char('/') + fileName;
}

void SyncLocalFolder::answer(std::function<void()> emitter)
{
    ++m_pending;
    QTimer::singleShot(0, this, [this, emitter = std::move(emitter)] {
        --m_pending;
        emitter();
    });
}

void SyncLocalFolder::initialise(InitMode mode)
{
    readSetting();
    if (mode == AlwaysAsk || (mode == AskIfMissing && !isValid())) {
        askForFolder();
        return;
    }
    const bool valid = isValid();
    answer([this, valid] { emit initialized(valid); });
}

void SyncLocalFolder::askForFolder()
{
    const QString chosen = m_chooser();
    // A cancelled chooser keeps the folder there was.
    if (!chosen.isEmpty()) {
        Settings::setValue(QLatin1String(SettingsKey::SyncFolder), chosen);
        readSetting();
    }
    const bool ready = !m_folder.isEmpty() && QDir().mkpath(m_folder);
    if (ready)
        m_configured = true;
    answer([this, ready] { emit initialized(ready); });
}

void SyncLocalFolder::listFiles()
{
    const QDir folder(m_folder);
    if (m_folder.isEmpty() || !folder.exists()) {
        qWarning() << "The folder doesn't exist" << m_folder;
        return;
    }
    QList<OnlineFile> files;
    for (const QFileInfo &file : folder.entryInfoList(QDir::Files | QDir::Hidden, QDir::NoSort)) {
        // With milliseconds: two computers often write within the same second, and the newest
        // version must still be told apart.
        const QString created = file.lastModified().toUTC().toString(Qt::ISODateWithMs);
        files.append({file.fileName(), file.fileName(), created});
    }
    // The engine asks for the list while its own is empty; this entry matches no name.
    files.append(OnlineFile{});
    answer([this, files] { emit filesListed(files); });
}

void SyncLocalFolder::download(int kind, const SyncEntry &entry)
{
    QFile file(pathOf(entry.onlineName));
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning() << "Unable to open file for reading" << file.fileName();
        return;
    }
    const QByteArray bytes = file.readAll();
    answer([this, kind, entry, bytes] { emit downloaded(kind, entry, bytes); });
}

void SyncLocalFolder::upload(int kind, const SyncEntry &entry, const QByteArray &bytes)
{
    // Replaced as a whole, so that a computer reading the folder meanwhile never sees half a
    // file under a name whose hash promises the whole.
    const QString path = pathOf(entry.file);
    const QDateTime created = QFileInfo(path).lastModified();
    QSaveFile file(path);
    // Unbuffered: a short write on a full disk must show before the commit.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        qWarning() << "Unable to open file for writing" << file.fileName();
        return;
    }
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        qWarning() << "Unable to write to file" << file.fileName();
        return;
    }
    // The same name written again is the same version in another encoding: it keeps its time,
    // which orders the versions.
    if (created.isValid())
        keepModificationTime(path, created);
    SyncEntry written = entry;
    written.onlineName = entry.file;
    answer([this, kind, written] { emit uploaded(kind, written); });
}

void SyncLocalFolder::keepModificationTime(const QString &path, const QDateTime &time)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) ||
        !file.setFileTime(time, QFileDevice::FileModificationTime))
        qWarning() << "Unable to keep the time of" << path;
}

void SyncLocalFolder::remove(const SyncEntry &entry)
{
    if (!QFile::remove(pathOf(entry.onlineName))) {
        qWarning() << "Unable to remove file" << pathOf(entry.onlineName);
        return;
    }
    answer([this, entry] { emit removed(entry); });
}
