#include "o2replyserver.h"

#include <QDebug>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>

namespace {

// A browser sends a few hundred bytes; anything much larger is not one.
constexpr int MaxRequestBytes = 64 * 1024;
constexpr int RequestTimeoutMs = 10000;

} // namespace

O2ReplyServer::O2ReplyServer(QObject *parent) : QTcpServer(parent)
{
    connect(this, &QTcpServer::newConnection, this, &O2ReplyServer::onIncomingConnection);
}

void O2ReplyServer::onIncomingConnection()
{
    while (QTcpSocket *socket = nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onBytesReady(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        // A connection that never sends a whole request is dropped.
        QTimer::singleShot(RequestTimeoutMs, socket, [socket] { socket->abort(); });
    }
}

void O2ReplyServer::onBytesReady(QTcpSocket *socket)
{
    const QByteArray received = socket->peek(MaxRequestBytes + 1);
    if (received.size() > MaxRequestBytes) {
        socket->abort();
        return;
    }
    if (!received.contains("\r\n\r\n") && !received.contains("\n\n"))
        return; // the rest of the request is still on its way
    socket->readAll();
    const QByteArray requestLine = received.left(received.indexOf('\n')).trimmed();
    const QMap<QString, QString> parameters = parseQueryParams(requestLine);
    // A browser also asks for a page icon; only the redirect carries parameters.
    if (parameters.isEmpty()) {
        answer(socket, "404 Not Found", QByteArray());
        return;
    }
    if (!m_expectedState.isEmpty() &&
        parameters.value(QStringLiteral("state")) != m_expectedState) {
        qWarning() << "O2ReplyServer: Refused a request whose state does not match";
        const QString page =
            QStringLiteral("<p>%1</p>")
                .arg(tr("This answer does not belong to the sign-in in progress. Velmorin goes "
                        "on waiting for the browser's answer.")
                         .toHtmlEscaped());
        answer(socket, "400 Bad Request", page.toUtf8());
        return;
    }
    answer(socket, "200 OK", m_replyContent);
    emit verificationReceived(parameters);
}

void O2ReplyServer::answer(QTcpSocket *socket, const QByteArray &status, const QByteArray &content)
{
    QByteArray reply = "HTTP/1.0 " + status + " \r\n";
    reply.append("Content-Type: text/html; charset=\"utf-8\"\r\n");
    reply.append(QStringLiteral("Content-Length: %1\r\n\r\n").arg(content.size()).toLatin1());
    reply.append(content);
    socket->write(reply);
    socket->disconnectFromHost();
}

QMap<QString, QString> O2ReplyServer::parseQueryParams(const QByteArray &requestLine)
{
    qDebug() << "O2ReplyServer::parseQueryParams";
    // "GET /?code=... HTTP/1.1"
    const QList<QByteArray> parts = requestLine.split(' ');
    QMap<QString, QString> parameters;
    if (parts.size() < 3 || parts.first() != "GET")
        return parameters;
    const QUrl url(QStringLiteral("http://localhost") + QString::fromLatin1(parts.at(1)));
    const QUrlQuery query(url);
    for (const auto &[name, value] : query.queryItems(QUrl::FullyDecoded))
        parameters.insert(name, value);
    return parameters;
}
