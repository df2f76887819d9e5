// Two computers, as two processes with their own settings and data, sharing one sync folder:
// what both do, interleaved, ends up the same on both, nothing loops, encryption and a pass
// phrase change keep everything readable, and broken online files harm nothing local.
#include "base/cipher.h"
#include "support/appprocess.h"
#include "support/fakegoogle.h"
#include "support/testprofile.h"
#include "sync/syncpayload.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

class Peer
{
public:
    Peer(const QString &folder, const QString &name)
        : Peer(name, {{QStringLiteral("SyncTarget"), QStringLiteral("LocalFolder")},
                      {QStringLiteral("SyncFolder"), folder}})
    {}

    Peer(const QString &name, const QVariantMap &settings,
         const QMap<QString, QString> &environment = {})
    {
        for (auto setting = settings.begin(); setting != settings.end(); ++setting)
            m_profile.setSetting(setting.key(), setting.value());
        m_process = std::make_unique<AppProcess>(QStringLiteral(SYNC_PEER), m_profile);
        m_process->setEnvironmentValue(QStringLiteral("QT_QPA_PLATFORM"),
                                       QStringLiteral("offscreen"));
        m_process->setEnvironmentValue(QStringLiteral("QT_LOGGING_RULES"),
                                       QStringLiteral("*.debug=false"));
        for (auto value = environment.begin(); value != environment.end(); ++value)
            m_process->setEnvironmentValue(value.key(), value.value());
        m_name = name;
        m_process->start();
    }

    // The command's answer; empty when none came in time. Changes are made in seconds of their
    // own, as a person makes them: the history keeps times to the second, and changes made on
    // two computers within the same second are told apart by nothing.
    QString ask(const QString &command, int timeoutMs = 20000)
    {
        static const QStringList reading{QStringLiteral("sync"), QStringLiteral("state"),
                                         QStringLiteral("uploads"), QStringLiteral("encrypt"),
                                         QStringLiteral("link")};
        if (!reading.contains(command.section(QLatin1Char(' '), 0, 0))) {
            const qint64 second = QDateTime::currentSecsSinceEpoch();
            if (!QTest::qWaitFor([second] { return QDateTime::currentSecsSinceEpoch() > second; }))
                return {};
        }
        m_process->write(command.toUtf8() + '\n');
        const QString tag = QStringLiteral("@@%1 ").arg(++m_number);
        if (!m_process->waitForOutput(tag, timeoutMs)) {
            qWarning().noquote() << m_name << "gave no answer to" << command << "\n"
                                 << m_process->output().right(3000);
            return {};
        }
        const QString output = m_process->output();
        const qsizetype start = output.indexOf(tag) + tag.size();
        if (!m_process->waitForOutput(QStringLiteral("@@"), timeoutMs,
                                      int(output.left(start).count(QStringLiteral("@@"))) + 1))
            return {};
        const QString later = m_process->output();
        return later.mid(start, later.indexOf(QStringLiteral("@@"), start) - start);
    }

private:
    TestProfile m_profile;
    std::unique_ptr<AppProcess> m_process;
    QString m_name;
    int m_number = 0;
};

QString section(const QString &state, const QString &name)
{
    const QRegularExpression pattern(name + QStringLiteral("\\[([^\\]]*)\\]"));
    return pattern.match(state).captured(1);
}

// The history's text clippings, without the image clippings ("name 40 x 30").
QStringList textClippings(const QString &state)
{
    QStringList texts = section(state, QStringLiteral("history")).split(QLatin1Char('|'));
    texts.removeIf([](const QString &text) { return text.contains(QLatin1String(" x ")); });
    return texts;
}

} // namespace

class TestSyncPeers final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void interleavedChangesConverge();
    void throughGoogleDriveWithEncryptionAndNotifications();

private:
    // Syncs both sides until their states agree; the agreed state.
    QString settle(Peer &a, Peer &b);

    QTemporaryDir m_root;
    QString m_folder;
};

void TestSyncPeers::init()
{
    m_folder =
        m_root.filePath(QStringLiteral("shared-%1").arg(QDateTime::currentMSecsSinceEpoch()));
    QVERIFY(QDir().mkpath(m_folder));
}

QString TestSyncPeers::settle(Peer &a, Peer &b)
{
    for (int round = 0; round < 4; ++round) {
        const QString syncA = a.ask(QStringLiteral("sync"));
        const QString syncB = b.ask(QStringLiteral("sync"));
        if (!syncA.startsWith(QLatin1Char('1')) || !syncB.startsWith(QLatin1Char('1'))) {
            qWarning().noquote() << "sync ended with" << syncA << "and" << syncB;
            return {};
        }
        const QString stateA = a.ask(QStringLiteral("state"));
        const QString stateB = b.ask(QStringLiteral("state"));
        if (stateA == stateB)
            return stateA;
        qWarning().noquote() << "round" << round << "\n" << stateA << "\n" << stateB;
    }
    return {};
}

void TestSyncPeers::interleavedChangesConverge()
{
    Peer a(m_folder, QStringLiteral("a"));
    Peer b(m_folder, QStringLiteral("b"));
    QCOMPARE(a.ask(QStringLiteral("copy alpha")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("copy beta")), QStringLiteral("ok"));
    QVERIFY(a.ask(QStringLiteral("sync")).startsWith(QLatin1Char('1')));
    QCOMPARE(b.ask(QStringLiteral("snippet greet Hello there")), QStringLiteral("ok"));
    QCOMPARE(a.ask(QStringLiteral("action Tool.json Tool")), QStringLiteral("ok"));
    QVERIFY(b.ask(QStringLiteral("sync")).startsWith(QLatin1Char('1')));
    QCOMPARE(a.ask(QStringLiteral("image sunset")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("image harbour")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("action Other.json Other")), QStringLiteral("ok"));
    QVERIFY(a.ask(QStringLiteral("sync")).startsWith(QLatin1Char('1')));
    // Both edit and remove what the other made.
    QCOMPARE(a.ask(QStringLiteral("edit greet Hello from a")), QStringLiteral("ok"));
    QCOMPARE(a.ask(QStringLiteral("remove beta")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("copy gamma")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("snippet bye See you")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("unaction Tool.json")), QStringLiteral("ok"));

    const QString state = settle(a, b);
    QVERIFY2(!state.isEmpty(), qPrintable(a.ask(QStringLiteral("state")) + QLatin1Char('\n') +
                                          b.ask(QStringLiteral("state"))));
    const QStringList texts = textClippings(state);
    QCOMPARE(texts, QStringList({QStringLiteral("gamma"), QStringLiteral("alpha")}));
    const QStringList images = section(state, QStringLiteral("images")).split(QLatin1Char('|'));
    QCOMPARE(images.size(), 2);
    QVERIFY2(!state.contains(QStringLiteral("(missing)")), qPrintable(state));
    QVERIFY(
        section(state, QStringLiteral("snippets")).contains(QStringLiteral("greet=Hello from a")));
    QVERIFY(section(state, QStringLiteral("snippets")).contains(QStringLiteral("bye=See you")));
    QCOMPARE(section(state, QStringLiteral("actions")), QStringLiteral("Other.json=Other"));

    // Once equal, further runs put nothing online.
    const QString uploadsA = a.ask(QStringLiteral("uploads"));
    const QString uploadsB = b.ask(QStringLiteral("uploads"));
    QVERIFY(a.ask(QStringLiteral("sync")).startsWith(QLatin1Char('1')));
    QVERIFY(b.ask(QStringLiteral("sync")).startsWith(QLatin1Char('1')));
    QCOMPARE(a.ask(QStringLiteral("uploads")), uploadsA);
    QCOMPARE(b.ask(QStringLiteral("uploads")), uploadsB);

    // A copy on one side reaches the other by itself: the upload after the copy, the other
    // side's folder watch, its sync.
    QCOMPARE(a.ask(QStringLiteral("copy delta")), QStringLiteral("ok"));
    QVERIFY(QTest::qWaitFor(
        [&b] { return b.ask(QStringLiteral("state")).contains(QStringLiteral("history[delta|")); },
        30000));
}

// The first computer sets up the folder (and the pass phrase) with nothing to sync yet and
// goes on working; the second joins later with clippings and an image of its own.
void TestSyncPeers::throughGoogleDriveWithEncryptionAndNotifications()
{
    FakeGoogle google;
    QVERIFY(google.start());
    google.setMaxPageSize(3); // the files soon take more than one listing page
    QProcess service;
    service.start(QStringLiteral(NOTIFY_SERVICE), {QStringLiteral("--port"), QStringLiteral("0")});
    QString listening;
    QVERIFY(QTest::qWaitFor([&] {
        listening += QString::fromUtf8(service.readAllStandardError());
        return listening.contains(QLatin1String("/notifier"));
    }));
    const QString notifierUrl =
        listening.section(QLatin1Char(' '), 2).section(QLatin1Char('/'), 0, 2);

    const QVariantMap settings{{QStringLiteral("SyncTarget"), QStringLiteral("GoogleDrive")},
                               {QStringLiteral("GoogleClientId"), FakeGoogle::ClientId},
                               {QStringLiteral("GoogleClientSecret"), FakeGoogle::ClientSecret}};
    const QMap<QString, QString> environment{
        {QStringLiteral("VELMORIN_GOOGLE_ACCOUNTS_URL"), google.url()},
        {QStringLiteral("VELMORIN_GOOGLE_API_URL"), google.url()},
        {QStringLiteral("VELMORIN_NOTIFIER_URL"), notifierUrl}};
    Peer a(QStringLiteral("a"), settings, environment);
    Peer b(QStringLiteral("b"), settings, environment);
    QCOMPARE(a.ask(QStringLiteral("link")), QStringLiteral("1"));
    QCOMPARE(b.ask(QStringLiteral("link")), QStringLiteral("1"));
    QVERIFY(a.ask(QStringLiteral("encrypt drive")).startsWith(QLatin1Char('1')));
    QVERIFY(b.ask(QStringLiteral("encrypt drive")).startsWith(QLatin1Char('1')));

    QCOMPARE(a.ask(QStringLiteral("copy alpha")), QStringLiteral("ok"));
    QCOMPARE(a.ask(QStringLiteral("bigimage noise")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("image harbour")), QStringLiteral("ok"));
    QCOMPARE(b.ask(QStringLiteral("snippet greet Hello there")), QStringLiteral("ok"));
    QCOMPARE(a.ask(QStringLiteral("action Tool.json Tool")), QStringLiteral("ok"));
    google.refuseNext(2, 429); // rate-limited for a moment
    QCOMPARE(b.ask(QStringLiteral("copy beta")), QStringLiteral("ok"));
    const QString state = settle(a, b);
    QVERIFY2(!state.isEmpty(), qPrintable(a.ask(QStringLiteral("state")) + QLatin1Char('\n') +
                                          b.ask(QStringLiteral("state"))));
    const QStringList texts = textClippings(state);
    QCOMPARE(texts, QStringList({QStringLiteral("beta"), QStringLiteral("alpha")}));
    QCOMPARE(section(state, QStringLiteral("images")).split(QLatin1Char('|')).size(), 2);
    QVERIFY2(!state.contains(QStringLiteral("(missing)")), qPrintable(state));
    QVERIFY(
        section(state, QStringLiteral("snippets")).contains(QStringLiteral("greet=Hello there")));
    QCOMPARE(section(state, QStringLiteral("actions")), QStringLiteral("Tool.json=Tool"));

    // Everything in the drive is encrypted; the noise went up in chunks.
    const QList<FakeGoogle::File> files = google.files(QStringLiteral("user-1"));
    QVERIFY(files.size() > 3);
    qsizetype largest = 0;
    for (const FakeGoogle::File &file : files) {
        QVERIFY2(file.content.startsWith(SyncPayload::EncryptedMarker), qPrintable(file.name));
        largest = qMax(largest, file.content.size());
    }
    QVERIFY(largest > 5 * 1024 * 1024);
    QVERIFY(google.requests().contains(QStringLiteral("PUT /upload/drive/v3/files")));

    // A copy on one side reaches the other through the notification service.
    QCOMPARE(a.ask(QStringLiteral("copy delta")), QStringLiteral("ok"));
    QVERIFY(QTest::qWaitFor(
        [&b] { return b.ask(QStringLiteral("state")).contains(QStringLiteral("history[delta|")); },
        30000));
    service.kill();
    service.waitForFinished();
}

QTEST_GUILESS_MAIN(TestSyncPeers)
#include "testsyncpeers.moc"
