#include "sync/remote/syncgoogledrive.h"

#include "o0settingsstore.h"
#include "o2google.h"
#include "o2requestor.h"
#include "sync/remote/googleendpoints.h"
#include "sync/remote/tokenstore.h"

#include <QDebug>
#include <QDesktopServices>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QMetaEnum>
#include <QNetworkAccessManager>
#include <QRandomGenerator>
#include <QTimer>

namespace {

constexpr int TransferTimeoutMs = 120000;
const QByteArray Boundary = QByteArrayLiteral("boundary");

QString errorName(QNetworkReply::NetworkError error)
{
    return QString::fromLatin1(
        QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error));
}

QJsonObject errorObject(const QByteArray &data)
{
    return QJsonDocument::fromJson(data).object().value(QLatin1String("error")).toObject();
}

bool isRateLimit(const QByteArray &data)
{
    for (const QJsonValue &detail : errorObject(data).value(QLatin1String("errors")).toArray()) {
        const QString reason = detail.toObject().value(QLatin1String("reason")).toString();
        if (reason == QLatin1String("rateLimitExceeded") ||
            reason == QLatin1String("userRateLimitExceeded"))
            return true;
    }
    return false;
}

TokenStore *tokenStore()
{
    // Versions before 1.9 kept the tokens in a group.
    O0SettingsStore::moveFromGroup(QStringLiteral("GoogleDrive"));
    return new TokenStore;
}

} // namespace

SyncGoogleDrive::SyncGoogleDrive(QObject *parent)
    : ISyncTarget(parent), m_manager(new QNetworkAccessManager(this)),
      m_retryTimer(new QTimer(this))
{
    m_auth = new O2Google(this, m_manager, tokenStore(), GoogleEndpoints::accountsUrl());
    m_auth->setClientId(GoogleEndpoints::clientId());
    m_auth->setClientSecret(GoogleEndpoints::clientSecret());
    m_auth->setScope(Scope);
    m_requestor = new O2Requestor(m_manager, m_auth, this);
    m_retryTimer->setSingleShot(true);
    connect(m_retryTimer, &QTimer::timeout, this, &SyncGoogleDrive::send);
    connect(m_auth, &O2::openBrowser, this, &SyncGoogleDrive::openBrowser);
    connect(m_auth, &O2::linkedChanged, this, [this] { m_linked = m_auth->linked(); });
    connect(m_auth, &O2::linkingSucceeded, this, [this] {
        m_linked = true;
        emit initialized(true);
    });
    connect(m_auth, &O2::linkingFailed, this, [this] {
        m_linked = false;
        emit authorisationFailed(m_auth->errorText());
        emit initialized(false);
    });
    connect(m_requestor, &O2Requestor::finished, this, &SyncGoogleDrive::onFinished);
    connect(m_requestor, &O2Requestor::uploadProgress, this,
            [this](int, qint64 sent, qint64 total) { onProgress(m_sent + sent, total); });
    connect(m_requestor, &O2Requestor::downloadProgress, this,
            [this](int, qint64 received, qint64 total) { onProgress(received, total); });
    m_linked = isConfigured() && m_auth->linked();
}

SyncGoogleDrive::~SyncGoogleDrive() = default;

bool SyncGoogleDrive::isConfigured() const
{
    return !m_auth->clientId().isEmpty();
}

QString SyncGoogleDrive::idToken() const
{
    return m_auth->extraTokens().value(QStringLiteral("id_token")).toString();
}

void SyncGoogleDrive::unlink()
{
    m_auth->unlink();
    m_linked = false;
    m_ids.clear();
}

void SyncGoogleDrive::initialise(InitMode mode)
{
    if (!isConfigured()) {
        qWarning() << "Google Drive: No OAuth client identifier is configured in this build";
        QTimer::singleShot(0, this, [this] { emit initialized(false); });
        return;
    }
    if (mode == UseConfigured || (mode == AskIfMissing && m_linked)) {
        QTimer::singleShot(0, this, [this] { emit initialized(m_linked); });
        return;
    }
    if (mode == AlwaysAsk)
        unlink();
    authorise();
}

void SyncGoogleDrive::authorise()
{
    QFile page(QStringLiteral(":/data/html/sync-reply.html"));
    if (page.open(QIODevice::ReadOnly))
        m_auth->setReplyContent(page.readAll());
    m_auth->link();
}

void SyncGoogleDrive::openBrowser(const QUrl &url)
{
    qDebug() << "Opening url";
    if (!QDesktopServices::openUrl(url))
        qWarning() << "Google Drive: Unable to open the browser";
}

bool SyncGoogleDrive::isValid() const
{
    return isConfigured() && m_linked;
}

void SyncGoogleDrive::listFiles()
{
    qDebug() << "getFiles for Google Drive";
    m_listed.clear();
    m_pageToken.clear();
    begin(Call::List, 0, SyncEntry());
}

void SyncGoogleDrive::download(int kind, const SyncEntry &entry)
{
    qDebug().noquote() << "Downloading" << entry.onlineName << "from Google Drive";
    begin(Call::Download, kind, entry);
}

void SyncGoogleDrive::upload(int kind, const SyncEntry &entry, const QByteArray &bytes)
{
    qDebug().noquote() << "Uploading" << entry.file << "to Google Drive";
    m_bytes = bytes;
    m_replacing = m_ids.value(entry.file);
    begin(bytes.size() > ResumableThreshold ? Call::ResumableStart : Call::Upload, kind, entry);
}

void SyncGoogleDrive::remove(const SyncEntry &entry)
{
    qDebug().noquote() << "Removing" << entry.onlineName << "from Google Drive";
    begin(Call::Remove, 0, entry);
}

void SyncGoogleDrive::begin(Call call, int kind, const SyncEntry &entry)
{
    m_call = call;
    m_kind = kind;
    m_entry = entry;
    m_attempt = 0;
    m_sent = 0;
    m_progressStep = -1;
    if ((call == Call::Download || call == Call::Remove) && !m_ids.contains(entry.onlineName)) {
        qWarning().noquote() << "Google Drive: No file id known for" << entry.onlineName;
        QTimer::singleShot(0, this, [this] { fail(QByteArray()); });
        return;
    }
    send();
}

QUrl SyncGoogleDrive::apiUrl(const QString &path) const
{
    return QUrl(GoogleEndpoints::apiUrl() + path);
}

QNetworkRequest SyncGoogleDrive::request(const QUrl &url) const
{
    QNetworkRequest request(url);
    request.setTransferTimeout(TransferTimeoutMs);
    return request;
}

QByteArray SyncGoogleDrive::metadata(QJsonDocument::JsonFormat format) const
{
    QJsonObject object{{QStringLiteral("name"), m_entry.file},
                       {QStringLiteral("mimeType"), QStringLiteral("application/octet-stream")},
                       {QStringLiteral("description"), QStringLiteral("Velmorin snippets file")}};
    // The service refuses parents in an update: the file stays where it is.
    if (m_replacing.isEmpty())
        object.insert(QStringLiteral("parents"), QJsonArray{QStringLiteral("appDataFolder")});
    return QJsonDocument(object).toJson(format);
}

QString SyncGoogleDrive::uploadPath(const char *type) const
{
    // A name that is online already is written again in place: a second file of the same name
    // would be a new version, newer by its time than the ones after it.
    const QString file = m_replacing.isEmpty() ? QString() : QLatin1Char('/') + m_replacing;
    return QStringLiteral("/upload/drive/v3/files") + file + QStringLiteral("?uploadType=") +
           QLatin1String(type);
}

int SyncGoogleDrive::sendUpload(const QNetworkRequest &request, const QByteArray &body)
{
    return m_replacing.isEmpty() ? m_requestor->post(request, body)
                                 : m_requestor->patch(request, body);
}

QByteArray SyncGoogleDrive::multipartBody() const
{
    QByteArray body;
    body += "--" + Boundary + '\n';
    body += "Content-Type: application/json; charset=UTF-8\n";
    body += '\n';
    body += metadata(QJsonDocument::Indented);
    body += '\n';
    body += "--" + Boundary + '\n';
    body += "Content-Type: application/octet-stream\n";
    body += '\n';
    body += m_bytes;
    body += "\n--" + Boundary + "--\n";
    return body;
}

void SyncGoogleDrive::send()
{
    const QString fileId = m_ids.value(m_entry.onlineName);
    switch (m_call) {
    case Call::List: {
        QString query = QStringLiteral("/drive/v3/files?spaces=appDataFolder&fields=nextPageToken,"
                                       "files(id,name,createdTime)&pageSize=%1")
                            .arg(PageSize);
        if (!m_pageToken.isEmpty())
            query += QStringLiteral("&pageToken=") +
                     QString::fromLatin1(QUrl::toPercentEncoding(m_pageToken));
        m_requestId = m_requestor->get(request(apiUrl(query)));
        break;
    }
    case Call::Download: {
        const QUrl url =
            apiUrl(QStringLiteral("/drive/v3/files/") + fileId + QStringLiteral("?alt=media"));
        qDebug() << "Download url" << url.toString();
        m_requestId = m_requestor->get(request(url));
        break;
    }
    case Call::Upload: {
        qDebug().noquote() << "Metadata" << metadata(QJsonDocument::Compact);
        QNetworkRequest upload = request(apiUrl(uploadPath("multipart")));
        upload.setRawHeader("Content-Type", "multipart/related; boundary=" + Boundary);
        m_requestId = sendUpload(upload, multipartBody());
        break;
    }
    case Call::ResumableStart: {
        qDebug().noquote() << "Metadata" << metadata(QJsonDocument::Compact);
        QNetworkRequest start = request(apiUrl(uploadPath("resumable")));
        start.setRawHeader("Content-Type", "application/json; charset=UTF-8");
        start.setRawHeader("X-Upload-Content-Type", "application/octet-stream");
        start.setRawHeader("X-Upload-Content-Length", QByteArray::number(m_bytes.size()));
        m_requestId = sendUpload(start, metadata(QJsonDocument::Compact));
        break;
    }
    case Call::ResumableChunk:
    case Call::ResumableQuery:
        sendChunk();
        break;
    case Call::Remove:
        m_requestId = m_requestor->deleteResource(
            request(apiUrl(QStringLiteral("/drive/v3/files/") + fileId)));
        break;
    case Call::None:
        return;
    }
    if (m_requestId < 0)
        QTimer::singleShot(0, this, [this] { fail(QByteArray()); });
}

void SyncGoogleDrive::sendChunk()
{
    QNetworkRequest chunk = request(m_session);
    // The service answers an unfinished upload with 308 and no Location: that is no redirect.
    chunk.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
    chunk.setRawHeader("Content-Type", "application/octet-stream");
    const QByteArray total = QByteArray::number(m_bytes.size());
    QByteArray part;
    if (m_call == Call::ResumableQuery) {
        chunk.setRawHeader("Content-Range", "bytes */" + total);
    } else {
        part = m_bytes.mid(m_sent, ChunkSize);
        chunk.setRawHeader("Content-Range", "bytes " + QByteArray::number(m_sent) + '-' +
                                                QByteArray::number(m_sent + part.size() - 1) + '/' +
                                                total);
    }
    m_requestId = m_requestor->put(chunk, part);
}

void SyncGoogleDrive::onFinished(int id, QNetworkReply::NetworkError error, const QByteArray &data)
{
    if (id != m_requestId || m_call == Call::None)
        return;
    const bool unfinishedUpload = m_requestor->httpStatus() == 308;
    if (error != QNetworkReply::NoError && !unfinishedUpload) {
        if (m_call == Call::List)
            qDebug().noquote() << "getFiles Finished" << errorName(error);
        if (!retryLater(data))
            fail(data);
        return;
    }
    m_attempt = 0;
    onAnswer(data);
}

void SyncGoogleDrive::onAnswer(const QByteArray &data)
{
    const SyncEntry entry = m_entry;
    switch (m_call) {
    case Call::List:
        onListed(data);
        return;
    case Call::Download:
        qDebug() << "download Finished" << errorName(QNetworkReply::NoError);
        m_call = Call::None;
        emit downloaded(m_kind, entry, data);
        return;
    case Call::ResumableStart:
        m_session = QUrl::fromEncoded(m_requestor->rawHeader("Location"));
        if (!m_session.isValid()) {
            qWarning() << "Google Drive: The resumable upload got no session address";
            fail(data);
            return;
        }
        m_call = Call::ResumableChunk;
        sendChunk();
        return;
    case Call::ResumableChunk:
    case Call::ResumableQuery:
        onChunkAnswer(data);
        return;
    case Call::Upload: {
        qDebug() << "upload Finished" << errorName(QNetworkReply::NoError);
        const QString fileId =
            QJsonDocument::fromJson(data).object().value(QLatin1String("id")).toString();
        m_ids.insert(entry.file, fileId);
        SyncEntry written = entry;
        written.onlineName = entry.file;
        m_call = Call::None;
        m_bytes.clear();
        emit uploaded(m_kind, written);
        return;
    }
    case Call::Remove:
        qDebug() << "delete finished" << errorName(QNetworkReply::NoError);
        m_ids.remove(entry.onlineName);
        m_call = Call::None;
        emit removed(entry);
        return;
    case Call::None:
        return;
    }
}

void SyncGoogleDrive::onListed(const QByteArray &data)
{
    const QJsonObject answer = QJsonDocument::fromJson(data).object();
    for (const QJsonValue &value : answer.value(QLatin1String("files")).toArray()) {
        const QJsonObject file = value.toObject();
        const OnlineFile online{file.value(QLatin1String("name")).toString(),
                                file.value(QLatin1String("id")).toString(),
                                file.value(QLatin1String("createdTime")).toString()};
        // Equal names carry equal hashes, so equal content: the later one is as good.
        m_listed.removeIf([&online](const OnlineFile &f) { return f.name == online.name; });
        m_listed.append(online);
    }
    m_pageToken = answer.value(QLatin1String("nextPageToken")).toString();
    if (!m_pageToken.isEmpty()) {
        send();
        return;
    }
    qDebug() << "getFiles Finished" << errorName(QNetworkReply::NoError);
    m_ids.clear();
    for (const OnlineFile &file : std::as_const(m_listed))
        m_ids.insert(file.name, file.id);
    QList<OnlineFile> files = m_listed;
    files.append(OnlineFile{});
    m_listed.clear();
    m_call = Call::None;
    emit filesListed(files);
}

void SyncGoogleDrive::onChunkAnswer(const QByteArray &data)
{
    if (m_requestor->httpStatus() != 308) {
        m_call = Call::Upload;
        onAnswer(data);
        return;
    }
    // "bytes=0-4194303": what the service holds so far.
    const QByteArray range = m_requestor->rawHeader("Range");
    m_sent = range.isEmpty() ? 0 : range.mid(range.indexOf('-') + 1).toLongLong() + 1;
    m_call = Call::ResumableChunk;
    sendChunk();
}

bool SyncGoogleDrive::retryLater(const QByteArray &data)
{
    const int status = m_requestor->httpStatus();
    const bool chunkLost = status == 0 && m_call == Call::ResumableChunk;
    const bool retryable =
        status == 429 || (status == 403 && isRateLimit(data)) || status >= 500 || chunkLost;
    if (!retryable || m_attempt + 1 >= MaxAttempts)
        return false;
    // Truncated exponential backoff with jitter, as Google asks of its clients.
    const int delay = m_retryBaseMs * (1 << qMin(m_attempt, 5)) +
                      int(QRandomGenerator::global()->bounded(m_retryBaseMs + 1));
    ++m_attempt;
    qWarning().noquote() << "Google Drive: HTTP status" << status << "- trying again in" << delay
                         << "ms";
    // A chunk that failed may have arrived in part: ask the service where to go on.
    if (m_call == Call::ResumableChunk)
        m_call = Call::ResumableQuery;
    m_retryTimer->start(delay);
    return true;
}

void SyncGoogleDrive::fail(const QByteArray &data)
{
    const QString message = errorObject(data).value(QLatin1String("message")).toString();
    if (!message.isEmpty())
        qWarning().noquote() << "Google Drive:" << message;
    const Call call = m_call;
    const SyncEntry entry = m_entry;
    m_call = Call::None;
    m_bytes.clear();
    switch (call) {
    case Call::List:
        emit listFailed();
        break;
    case Call::Download:
        qDebug() << "download Finished failed";
        emit downloadFailed(m_kind, entry);
        break;
    case Call::Upload:
    case Call::ResumableStart:
    case Call::ResumableChunk:
    case Call::ResumableQuery:
        qDebug() << "upload Finished failed";
        emit uploadFailed(m_kind, entry);
        break;
    case Call::Remove:
        qDebug() << "delete finished failed";
        emit removeFailed(entry);
        break;
    case Call::None:
        break;
    }
}

void SyncGoogleDrive::onProgress(qint64 done, qint64 total)
{
    if (m_call == Call::ResumableChunk)
        total = m_bytes.size();
    if (total <= 0)
        return;
    // One line per tenth, not one per network packet.
    const int step = int(done * 10 / total);
    if (step == m_progressStep)
        return;
    m_progressStep = step;
    qDebug().noquote() << "Progress: " << done << "/" << total;
}
