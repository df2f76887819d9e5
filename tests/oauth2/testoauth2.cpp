// The OAuth client against the Google stand-in, with a browser that follows the consent page's
// redirect to our loopback reply server.
#include "base/cipher.h"
#include "o0settingsstore.h"
#include "o2google.h"
#include "o2requestor.h"
#include "support/fakebrowser.h"
#include "support/fakegoogle.h"
#include "support/testprofile.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QSettings>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <memory>

class TestOAuth2 : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void linksThroughTheBrowser();
    void refusedConsentFails();
    void strayRequestIsRefusedAndTheBrowserStillLinks();
    void takenPortFailsAtOnce();
    void silentTokenEndpointTimesOut();
    void withoutRefreshTokenTheFirstRefreshFails();
    void expiredTokenIsRefreshedAndTheRequestRepeated();

private:
    std::unique_ptr<O2Google> makeFlow();
    bool link(O2 *flow);

    TestProfile m_profile;
    std::unique_ptr<FakeGoogle> m_google;
    std::unique_ptr<FakeBrowser> m_browser;
};

void TestOAuth2::initTestCase()
{
    m_profile.useInThisProcess();
}

void TestOAuth2::init()
{
    QSettings().clear();
    m_google = std::make_unique<FakeGoogle>();
    QVERIFY(m_google->start());
    m_browser = std::make_unique<FakeBrowser>();
}

std::unique_ptr<O2Google> TestOAuth2::makeFlow()
{
    auto *store = new O0SettingsStore(
        [](const QString &text) { return Cipher(Cipher::settingsKey()).encryptText(text); },
        [](const QByteArray &bytes) { return Cipher(Cipher::settingsKey()).decryptText(bytes); });
    auto flow = std::make_unique<O2Google>(nullptr, nullptr, store, m_google->url());
    flow->setClientId(FakeGoogle::ClientId);
    flow->setClientSecret(FakeGoogle::ClientSecret);
    flow->setScope(QStringLiteral("https://www.googleapis.com/auth/drive.appdata profile"));
    flow->setLocalPort(0);
    flow->setReplyContent(QByteArrayLiteral("<p>You can close this page.</p>"));
    connect(flow.get(), &O2::openBrowser, m_browser.get(), &FakeBrowser::open);
    return flow;
}

bool TestOAuth2::link(O2 *flow)
{
    QSignalSpy succeeded(flow, &O2::linkingSucceeded);
    QSignalSpy failed(flow, &O2::linkingFailed);
    flow->link();
    return QTest::qWaitFor([&] { return succeeded.size() + failed.size() > 0; }, 10000) &&
           succeeded.size() == 1 && failed.isEmpty();
}

void TestOAuth2::linksThroughTheBrowser()
{
    auto flow = makeFlow();
    QSignalSpy closeBrowser(flow.get(), &O2::closeBrowser);
    QVERIFY(link(flow.get()));
    QVERIFY(flow->redirectUri().startsWith(QLatin1String("http://127.0.0.1:")));
    QCOMPARE(closeBrowser.size(), 1);
    QTRY_COMPARE(m_browser->lastPage(), QByteArrayLiteral("<p>You can close this page.</p>"));
    QVERIFY(flow->linked());
    QVERIFY(!flow->token().isEmpty());
    QVERIFY(!flow->refreshToken().isEmpty());
    QVERIFY(flow->expires() > QDateTime::currentSecsSinceEpoch() + 3000);
    QCOMPARE(flow->extraTokens().value(QStringLiteral("id_token")).toString(),
             FakeGoogle::idToken(QStringLiteral("user-1")));

    // The settings file holds the tokens enciphered at its top level, and a new run reads them
    // back linked; so does one whose tokens an earlier version kept in a group.
    QSettings settings;
    const QString tokenKey = QStringLiteral("token.") + FakeGoogle::ClientId;
    const QByteArray stored = settings.value(tokenKey).toByteArray();
    QVERIFY(!stored.isEmpty());
    QVERIFY(!stored.contains(flow->token().toLatin1()));
    settings.remove(tokenKey);
    settings.setValue(QStringLiteral("GoogleDrive/") + tokenKey, stored);
    O0SettingsStore::moveFromGroup(QStringLiteral("GoogleDrive"));
    QCOMPARE(settings.value(tokenKey).toByteArray(), stored);
    QVERIFY(!settings.childGroups().contains(QStringLiteral("GoogleDrive")));
    auto again = makeFlow();
    QVERIFY(again->linked());
    QCOMPARE(again->token(), flow->token());
    QVERIFY(link(again.get()));
    QCOMPARE(m_browser->pagesOpened(), 1);

    again->unlink();
    QVERIFY(!flow->linked());
    QVERIFY(flow->token().isEmpty());
    QVERIFY(flow->extraTokens().isEmpty());
}

void TestOAuth2::refusedConsentFails()
{
    auto flow = makeFlow();
    m_google->denyNextConsent();
    QVERIFY(!link(flow.get()));
    QVERIFY(!flow->linked());
    QVERIFY(flow->errorText().contains(QLatin1String("access_denied")));
    // The browser still shows our page rather than an error of its own.
    QTRY_COMPARE(m_browser->lastPage(), QByteArrayLiteral("<p>You can close this page.</p>"));
    QVERIFY(!m_google->requests().contains(QStringLiteral("POST /o/oauth2/token")));
    // A new attempt starts over and succeeds.
    QVERIFY(link(flow.get()));
}

void TestOAuth2::strayRequestIsRefusedAndTheBrowserStillLinks()
{
    auto flow = makeFlow();
    disconnect(flow.get(), &O2::openBrowser, m_browser.get(), &FakeBrowser::open);
    QUrl consent;
    connect(flow.get(), &O2::openBrowser, this, [&consent](const QUrl &url) { consent = url; });
    QSignalSpy succeeded(flow.get(), &O2::linkingSucceeded);
    QSignalSpy failed(flow.get(), &O2::linkingFailed);
    flow->link();
    QTRY_VERIFY(consent.isValid());

    // Another page on this computer finds the port before the browser comes back.
    QTcpSocket stray;
    stray.connectToHost(QHostAddress::LocalHost, quint16(QUrl(flow->redirectUri()).port()));
    QVERIFY(stray.waitForConnected(5000));
    stray.write("GET /?code=forged&state=guessed HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
    QByteArray answer;
    QVERIFY(QTest::qWaitFor(
        [&] {
            answer += stray.readAll();
            return stray.state() == QAbstractSocket::UnconnectedState;
        },
        5000));
    QVERIFY2(answer.startsWith("HTTP/1.0 400"), answer.constData());
    QVERIFY(answer.contains("does not belong to the sign-in in progress"));
    QVERIFY(failed.isEmpty());

    m_browser->open(consent);
    QTRY_COMPARE(succeeded.size(), 1);
    QVERIFY(failed.isEmpty());
    QVERIFY(flow->linked());
}

void TestOAuth2::takenPortFailsAtOnce()
{
    QTcpServer squatter;
    QVERIFY(squatter.listen(QHostAddress::LocalHost, 0));
    auto flow = makeFlow();
    flow->setLocalPort(squatter.serverPort());
    QSignalSpy failed(flow.get(), &O2::linkingFailed);
    QSignalSpy openBrowser(flow.get(), &O2::openBrowser);
    flow->link();
    QCOMPARE(failed.size(), 1);
    QCOMPARE(openBrowser.size(), 0);
    QVERIFY(flow->errorText().contains(QString::number(squatter.serverPort())));
}

void TestOAuth2::silentTokenEndpointTimesOut()
{
    QTcpServer silent; // accepts and never answers
    QVERIFY(silent.listen(QHostAddress::LocalHost, 0));
    auto flow = makeFlow();
    flow->setTokenUrl(QUrl(QStringLiteral("http://127.0.0.1:%1/token").arg(silent.serverPort())));
    flow->setTokenTimeoutMs(300);
    QVERIFY(!link(flow.get()));
    QVERIFY(flow->errorText().contains(QLatin1String("time-out")));
}

void TestOAuth2::withoutRefreshTokenTheFirstRefreshFails()
{
    m_google->setIssueRefreshTokens(false);
    auto flow = makeFlow();
    QVERIFY(link(flow.get()));
    QVERIFY(flow->refreshToken().isEmpty());
    QTest::ignoreMessage(QtWarningMsg, "O2::refresh: No refresh token");
    QVERIFY(!flow->refresh());

    // A request refused for its expired token then fails instead of looping.
    QNetworkAccessManager manager;
    O2Requestor requestor(&manager, flow.get());
    QSignalSpy finished(&requestor, &O2Requestor::finished);
    m_google->expireTokens();
    QTest::ignoreMessage(QtWarningMsg, "O2::refresh: No refresh token");
    QTest::ignoreMessage(QtWarningMsg,
                         "O2Requestor::onRequestError: Invoking remote refresh failed");
    requestor.get(
        QNetworkRequest(QUrl(m_google->url() + QStringLiteral("/drive/v3/files/none?alt=media"))));
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(finished.first().at(1).value<QNetworkReply::NetworkError>(),
             QNetworkReply::AuthenticationRequiredError);
    QCOMPARE(requestor.httpStatus(), 401);
}

void TestOAuth2::expiredTokenIsRefreshedAndTheRequestRepeated()
{
    auto flow = makeFlow();
    QVERIFY(link(flow.get()));
    const QString firstToken = flow->token();
    QNetworkAccessManager manager;
    O2Requestor requestor(&manager, flow.get());
    QSignalSpy finished(&requestor, &O2Requestor::finished);
    const QNetworkRequest list(
        QUrl(m_google->url() + QStringLiteral("/drive/v3/files?spaces=appDataFolder&"
                                              "fields=files(id,name,createdTime)")));
    m_google->expireTokens();
    m_google->clearRequests();
    const int id = requestor.get(list);
    QVERIFY(id > 0);
    QTest::ignoreMessage(QtWarningMsg, "O2Requestor::setup: Another request pending");
    QCOMPARE(requestor.get(list), -1);
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(finished.first().at(0).toInt(), id);
    QCOMPARE(finished.first().at(1).value<QNetworkReply::NetworkError>(), QNetworkReply::NoError);
    QVERIFY(finished.first().at(2).toByteArray().contains("\"files\""));
    QCOMPARE(m_google->refreshGrants(), 1);
    QCOMPARE(m_google->requests(), QStringList({QStringLiteral("GET /drive/v3/files"),
                                                QStringLiteral("POST /o/oauth2/token"),
                                                QStringLiteral("GET /drive/v3/files")}));
    QVERIFY(flow->token() != firstToken);
    QVERIFY(flow->linked());

    // Any other failure is reported as it is, without a refresh.
    requestor.get(QNetworkRequest(
        QUrl(m_google->url() + QStringLiteral("/drive/v3/files/missing?alt=media"))));
    QCOMPARE(finished.size(), 1); // never from inside the call
    QTRY_COMPARE(finished.size(), 2);
    QCOMPARE(finished.last().at(1).value<QNetworkReply::NetworkError>(),
             QNetworkReply::ContentNotFoundError);
    QCOMPARE(m_google->refreshGrants(), 1);
}

QTEST_MAIN(TestOAuth2)
#include "testoauth2.moc"
