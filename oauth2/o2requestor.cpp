#include "o2requestor.h"

#include "o2.h"

#include <QDebug>
#include <QNetworkAccessManager>
#include <QTimer>

O2Requestor::O2Requestor(QNetworkAccessManager *manager, O2 *authenticator, QObject *parent)
    : QObject(parent), m_manager(manager), m_authenticator(authenticator)
{}

int O2Requestor::get(const QNetworkRequest &request)
{
    return setup(request, QByteArrayLiteral("GET"), QByteArray());
}

int O2Requestor::post(const QNetworkRequest &request, const QByteArray &data)
{
    return setup(request, QByteArrayLiteral("POST"), data);
}

int O2Requestor::put(const QNetworkRequest &request, const QByteArray &data)
{
    return setup(request, QByteArrayLiteral("PUT"), data);
}

int O2Requestor::patch(const QNetworkRequest &request, const QByteArray &data)
{
    return setup(request, QByteArrayLiteral("PATCH"), data);
}

int O2Requestor::deleteResource(const QNetworkRequest &request)
{
    return setup(request, QByteArrayLiteral("DELETE"), QByteArray());
}

QByteArray O2Requestor::rawHeader(const QByteArray &name) const
{
    for (const auto &[header, value] : m_headers) {
        if (header.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

int O2Requestor::setup(const QNetworkRequest &request, const QByteArray &verb,
                       const QByteArray &data)
{
    if (m_status != Idle) {
        qWarning() << "O2Requestor::setup: Another request pending";
        return -1;
    }
    static int lastId = 0;
    m_id = ++lastId;
    m_request = request;
    m_verb = verb;
    m_data = data;
    m_status = Requesting;
    send();
    return m_id;
}

void O2Requestor::send()
{
    m_request.setRawHeader(QByteArrayLiteral("Authorization"),
                           QByteArrayLiteral("Bearer ") + m_authenticator->token().toLatin1());
    m_reply = m_verb == "GET" ? m_manager->get(m_request)
                              : m_manager->sendCustomRequest(m_request, m_verb, m_data);
    const int id = m_id;
    connect(m_reply, &QNetworkReply::finished, this, &O2Requestor::onRequestFinished);
    connect(m_reply, &QNetworkReply::uploadProgress, this,
            [this, id](qint64 sent, qint64 total) { emit uploadProgress(id, sent, total); });
    connect(
        m_reply, &QNetworkReply::downloadProgress, this,
        [this, id](qint64 received, qint64 total) { emit downloadProgress(id, received, total); });
}

void O2Requestor::onRequestFinished()
{
    QNetworkReply *reply = m_reply;
    if (!reply)
        return;
    reply->deleteLater();
    m_httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    m_headers = reply->rawHeaderPairs();
    if (reply->error() != QNetworkReply::NoError) {
        onRequestError(reply->error());
        return;
    }
    finish(QNetworkReply::NoError, reply->readAll());
}

void O2Requestor::onRequestError(QNetworkReply::NetworkError error)
{
    qWarning() << "O2Requestor::onRequestError: Error" << error;
    qWarning() << "O2Requestor::onRequestError: HTTP status" << m_httpStatus;
    const QByteArray body = m_reply ? m_reply->readAll() : QByteArray();
    if (m_status == Requesting && m_httpStatus == 401) {
        m_refreshConnection =
            connect(m_authenticator, &O2::refreshFinished, this, &O2Requestor::onRefreshFinished);
        if (m_authenticator->refresh())
            return;
        disconnect(m_refreshConnection);
        qWarning() << "O2Requestor::onRequestError: Invoking remote refresh failed";
    }
    QTimer::singleShot(ErrorReportDelayMs, this, [this, error, body] { finish(error, body); });
}

void O2Requestor::onRefreshFinished(QNetworkReply::NetworkError error)
{
    disconnect(m_refreshConnection);
    if (error != QNetworkReply::NoError) {
        qWarning() << "O2Requestor::onRefreshFinished: Error" << error;
        QTimer::singleShot(ErrorReportDelayMs, this, [this] {
            finish(QNetworkReply::AuthenticationRequiredError, QByteArray());
        });
        return;
    }
    m_status = ReRequesting;
    send();
}

void O2Requestor::finish(QNetworkReply::NetworkError error, const QByteArray &data)
{
    m_status = Idle;
    m_reply = nullptr;
    emit finished(m_id, error, data);
}
