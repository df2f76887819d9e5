#include "sync/remote/notifier.h"

#include "base/settings.h"
#include "sync/isynctarget.h"
#include "sync/remote/googleendpoints.h"
#include "synclog.h"

#include <QDebug>
#include <QDir>
#include <QFileSystemWatcher>
#include <QHostInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>
#include <QTimer>
#include <QWebSocket>

namespace {

void log(const QString &line)
{
    SyncLog::write(line);
}

// How the service and the other computers' client lists name this platform.
QString platformType()
{
    const QString product = QSysInfo::productType();
    if (product == QLatin1String("windows"))
        return QStringLiteral("Windows");
    if (product == QLatin1String("macos") || product == QLatin1String("osx"))
        return QStringLiteral("Mac");
    if (product == QLatin1String("android"))
        return QStringLiteral("Android");
    return QStringLiteral("Linux");
}

} // namespace

Notifier::Notifier(QObject *parent)
    : ISyncNotifier(parent),
      m_socket(new QWebSocket(QString(), QWebSocketProtocol::Version13, this)),
      m_reconnectTimer(new QTimer(this)), m_folderTimer(new QTimer(this))
{
    m_folderTimer->setSingleShot(true);
    m_folderTimer->setInterval(FolderSettleMs);
    connect(m_folderTimer, &QTimer::timeout, this, &Notifier::checkFolder);
    m_reconnectTimer->setSingleShot(true);
    connect(m_reconnectTimer, &QTimer::timeout, this, &Notifier::openWebSocket);
    connect(m_socket, &QWebSocket::connected, this, &Notifier::onConnected);
    connect(m_socket, &QWebSocket::disconnected, this, &Notifier::onDisconnected);
    connect(m_socket, qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), this,
            &Notifier::onError);
    connect(m_socket, &QWebSocket::textMessageReceived, this, &Notifier::onReceived);
}

Notifier::~Notifier()
{
    // No reconnect is to be planned while the socket goes.
    m_target.clear();
    m_socket->disconnect(this);
}

QString Notifier::userIdFromIdToken(const QString &idToken)
{
    const QStringList parts = idToken.split(QLatin1Char('.'));
    if (parts.size() != 3)
        return {};
    // Tokens use the URL-safe alphabet; reading both alphabets costs nothing.
    QByteArray payload = parts.at(1).toLatin1();
    payload.replace('-', '+').replace('_', '/');
    const QJsonDocument claims = QJsonDocument::fromJson(QByteArray::fromBase64(payload));
    return claims.object().value(QLatin1String("sub")).toString();
}

int Notifier::reconnectDelayMs(int attempts, int baseMs)
{
    return qMin(attempts, MaxReconnectFactor) * baseMs;
}

void Notifier::connectTarget(const QString &targetName)
{
    const bool opening =
        m_socket->state() != QAbstractSocket::UnconnectedState || m_reconnectTimer->isActive();
    if (targetName == m_target && (m_connected || m_watcher || opening))
        return;
    close();
    m_target = targetName;
    if (targetName == ISyncTarget::LocalFolderSetting)
        watchFolder();
    else if (targetName == ISyncTarget::GoogleDriveSetting)
        connectWebSocket();
}

void Notifier::connectWebSocket()
{
    if (m_userId.isEmpty() && m_idTokenSource)
        m_userId = userIdFromIdToken(m_idTokenSource());
    if (m_userId.isEmpty()) {
        qWarning() << "Unable to connect to the websocket since the user id is not defined";
        return;
    }
    if (GoogleEndpoints::notifierUrl().isEmpty()) {
        qWarning() << "Notifier: No notification service is configured in this build";
        return;
    }
    openWebSocket();
}

void Notifier::openWebSocket()
{
    const QUrl url(GoogleEndpoints::notifierUrl() + QStringLiteral("/notifier"));
    setStatus(Connecting);
    log(QStringLiteral("Notifier: Connecting to ") + url.toString());
    m_socket->open(url);
}

void Notifier::watchFolder()
{
    m_folder = Settings::value(SettingsKey::SyncFolder).toString();
    log(QStringLiteral("Notifier: Monitoring folder: ") + m_folder);
    m_watcher = new QFileSystemWatcher(this);
    if (!m_watcher->addPath(m_folder))
        qWarning().noquote() << "Notifier: Unable to watch" << m_folder;
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, &Notifier::onDirectoryChanged);
    m_lastCheck = QDateTime::currentDateTime();
    m_react = true;
}

void Notifier::close()
{
    m_target.clear();
    m_reconnectTimer->stop();
    if (m_socket->state() != QAbstractSocket::UnconnectedState) {
        m_socket->close(QWebSocketProtocol::CloseCodeNormal, QString());
        setStatus(Disconnected);
        log(QStringLiteral("Notifier: Closing connection"));
    }
    m_userId.clear();
    m_reconnectAttempts = 0;
    if (m_watcher) {
        m_watcher->deleteLater();
        m_watcher = nullptr;
    }
    m_folderTimer->stop();
    m_connected = false;
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
    if (!m_connected || !m_socket->isValid()) {
        qWarning() << "Notification not send because the connection is not established" << content;
        return;
    }
    send(QJsonObject{{QStringLiteral("operation"), QStringLiteral("notify")},
                     {QStringLiteral("content"), content}});
}

void Notifier::requestClientList()
{
    if (m_target != ISyncTarget::GoogleDriveSetting || !m_connected || !m_socket->isValid())
        return;
    send(QJsonObject{{QStringLiteral("operation"), QStringLiteral("request-client-list")}});
}

void Notifier::send(const QJsonObject &message)
{
    const QString text = QString::fromUtf8(QJsonDocument(message).toJson(QJsonDocument::Compact));
    log(QStringLiteral("Notifier: Sending: ") + text);
    m_socket->sendTextMessage(text);
}

void Notifier::onConnected()
{
    log(QStringLiteral("Notifier: Connection established"));
    setStatus(Connected);
    m_reconnectAttempts = 0;
    send(QJsonObject{{QStringLiteral("user"), m_userId},
                     {QStringLiteral("name"), QHostInfo::localHostName()},
                     {QStringLiteral("operation"), QStringLiteral("register")},
                     {QStringLiteral("type"), platformType()}});
    m_connected = true;
}

void Notifier::onDisconnected()
{
    log(QStringLiteral("Notifier: Disconnected"));
    setStatus(Disconnected);
    m_connected = false;
    emit disconnected();
    if (m_target != ISyncTarget::GoogleDriveSetting)
        return; // closed on purpose
    ++m_reconnectAttempts;
    m_reconnectTimer->start(reconnectDelayMs(m_reconnectAttempts, m_reconnectBaseMs));
}

void Notifier::onError(QAbstractSocket::SocketError error)
{
    log(QStringLiteral("Notifier: Error %1 %2").arg(int(error)).arg(m_socket->errorString()));
    setStatus(Error);
}

void Notifier::onReceived(const QString &message)
{
    log(QStringLiteral("Notifier: Received message: ") + message);
    const QJsonObject object = QJsonDocument::fromJson(message.toUtf8()).object();
    const QString operation = object.value(QLatin1String("operation")).toString();
    if (operation == QLatin1String("notify")) {
        emit dataUpdated(object.value(QLatin1String("content")).toString());
    } else if (operation == QLatin1String("clientList")) {
        QList<Client> clients;
        for (const QJsonValue &value : object.value(QLatin1String("clients")).toArray()) {
            const QJsonObject client = value.toObject();
            Client entry;
            for (const char *key : {"name", "type", "time"})
                entry.insert(QLatin1String(key), client.value(QLatin1String(key)).toString());
            clients.append(entry);
        }
        emit clientList(clients);
    }
}

void Notifier::onDirectoryChanged(const QString &path)
{
    if (!m_react) {
        m_missedChanges = true;
        return;
    }
    log(QStringLiteral("Notifier: Changes in path ") + path);
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
        log(QStringLiteral("Notifier: File changed:") + file.filePath());
        if (file.fileName().startsWith(history))
            emit dataUpdated(QStringLiteral("History.json"));
        else if (file.fileName().startsWith(snippets))
            emit dataUpdated(QStringLiteral("Snippets.json"));
    }
    m_lastCheck = checked;
}
