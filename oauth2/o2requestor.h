#pragma once

#include <QByteArray>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QPointer>

class O2;
class QNetworkAccessManager;

// Sends requests that carry the flow's access token, one at a time. A request refused with 401
// (the token expired) is sent once more after a token refresh; every other failure is reported
// to the caller a moment later, never from inside the call.
class O2Requestor final : public QObject
{
    Q_OBJECT

public:
    static constexpr int ErrorReportDelayMs = 10;

    O2Requestor(QNetworkAccessManager *manager, O2 *authenticator, QObject *parent = nullptr);

    // Each returns the request's id, or -1 when another request is still pending.
    int get(const QNetworkRequest &request);
    int post(const QNetworkRequest &request, const QByteArray &data);
    int put(const QNetworkRequest &request, const QByteArray &data);
    int patch(const QNetworkRequest &request, const QByteArray &data);
    int deleteResource(const QNetworkRequest &request);

    bool isPending() const { return m_status != Idle; }
    // Of the request that finished last.
    int httpStatus() const { return m_httpStatus; }
    QByteArray rawHeader(const QByteArray &name) const;

signals:
    void finished(int id, QNetworkReply::NetworkError error, const QByteArray &data);
    void uploadProgress(int id, qint64 sent, qint64 total);
    void downloadProgress(int id, qint64 received, qint64 total);

private:
    enum Status { Idle, Requesting, ReRequesting };

    int setup(const QNetworkRequest &request, const QByteArray &verb, const QByteArray &data);
    void send();
    void onRequestFinished();
    void onRequestError(QNetworkReply::NetworkError error);
    void onRefreshFinished(QNetworkReply::NetworkError error);
    void finish(QNetworkReply::NetworkError error, const QByteArray &data);

    QNetworkAccessManager *m_manager;
    O2 *m_authenticator;
    QPointer<QNetworkReply> m_reply;
    QNetworkRequest m_request;
    QByteArray m_verb;
    QByteArray m_data;
    Status m_status = Idle;
    int m_id = 0;
    int m_httpStatus = 0;
    QList<QNetworkReply::RawHeaderPair> m_headers;
    QMetaObject::Connection m_refreshConnection;
};
