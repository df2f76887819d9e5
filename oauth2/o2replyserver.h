#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTcpServer>

// The loopback HTTP server that the browser is sent back to after the user's consent. It takes
// the query of the first request that carries the expected state, shows the reply page, and
// hands the parameters on. Any other page on this computer can reach the port too: a request
// with another state gets an error page and the server goes on waiting for the browser.
class O2ReplyServer final : public QTcpServer
{
    Q_OBJECT

public:
    explicit O2ReplyServer(QObject *parent = nullptr);

    QByteArray replyContent() const { return m_replyContent; }
    void setReplyContent(const QByteArray &content) { m_replyContent = content; }
    void setExpectedState(const QString &state) { m_expectedState = state; }

    static QMap<QString, QString> parseQueryParams(const QByteArray &requestLine);

signals:
    void verificationReceived(const QMap<QString, QString> &parameters);

private:
    void onIncomingConnection();
    void onBytesReady(QTcpSocket *socket);
    static void answer(QTcpSocket *socket, const QByteArray &status, const QByteArray &content);

    QByteArray m_replyContent = QByteArrayLiteral("<HTML></HTML>");
    QString m_expectedState;
};
