#pragma once

#include "sync/isynctarget.h"

#include <QHash>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QUrl>

class O2Google;
class O2Requestor;
class QNetworkAccessManager;
class QNetworkRequest;
class QTimer;

// Sync files kept in the hidden application folder of the user's Google Drive, through the
// Drive v3 API, authorised by OAuth with Google. Files are named by their online names; the
// target keeps their Drive ids from the listing and from its own uploads.
class SyncGoogleDrive final : public ISyncTarget
{
    Q_OBJECT

public:
    // Larger files go up in chunks that a broken connection does not make start over.
    static constexpr qint64 ResumableThreshold = 5 * 1024 * 1024;
    static constexpr qint64 ChunkSize = 16 * 256 * 1024;
    static constexpr int PageSize = 1000;
    // Rate-limited and server-side failures are tried again, waiting longer each time.
    static constexpr int MaxAttempts = 6;
    static constexpr int DefaultRetryBaseMs = 1000;
    static inline const QString Scope =
        QStringLiteral("https://www.googleapis.com/auth/drive.appdata profile");

    explicit SyncGoogleDrive(QObject *parent = nullptr);
    ~SyncGoogleDrive() override;

    // False when this build has no OAuth client identifier: Drive cannot be offered.
    bool isConfigured() const;
    // The token that names the user to the notification service.
    QString idToken() const;
    // Forgets the tokens; the user must authorise again.
    void unlink();
    void setRetryBaseMs(int ms) { m_retryBaseMs = ms; }

    void initialise(InitMode mode) override;
    bool isValid() const override;
    void listFiles() override;
    void download(int kind, const SyncEntry &entry) override;
    void upload(int kind, const SyncEntry &entry, const QByteArray &bytes) override;
    void remove(const SyncEntry &entry) override;
    QString name() const override { return tr("Google Drive"); }
    bool hasPendingAnswers() const override { return m_call != Call::None; }

signals:
    void authorisationFailed(const QString &why);

private:
    enum class Call {
        None,
        List,
        Download,
        Upload,
        ResumableStart,
        ResumableChunk,
        ResumableQuery,
        Remove
    };

    void authorise();
    void openBrowser(const QUrl &url);
    void begin(Call call, int kind, const SyncEntry &entry);
    void send();
    QNetworkRequest request(const QUrl &url) const;
    QUrl apiUrl(const QString &path) const;
    QByteArray metadata(QJsonDocument::JsonFormat format) const;
    // The upload address: a new file, or the one being replaced.
    QString uploadPath(const char *type) const;
    int sendUpload(const QNetworkRequest &request, const QByteArray &body);
    QByteArray multipartBody() const;
    void sendChunk();
    void onFinished(int id, QNetworkReply::NetworkError error, const QByteArray &data);
    void onAnswer(const QByteArray &data);
    void onListed(const QByteArray &data);
    void onChunkAnswer(const QByteArray &data);
    bool retryLater(const QByteArray &data);
    void fail(const QByteArray &data);
    void onProgress(qint64 done, qint64 total);

    O2Google *m_auth;
    QNetworkAccessManager *m_manager;
    O2Requestor *m_requestor;
    QTimer *m_retryTimer;
    int m_retryBaseMs = DefaultRetryBaseMs;
    bool m_linked = false;

    // The call in progress: the engine waits for each answer before the next call.
    Call m_call = Call::None;
    int m_kind = 0;
    SyncEntry m_entry;
    QByteArray m_bytes;
    int m_requestId = -1;
    int m_attempt = 0;
    QList<OnlineFile> m_listed;
    QString m_pageToken;
    // The id of the file that the upload under way replaces; empty for a new file.
    QString m_replacing;
    QUrl m_session;
    qint64 m_sent = 0;
    int m_progressStep = -1;
    QHash<QString, QString> m_ids; // online name -> Drive file id
};
