#include "notifyserver.h"

#include "framemaskcheck.h"
#include "notifyclient.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslServer>
#include <QTcpServer>
#include <QWebSocket>
#include <QWebSocketServer>

#include <QTimer>

#include <algorithm>
#include <cstdio>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

constexpr int MaxFieldLength = 256;

void log(const QString &line)
{
    // One line per event on standard error, which systemd keeps in the journal.
    std::fprintf(stderr, "%s\n", qPrintable(line));
    std::fflush(stderr);
}

// A member that is a text of sensible length; empty otherwise.
QString field(const QJsonObject &message, const char *name)
{
    const QString value = message.value(QLatin1String(name)).toString();
    return value.size() <= MaxFieldLength ? value : QString();
}

template <typename Socket> QString peerOf(const Socket *socket)
{
    return socket->peerAddress().toString() + QLatin1Char(' ') +
           QString::number(socket->peerPort());
}

QString compact(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

NotifyServer::NotifyServer(const Options &options, QObject *parent)
    : QObject(parent), m_options(options)
{}

NotifyServer::~NotifyServer() = default;

bool NotifyServer::start()
{
    const bool secure = !m_options.certificateFile.isEmpty() || !m_options.keyFile.isEmpty();
    // The service accepts the connections itself, so that each socket is watched from its
    // first byte, and hands them to the websocket server, which speaks plain websockets over
    // the already decrypted socket.
    m_server = new QWebSocketServer(QStringLiteral("Velmorin notifier"),
                                    QWebSocketServer::NonSecureMode, this);
    if (secure) {
        auto *tls = new QSslServer(this);
        tls->setHandshakeTimeout(m_options.registrationTimeoutMs);
        m_listener = tls;
        if (!loadTls(tls))
            return false;
    } else {
        m_listener = new QTcpServer(this);
    }
    if (!m_listener->listen(m_options.address, m_options.port)) {
        m_error = m_listener->errorString();
        return false;
    }
    if (m_options.maxConnections <= 0)
        m_options.maxConnections = connectionsTheFileLimitAllows();
    connect(m_listener, &QTcpServer::pendingConnectionAvailable, this, &NotifyServer::onNewSocket);
    connect(m_server, &QWebSocketServer::newConnection, this, &NotifyServer::onNewConnection);
    log(QStringLiteral("Listening on %1://%2:%3%4")
            .arg(secure ? QStringLiteral("wss") : QStringLiteral("ws"),
                 m_listener->serverAddress().toString())
            .arg(m_listener->serverPort())
            .arg(Path));
    return true;
}

bool NotifyServer::loadTls(QSslServer *server)
{
    QFile certificateFile(m_options.certificateFile);
    QFile keyFile(m_options.keyFile);
    if (!certificateFile.open(QIODevice::ReadOnly) || !keyFile.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("Unable to read the certificate or the key");
        return false;
    }
    const QList<QSslCertificate> chain = QSslCertificate::fromData(certificateFile.readAll());
    const QByteArray pem = keyFile.readAll();
    QSslKey key(pem, QSsl::Rsa);
    if (key.isNull())
        key = QSslKey(pem, QSsl::Ec);
    if (chain.isEmpty() || key.isNull()) {
        m_error = QStringLiteral("The certificate or the key is not valid PEM");
        return false;
    }
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setLocalCertificateChain(chain);
    tls.setPrivateKey(key);
    tls.setPeerVerifyMode(QSslSocket::VerifyNone);
    server->setSslConfiguration(tls);
    return true;
}

int NotifyServer::connectionsTheFileLimitAllows()
{
#ifdef Q_OS_UNIX
    constexpr int reserve = 64; // the listening socket, the journal, TLS files, libraries
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
        return std::max(16, int(std::min<rlim_t>(limit.rlim_cur, 1 << 24)) - reserve);
#endif
    return 100000; // Windows has no such limit on sockets
}

quint16 NotifyServer::port() const
{
    return m_listener ? m_listener->serverPort() : 0;
}

void NotifyServer::onNewSocket()
{
    while (QTcpSocket *socket = m_listener->nextPendingConnection()) {
        ++m_sockets;
        if (m_sockets >= m_options.maxConnections) {
            // Further connections wait in the system's queue rather than take descriptors.
            log(QStringLiteral("Full at %1 connections; accepting again when one goes")
                    .arg(m_sockets));
            m_listener->pauseAccepting();
        }
        auto *check = new FrameMaskCheck(socket);
        // The websocket made of the socket is found again by its peer.
        const QString peer = peerOf(socket);
        m_checks.insert(peer, check);
        // Counted by the check, a child of the socket: the websocket cuts the socket's own
        // connections when it lets go of it.
        connect(check, &QObject::destroyed, this, [this, peer, check] {
            if (m_checks.value(peer) == check)
                m_checks.remove(peer);
            onSocketGone();
        });
        connect(check, &FrameMaskCheck::violated, socket, [socket](const QString &reason) {
            log(QStringLiteral("Closing a connection from %1: %2")
                    .arg(socket->peerAddress().toString(), reason));
            socket->abort();
        });
        // A socket stuck before or in the handshake is closed like one that does not register.
        QTimer::singleShot(m_options.registrationTimeoutMs, check, [socket, check] {
            if (!check->hasStartedFrames())
                socket->abort();
        });
        m_server->handleConnection(socket);
    }
}

void NotifyServer::onSocketGone()
{
    --m_sockets;
    if (m_listener->isListening() && m_sockets < m_options.maxConnections)
        m_listener->resumeAccepting();
}

void NotifyServer::onNewConnection()
{
    while (QWebSocket *socket = m_server->nextPendingConnection()) {
        if (FrameMaskCheck *check = m_checks.take(peerOf(socket)))
            check->startFrames();
        if (!admit(socket)) {
            socket->deleteLater();
            continue;
        }
        // Larger messages end the connection inside the socket, before they are buffered.
        socket->setMaxAllowedIncomingFrameSize(quint64(m_options.maxMessageBytes));
        socket->setMaxAllowedIncomingMessageSize(quint64(m_options.maxMessageBytes));
        auto *client = new NotifyClient(socket, m_options.messagesPerMinute, this);
        m_clients.append(client);
        QTimer::singleShot(m_options.registrationTimeoutMs, client, [client] {
            if (!client->isRegistered())
                client->socket()->close(QWebSocketProtocol::CloseCodePolicyViolated,
                                        QStringLiteral("Not registered in time"));
        });
        connect(socket, &QWebSocket::textMessageReceived, client,
                [this, client](const QString &message) { onMessage(client, message); });
        connect(socket, &QWebSocket::binaryMessageReceived, client, [client] {
            client->socket()->close(QWebSocketProtocol::CloseCodeDatatypeNotSupported);
        });
        connect(socket, &QWebSocket::disconnected, client, [this, client] { drop(client); });
    }
}

bool NotifyServer::admit(QWebSocket *socket)
{
    if (socket->requestUrl().path() != Path) {
        socket->close(QWebSocketProtocol::CloseCodePolicyViolated, QStringLiteral("Unknown path"));
        return false;
    }
    const QHostAddress address = socket->peerAddress();
    const auto fromThere =
        std::count_if(m_clients.cbegin(), m_clients.cend(), [&address](const NotifyClient *client) {
            return client->socket()->peerAddress() == address;
        });
    if (fromThere >= m_options.maxConnectionsPerAddress) {
        log(QStringLiteral("Refused a connection: %1 has %2 already")
                .arg(address.toString())
                .arg(fromThere));
        socket->close(QWebSocketProtocol::CloseCodePolicyViolated,
                      QStringLiteral("Too many connections from this address"));
        return false;
    }
    return true;
}

void NotifyServer::onMessage(NotifyClient *client, const QString &message)
{
    if (!client->takeMessage()) {
        log(QStringLiteral("Closing a client that sends too fast: ") + client->name());
        client->socket()->close(QWebSocketProtocol::CloseCodePolicyViolated,
                                QStringLiteral("Too many messages"));
        return;
    }
    const QJsonObject object = QJsonDocument::fromJson(message.toUtf8()).object();
    const QString operation = field(object, "operation");
    if (operation == QLatin1String("register"))
        registerClient(client, object);
    else if (operation == QLatin1String("notify") && client->isRegistered())
        forwardNotify(client, object);
    else if (operation == QLatin1String("request-client-list") && client->isRegistered())
        sendClientList(client);
}

void NotifyServer::registerClient(NotifyClient *client, const QJsonObject &message)
{
    const QString user = field(message, "user");
    if (user.isEmpty())
        return;
    int others = 0;
    for (const NotifyClient *other : std::as_const(m_clients))
        others += other != client && other->user() == user;
    if (others >= m_options.maxClientsPerUser) {
        client->socket()->close(QWebSocketProtocol::CloseCodePolicyViolated,
                                QStringLiteral("Too many computers"));
        return;
    }
    client->setIdentity(user, field(message, "name"), field(message, "type"));
    log(QStringLiteral("Registered %1 (%2)").arg(client->name(), client->type()));
}

void NotifyServer::forwardNotify(NotifyClient *client, const QJsonObject &message)
{
    const QString content = field(message, "content");
    if (content.isEmpty())
        return;
    const QString text = compact({{QStringLiteral("operation"), QStringLiteral("notify")},
                                  {QStringLiteral("content"), content}});
    for (NotifyClient *other : othersOf(client))
        other->send(text);
}

void NotifyServer::sendClientList(NotifyClient *client)
{
    QJsonArray clients;
    for (const NotifyClient *other : othersOf(client))
        clients.append(
            QJsonObject{{QStringLiteral("name"), other->name()},
                        {QStringLiteral("type"), other->type()},
                        {QStringLiteral("time"), other->registered().toString(Qt::ISODate)}});
    client->send(compact({{QStringLiteral("operation"), QStringLiteral("clientList")},
                          {QStringLiteral("clients"), clients}}));
}

QList<NotifyClient *> NotifyServer::othersOf(const NotifyClient *client) const
{
    QList<NotifyClient *> others;
    for (NotifyClient *other : m_clients) {
        if (other != client && other->user() == client->user())
            others.append(other);
    }
    return others;
}

void NotifyServer::drop(NotifyClient *client)
{
    m_clients.removeOne(client);
    client->deleteLater();
}
