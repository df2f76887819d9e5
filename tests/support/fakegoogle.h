#pragma once

#include <QAbstractHttpServer>
#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>

class QHttpServerResponse;

// A stand-in for Google on the loopback address: the authorisation page (which consents at once
// and redirects to the application), the token endpoint (code and refresh grants, with PKCE,
// expiring tokens and an id_token naming the user), and the part of the Drive v3 API the sync
// target uses (paged listing, media download, multipart and resumable upload, delete). Faults
// are switched on by the tests.
class FakeGoogle final : public QAbstractHttpServer
{
    Q_OBJECT

public:
    struct File
    {
        QString id;
        QString name;
        QString created;
        QString description;
        QStringList parents;
        QByteArray content;
    };

    static inline const QString ClientId = QStringLiteral("test-client.apps.example");
    static inline const QString ClientSecret = QStringLiteral("aP3kR9_xQ2mZ7-vT5nB8cW1_");

    explicit FakeGoogle(QObject *parent = nullptr);

    // Listens on 127.0.0.1 (on any free port for 0); false when the port could not be had.
    bool start(quint16 port = 0);
    QString url() const;

    // Who consents on the authorisation page from now on.
    void setUser(const QString &subject) { m_user = subject; }
    // The next authorisation redirect carries "error=access_denied" instead of a code.
    void denyNextConsent() { m_denyNext = true; }
    void setIssueRefreshTokens(bool issue) { m_issueRefreshTokens = issue; }
    void setTokenLifetime(int seconds) { m_tokenLifetime = seconds; }
    // Every access token issued so far is refused from now on.
    void expireTokens();
    void setMaxPageSize(int size) { m_maxPageSize = size; }
    // The next n Drive requests whose "METHOD path?query" contains the filter are refused with
    // the status: 429, 403 "userRateLimitExceeded", or a server error.
    void refuseNext(int count, int status, const QString &filter = QString())
    {
        m_refuseCount = count, m_refuseStatus = status, m_refuseFilter = filter;
    }

    QList<File> files(const QString &user) const { return m_drives.value(user); }
    // "METHOD path" of every request, in order.
    QStringList requests() const { return m_requests; }
    void clearRequests() { m_requests.clear(); }
    int refreshGrants() const { return m_refreshGrants; }
    // An id_token for the subject, as the token endpoint issues it.
    static QString idToken(const QString &subject);

protected:
    bool handleRequest(const QHttpServerRequest &request, QTcpSocket *socket) override;
    void missingHandler(const QHttpServerRequest &request, QTcpSocket *socket) override;

private:
    struct Grant
    {
        QString user;
        QString challenge;
        QString redirectUri;
    };
    struct Upload
    {
        QString user;
        File file;
        qint64 total = 0;
        // The file an update writes again; empty for a new file.
        QString replaces;
    };

    QHttpServerResponse respond(const QHttpServerRequest &request);
    QHttpServerResponse authorise(const QHttpServerRequest &request);
    QHttpServerResponse token(const QHttpServerRequest &request);
    QHttpServerResponse drive(const QHttpServerRequest &request, const QString &user);
    QHttpServerResponse list(const QHttpServerRequest &request, const QString &user);
    QHttpServerResponse multipartUpload(const QHttpServerRequest &request, const QString &user,
                                        const QString &replaces);
    QHttpServerResponse startResumable(const QHttpServerRequest &request, const QString &user,
                                       const QString &replaces);
    QHttpServerResponse continueResumable(const QHttpServerRequest &request);
    QHttpServerResponse issueTokens(const QString &user, bool withRefreshToken);
    QString userOfRequest(const QHttpServerRequest &request) const;
    File *findFile(const QString &user, const QString &id);
    QString addFile(const QString &user, File file);
    // A new file, or the content of an existing one replaced in place (an update keeps the
    // file's id, creation time and parents, as the service does): the file's id.
    QString storeFile(const QString &user, const File &file, const QString &replaces);

    QString m_user = QStringLiteral("user-1");
    bool m_denyNext = false;
    bool m_issueRefreshTokens = true;
    int m_tokenLifetime = 3600;
    int m_maxPageSize = 1000;
    int m_refuseCount = 0;
    int m_refuseStatus = 429;
    QString m_refuseFilter;
    int m_nextId = 1;
    int m_refreshGrants = 0;
    QDateTime m_lastCreated;
    QHash<QString, Grant> m_codes;
    QHash<QString, QString> m_refreshTokens;               // token -> user
    QHash<QString, QPair<QString, qint64>> m_accessTokens; // token -> user, expiry (ms)
    QHash<QString, Upload> m_uploads;
    QMap<QString, QList<File>> m_drives;
    QStringList m_requests;
    quint16 m_port = 0;
};
