#pragma once

#include "o0baseauth.h"
#include "o2replylist.h"

#include <QMap>
#include <QNetworkReply>

class O2ReplyServer;
class QNetworkAccessManager;

// The OAuth 2.0 authorisation-code flow of an installed application: the browser shows the
// provider's consent page, the provider sends it back to a loopback server of ours with a code,
// and the code is exchanged for tokens. A random "state" ties the redirect to this flow, and a
// PKCE verifier ties the code to this process.
class O2 : public O0BaseAuth
{
    Q_OBJECT

public:
    enum GrantFlow {
        GrantFlowAuthorizationCode,
        GrantFlowImplicit,
        GrantFlowResourceOwnerPasswordCredentials
    };
    Q_ENUM(GrantFlow)

    static constexpr int DefaultTokenTimeoutMs = 30000;

    explicit O2(QObject *parent = nullptr, QNetworkAccessManager *manager = nullptr,
                O0AbstractStore *store = nullptr);
    ~O2() override;

    GrantFlow grantFlow() const { return m_grantFlow; }
    void setGrantFlow(GrantFlow flow) { m_grantFlow = flow; }
    // The page the browser shows after the redirect.
    void setReplyContent(const QByteArray &content);
    void setTokenTimeoutMs(int ms) { m_tokenTimeoutMs = ms; }
    // The redirect URI of the running flow: "http://127.0.0.1:<port>/".
    QString redirectUri() const { return m_redirectUri; }
    // Why the last link or refresh failed, for the user.
    QString errorText() const { return m_errorText; }

public slots:
    void link() override;
    void unlink() override;
    // Renews the access token; false when it cannot even start (nothing is then emitted).
    bool refresh();

signals:
    void refreshFinished(QNetworkReply::NetworkError error);

protected:
    void onVerificationReceived(const QMap<QString, QString> &parameters);

private:
    void startReplyServer();
    QUrl authorisationUrl() const;
    void requestToken(const QString &code);
    void onTokenReplyFinished(QNetworkReply *reply);
    void onTokenReplyError(QNetworkReply::NetworkError error, QNetworkReply *reply);
    void onRefreshFinished(QNetworkReply *reply);
    void onRefreshError(QNetworkReply::NetworkError error, QNetworkReply *reply);
    QNetworkReply *postForm(const QUrl &url, const QList<QPair<QString, QString>> &form);
    // Hands the token endpoint's answer to one of the two, and ends its time-out.
    void answerWith(QNetworkReply *reply, void (O2::*finished)(QNetworkReply *),
                    void (O2::*failed)(QNetworkReply::NetworkError, QNetworkReply *));
    void fail(const QString &why);
    // Stores the token reply's members; false when it holds no access token.
    bool storeTokens(const QByteArray &body, bool refreshing);

    GrantFlow m_grantFlow = GrantFlowAuthorizationCode;
    QNetworkAccessManager *m_manager;
    O2ReplyServer *m_replyServer;
    QString m_redirectUri;
    QString m_state;
    QString m_codeVerifier;
    QString m_errorText;
    int m_tokenTimeoutMs = DefaultTokenTimeoutMs;
    O2ReplyList m_timedReplies;
};
