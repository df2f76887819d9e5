#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTcpServer>

// The loopback HTTP server that the browser is sent back to after the user's consent. It takes
// the query of the first request that carries one, shows the reply page, and hands the
// parameters on.
class O2ReplyServer final : public QTcpServer
{
    Q_OBJECT

public:
    explicit O2ReplyServer(QObject *parent = nullptr);

    QByteArray replyContent() const { return m_replyContent; }
    void setReplyContent(const QByteArray &content) { m_replyContent = content; }

    static QMap<QString, QString> parseQueryParams(const QByteArray &requestLine);

signals:
    void verificationReceived(const QMap<QString, QString> &parameters);

private:
    void onIncomingConnection();
    void onBytesReady(QTcpSocket *socket);

    QByteArray m_replyContent = QByteArrayLiteral("<HTML></HTML>");
};
