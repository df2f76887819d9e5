#pragma once

#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QSslConfiguration>
#include <QString>

class FrameMaskCheck;
class NotifyClient;
class QJsonObject;
class QSslServer;
class QTcpServer;
class QWebSocket;
class QWebSocketServer;

// Keeps each user's connected computers and passes a "notify" from one of them to the others;
// answers "request-client-list" with the others' names, platforms and registration times.
// Whatever a client sends, the service stays up: malformed messages are ignored, oversized
// ones and floods end that client's connection.
class NotifyServer final : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        QHostAddress address = QHostAddress::LocalHost;
        quint16 port = 8080;
        // Both set: secure websockets (wss).
        QString certificateFile;
        QString keyFile;
        qint64 maxMessageBytes = 4096;
        int messagesPerMinute = 120;
        int maxClientsPerUser = 20;
        // One address cannot take the service's sockets for itself.
        int maxConnectionsPerAddress = 64;
        // A socket that has not registered by then is closed; so is one stuck in the handshake.
        int registrationTimeoutMs = 10000;
        // Connections in all; 0: what the open-file limit leaves, less a reserve.
        int maxConnections = 0;
    };

    // The open-file limit less what the service needs besides its clients.
    static int connectionsTheFileLimitAllows();

    static inline const QString Path = QStringLiteral("/notifier");

    explicit NotifyServer(const Options &options, QObject *parent = nullptr);
    ~NotifyServer() override;

    // False, with errorString() telling why, when it cannot listen.
    bool start();
    quint16 port() const;
    QString errorString() const { return m_error; }
    int clientCount() const { return int(m_clients.size()); }

private:
    bool loadTls(QSslServer *server);
    void onNewSocket();
    void onSocketGone();
    void onNewConnection();
    void onMessage(NotifyClient *client, const QString &message);
    void registerClient(NotifyClient *client, const QJsonObject &message);
    void forwardNotify(NotifyClient *client, const QJsonObject &message);
    void sendClientList(NotifyClient *client);
    bool admit(QWebSocket *socket);
    void drop(NotifyClient *client);
    QList<NotifyClient *> othersOf(const NotifyClient *client) const;

    Options m_options;
    QTcpServer *m_listener = nullptr;
    QWebSocketServer *m_server = nullptr;
    int m_sockets = 0;
    QHash<QString, FrameMaskCheck *> m_checks; // by peer, until the handshake is done
    QList<NotifyClient *> m_clients;
    QString m_error;
};
