// Two computers, as two processes with their own settings and data, sharing one sync folder:
// what both do, interleaved, ends up the same on both, nothing loops, encryption and a pass
// phrase change keep everything readable, and broken online files harm nothing local.
#include "base/cipher.h"
#include "support/appprocess.h"
#include "support/fakegoogle.h"
#include "support/testprofile.h"
#include "sync/encryptionheader.h"
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

using namespace Qt::StringLiterals;

namespace {

class Peer
{
public:
    Peer(const QString &folder, const QString &name)
        : Peer(name, {{u"SyncTarget"_s, u"LocalFolder"_s}, {u"SyncFolder"_s, folder}})
    {}

    Peer(const QString &name, const QVariantMap &settings,
         const QMap<QString, QString> &environment = {})
        : m_name(name)
    {
        for (auto setting = settings.begin(); setting != settings.end(); ++setting)
            m_profile.setSetting(setting.key(), setting.value());
        m_process = std::make_unique<AppProcess>(QStringLiteral(SYNC_PEER), m_profile);
        m_process->setEnvironmentValue(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        m_process->setEnvironmentValue(u"QT_LOGGING_RULES"_s, u"*.debug=false"_s);
        for (auto value = environment.begin(); value != environment.end(); ++value)
            m_process->setEnvironmentValue(value.key(), value.value());
        m_process->start();
    }

    // The command's answer; empty when none came in time. Changes are made in seconds of their
    // own, as a person makes them: the history keeps times to the second, and changes made on
    // two computers within the same second are told apart by nothing.
    QString ask(const QString &command, int timeoutMs = 20000)
    {
        static const QStringList reading{u"sync"_s,    u"state"_s,  u"uploads"_s,
                                         u"encrypt"_s, u"strong"_s, u"link"_s};
        if (!reading.contains(command.section(' ', 0, 0))) {
            const qint64 second = QDateTime::currentSecsSinceEpoch();
            if (!QTest::qWaitFor([second] { return QDateTime::currentSecsSinceEpoch() > second; }))
                return {};
        }
        m_process->write(command.toUtf8() + '\n');
        const QString tag = u"@@%1 "_s.arg(++m_number);
        if (!m_process->waitForOutput(tag, timeoutMs)) {
            qWarning().noquote() << m_name << "gave no answer to" << command << "\n"
                                 << m_process->output().right(3000);
            return {};
        }
        const QString output = m_process->output();
        const qsizetype start = output.indexOf(tag) + tag.size();
        if (!m_process->waitForOutput(u"@@"_s, timeoutMs,
                                      int(output.left(start).count(u"@@"_s)) + 1))
            return {};
        const QString later = m_process->output();
        return later.mid(start, later.indexOf(u"@@"_s, start) - start);
    }
    // Each command in turn; false at the first that is not done.
    bool did(const QStringList &commands)
    {
        return std::all_of(commands.begin(), commands.end(), [this](const QString &command) {
            const QString answer = ask(command);
            return answer == u"ok"_s || (command == u"sync"_s && answer.startsWith('1'));
        });
    }
    bool sees(const QString &text)
    {
        return QTest::qWaitFor([&] { return ask(u"state"_s).contains(text); }, 30000);
    }

private:
    TestProfile m_profile;
    std::unique_ptr<AppProcess> m_process;
    QString m_name;
    int m_number = 0;
};

QString section(const QString &state, const QString &name)
{
    return QRegularExpression(name + u"\\[([^\\]]*)\\]"_s).match(state).captured(1);
}

// What both sides agree on: the text clippings (not the image clippings, "name 40 x 30"), the
// number of images, the snippets and the actions.
void checkState(const QString &state, const QStringList &texts, const QStringList &snippets,
                const QString &actions)
{
    QStringList shown = section(state, u"history"_s).split('|');
    shown.removeIf([](const QString &text) { return text.contains(" x "_L1); });
    QCOMPARE(shown, texts);
    QCOMPARE(section(state, u"images"_s).split('|').size(), 2);
    QVERIFY2(!state.contains(u"(missing)"_s), qPrintable(state));
    for (const QString &snippet : snippets)
        QVERIFY2(section(state, u"snippets"_s).contains(snippet), qPrintable(state));
    QCOMPARE(section(state, u"actions"_s), actions);
}

} // namespace

class TestSyncPeers final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void interleavedChangesConverge_data();
    void interleavedChangesConverge();
    void throughGoogleDriveWithEncryptionAndNotifications_data();
    void throughGoogleDriveWithEncryptionAndNotifications();

private:
    // Syncs both sides until their states agree; the agreed state.
    QString settle(Peer &a, Peer &b);

    QTemporaryDir m_root;
    QString m_folder;
};

void TestSyncPeers::init()
{
    m_folder = m_root.filePath(u"shared-%1"_s.arg(QDateTime::currentMSecsSinceEpoch()));
    QVERIFY(QDir().mkpath(m_folder));
}

QString TestSyncPeers::settle(Peer &a, Peer &b)
{
    for (int round = 0; round < 4; ++round) {
        if (!a.did({u"sync"_s}) || !b.did({u"sync"_s}))
            return {};
        const QString stateA = a.ask(u"state"_s);
        const QString stateB = b.ask(u"state"_s);
        if (stateA == stateB)
            return stateA;
        qWarning().noquote() << "round" << round << "\n" << stateA << "\n" << stateB;
    }
    return {};
}

void TestSyncPeers::interleavedChangesConverge_data()
{
    QTest::addColumn<QString>("encryption"); // a command, or none
    QTest::newRow("plain") << QString();
    QTest::newRow("strong encryption") << u"strong correct horse"_s;
}

void TestSyncPeers::interleavedChangesConverge()
{
    QFETCH(QString, encryption);
    Peer a(m_folder, u"a"_s);
    Peer b(m_folder, u"b"_s);
    if (!encryption.isEmpty())
        QVERIFY(a.ask(encryption).startsWith('1') && b.ask(encryption).startsWith('1'));
    QVERIFY(a.did({u"copy alpha"_s}) && b.did({u"copy beta"_s}) && a.did({u"sync"_s}));
    QVERIFY(b.did({u"snippet greet Hello there"_s}) && a.did({u"action Tool.json Tool"_s}));
    QVERIFY(b.did({u"sync"_s}) && a.did({u"image sunset"_s}));
    QVERIFY(b.did({u"image harbour"_s, u"action Other.json Other"_s}) && a.did({u"sync"_s}));
    // Both edit and remove what the other made.
    QVERIFY(a.did({u"edit greet Hello from a"_s, u"remove beta"_s}));
    QVERIFY(b.did({u"copy gamma"_s, u"snippet bye See you"_s, u"unaction Tool.json"_s}));

    const QString state = settle(a, b);
    QVERIFY2(!state.isEmpty(), qPrintable(a.ask(u"state"_s) + '\n' + b.ask(u"state"_s)));
    checkState(state, {u"gamma"_s, u"alpha"_s}, {u"greet=Hello from a"_s, u"bye=See you"_s},
               u"Other.json=Other"_s);

    // Sealed, all of it, but the header the keys are derived under.
    for (const QString &name : QDir(m_folder).entryList(QDir::Files)) {
        QFile file(QDir(m_folder).filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(SealKey::Marker.size()) == SealKey::Marker,
                 !encryption.isEmpty() && name != EncryptionHeader::FileName);
    }

    // Once equal, further runs put nothing online.
    const QString uploadsA = a.ask(u"uploads"_s);
    const QString uploadsB = b.ask(u"uploads"_s);
    QVERIFY(a.did({u"sync"_s}) && b.did({u"sync"_s}));
    QCOMPARE(a.ask(u"uploads"_s), uploadsA);
    QCOMPARE(b.ask(u"uploads"_s), uploadsB);

    // A copy on one side reaches the other by itself: the upload after the copy, the other
    // side's folder watch, its sync.
    QVERIFY(a.did({u"copy delta"_s}));
    QVERIFY(b.sees(u"history[delta|"_s));
}

void TestSyncPeers::throughGoogleDriveWithEncryptionAndNotifications_data()
{
    QTest::addColumn<QString>("encryption");
    QTest::addColumn<QByteArray>("marker");
    QTest::newRow("compatible") << u"encrypt drive"_s << SyncPayload::EncryptedMarker;
    QTest::newRow("strong") << u"strong drive"_s << SealKey::Marker;
}

// The first computer sets up the folder (and the pass phrase) with nothing to sync yet and
// goes on working; the second joins later with clippings and an image of its own.
void TestSyncPeers::throughGoogleDriveWithEncryptionAndNotifications()
{
    QFETCH(QString, encryption);
    QFETCH(QByteArray, marker);
    FakeGoogle google;
    QVERIFY(google.start());
    google.setMaxPageSize(3); // the files soon take more than one listing page
    QProcess service;
    service.start(QStringLiteral(NOTIFY_SERVICE), {u"--port"_s, u"0"_s});
    QString listening;
    QVERIFY(QTest::qWaitFor([&] {
        listening += QString::fromUtf8(service.readAllStandardError());
        return listening.contains("/notifier"_L1);
    }));
    const QVariantMap settings{{u"SyncTarget"_s, u"GoogleDrive"_s},
                               {u"GoogleClientId"_s, FakeGoogle::ClientId},
                               {u"GoogleClientSecret"_s, FakeGoogle::ClientSecret}};
    const QMap<QString, QString> environment{
        {u"VELMORIN_GOOGLE_ACCOUNTS_URL"_s, google.url()},
        {u"VELMORIN_GOOGLE_API_URL"_s, google.url()},
        {u"VELMORIN_NOTIFIER_URL"_s, listening.section(' ', 2).section('/', 0, 2)}};
    Peer a(u"a"_s, settings, environment);
    Peer b(u"b"_s, settings, environment);
    QCOMPARE(a.ask(u"link"_s), u"1"_s);
    QCOMPARE(b.ask(u"link"_s), u"1"_s);
    QVERIFY(a.ask(encryption).startsWith('1') && b.ask(encryption).startsWith('1'));

    QVERIFY(a.did({u"copy alpha"_s, u"bigimage noise"_s}));
    QVERIFY(b.did({u"image harbour"_s, u"snippet greet Hello there"_s}));
    QVERIFY(a.did({u"action Tool.json Tool"_s}));
    google.refuseNext(2, 429); // rate-limited for a moment
    QVERIFY(b.did({u"copy beta"_s}));
    const QString state = settle(a, b);
    QVERIFY2(!state.isEmpty(), qPrintable(a.ask(u"state"_s) + '\n' + b.ask(u"state"_s)));
    checkState(state, {u"beta"_s, u"alpha"_s}, {u"greet=Hello there"_s}, u"Tool.json=Tool"_s);

    // Everything in the drive is encrypted; the noise went up in chunks.
    const QList<FakeGoogle::File> files = google.files(u"user-1"_s);
    QVERIFY(files.size() > 3);
    qsizetype largest = 0;
    for (const FakeGoogle::File &file : files) {
        if (file.name == EncryptionHeader::FileName)
            continue;
        QVERIFY2(file.content.startsWith(marker), qPrintable(file.name));
        largest = qMax(largest, file.content.size());
    }
    QVERIFY(largest > 5 * 1024 * 1024);
    QVERIFY(google.requests().contains(u"PUT /upload/drive/v3/files"_s));

    // A copy on one side reaches the other through the notification service.
    QVERIFY(a.did({u"copy delta"_s}));
    QVERIFY(b.sees(u"history[delta|"_s));
    service.kill();
    service.waitForFinished();
}

QTEST_GUILESS_MAIN(TestSyncPeers)
#include "testsyncpeers.moc"
