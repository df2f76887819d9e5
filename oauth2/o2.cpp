#include "o2.h"

#include "o2reply.h"
#include "o2replyserver.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDebug>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QRandomGenerator>

namespace {

const QString RedirectUriTemplate = QStringLiteral("http://127.0.0.1:%1/");

QString randomText(int bytes)
{
    QByteArray random(bytes, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(random.data()), bytes / 4);
    return QString::fromLatin1(
        random.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

QString codeChallenge(const QString &verifier)
{
    const QByteArray hash =
        QCryptographicHash::hash(verifier.toLatin1(), QCryptographicHash::Sha256);
    return QString::fromLatin1(
        hash.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

int httpStatus(QNetworkReply *reply)
{
    return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace

O2::O2(QObject *parent, QNetworkAccessManager *manager, O0AbstractStore *store)
    : O0BaseAuth(parent, store), m_manager(manager ? manager : new QNetworkAccessManager(this)),
      m_replyServer(new O2ReplyServer(this))
{
    connect(m_replyServer, &O2ReplyServer::verificationReceived, this, &O2::onVerificationReceived);
}

O2::~O2() = default;

void O2::setReplyContent(const QByteArray &content)
{
    m_replyServer->setReplyContent(content);
}

void O2::link()
{
    qDebug() << "O2::link";
    if (linked()) {
        qDebug() << "O2::link: Linked already";
        emit linkingSucceeded();
        return;
    }
    m_errorText.clear();
    startReplyServer();
    if (!m_replyServer->isListening())
        return;
    m_state = randomText(16);
    m_replyServer->setExpectedState(m_state);
    m_codeVerifier = randomText(32);
    qDebug() << "O2::link: Emit openBrowser";
    emit openBrowser(authorisationUrl());
}

void O2::startReplyServer()
{
    if (m_replyServer->isListening())
        return;
    // Only the browser on this computer is sent here.
    if (!m_replyServer->listen(QHostAddress::LocalHost, quint16(localPort()))) {
        fail(tr("Unable to receive the answer of the browser: port %1 is in use (%2).")
                 .arg(localPort())
                 .arg(m_replyServer->errorString()));
        return;
    }
    m_redirectUri = RedirectUriTemplate.arg(m_replyServer->serverPort());
}

QUrl O2::authorisationUrl() const
{
    const QByteArray query = createQueryParameters({
        {QStringLiteral("response_type"), QStringLiteral("code")},
        {QStringLiteral("client_id"), clientId()},
        {QStringLiteral("redirect_uri"), m_redirectUri},
        {QStringLiteral("scope"), scope()},
        {QStringLiteral("access_type"), QStringLiteral("offline")},
        {QStringLiteral("approval_prompt"), QStringLiteral("force")},
        {QStringLiteral("state"), m_state},
        {QStringLiteral("code_challenge"), codeChallenge(m_codeVerifier)},
        {QStringLiteral("code_challenge_method"), QStringLiteral("S256")},
    });
    QUrl url = requestUrl();
    url.setQuery(QString::fromLatin1(query));
    return url;
}

void O2::onVerificationReceived(const QMap<QString, QString> &parameters)
{
    qDebug() << "O2::onVerificationReceived:" << parameters.keys();
    qDebug() << "O2::onVerificationReceived: Emitting closeBrowser()";
    emit closeBrowser();
    // The flow is over either way; nothing else is to arrive on the port.
    m_replyServer->close();
    if (parameters.contains(QStringLiteral("error"))) {
        qWarning() << "O2::onVerificationReceived: Verification failed: " << parameters;
        fail(tr("Google refused the authorization: %1")
                 .arg(parameters.value(QStringLiteral("error"))));
        return;
    }
    if (m_state.isEmpty() || parameters.value(QStringLiteral("state")) != m_state) {
        qWarning() << "O2::onVerificationReceived: The state of the redirect does not match";
        fail(tr("The answer of the browser does not belong to this authorization."));
        return;
    }
    const QString code = parameters.value(QStringLiteral("code"));
    if (code.isEmpty()) {
        fail(tr("The answer of the browser holds no authorization code."));
        return;
    }
    requestToken(code);
}

QNetworkReply *O2::postForm(const QUrl &url, const QList<QPair<QString, QString>> &form)
{
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("application/x-www-form-urlencoded"));
    QNetworkReply *reply = m_manager->post(request, createQueryParameters(form));
    m_timedReplies.add(reply, m_tokenTimeoutMs);
    return reply;
}

void O2::answerWith(QNetworkReply *reply, void (O2::*finished)(QNetworkReply *),
                    void (O2::*failed)(QNetworkReply::NetworkError, QNetworkReply *))
{
    connect(reply, &QNetworkReply::finished, this, [this, reply, finished, failed] {
        reply->deleteLater();
        if (reply->error() != QNetworkReply::NoError)
            (this->*failed)(reply->error(), reply);
        else
            (this->*finished)(reply);
        m_timedReplies.remove(reply);
    });
}

void O2::requestToken(const QString &code)
{
    QNetworkReply *reply = postForm(
        tokenUrl(), {
                        {QStringLiteral("code"), code},
                        {QStringLiteral("client_id"), clientId()},
                        {QStringLiteral("client_secret"), clientSecret()},
                        {QStringLiteral("redirect_uri"), m_redirectUri},
                        {QStringLiteral("grant_type"), QStringLiteral("authorization_code")},
                        {QStringLiteral("code_verifier"), m_codeVerifier},
                    });
    answerWith(reply, &O2::onTokenReplyFinished, &O2::onTokenReplyError);
}

void O2::onTokenReplyFinished(QNetworkReply *reply)
{
    qDebug() << "O2::onTokenReplyFinished";
    if (!storeTokens(reply->readAll(), false)) {
        fail(tr("Google's answer holds no access token."));
        return;
    }
    m_codeVerifier.clear();
    m_state.clear();
    setLinked(true);
    emit linkingSucceeded();
}

void O2::onTokenReplyError(QNetworkReply::NetworkError error, QNetworkReply *reply)
{
    const O2Reply *timed = m_timedReplies.find(reply);
    const QString why =
        timed && timed->timedOut() ? QStringLiteral("time-out") : reply->errorString();
    qWarning().noquote() << "O2::onTokenReplyError: " << error << why << reply->readAll();
    fail(tr("The access token could not be obtained: %1").arg(why));
}

bool O2::storeTokens(const QByteArray &body, bool refreshing)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(body, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        qWarning() << "parseTokenResponse: Failed to parse token response due to err:"
                   << parseError.errorString();
        return false;
    }
    if (!document.isObject()) {
        qWarning() << "parseTokenResponse: Token response is not an object";
        return false;
    }
    QVariantMap tokens = document.object().toVariantMap();
    const QString accessToken = tokens.take(QStringLiteral("access_token")).toString();
    if (accessToken.isEmpty()) {
        qWarning() << "O2::onTokenReplyFinished: oauth_token missing from response";
        return false;
    }
    setToken(accessToken);
    const qint64 expiresIn = tokens.take(QStringLiteral("expires_in")).toLongLong();
    if (expiresIn > 0) {
        qDebug() << (refreshing ? " New token expires in"
                                : "O2::onTokenReplyFinished: Token expires in")
                 << expiresIn << "seconds";
        setExpires(QDateTime::currentSecsSinceEpoch() + expiresIn);
    }
    const QString newRefreshToken = tokens.take(QStringLiteral("refresh_token")).toString();
    if (!newRefreshToken.isEmpty() || !refreshing)
        setRefreshToken(newRefreshToken);
    if (refreshing) {
        // A refresh answer carries only what changed; the rest of the link stays.
        QVariantMap extra = extraTokens();
        extra.insert(tokens);
        tokens = extra;
    }
    setExtraTokens(tokens);
    return true;
}

void O2::unlink()
{
    qDebug() << "O2::unlink";
    setLinked(false);
    setToken(QString());
    setRefreshToken(QString());
    setExpires(0);
    setExtraTokens(QVariantMap());
}

bool O2::refresh()
{
    qDebug() << "O2::refresh";
    if (refreshToken().isEmpty()) {
        qWarning() << "O2::refresh: No refresh token";
        return false;
    }
    if (refreshTokenUrl().isEmpty()) {
        qWarning() << "O2::refresh: Refresh token URL not set";
        return false;
    }
    QNetworkReply *reply = postForm(
        refreshTokenUrl(), {
                               {QStringLiteral("client_id"), clientId()},
                               {QStringLiteral("client_secret"), clientSecret()},
                               {QStringLiteral("refresh_token"), refreshToken()},
                               {QStringLiteral("grant_type"), QStringLiteral("refresh_token")},
                           });
    answerWith(reply, &O2::onRefreshFinished, &O2::onRefreshError);
    return true;
}

void O2::onRefreshFinished(QNetworkReply *reply)
{
    if (!storeTokens(reply->readAll(), true)) {
        qWarning() << "O2::onRefreshFinished: Error";
        emit refreshFinished(QNetworkReply::ContentNotFoundError);
        return;
    }
    emit refreshFinished(QNetworkReply::NoError);
}

void O2::onRefreshError(QNetworkReply::NetworkError error, QNetworkReply *reply)
{
    qWarning().noquote() << "O2::onRefreshError: " << error << reply->errorString();
    // Google refuses a revoked or expired grant with 400 or 401: the link is gone and must be
    // made again. Any other failure (no network) leaves it for a later try.
    const int status = httpStatus(reply);
    if (status == 400 || status == 401) {
        m_errorText = tr("Google no longer accepts the authorization. Please connect again.");
        unlink();
    }
    emit refreshFinished(error);
}

void O2::fail(const QString &why)
{
    m_errorText = why;
    qWarning().noquote() << "O2: Linking failed:" << why;
    setLinked(false);
    emit linkingFailed();
}
