#pragma once

#include <QObject>
#include <QPair>
#include <QString>
#include <QUrl>
#include <QVariantMap>

class O0AbstractStore;

// What every OAuth flow keeps: the client's identity, the endpoints, and the tokens, which live
// in the store under keys that name the client ("token.<client id>").
class O0BaseAuth : public QObject
{
    Q_OBJECT

public:
    static constexpr int DefaultLocalPort = 1965;

    explicit O0BaseAuth(QObject *parent = nullptr, O0AbstractStore *store = nullptr);

    bool linked();
    QString token();
    void setToken(const QString &token);
    QString refreshToken();
    void setRefreshToken(const QString &token);
    // Seconds since the epoch.
    qint64 expires();
    void setExpires(qint64 expires);
    QString tokenSecret();
    void setTokenSecret(const QString &secret);
    // The token response's other members, such as "id_token".
    QVariantMap extraTokens();
    void setExtraTokens(const QVariantMap &tokens);

    QString clientId() const { return m_clientId; }
    void setClientId(const QString &id) { m_clientId = id; }
    QString clientSecret() const { return m_clientSecret; }
    void setClientSecret(const QString &secret) { m_clientSecret = secret; }
    QString scope() const { return m_scope; }
    void setScope(const QString &scope) { m_scope = scope; }
    QUrl requestUrl() const { return m_requestUrl; }
    void setRequestUrl(const QUrl &url) { m_requestUrl = url; }
    QUrl tokenUrl() const { return m_tokenUrl; }
    void setTokenUrl(const QUrl &url) { m_tokenUrl = url; }
    QUrl refreshTokenUrl() const { return m_refreshTokenUrl; }
    void setRefreshTokenUrl(const QUrl &url) { m_refreshTokenUrl = url; }
    // 0 lets the system pick a free port.
    int localPort() const { return m_localPort; }
    void setLocalPort(int port) { m_localPort = port; }
    void setStore(O0AbstractStore *store);

    // "a=1&b=2", each value percent-encoded.
    static QByteArray createQueryParameters(const QList<QPair<QString, QString>> &parameters);

public slots:
    virtual void link() = 0;
    virtual void unlink() = 0;

signals:
    void openBrowser(const QUrl &url);
    void closeBrowser();
    void linkingSucceeded();
    void linkingFailed();
    void linkedChanged();
    void tokenChanged();
    void refreshTokenChanged();
    void expiresChanged();
    void extraTokensChanged();

protected:
    void setLinked(bool linked);
    QString key(const char *pattern) const;

    O0AbstractStore *m_store = nullptr;

private:
    QString m_clientId;
    QString m_clientSecret;
    QString m_scope;
    QUrl m_requestUrl;
    QUrl m_tokenUrl;
    QUrl m_refreshTokenUrl;
    int m_localPort = DefaultLocalPort;
};
