#pragma once

#include "sync/isyncnotifier.h"

#include <QAbstractSocket>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

#include <functional>

class QFileSystemWatcher;
class QTimer;
class QJsonObject;
class QWebSocket;

// Tells the sync engine that another computer has put new content online, so that it syncs at
// once instead of waiting for a local change. With Google Drive it is a client of the
// notification service over a websocket, which also lists the user's other computers; with
// the local folder target it watches the sync folder for new history and snippet files.
class Notifier final : public ISyncNotifier
{
    Q_OBJECT

public:
    enum ConnectionStatus { Connecting = 0, Connected = 1, Error = 2, Disconnected = 3 };
    Q_ENUM(ConnectionStatus)

    using Client = QMap<QString, QString>;

    // How long a burst of folder changes must settle before it is looked at.
    static constexpr int FolderSettleMs = 1000;
    // After the n-th lost connection the next try waits min(n, 240) times this: from 15 s up
    // to an hour.
    static constexpr int ReconnectBaseMs = 15000;
    static constexpr int MaxReconnectFactor = 240;

    explicit Notifier(QObject *parent = nullptr);
    ~Notifier() override;

    // The signed token whose "sub" names the user to the service.
    void setIdTokenSource(std::function<QString()> source) { m_idTokenSource = std::move(source); }
    // The "sub" of a three-part id_token; empty for any other shape.
    static QString userIdFromIdToken(const QString &idToken);
    static int reconnectDelayMs(int attempts, int baseMs = ReconnectBaseMs);
    void setReconnectBaseMs(int ms) { m_reconnectBaseMs = ms; }
    int reconnectAttempts() const { return m_reconnectAttempts; }
    QString userId() const { return m_userId; }

    // Starts listening for the target ("GoogleDrive", "LocalFolder"); nothing when it already
    // listens for that target.
    void connectTarget(const QString &targetName) override;
    void close() override;

    QString targetName() const { return m_target; }
    bool isConnected() const { return m_connected; }
    ConnectionStatus lastStatus() const { return m_lastStatus; }
    bool isWatchingFolder() const { return m_watcher != nullptr; }
    // While false, folder changes are not reported at once: the engine's own uploads are no
    // news. Changes seen meanwhile are looked at when it is set again.
    void setReact(bool react) override;
    bool reacts() const { return m_react; }

public slots:
    // Tells the other computers that the content ("History.json", "Snippets.json") was uploaded.
    void notify(const QString &content) override;
    // Asks the service for the user's other computers; the answer comes as clientList().
    void requestClientList();

signals:
    void status(Notifier::ConnectionStatus status);
    void clientList(const QList<Notifier::Client> &clients);
    void disconnected();

private slots:
    void onError(QAbstractSocket::SocketError error);
    void onConnected();
    void onDisconnected();
    void onReceived(const QString &message);
    void onDirectoryChanged(const QString &path);

private:
    void setStatus(ConnectionStatus status);
    void connectWebSocket();
    void openWebSocket();
    void send(const QJsonObject &message);
    void watchFolder();
    void checkFolder();

    QString m_target;
    QString m_userId;
    std::function<QString()> m_idTokenSource;
    QWebSocket *m_socket;
    QTimer *m_reconnectTimer;
    int m_reconnectAttempts = 0;
    int m_reconnectBaseMs = ReconnectBaseMs;
    bool m_connected = false;
    bool m_react = true;
    bool m_missedChanges = false;
    ConnectionStatus m_lastStatus = Disconnected;
    QString m_folder;
    QFileSystemWatcher *m_watcher = nullptr;
    QDateTime m_lastCheck;
    QTimer *m_folderTimer;
};
