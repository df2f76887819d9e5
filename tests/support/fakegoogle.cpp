#include "fakegoogle.h"

#include <QCryptographicHash>
#include <QHostAddress>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QHttpServerResponse>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QUrlQuery>

namespace {

using Status = QHttpServerResponder::StatusCode;

QString randomToken(const char *prefix)
{
    return QString::fromLatin1(prefix) +
           QString::number(QRandomGenerator::global()->generate64(), 36);
}

QByteArray base64Url(const QByteArray &bytes)
{
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QByteArray header(const QHttpServerRequest &request, const QByteArray &name)
{
    for (const auto &[key, value] : request.headers()) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

QHttpServerResponse error(Status status, const QString &message, const QString &reason = {})
{
    QJsonObject error{{QStringLiteral("code"), int(status)}, {QStringLiteral("message"), message}};
    if (!reason.isEmpty())
        error.insert(QStringLiteral("errors"),
                     QJsonArray{QJsonObject{{QStringLiteral("reason"), reason}}});
    return QHttpServerResponse(QJsonObject{{QStringLiteral("error"), error}}, status);
}

QHttpServerResponse oauthError(const QString &code)
{
    return QHttpServerResponse(QJsonObject{{QStringLiteral("error"), code}}, Status::BadRequest);
}

QUrlQuery formOf(const QHttpServerRequest &request)
{
    return QUrlQuery(QString::fromUtf8(request.body()).replace(QLatin1Char('+'), QLatin1Char(' ')));
}

QString formValue(const QUrlQuery &form, const char *name)
{
    return form.queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
}

QJsonObject fileJson(const FakeGoogle::File &file)
{
    return {{QStringLiteral("kind"), QStringLiteral("drive#file")},
            {QStringLiteral("id"), file.id},
            {QStringLiteral("name"), file.name},
            {QStringLiteral("mimeType"), QStringLiteral("application/octet-stream")}};
}

// The body between a part's headers and its end.
QByteArray partBody(const QByteArray &part)
{
    qsizetype start = part.indexOf("\n\n");
    qsizetype skip = 2;
    const qsizetype crlf = part.indexOf("\r\n\r\n");
    if (crlf >= 0 && (start < 0 || crlf < start))
        start = crlf, skip = 4;
    return start < 0 ? QByteArray() : part.mid(start + skip);
}

} // namespace

FakeGoogle::FakeGoogle(QObject *parent) : QAbstractHttpServer(parent) {}

bool FakeGoogle::start(quint16 port)
{
    m_port = listen(QHostAddress::LocalHost, port);
    return m_port != 0;
}

QString FakeGoogle::url() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

void FakeGoogle::expireTokens()
{
    for (auto &entry : m_accessTokens)
        entry.second = 0;
}

QString FakeGoogle::idToken(const QString &subject)
{
    const QByteArray head = base64Url(R"({"alg":"RS256","typ":"JWT"})");
    const QJsonObject claims{{QStringLiteral("iss"), QStringLiteral("https://accounts.google.com")},
                             {QStringLiteral("aud"), ClientId},
                             {QStringLiteral("sub"), subject}};
    const QByteArray body = base64Url(QJsonDocument(claims).toJson(QJsonDocument::Compact));
    return QString::fromLatin1(head + '.' + body + '.' + base64Url("not-a-real-signature"));
}

bool FakeGoogle::handleRequest(const QHttpServerRequest &request, QTcpSocket *socket)
{
    static const QMap<QHttpServerRequest::Method, QString> verbs{
        {QHttpServerRequest::Method::Get, QStringLiteral("GET")},
        {QHttpServerRequest::Method::Post, QStringLiteral("POST")},
        {QHttpServerRequest::Method::Put, QStringLiteral("PUT")},
        {QHttpServerRequest::Method::Delete, QStringLiteral("DELETE")},
        {QHttpServerRequest::Method::Patch, QStringLiteral("PATCH")}};
    m_requests.append(verbs.value(request.method(), QStringLiteral("OTHER")) + QLatin1Char(' ') +
                      request.url().path());
    respond(request).write(makeResponder(request, socket));
    return true;
}

void FakeGoogle::missingHandler(const QHttpServerRequest &request, QTcpSocket *socket)
{
    QHttpServerResponse(Status::NotFound).write(makeResponder(request, socket));
}

QHttpServerResponse FakeGoogle::respond(const QHttpServerRequest &request)
{
    const QString path = request.url().path();
    if (path == QLatin1String("/o/oauth2/auth"))
        return authorise(request);
    if (path == QLatin1String("/o/oauth2/token"))
        return token(request);
    if (!path.startsWith(QLatin1String("/drive/v3/files")) &&
        !path.startsWith(QLatin1String("/upload/drive/v3/files")))
        return QHttpServerResponse(Status::NotFound);
    const QString user = userOfRequest(request);
    if (user.isEmpty())
        return error(Status::Unauthorized,
                     QStringLiteral("Request had invalid authentication "
                                    "credentials."),
                     QStringLiteral("authError"));
    if (m_refuseCount > 0 &&
        (m_requests.last() + QLatin1Char('?') + request.url().query()).contains(m_refuseFilter)) {
        --m_refuseCount;
        if (m_refuseStatus == 403)
            return error(Status::Forbidden, QStringLiteral("User Rate Limit Exceeded"),
                         QStringLiteral("userRateLimitExceeded"));
        if (m_refuseStatus == 429)
            return error(Status::TooManyRequests, QStringLiteral("Rate Limit Exceeded"),
                         QStringLiteral("rateLimitExceeded"));
        return error(Status(m_refuseStatus), QStringLiteral("Backend Error"),
                     QStringLiteral("backendError"));
    }
    return drive(request, user);
}

QHttpServerResponse FakeGoogle::authorise(const QHttpServerRequest &request)
{
    const QUrlQuery query(request.url());
    const QString redirect =
        query.queryItemValue(QStringLiteral("redirect_uri"), QUrl::FullyDecoded);
    if (query.queryItemValue(QStringLiteral("client_id")) != ClientId ||
        !redirect.startsWith(QLatin1String("http://127.0.0.1:")) ||
        query.queryItemValue(QStringLiteral("response_type")) != QLatin1String("code") ||
        query.queryItemValue(QStringLiteral("code_challenge_method")) != QLatin1String("S256"))
        return QHttpServerResponse(QByteArrayLiteral("text/html"),
                                   QByteArrayLiteral("<p>invalid_request</p>"), Status::BadRequest);
    const QString state = query.queryItemValue(QStringLiteral("state"), QUrl::FullyDecoded);
    QUrlQuery answer;
    if (m_denyNext) {
        m_denyNext = false;
        answer.addQueryItem(QStringLiteral("error"), QStringLiteral("access_denied"));
    } else {
        const QString code = randomToken("code-");
        m_codes.insert(code,
                       {m_user, query.queryItemValue(QStringLiteral("code_challenge")), redirect});
        answer.addQueryItem(QStringLiteral("code"), code);
    }
    answer.addQueryItem(QStringLiteral("state"), state);
    QUrl target(redirect);
    target.setQuery(answer);
    QHttpServerResponse response(Status::Found);
    response.addHeader(QByteArrayLiteral("Location"), target.toEncoded());
    return response;
}

QHttpServerResponse FakeGoogle::token(const QHttpServerRequest &request)
{
    const QUrlQuery form = formOf(request);
    if (formValue(form, "client_id") != ClientId ||
        formValue(form, "client_secret") != ClientSecret)
        return oauthError(QStringLiteral("invalid_client"));
    const QString grant = formValue(form, "grant_type");
    if (grant == QLatin1String("refresh_token")) {
        const QString user = m_refreshTokens.value(formValue(form, "refresh_token"));
        if (user.isEmpty())
            return oauthError(QStringLiteral("invalid_grant"));
        ++m_refreshGrants;
        return issueTokens(user, false);
    }
    if (grant != QLatin1String("authorization_code"))
        return oauthError(QStringLiteral("unsupported_grant_type"));
    const Grant granted = m_codes.take(formValue(form, "code"));
    const QByteArray verifier = formValue(form, "code_verifier").toLatin1();
    const QByteArray challenge =
        base64Url(QCryptographicHash::hash(verifier, QCryptographicHash::Sha256));
    if (granted.user.isEmpty() || granted.redirectUri != formValue(form, "redirect_uri") ||
        QString::fromLatin1(challenge) != granted.challenge)
        return oauthError(QStringLiteral("invalid_grant"));
    return issueTokens(granted.user, m_issueRefreshTokens);
}

QHttpServerResponse FakeGoogle::issueTokens(const QString &user, bool withRefreshToken)
{
    const QString access = randomToken("access-");
    m_accessTokens.insert(
        access, {user, QDateTime::currentMSecsSinceEpoch() + qint64(m_tokenLifetime) * 1000});
    QJsonObject answer{{QStringLiteral("access_token"), access},
                       {QStringLiteral("expires_in"), m_tokenLifetime},
                       {QStringLiteral("token_type"), QStringLiteral("Bearer")},
                       {QStringLiteral("id_token"), idToken(user)}};
    if (withRefreshToken) {
        const QString refresh = randomToken("refresh-");
        m_refreshTokens.insert(refresh, user);
        answer.insert(QStringLiteral("refresh_token"), refresh);
    }
    return QHttpServerResponse(answer);
}

QString FakeGoogle::userOfRequest(const QHttpServerRequest &request) const
{
    const QByteArray authorization = header(request, "Authorization");
    if (!authorization.startsWith("Bearer "))
        return {};
    const auto granted = m_accessTokens.value(QString::fromLatin1(authorization.mid(7)));
    return granted.second > QDateTime::currentMSecsSinceEpoch() ? granted.first : QString();
}

QHttpServerResponse FakeGoogle::drive(const QHttpServerRequest &request, const QString &user)
{
    const QString path = request.url().path();
    const QUrlQuery query(request.url());
    const auto method = request.method();
    if (path.startsWith(QLatin1String("/upload/"))) {
        const QString type = query.queryItemValue(QStringLiteral("uploadType"));
        const QString replaces = path.section(QLatin1Char('/'), 5, 5);
        const bool create = method == QHttpServerRequest::Method::Post && replaces.isEmpty();
        const bool update = method == QHttpServerRequest::Method::Patch && !replaces.isEmpty();
        if (update && !findFile(user, replaces))
            return error(Status::NotFound, QStringLiteral("File not found: ") + replaces);
        if ((create || update) && type == QLatin1String("multipart"))
            return multipartUpload(request, user, replaces);
        if ((create || update) && type == QLatin1String("resumable"))
            return startResumable(request, user, replaces);
        if (method == QHttpServerRequest::Method::Put && type == QLatin1String("resumable"))
            return continueResumable(request);
        return error(Status::BadRequest, QStringLiteral("Unsupported upload"));
    }
    if (path == QLatin1String("/drive/v3/files") && method == QHttpServerRequest::Method::Get)
        return list(request, user);
    const QString id = path.section(QLatin1Char('/'), 4, 4);
    File *file = findFile(user, id);
    if (!file)
        return error(Status::NotFound, QStringLiteral("File not found: ") + id);
    if (method == QHttpServerRequest::Method::Delete) {
        QList<File> &files = m_drives[user];
        files.removeIf([&id](const File &f) { return f.id == id; });
        return QHttpServerResponse(Status::NoContent);
    }
    if (method == QHttpServerRequest::Method::Get &&
        query.queryItemValue(QStringLiteral("alt")) == QLatin1String("media"))
        return QHttpServerResponse(QByteArrayLiteral("application/octet-stream"), file->content);
    return QHttpServerResponse(fileJson(*file));
}

QHttpServerResponse FakeGoogle::list(const QHttpServerRequest &request, const QString &user)
{
    const QUrlQuery query(request.url());
    const QString fields = query.queryItemValue(QStringLiteral("fields"), QUrl::FullyDecoded);
    if (query.queryItemValue(QStringLiteral("spaces")) != QLatin1String("appDataFolder") ||
        !fields.contains(QLatin1String("files(id,name,createdTime)")))
        return error(Status::BadRequest, QStringLiteral("Invalid listing: ") + fields);
    int size = query.queryItemValue(QStringLiteral("pageSize")).toInt();
    size = qBound(1, size > 0 ? size : 100, m_maxPageSize);
    const int from = query.queryItemValue(QStringLiteral("pageToken")).toInt();
    const QList<File> files = m_drives.value(user);
    QJsonArray page;
    for (int i = from; i < files.size() && i < from + size; ++i)
        page.append(QJsonObject{{QStringLiteral("id"), files[i].id},
                                {QStringLiteral("name"), files[i].name},
                                {QStringLiteral("createdTime"), files[i].created}});
    QJsonObject answer{{QStringLiteral("files"), page}};
    if (from + size < files.size() && fields.contains(QLatin1String("nextPageToken")))
        answer.insert(QStringLiteral("nextPageToken"), QString::number(from + size));
    return QHttpServerResponse(answer);
}

QHttpServerResponse FakeGoogle::multipartUpload(const QHttpServerRequest &request,
                                                const QString &user, const QString &replaces)
{
    const QByteArray body = request.body();
    const QByteArray type = header(request, "Content-Type");
    const qsizetype at = type.indexOf("boundary=");
    if (!type.startsWith("multipart/related") || at < 0)
        return error(Status::BadRequest, QStringLiteral("Not a multipart body"));
    const QByteArray delimiter = "--" + type.mid(at + 9);
    const qsizetype first = body.indexOf(delimiter + '\n');
    const qsizetype second = body.indexOf('\n' + delimiter + '\n', first + 1);
    const qsizetype close = body.lastIndexOf('\n' + delimiter + "--");
    if (first != 0 || second < 0 || close < second)
        return error(Status::BadRequest, QStringLiteral("Malformed multipart body"));
    const qsizetype secondStart = second + delimiter.size() + 2;
    const QByteArray metadataPart = body.mid(delimiter.size() + 1, second - delimiter.size() - 1);
    const QJsonObject metadata = QJsonDocument::fromJson(partBody(metadataPart)).object();
    File file;
    file.name = metadata.value(QStringLiteral("name")).toString();
    file.description = metadata.value(QStringLiteral("description")).toString();
    for (const QJsonValue &parent : metadata.value(QStringLiteral("parents")).toArray())
        file.parents.append(parent.toString());
    file.content = partBody(body.mid(secondStart, close - secondStart));
    if (file.name.isEmpty())
        return error(Status::BadRequest, QStringLiteral("No name in the metadata"));
    if (!replaces.isEmpty() && !file.parents.isEmpty())
        return error(Status::BadRequest, QStringLiteral("The parents field is not directly "
                                                        "writable in update requests"));
    const QString id = storeFile(user, file, replaces);
    return QHttpServerResponse(fileJson(*findFile(user, id)));
}

QHttpServerResponse FakeGoogle::startResumable(const QHttpServerRequest &request,
                                               const QString &user, const QString &replaces)
{
    const QJsonObject metadata = QJsonDocument::fromJson(request.body()).object();
    Upload upload;
    upload.user = user;
    upload.replaces = replaces;
    upload.file.name = metadata.value(QStringLiteral("name")).toString();
    upload.file.description = metadata.value(QStringLiteral("description")).toString();
    for (const QJsonValue &parent : metadata.value(QStringLiteral("parents")).toArray())
        upload.file.parents.append(parent.toString());
    upload.total = header(request, "X-Upload-Content-Length").toLongLong();
    if (upload.file.name.isEmpty() || upload.total <= 0)
        return error(Status::BadRequest, QStringLiteral("Incomplete resumable upload request"));
    const QString session = randomToken("upload-");
    m_uploads.insert(session, upload);
    QHttpServerResponse response(Status::Ok);
    response.addHeader(QByteArrayLiteral("Location"),
                       (url() +
                        QStringLiteral("/upload/drive/v3/files?uploadType=resumable&"
                                       "upload_id=") +
                        session)
                           .toLatin1());
    return response;
}

QHttpServerResponse FakeGoogle::continueResumable(const QHttpServerRequest &request)
{
    const QString session = QUrlQuery(request.url()).queryItemValue(QStringLiteral("upload_id"));
    if (!m_uploads.contains(session))
        return error(Status::NotFound, QStringLiteral("No such upload session"));
    Upload &upload = m_uploads[session];
    // "bytes 0-262143/6291456", or "bytes */6291456" to ask how much arrived.
    const QByteArray range = header(request, "Content-Range");
    const qsizetype dash = range.indexOf('-');
    if (dash > 0) {
        const qint64 start = range.mid(6, dash - 6).toLongLong();
        if (start > upload.file.content.size())
            return error(Status::BadRequest, QStringLiteral("Chunk starts after the data so far"));
        upload.file.content.truncate(start);
        upload.file.content.append(request.body());
    }
    const qint64 received = upload.file.content.size();
    if (received < upload.total) {
        QHttpServerResponse response(Status::PermanentRedirect);
        if (received > 0)
            response.addHeader(QByteArrayLiteral("Range"),
                               QByteArrayLiteral("bytes=0-") + QByteArray::number(received - 1));
        return response;
    }
    const Upload done = m_uploads.take(session);
    const QString id = storeFile(done.user, done.file, done.replaces);
    return QHttpServerResponse(fileJson(*findFile(done.user, id)));
}

FakeGoogle::File *FakeGoogle::findFile(const QString &user, const QString &id)
{
    auto drive = m_drives.find(user);
    if (drive == m_drives.end())
        return nullptr;
    for (File &file : *drive) {
        if (file.id == id)
            return &file;
    }
    return nullptr;
}

QString FakeGoogle::storeFile(const QString &user, const File &file, const QString &replaces)
{
    File *existing = replaces.isEmpty() ? nullptr : findFile(user, replaces);
    if (!existing)
        return addFile(user, file);
    existing->name = file.name;
    existing->content = file.content;
    return existing->id;
}

QString FakeGoogle::addFile(const QString &user, File file)
{
    // Creation times differ as real ones do, so "newest" is never a tie.
    QDateTime created = QDateTime::currentDateTimeUtc();
    if (m_lastCreated.isValid() && created <= m_lastCreated)
        created = m_lastCreated.addMSecs(1);
    m_lastCreated = created;
    file.id = QStringLiteral("id%1").arg(m_nextId++);
    file.created = created.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ"));
    m_drives[user].append(file);
    return file.id;
}
