#include "notifyclient.h"

#include <QWebSocket>

NotifyClient::NotifyClient(QWebSocket *socket, int messagesPerMinute, QObject *parent)
    : QObject(parent), m_socket(socket), m_allowance(messagesPerMinute),
      m_perMinute(messagesPerMinute)
{
    socket->setParent(this);
    m_sinceRefill.start();
}

void NotifyClient::setIdentity(const QString &user, const QString &name, const QString &type)
{
    m_user = user;
    m_name = name;
    m_type = type;
    m_registered = QDateTime::currentDateTimeUtc();
}

bool NotifyClient::takeMessage()
{
    // A bucket that fills at the allowed rate and holds at most one minute's worth.
    m_allowance = qMin(m_perMinute, m_allowance + m_sinceRefill.restart() * m_perMinute / 60000.0);
    if (m_allowance < 1.0)
        return false;
    m_allowance -= 1.0;
    return true;
}

void NotifyClient::send(const QString &text)
{
    m_socket->sendTextMessage(text);
}
