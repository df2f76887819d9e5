#include "notifier.h"

#include "isynctarget.h"

#include "settings.h"
#include "synclog.h"

#include <QDebug>
#include <QDir>
#include <QFileSystemWatcher>
#include <QSettings>
#include <QTimer>

Notifier::Notifier(QObject *parent) : QObject(parent), m_folderTimer(new QTimer(this))
{
    m_folderTimer->setSingleShot(true);
    m_folderTimer->setInterval(FolderSettleMs);
    connect(m_folderTimer, &QTimer::timeout, this, &Notifier::checkFolder);
}

void Notifier::connectTarget(const QString &targetName)
{
    if (targetName == m_target && (m_connected || m_watcher))
        return;
    close();
    m_target = targetName;
    if (targetName == ISyncTarget::LocalFolderSetting)
        watchFolder();
}

void Notifier::watchFolder()
{
    m_folder = QSettings().value(SettingsKey::SyncFolder).toString();
    SyncLog::write(QStringLiteral("Notifier: Monitoring folder: ") + m_folder);
    m_watcher = new QFileSystemWatcher(this);
    if (!m_watcher->addPath(m_folder))
        qWarning().noquote() << "Notifier: Unable to watch" << m_folder;
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, &Notifier::onDirectoryChanged);
    m_lastCheck = QDateTime::currentDateTime();
    m_react = true;
}

void Notifier::close()
{
    if (m_connected) {
        setStatus(Disconnected);
        SyncLog::write(QStringLiteral("Notifier: Closing connection"));
    }
    if (m_watcher) {
        m_watcher->deleteLater();
        m_watcher = nullptr;
    }
    m_folderTimer->stop();
    m_connected = false;
    m_target.clear();
}

void Notifier::setReact(bool react)
{
    m_react = react;
    // A change made elsewhere while the engine was busy would otherwise wait for the next one;
    // the look at the folder finds it by its time, beside the engine's own files.
    if (react && m_missedChanges) {
        m_missedChanges = false;
        m_folderTimer->start();
    }
}

void Notifier::setStatus(ConnectionStatus status)
{
    m_lastStatus = status;
    emit this->status(status);
}

void Notifier::notify(const QString &content)
{
    // Computers sharing a folder see each other's files through their own folder watch.
    if (m_target == ISyncTarget::LocalFolderSetting)
        return;
    if (!m_connected) {
        qWarning() << "Notification not send because the connection is not established" << content;
        return;
    }
}

void Notifier::onDirectoryChanged(const QString &path)
{
    if (!m_react) {
        m_missedChanges = true;
        return;
    }
    SyncLog::write(QStringLiteral("Notifier: Changes in path ") + path);
    m_folderTimer->start();
}

void Notifier::checkFolder()
{
    const QString history = QStringLiteral("History#");
    const QString snippets = QStringLiteral("Snippets#");
    const QDateTime checked = QDateTime::currentDateTime();
    const QFileInfoList files = QDir(m_folder).entryInfoList(QDir::Files, QDir::NoSort);
    for (const QFileInfo &file : files) {
        if (file.lastModified() <= m_lastCheck)
            continue;
        SyncLog::write(QStringLiteral("Notifier: File changed:") + file.filePath());
        if (file.fileName().startsWith(history))
            emit dataUpdated(QStringLiteral("History.json"));
        else if (file.fileName().startsWith(snippets))
            emit dataUpdated(QStringLiteral("Snippets.json"));
    }
    m_lastCheck = checked;
}
