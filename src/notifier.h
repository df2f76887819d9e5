#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

class QFileSystemWatcher;
class QTimer;

// Tells the sync engine that another computer has put new content online, so that it syncs at
// once instead of waiting for a local change. With the local folder target it watches the sync
// folder for new history and snippet files.
class Notifier final : public QObject
{
    Q_OBJECT

public:
    enum ConnectionStatus { Connecting = 0, Connected = 1, Error = 2, Disconnected = 3 };
    Q_ENUM(ConnectionStatus)

    // How long a burst of folder changes must settle before it is looked at.
    static constexpr int FolderSettleMs = 1000;

    explicit Notifier(QObject *parent = nullptr);

    // Starts listening for the target ("GoogleDrive", "LocalFolder"); nothing when it already
    // listens for that target.
    void connectTarget(const QString &targetName);
    void close();

    QString targetName() const { return m_target; }
    bool isConnected() const { return m_connected; }
    ConnectionStatus lastStatus() const { return m_lastStatus; }
    bool isWatchingFolder() const { return m_watcher != nullptr; }
    // While false, folder changes are not reported at once: the engine's own uploads are no
    // news. Changes seen meanwhile are looked at when it is set again.
    void setReact(bool react);
    bool reacts() const { return m_react; }

public slots:
    // Tells the other computers that the content ("History.json", "Snippets.json") was uploaded.
    void notify(const QString &content);

signals:
    void status(Notifier::ConnectionStatus status);
    void dataUpdated(const QString &content);
    void disconnected();

private slots:
    void onDirectoryChanged(const QString &path);

private:
    void setStatus(ConnectionStatus status);
    void watchFolder();
    void checkFolder();

    QString m_target;
    bool m_connected = false;
    bool m_react = true;
    bool m_missedChanges = false;
    ConnectionStatus m_lastStatus = Disconnected;
    QString m_folder;
    QFileSystemWatcher *m_watcher = nullptr;
    QDateTime m_lastCheck;
    QTimer *m_folderTimer;
};
