#include "o2reply.h"

#include <QDebug>

O2Reply::O2Reply(QNetworkReply *reply, int timeoutMs, QObject *parent)
    : QTimer(parent), m_reply(reply)
{
    setSingleShot(true);
    setInterval(timeoutMs);
    connect(this, &QTimer::timeout, this, &O2Reply::onTimeOut);
    start();
}

void O2Reply::onTimeOut()
{
    qWarning() << "O2Reply::onTimeOut: The token request timed out";
    m_timedOut = true;
    emit error(QNetworkReply::TimeoutError);
    // The reply then finishes as cancelled; its owner sees timedOut() and reports once.
    if (m_reply)
        m_reply->abort();
}
