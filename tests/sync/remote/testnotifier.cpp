// The notifier's websocket side against our notification service, run as its own process:
// notifications reach only the same user's other computers, the client list, reconnection
// with a growing delay when the service goes away, and a service that shrugs off bad clients.
#include "base/settings.h"
#include "support/fakegoogle.h"
#include "support/testprofile.h"
#include "sync/remote/notifier.h"

#include <QDateTime>
#include <QFile>
#include <QHostInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QWebSocket>

#include <functional>
#include <memory>
#include <vector>

namespace {

class Service
{
public:
    ~Service() { stop(); }

    bool start(quint16 port = 0, const QStringList &more = {})
    {
        m_process.start(QStringLiteral(NOTIFY_SERVICE),
                        QStringList{QStringLiteral("--port"), QString::number(port),
                                    QStringLiteral("--max-message-size"), QStringLiteral("1024"),
                                    QStringLiteral("--rate"), QStringLiteral("60")} +
                            more);
        const QRegularExpression listening(QStringLiteral("Listening on wss?://127.0.0.1:(\\d+)"));
        return QTest::qWaitFor(
                   [&] {
                       m_output += QString::fromUtf8(m_process.readAllStandardError());
                       const auto match = listening.match(m_output);
                       m_port = quint16(match.captured(1).toUInt());
                       return match.hasMatch() || m_process.state() == QProcess::NotRunning;
                   },
                   10000) &&
               m_port != 0;
    }
    void stop()
    {
        m_process.kill();
        m_process.waitForFinished();
        m_output.clear();
    }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    quint16 port() const { return m_port; }

private:
    QProcess m_process;
    QString m_output;
    quint16 m_port = 0;
};

// A computer of a user, as the sync engine holds it.
std::unique_ptr<Notifier> computer(const QString &user, int reconnectBaseMs = 15000)
{
    auto notifier = std::make_unique<Notifier>();
    const QString token = FakeGoogle::idToken(user);
    notifier->setIdTokenSource([token] { return token; });
    notifier->setReconnectBaseMs(reconnectBaseMs);
    notifier->connectTarget(QStringLiteral("GoogleDrive"));
    return notifier;
}

// Asks until the service lists n other computers: registrations on other sockets may still be
// on their way.
QList<Notifier::Client> clientsOf(Notifier *notifier, int n)
{
    QSignalSpy lists(notifier, &Notifier::clientList);
    QList<Notifier::Client> clients;
    const bool listed = QTest::qWaitFor(
        [&] {
            notifier->requestClientList();
            if (lists.wait(200))
                clients = lists.takeLast().first().value<QList<Notifier::Client>>();
            return clients.size() == n;
        },
        5000);
    if (!listed)
        qWarning() << "The service lists" << clients.size() << "computers, not" << n;
    return clients;
}

// A client that writes its own bytes, to send what a websocket library never would.
class RawClient
{
public:
    bool open(quint16 port, const QByteArray &withRequest = {})
    {
        m_socket.connectToHost(QHostAddress::LocalHost, port);
        if (!m_socket.waitForConnected())
            return false;
        m_socket.write("GET /notifier HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\n"
                       "Connection: Upgrade\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
                       "Sec-WebSocket-Version: 13\r\n\r\n" +
                       withRequest);
        return QTest::qWaitFor([this] { return m_socket.peek(4096).contains("\r\n\r\n"); }) ||
               m_socket.state() != QAbstractSocket::ConnectedState;
    }
    // Writes the bytes a few at a time, so that frames arrive cut at every place.
    void send(const QByteArray &bytes, int step)
    {
        for (qsizetype at = 0; at < bytes.size(); at += step) {
            m_socket.write(bytes.mid(at, step));
            m_socket.flush();
            QTest::qWait(5);
        }
    }
    bool isOpen() { return m_socket.peek(4096).startsWith("HTTP/1.1 101"); }
    bool answered(const char *text)
    {
        return QTest::qWaitFor([&] { return m_socket.peek(1 << 16).contains(text); }, 3000);
    }
    bool closed()
    {
        return QTest::qWaitFor(
            [this] { return m_socket.state() == QAbstractSocket::UnconnectedState; }, 3000);
    }

    static QByteArray frame(const QByteArray &text, bool masked)
    {
        QByteArray frame(1, char(0x81));
        const char maskBit = masked ? char(0x80) : char(0);
        if (text.size() < 126) {
            frame += char(maskBit | char(text.size()));
        } else {
            frame += char(maskBit | 126);
            frame += char(text.size() >> 8);
            frame += char(text.size() & 0xff);
        }
        if (!masked)
            return frame + text;
        const QByteArray key("\x12\x34\x56\x78", 4);
        QByteArray payload = text;
        for (qsizetype i = 0; i < payload.size(); ++i)
            payload[i] = char(payload[i] ^ key[i % 4]);
        return frame + key + payload;
    }

private:
    QTcpSocket m_socket;
};

} // namespace

class TestNotifier : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void userIdComesFromAThreePartToken();
    void notifyReachesOnlyTheSameUsersOtherComputers();
    void badClientsDoNotTakeTheServiceDown();
    void idleSocketsCannotFillTheService();
    void unmaskedFramesEndTheConnection_data();
    void unmaskedFramesEndTheConnection();
    void computersReconnectWithAGrowingDelay();
    void secureWebSocketsWithACertificate();
    void folderWatchReportsOtherComputersFiles();

private:
    TestProfile m_profile;
    Service m_service;
};

void TestNotifier::initTestCase()
{
    m_profile.useInThisProcess();
}

void TestNotifier::init()
{
    QVERIFY(m_service.start());
    qputenv("VELMORIN_NOTIFIER_URL",
            QStringLiteral("ws://127.0.0.1:%1").arg(m_service.port()).toLatin1());
}

void TestNotifier::cleanup()
{
    m_service.stop();
}

void TestNotifier::userIdComesFromAThreePartToken()
{
    QCOMPARE(Notifier::userIdFromIdToken(FakeGoogle::idToken(QStringLiteral("alice"))),
             QStringLiteral("alice"));
    const QStringList parts = FakeGoogle::idToken(QStringLiteral("alice")).split(QLatin1Char('.'));
    const QString twoParts = parts.mid(0, 2).join(QLatin1Char('.'));
    const QString fourParts = parts.join(QLatin1Char('.')) + QStringLiteral(".extra");
    for (const QString &token : {twoParts, fourParts, QStringLiteral("a.%%%.c"), QString()}) {
        QVERIFY(Notifier::userIdFromIdToken(token).isEmpty());
        Notifier notifier;
        notifier.setIdTokenSource([token] { return token; });
        QSignalSpy status(&notifier, &Notifier::status);
        QTest::ignoreMessage(QtWarningMsg,
                             "Unable to connect to the websocket since the user id is not defined");
        notifier.connectTarget(QStringLiteral("GoogleDrive"));
        QVERIFY(!status.wait(300));
        QVERIFY(!notifier.isConnected());
    }
    QCOMPARE(Notifier::reconnectDelayMs(1), 15000);
    QCOMPARE(Notifier::reconnectDelayMs(10), 150000);
    QCOMPARE(Notifier::reconnectDelayMs(240), 3600000);
    QCOMPARE(Notifier::reconnectDelayMs(1000), 3600000);
}

void TestNotifier::notifyReachesOnlyTheSameUsersOtherComputers()
{
    auto a1 = computer(QStringLiteral("alice"));
    auto a2 = computer(QStringLiteral("alice"));
    auto b1 = computer(QStringLiteral("bob"));
    for (Notifier *notifier : {a1.get(), a2.get(), b1.get()})
        QTRY_VERIFY(notifier->isConnected());

    const QList<Notifier::Client> others = clientsOf(a2.get(), 1);
    QCOMPARE(others.size(), 1);
    QCOMPARE(others.first().value(QStringLiteral("name")), QHostInfo::localHostName());
    const bool windows = QSysInfo::productType() == QLatin1String("windows");
    QCOMPARE(others.first().value(QStringLiteral("type")), windows ? "Windows" : "Linux");
    const QDateTime registered =
        QDateTime::fromString(others.first().value(QStringLiteral("time")), Qt::ISODate);
    QVERIFY(qAbs(registered.secsTo(QDateTime::currentDateTime())) < 60);
    QCOMPARE(clientsOf(b1.get(), 0).size(), 0);

    QSignalSpy a1News(a1.get(), &Notifier::dataUpdated);
    QSignalSpy a2News(a2.get(), &Notifier::dataUpdated);
    QSignalSpy b1News(b1.get(), &Notifier::dataUpdated);
    a1->notify(QStringLiteral("History.json"));
    QVERIFY(a2News.wait());
    QCOMPARE(a2News.first().first().toString(), QStringLiteral("History.json"));
    b1->notify(QStringLiteral("Snippets.json"));
    QTest::qWait(300);
    QCOMPARE(a1News.size(), 0);
    QCOMPARE(a2News.size(), 1);
    QCOMPARE(b1News.size(), 0);

    // Closing on purpose stays closed.
    a2->close();
    QTest::qWait(300);
    QVERIFY(!a2->isConnected());
    QCOMPARE(a2->lastStatus(), Notifier::Disconnected);
    QCOMPARE(clientsOf(a1.get(), 0).size(), 0);
}

void TestNotifier::badClientsDoNotTakeTheServiceDown()
{
    const QUrl url(QStringLiteral("ws://127.0.0.1:%1/notifier").arg(m_service.port()));
    // Opens a socket, sends what the client gives it, and sees the service close it.
    const auto closedAfter = [](const QUrl &at, const std::function<void(QWebSocket &)> &send) {
        QWebSocket socket;
        QSignalSpy open(&socket, &QWebSocket::connected);
        QSignalSpy closed(&socket, &QWebSocket::disconnected);
        socket.open(at);
        if (!open.wait() && closed.isEmpty())
            return false;
        send(socket);
        return !closed.isEmpty() || closed.wait();
    };
    QVERIFY(closedAfter(url, [](QWebSocket &rogue) {
        for (const char *garbage :
             {"{{{", "[]", "null", "{\"operation\":5}", "{\"operation\":\"notify\"}",
              "{\"operation\":\"register\",\"user\":[1,2]}", "\xff\xfe"})
            rogue.sendTextMessage(QString::fromLatin1(garbage));
        rogue.sendBinaryMessage(QByteArray(64, '\0'));
    }));
    QVERIFY(closedAfter(url, [](QWebSocket &big) { big.sendTextMessage(QString(5000, 'x')); }));
    QVERIFY(closedAfter(url, [](QWebSocket &flood) {
        for (int i = 0; i < 200; ++i)
            flood.sendTextMessage(QStringLiteral("{\"operation\":\"request-client-list\"}"));
    }));
    QVERIFY(closedAfter(QUrl(QStringLiteral("ws://127.0.0.1:%1/other").arg(m_service.port())),
                        [](QWebSocket &) {}));

    QVERIFY(m_service.isRunning());
    auto a1 = computer(QStringLiteral("alice"));
    auto a2 = computer(QStringLiteral("alice"));
    QCOMPARE(clientsOf(a1.get(), 1).size(), 1);
    QSignalSpy news(a2.get(), &Notifier::dataUpdated);
    a1->notify(QStringLiteral("History.json"));
    QVERIFY(news.wait());
}

void TestNotifier::idleSocketsCannotFillTheService()
{
    m_service.stop();
    QVERIFY(m_service.start(m_service.port(),
                            {QStringLiteral("--max-per-address"), QStringLiteral("3"),
                             QStringLiteral("--register-timeout"), QStringLiteral("800"),
                             QStringLiteral("--max-connections"), QStringLiteral("5")}));
    const QUrl url(QStringLiteral("ws://127.0.0.1:%1/notifier").arg(m_service.port()));
    std::vector<std::unique_ptr<QWebSocket>> idle;
    std::vector<std::unique_ptr<QSignalSpy>> closed;
    for (int i = 0; i < 4; ++i) {
        idle.push_back(std::make_unique<QWebSocket>());
        closed.push_back(
            std::make_unique<QSignalSpy>(idle.back().get(), &QWebSocket::disconnected));
        QSignalSpy open(idle.back().get(), &QWebSocket::connected);
        idle.back()->open(url);
        QVERIFY(open.wait());
    }
    // The fourth from the same address is refused; the others go when their time is up.
    QTRY_COMPARE(closed.at(3)->size(), 1);
    QCOMPARE(idle.at(3)->closeCode(), QWebSocketProtocol::CloseCodePolicyViolated);
    QCOMPARE(closed.at(0)->size(), 0);
    for (int i = 0; i < 3; ++i)
        QTRY_COMPARE(closed.at(i)->size(), 1);

    // Sockets that clients drop without a word leave room for others.
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<RawClient>> dropped(3);
        for (auto &client : dropped) {
            client = std::make_unique<RawClient>();
            QVERIFY2(client->open(m_service.port()) && client->isOpen(),
                     qPrintable(QStringLiteral("round %1").arg(round)));
        }
        dropped.clear();
        QTest::qWait(200);
    }

    // A computer that registers stays past that time.
    auto alice = computer(QStringLiteral("alice"));
    auto other = computer(QStringLiteral("alice"));
    QCOMPARE(clientsOf(alice.get(), 1).size(), 1);
    QTest::qWait(1200);
    QCOMPARE(clientsOf(alice.get(), 1).size(), 1);
}

void TestNotifier::unmaskedFramesEndTheConnection_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<bool>("maskedLast");
    QTest::addColumn<bool>("withRequest");
    QTest::newRow("masked, whole") << 4096 << true << false;
    QTest::newRow("masked, byte by byte") << 1 << true << false;
    QTest::newRow("masked, three at a time") << 3 << true << false;
    QTest::newRow("unmasked, whole") << 4096 << false << false;
    QTest::newRow("unmasked after cut frames") << 3 << false << false;
    QTest::newRow("sent with the request") << 4096 << true << true;
}

void TestNotifier::unmaskedFramesEndTheConnection()
{
    QFETCH(int, step);
    QFETCH(bool, maskedLast);
    QFETCH(bool, withRequest);
    const QByteArray registration =
        RawClient::frame(R"({"operation":"register","user":"dave","name":"raw","type":"Linux"})" +
                             QByteArray(200, ' '),
                         true);
    const QByteArray ask = RawClient::frame(R"({"operation":"request-client-list"})", maskedLast);
    RawClient client;
    QVERIFY(client.open(m_service.port(), withRequest ? registration : QByteArray()));
    client.send(withRequest ? ask : registration + ask, step);
    if (maskedLast && !withRequest)
        QVERIFY(client.answered("clientList"));
    else
        QVERIFY(client.closed());
    QVERIFY(m_service.isRunning());
}

void TestNotifier::computersReconnectWithAGrowingDelay()
{
    constexpr int base = 150;
    auto a1 = computer(QStringLiteral("alice"), base);
    auto a2 = computer(QStringLiteral("alice"), base);
    QTRY_VERIFY(a1->isConnected() && a2->isConnected());
    const quint16 port = m_service.port();

    QList<qint64> attempts;
    QElapsedTimer clock;
    clock.start();
    connect(a1.get(), &Notifier::status, this, [&](Notifier::ConnectionStatus status) {
        if (status == Notifier::Connecting)
            attempts.append(clock.elapsed());
    });
    m_service.stop();
    QTRY_VERIFY_WITH_TIMEOUT(attempts.size() >= 4, 10000);
    // 1, 2, 3 times the base delay after the first, second and third loss.
    for (int i = 1; i < 4; ++i) {
        const qint64 waited = attempts.at(i) - attempts.at(i - 1);
        QVERIFY2(waited >= i * base * 9 / 10,
                 qPrintable(QStringLiteral("try %1 after %2 ms").arg(i).arg(waited)));
    }
    QVERIFY(a1->reconnectAttempts() >= 4);

    QVERIFY(m_service.start(port));
    QTRY_VERIFY_WITH_TIMEOUT(a1->isConnected() && a2->isConnected(), 10000);
    QCOMPARE(a1->reconnectAttempts(), 0);
    QCOMPARE(clientsOf(a1.get(), 1).size(), 1);
    QSignalSpy news(a2.get(), &Notifier::dataUpdated);
    a1->notify(QStringLiteral("Snippets.json"));
    QVERIFY(news.wait());
    QCOMPARE(news.first().first().toString(), QStringLiteral("Snippets.json"));
}

void TestNotifier::secureWebSocketsWithACertificate()
{
    const QString openssl = QStandardPaths::findExecutable(QStringLiteral("openssl"));
    if (openssl.isEmpty())
        QSKIP("openssl is not installed, so no test certificate can be made");
    QTemporaryDir dir;
    const QString cert = dir.filePath(QStringLiteral("cert.pem"));
    const QString key = dir.filePath(QStringLiteral("key.pem"));
    const QStringList request =
        QStringLiteral("req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=127.0.0.1").split(' ');
    QCOMPARE(QProcess::execute(openssl, request + QStringList{"-keyout", key, "-out", cert}), 0);
    m_service.stop();
    QVERIFY(m_service.start(0, {QStringLiteral("--cert"), cert, QStringLiteral("--key"), key}));

    QWebSocket client;
    connect(&client, &QWebSocket::sslErrors, &client,
            [&client](const QList<QSslError> &) { client.ignoreSslErrors(); });
    QSignalSpy open(&client, &QWebSocket::connected);
    QSignalSpy received(&client, &QWebSocket::textMessageReceived);
    client.open(QUrl(QStringLiteral("wss://127.0.0.1:%1/notifier").arg(m_service.port())));
    QVERIFY(open.wait());
    client.sendTextMessage(
        QStringLiteral(R"({"operation":"register","user":"carol","name":"tls","type":"Windows"})"));
    client.sendTextMessage(QStringLiteral(R"({"operation":"request-client-list"})"));
    QVERIFY(received.wait());
    QCOMPARE(received.first().first().toString(),
             QStringLiteral(R"({"clients":[],"operation":"clientList"})"));
}

void TestNotifier::folderWatchReportsOtherComputersFiles()
{
    QTemporaryDir folder;
    Settings::setValue(SettingsKey::SyncFolder, folder.path());
    const auto writeOnline = [&folder](const QString &name, const QDateTime &time) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("x");
        file.flush(); // else closing would stamp the file with the time of the write
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    };
    Notifier notifier;
    notifier.connectTarget(QStringLiteral("LocalFolder"));
    QVERIFY(notifier.isWatchingFolder());
    QSignalSpy updated(&notifier, &Notifier::dataUpdated);
    QTest::qWait(20);
    writeOnline(QStringLiteral("History#abc.json"), QDateTime::currentDateTime().addSecs(5));
    writeOnline(QStringLiteral("unrelated.txt"), QDateTime::currentDateTime().addSecs(5));
    QVERIFY(updated.wait(Notifier::FolderSettleMs + 2000));
    QTest::qWait(Notifier::FolderSettleMs + 200);
    QCOMPARE(updated.size(), 1);
    QCOMPARE(updated.first().first().toString(), QStringLiteral("History.json"));

    // While the engine works through its own changes, nothing is reported; what came meanwhile
    // is looked at once it is done.
    notifier.setReact(false);
    writeOnline(QStringLiteral("Snippets#abc.json"), QDateTime::currentDateTime().addSecs(10));
    QTest::qWait(Notifier::FolderSettleMs + 300);
    QCOMPARE(updated.size(), 1);
    notifier.setReact(true);
    QVERIFY(updated.wait(Notifier::FolderSettleMs + 2000));
    QCOMPARE(updated.last().first().toString(), QStringLiteral("Snippets.json"));
}

QTEST_MAIN(TestNotifier)
#include "testnotifier.moc"
