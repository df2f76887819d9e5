#pragma once

#include <QNetworkReply>
#include <QPointer>
#include <QTimer>

// A pending token request with its time-out: a token endpoint that never answers must not
// leave the link waiting for ever.
class O2Reply final : public QTimer
{
    Q_OBJECT

public:
    O2Reply(QNetworkReply *reply, int timeoutMs, QObject *parent = nullptr);

    QNetworkReply *reply() const { return m_reply; }
    bool timedOut() const { return m_timedOut; }

signals:
    void error(QNetworkReply::NetworkError error);

private:
    void onTimeOut();

    QPointer<QNetworkReply> m_reply;
    bool m_timedOut = false;
};
