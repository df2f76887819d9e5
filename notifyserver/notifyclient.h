#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QString>

class QWebSocket;

// One connected computer: its socket, who it said it is, and how many messages it may still
// send before it is cut off.
class NotifyClient final : public QObject
{
    Q_OBJECT

public:
    // socket: taken over.
    NotifyClient(QWebSocket *socket, int messagesPerMinute, QObject *parent = nullptr);

    QWebSocket *socket() const { return m_socket; }
    bool isRegistered() const { return !m_user.isEmpty(); }
    QString user() const { return m_user; }
    QString name() const { return m_name; }
    QString type() const { return m_type; }
    QDateTime registered() const { return m_registered; }
    void setIdentity(const QString &user, const QString &name, const QString &type);

    // Takes one message from the allowance; false when the client sends too fast.
    bool takeMessage();
    void send(const QString &text);

private:
    QWebSocket *m_socket;
    QString m_user;
    QString m_name;
    QString m_type;
    QDateTime m_registered;
    double m_allowance;
    double m_perMinute;
    QElapsedTimer m_sinceRefill;
};
