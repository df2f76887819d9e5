// The sync engine against a real shared folder, with content objects whose merge is a plain
// union of lines: the queue, the decisions for each direction, cleanup of old versions,
// actions, images, encryption and failures.
#include "actions/actionfiles.h"
#include "base/appmodes.h"
#include "base/cipher.h"
#include "base/settings.h"
#include "support/testprofile.h"
#include "sync/encryptionheader.h"
#include "sync/sync.h"
#include "sync/synclocalfolder.h"
#include "sync/syncpayload.h"
#include "synclog.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString sha256(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

// Content as sorted unique lines; a merge takes the union, a download from the server takes
// the online lines as they are.
class LinesMerge final : public ISyncMerge
{
public:
    explicit LinesMerge(const QByteArray &lines = QByteArray()) : content(lines) {}

    QString hash() override { return sha256(content); }
    bool merge(const QByteArray &downloaded, QByteArray &output, SyncDirection direction) override
    {
        ++merges;
        const QByteArray before = content;
        if (direction == SyncDirection::FromServer && !downloaded.isEmpty()) {
            content = downloaded;
        } else if (!downloaded.isEmpty()) {
            QList<QByteArray> lines = content.split('\n') + downloaded.split('\n');
            lines.removeAll(QByteArray());
            std::sort(lines.begin(), lines.end());
            lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
            content = lines.join('\n');
        }
        output = content;
        return content != before;
    }

    QByteArray content;
    int merges = 0;
};

} // namespace

class TestSync final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void queueTakesEachFileOnceAndWaitsForTheBurstToEnd();
    void directionsDecideWhatMoves();
    void keepsElevenToTwentyVersions();
    void actionsFollowTheirTimestamps();
    void actionsInOneWayRuns();
    void imagesFollowTheHistory();
    void encryptedFilesAndPassPhraseChanges();
    void damagedNewestVersionsArePassedOver_data();
    void damagedNewestVersionsArePassedOver();
    void resyncWritesEverythingAgainEncrypted();
    void strongEncryptionSealsAndRenamesEverything();

private:
    // A computer of its own (its own derived keys) on the same folder, with these models.
    void newComputer(LinesMerge *history, LinesMerge *snippets);
    QString statusOfRunWith(const QVariantMap &values);
    // One run to its end: the status it ended with (-1: none came).
    int run(SyncDirection direction);
    int runQueued();
    QStringList online(const QString &pattern = QStringLiteral("*")) const;
    void writeOnline(const QString &name, const QByteArray &body, const QDateTime &time);
    void writeAction(const QString &fileName, const QDateTime &created);
    bool logged(const QString &text) const;

    TestProfile m_profile;
    QTemporaryDir m_root;
    QString m_folder;
    std::unique_ptr<Sync> m_sync;
    std::unique_ptr<SyncLocalFolder> m_localFolder;
    LinesMerge m_history;
    LinesMerge m_snippets;
};

void TestSync::initTestCase()
{
    m_profile.useInThisProcess();
}

void TestSync::init()
{
    m_folder = m_root.filePath(QStringLiteral("shared"));
    QDir(m_folder).removeRecursively();
    QVERIFY(QDir().mkpath(m_folder));
    QDir(ActionFiles::userFolder()).removeRecursively();
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    settings.setValue(SettingsKey::SyncFolder, m_folder);
    settings.setValue(SettingsKey::SyncTarget, QStringLiteral("LocalFolder"));
    m_history = LinesMerge("a\nb");
    m_snippets = LinesMerge("s1");
    newComputer(&m_history, &m_snippets);
    SyncLog::instance().clear();
}

void TestSync::newComputer(LinesMerge *history, LinesMerge *snippets)
{
    m_sync = std::make_unique<Sync>();
    m_localFolder = std::make_unique<SyncLocalFolder>();
    m_sync->addTarget(ISyncTarget::LocalFolderSetting, m_localFolder.get());
    m_sync->setModels(history, snippets);
}

QString TestSync::statusOfRunWith(const QVariantMap &values)
{
    m_sync->setSettings(values);
    QSignalSpy status(m_sync.get(), &Sync::syncStatus);
    run(SyncDirection::Both);
    return status.isEmpty() ? QString() : status.last().at(1).toString();
}

int TestSync::run(SyncDirection direction)
{
    QSignalSpy status(m_sync.get(), &Sync::syncStatus);
    m_sync->syncAll(direction);
    const auto ended = [&status] {
        return !status.isEmpty() && status.last().at(0).value<SyncStatus>() != SyncStatus::Running;
    };
    if (!QTest::qWaitFor(ended, 30000))
        return -1;
    QTest::qWait(20); // a second success would come on the next turn
    int finished = 0;
    for (const QList<QVariant> &signal : std::as_const(status))
        finished += signal.at(0).value<SyncStatus>() != SyncStatus::Running;
    return finished == 1 ? int(status.last().at(0).value<SyncStatus>()) : -2;
}

int TestSync::runQueued()
{
    QSignalSpy status(m_sync.get(), &Sync::syncStatus);
    m_sync->handleQueue();
    const bool ended = QTest::qWaitFor(
        [&status] {
            return !status.isEmpty() &&
                   status.last().at(0).value<SyncStatus>() != SyncStatus::Running;
        },
        5000);
    return ended ? int(status.last().at(0).value<SyncStatus>()) : -1;
}

QStringList TestSync::online(const QString &pattern) const
{
    return QDir(m_folder).entryList({pattern}, QDir::Files, QDir::Name);
}

void TestSync::writeOnline(const QString &name, const QByteArray &body, const QDateTime &time)
{
    QFile file(QDir(m_folder).filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(body);
    file.flush(); // else closing would stamp the file with the time of the write
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

void TestSync::writeAction(const QString &fileName, const QDateTime &created)
{
    QDir().mkpath(ActionFiles::userFolder());
    const QJsonObject action{{QLatin1String("title"), fileName},
                             {QLatin1String("script"), QStringLiteral("return 1;")},
                             {QLatin1String("created"), created.toString(Qt::ISODate)}};
    QVERIFY(ActionFiles::writeAction(QDir(ActionFiles::userFolder()).filePath(fileName), action));
}

bool TestSync::logged(const QString &text) const
{
    const QStringList lines = SyncLog::instance().lines();
    return std::any_of(lines.begin(), lines.end(),
                       [&text](const QString &line) { return line.contains(text); });
}

void TestSync::queueTakesEachFileOnceAndWaitsForTheBurstToEnd()
{
    m_sync->sync(Sync::Snippets, &m_snippets, SyncDirection::Both);
    m_sync->sync(Sync::Snippets, &m_snippets, SyncDirection::Both);
    m_sync->sync(Sync::History, &m_history, SyncDirection::Both);
    QCOMPARE(m_sync->queuedFiles(), QStringList({Sync::SnippetsFile, Sync::HistoryFile}));
    QVERIFY(m_sync->isQueueTimerActive());
    m_sync->sync(7, &m_history, SyncDirection::Both);
    QVERIFY(logged(QStringLiteral("Unknown sync file: 7")));

    // A demonstration never touches what is online.
    Sync shown;
    shown.setDemonstration(true);
    shown.syncAll(SyncDirection::Both);
    QVERIFY(shown.queuedFiles().isEmpty());
    QVERIFY(!logged(QStringLiteral("Sync all")));
    // A performance test keeps only its generated history to itself.
    {
        AppModes perf;
        perf.perfTest = true;
        Settings::setRunOverrides(perf.settingsOverrides());
        Sync measured;
        measured.sync(Sync::History, &m_history, SyncDirection::Both);
        measured.sync(Sync::Snippets, &m_snippets, SyncDirection::Both);
        Settings::setRunOverrides({});
        QCOMPARE(measured.queuedFiles(), QStringList{Sync::SnippetsFile});
    }

    // A kind the user does not sync is not queued at all.
    QVariantMap values = Sync::storedSettings();
    values.insert(QLatin1String(SettingsKey::SyncSnippets), false);
    Sync other;
    other.setSettings(values);
    other.sync(Sync::Snippets, &m_snippets, SyncDirection::Both);
    QVERIFY(other.queuedFiles().isEmpty());

    // The queue runs by itself once the burst is over: a change that comes while it waits
    // puts the run off, queued already or not.
    QTest::qWait(Sync::QueueDelayMs * 3 / 5);
    m_sync->sync(Sync::Snippets, &m_snippets, SyncDirection::Both);
    QTest::qWait(Sync::QueueDelayMs * 3 / 5);
    QVERIFY(online().isEmpty());
    QSignalSpy status(m_sync.get(), &Sync::syncStatus);
    QVERIFY(QTest::qWaitFor([&] { return online().size() == 2; }, Sync::QueueDelayMs + 3000));
    QVERIFY(QTest::qWaitFor([&] {
        return !status.isEmpty() && status.last().at(0).value<SyncStatus>() == SyncStatus::Success;
    }));
}

// Both ways, the newest online version is merged and the result goes up unless online already
// holds it; one way, the local or the online content simply wins.
void TestSync::directionsDecideWhatMoves()
{
    const QDateTime now = QDateTime::currentDateTime();
    const auto version = [](const QByteArray &content) {
        return QStringLiteral("History#") + sha256(content) + QStringLiteral(".json");
    };
    writeOnline(version("old"), qCompress("old"), now.addSecs(-120));
    writeOnline(version("c\nd"), qCompress("c\nd"), now.addSecs(-60));
    // Written by hand, in plain JSON: accepted.
    writeOnline(QStringLiteral("Snippets#hand.json"), R"({"magic":-18022399,"groups":[]})",
                now.addSecs(-60));
    QSignalSpy uploaded(m_sync.get(), &Sync::contentUploaded);
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QCOMPARE(m_history.content, QByteArray("a\nb\nc\nd"));
    QVERIFY(logged(QStringLiteral("Sync: Downloaded data is plain text")));
    QFile merged(QDir(m_folder).filePath(version("a\nb\nc\nd")));
    QVERIFY(merged.open(QIODevice::ReadOnly));
    QCOMPARE(qUncompress(merged.readAll()), m_history.content);
    QCOMPARE(uploaded.size(), 2);
    QVERIFY(QSettings().value(SettingsKey::LastSync).toDateTime().isValid());

    SyncLog::instance().clear();
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QVERIFY(logged(QStringLiteral("Sync: History.json: Online and local hash are equal")));
    // Online content that already holds everything local is not written again.
    writeOnline(version("a\nb\nc\nd\ne"), qCompress("a\nb\nc\nd\ne"), now.addSecs(30));
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QCOMPARE(m_history.content, QByteArray("a\nb\nc\nd\ne"));
    QCOMPARE(uploaded.size(), 2);
    // A local change after that download goes up without fetching the same file again.
    m_history.content += "\nf";
    SyncLog::instance().clear();
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QVERIFY(logged(QStringLiteral("is the same as local so no need to download it again.")));
    QCOMPARE(uploaded.size(), 3);

    // An upload never downloads; the local content replaces what is online as the newest.
    writeOnline(version("zzz"), qCompress("zzz"), now.addSecs(60));
    m_history.content = "local";
    SyncLog::instance().clear();
    QCOMPARE(run(SyncDirection::ToServer), int(SyncStatus::Success));
    QVERIFY(!logged(QStringLiteral("Download finished")));
    QCOMPARE(m_history.content, QByteArray("local"));
    QVERIFY(online().contains(version("local")));
    // A download replaces the local content by the newest online one.
    QCOMPARE(run(SyncDirection::FromServer), int(SyncStatus::Success));
    QCOMPARE(m_history.content, QByteArray("zzz"));
}

void TestSync::keepsElevenToTwentyVersions()
{
    const QDateTime start = QDateTime::currentDateTime().addDays(-1);
    for (int i = 0; i < 20; ++i)
        writeOnline(QStringLiteral("History#v%1.json").arg(i, 2, 10, QLatin1Char('0')),
                    qCompress("a"), start.addSecs(i * 60));
    m_history.lastDownloadId = QStringLiteral("History#v19.json");
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    // Twenty-one with the new upload: the ten oldest go.
    QCOMPARE(online(QStringLiteral("History#*")).size(), 11);
    QVERIFY(!online().contains(QStringLiteral("History#v09.json")));
    QVERIFY(online().contains(QStringLiteral("History#v10.json")));
    QVERIFY(logged(QStringLiteral("Sync: Cleanup for History (21) History#v00.json")));
}

void TestSync::actionsFollowTheirTimestamps()
{
    const QDateTime t0(QDate(2024, 5, 1), QTime(10, 0));
    writeAction(QStringLiteral("OnlyHere.json"), t0);
    writeAction(QStringLiteral("NewerHere.json"), t0.addSecs(3600));
    writeAction(QStringLiteral("NewerThere.json"), t0);
    writeAction(QStringLiteral("Same.json"), t0);
    const auto name = [](const QDateTime &time, const QString &file) {
        return SyncPayload::actionFileName(time, file);
    };
    const QByteArray body = R"({"title":"x","created":"2024-05-01T12:00:00"})";
    writeOnline(name(t0, QStringLiteral("NewerHere.json")), body, t0);
    writeOnline(name(t0.addSecs(7200), QStringLiteral("NewerThere.json")), body, t0);
    writeOnline(name(t0, QStringLiteral("Same.json")), body, t0);
    writeOnline(name(t0, QStringLiteral("OnlyThere.json")), body, t0);
    QSignalSpy changed(m_sync.get(), &Sync::actionsChanged);

    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QStringList actions = online(QStringLiteral("action_*"));
    QStringList expected({name(t0.addSecs(3600), QStringLiteral("NewerHere.json")),
                          name(t0.addSecs(7200), QStringLiteral("NewerThere.json")),
                          name(t0, QStringLiteral("OnlyHere.json")),
                          name(t0, QStringLiteral("OnlyThere.json")),
                          name(t0, QStringLiteral("Same.json"))});
    expected.sort();
    QCOMPARE(actions, expected);
    QFile newer(QDir(ActionFiles::userFolder()).filePath(QStringLiteral("NewerThere.json")));
    QVERIFY(newer.open(QIODevice::ReadOnly));
    QCOMPARE(newer.readAll(), body);
    QVERIFY(
        QFile::exists(QDir(ActionFiles::userFolder()).filePath(QStringLiteral("OnlyThere.json"))));
    QVERIFY(!changed.isEmpty());
    QVERIFY(logged(QStringLiteral("Sync: online has the same action file: Same.json")));
}

void TestSync::actionsInOneWayRuns()
{
    const QDateTime t0(QDate(2024, 5, 1), QTime(10, 0));
    writeAction(QStringLiteral("Mine.json"), t0.addSecs(60));
    writeAction(QStringLiteral("LocalOnly.json"), t0);
    const QByteArray body = R"({"title":"x"})";
    writeOnline(SyncPayload::actionFileName(t0.addSecs(600), QStringLiteral("Mine.json")), body,
                t0);
    writeOnline(SyncPayload::actionFileName(t0, QStringLiteral("Theirs.json")), body, t0);

    // To the server: the local files win and what is missing here goes.
    QCOMPARE(run(SyncDirection::ToServer), int(SyncStatus::Success));
    QCOMPARE(
        online(QStringLiteral("action_*")),
        QStringList({SyncPayload::actionFileName(t0, QStringLiteral("LocalOnly.json")),
                     SyncPayload::actionFileName(t0.addSecs(60), QStringLiteral("Mine.json"))}));

    // From the server: what is not online goes here, and everything online is fetched.
    QVERIFY(QFile::remove(QDir(m_folder).filePath(
        SyncPayload::actionFileName(t0, QStringLiteral("LocalOnly.json")))));
    QCOMPARE(run(SyncDirection::FromServer), int(SyncStatus::Success));
    QVERIFY(
        !QFile::exists(QDir(ActionFiles::userFolder()).filePath(QStringLiteral("LocalOnly.json"))));
    QVERIFY(logged(QStringLiteral("Sync: missing from online: LocalOnly.json -> Remove local")));
    QVERIFY(logged(QStringLiteral("Sync: Downloading online: ")));
}

void TestSync::imagesFollowTheHistory()
{
    const QString here = QStringLiteral("{11111111-1111-1111-1111-111111111111}_here.png");
    const QString there = QStringLiteral("{22222222-2222-2222-2222-222222222222}_there.png");
    QDir().mkpath(QFileInfo(Sync::imagePath(here)).path());
    QFile local(Sync::imagePath(here));
    QVERIFY(local.open(QIODevice::WriteOnly));
    local.write("png-here");
    local.close();
    const QDateTime now = QDateTime::currentDateTime();
    writeOnline(QStringLiteral("image_") + there, "png-there", now);
    writeOnline(QStringLiteral("image_{33333333-3333-3333-3333-333333333333}_gone.png"), "x", now);
    m_sync->setImageNames([&] { return QStringList({here, there}); });
    QSignalSpy downloaded(m_sync.get(), &Sync::imageDownloaded);

    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QCOMPARE(online(QStringLiteral("image_*")),
             QStringList({QStringLiteral("image_") + here, QStringLiteral("image_") + there}));
    QCOMPARE(downloaded.size(), 1);
    QCOMPARE(downloaded.first().at(0).toUuid(),
             QUuid::fromString(QStringLiteral("{22222222-2222-2222-2222-222222222222}")));
    QCOMPARE(downloaded.first().at(1).toString(), QStringLiteral("there.png"));
    QCOMPARE(downloaded.first().at(2).toByteArray(), QByteArray("png-there"));
}

void TestSync::encryptedFilesAndPassPhraseChanges()
{
    QVariantMap values = Sync::storedSettings();
    values.insert(QLatin1String(SettingsKey::EncryptData), true);
    values.insert(QLatin1String(SettingsKey::Passphrase), QStringLiteral("first"));
    m_sync->setSettings(values);
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    const QString history = online(QStringLiteral("History#*")).first();
    QCOMPARE(history, QStringLiteral("History#") + sha256("a\nb") + QStringLiteral(".json"));
    QFile file(QDir(m_folder).filePath(history));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith(SyncPayload::EncryptedMarker));

    // Another computer with the new pass phrase and the old one behind it reads the file.
    LinesMerge other("z");
    values.insert(QLatin1String(SettingsKey::Passphrase), QStringLiteral("second"));
    values.insert(QLatin1String(SettingsKey::PreviousPassphrase), QStringLiteral("first"));
    m_sync->setSettings(values);
    m_sync->setModels(&other, &m_snippets);
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QCOMPARE(other.content, QByteArray("a\nb\nz"));

    // Without the right pass phrase nothing is merged.
    LinesMerge stranger("q");
    values.insert(QLatin1String(SettingsKey::Passphrase), QStringLiteral("wrong"));
    values.remove(QLatin1String(SettingsKey::PreviousPassphrase));
    m_sync->setSettings(values);
    m_sync->setModels(&stranger, &m_snippets);
    QSignalSpy status(m_sync.get(), &Sync::syncStatus);
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Failure));
    QCOMPARE(status.last().at(1).toString(), QStringLiteral("Decryption failed."));
    QCOMPARE(stranger.content, QByteArray("q"));
    QCOMPARE(stranger.merges, 0);
    // What the failed run did not reach stays queued for the next one.
    QCOMPARE(m_sync->queuedFiles(), QStringList({Sync::SnippetsFile, QStringLiteral("actions")}));
}

void TestSync::damagedNewestVersionsArePassedOver_data()
{
    QTest::addColumn<QString>("passphrase");
    QTest::addColumn<bool>("cutShort"); // else garbage
    QTest::newRow("plain, garbage") << QString() << false;
    QTest::newRow("plain, cut short") << QString() << true;
    QTest::newRow("encrypted, cut short") << QStringLiteral("right") << true;
}

// A newer version that cannot be read (a file-sharing client died while copying it, a
// computer whose clock runs ahead wrote garbage) does not hold up uploads: the version before
// it is merged, and the merged content becomes the newest.
void TestSync::damagedNewestVersionsArePassedOver()
{
    QFETCH(QString, passphrase);
    QFETCH(bool, cutShort);
    // Enough lines that half the file is not the whole of it, in the order a merge keeps.
    for (int line = 1000; line < 1500; ++line)
        m_history.content += "\nline " + QByteArray::number(line);
    const QByteArray content = m_history.content;
    QVariantMap values = Sync::storedSettings();
    values.insert(QLatin1String(SettingsKey::EncryptData), !passphrase.isEmpty());
    values.insert(QLatin1String(SettingsKey::Passphrase), passphrase);
    m_sync->setSettings(values);
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QFile good(QDir(m_folder).filePath(online(QStringLiteral("History#*")).first()));
    QVERIFY(good.open(QIODevice::ReadOnly));
    const QByteArray whole = good.readAll();
    const QByteArray damaged =
        cutShort ? whole.left(whole.size() / 2) : QByteArray("\x00\x00\x10\x00 not zlib", 14);
    const QString name = QStringLiteral("History#damaged.json");
    writeOnline(name, damaged, QDateTime::currentDateTime().addSecs(60));

    m_history.content += "\nzz";
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QCOMPARE(m_history.content, content + "\nzz");
    QVERIFY(logged(QStringLiteral("Trying the version before it: History#") + sha256(content)));
    QVERIFY(QFile::exists(QDir(m_folder).filePath(
        QStringLiteral("History#") + sha256(content + "\nzz") + QStringLiteral(".json"))));
    // Passed over for good: the next run does not fetch it again.
    SyncLog::instance().clear();
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QVERIFY(!logged(QStringLiteral("Download finished for ") + name));
}

void TestSync::resyncWritesEverythingAgainEncrypted()
{
    writeAction(QStringLiteral("Act.json"), QDateTime(QDate(2024, 1, 1), QTime(9, 0)));
    // An older version of the history, from before the last run.
    writeOnline(QStringLiteral("History#") + sha256("a") + QStringLiteral(".json"),
                qCompress(QByteArray("a")), QDateTime::currentDateTime().addSecs(-60));
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QVariantMap values = Sync::storedSettings();
    values.insert(QLatin1String(SettingsKey::EncryptData), true);
    values.insert(QLatin1String(SettingsKey::Passphrase), QStringLiteral("secret"));
    m_sync->setSettings(values);
    // Changed meanwhile: the run puts a new version online before the rewriting comes.
    m_history.content += "\nc";
    const QFileInfo snippets(QDir(m_folder).filePath(online(QStringLiteral("Snippets#*")).first()));
    const QDateTime snippetsTime = snippets.lastModified();
    m_sync->queueResyncAll();
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    const QStringList byTime = QDir(m_folder).entryList({"History#*"}, QDir::Files, QDir::Time);
    QCOMPARE(byTime.first(), QStringLiteral("History#") + sha256("a\nb\nc") + ".json");
    QStringList files = online();
    QCOMPARE(files.size(), 5);
    // Only the newest version of a model file is written again: rewritten, an older one would
    // become the newest by its time.
    for (const QString &version : byTime.mid(1)) {
        QVERIFY(files.removeOne(version));
        QVERIFY(!logged(QStringLiteral("Resync upload finished for ") + version));
    }
    for (const QString &name : std::as_const(files)) {
        QFile file(QDir(m_folder).filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(file.readAll().startsWith(SyncPayload::EncryptedMarker), qPrintable(name));
    }
    QVERIFY(logged(QStringLiteral("Sync: Resync upload finished for action_")));
    // Written again in place, a version keeps the time that orders it among the others.
    QVERIFY(logged(QStringLiteral("Sync: Resync upload finished for ") + snippets.fileName()));
    QCOMPARE(QFileInfo(snippets.filePath()).lastModified(), snippetsTime);
}

// Switched on, strong encryption seals and renames what is online once; another computer with
// the pass phrase joins, the others are told why they cannot, and a changed file is refused.
void TestSync::strongEncryptionSealsAndRenamesEverything()
{
    writeAction(QStringLiteral("Act.json"), QDateTime(QDate(2024, 1, 1), QTime(9, 0)));
    writeOnline(QStringLiteral("History#") + sha256("a") + QStringLiteral(".json"),
                qCompress(QByteArray("a")), QDateTime::currentDateTime().addSecs(-60));
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QVariantMap strong = Sync::storedSettings();
    strong.insert(QLatin1String(SettingsKey::StrongEncryption), true);
    strong.insert(QLatin1String(SettingsKey::Passphrase), QStringLiteral("secret"));
    m_sync->setSettings(strong);
    m_sync->queueResyncAll();
    QCOMPARE(run(SyncDirection::Both), int(SyncStatus::Success));
    QStringList files = online();
    QVERIFY(files.removeOne(EncryptionHeader::FileName));
    QVERIFY2(files.size() == 3, qPrintable(files.join(" ")));
    const QString history = online(QStringLiteral("History#*")).value(0);
    QVERIFY(history != QStringLiteral("History#") + sha256("a\nb") + QStringLiteral(".json"));
    for (const QString &name : std::as_const(files)) {
        QFile file(QDir(m_folder).filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(file.readAll().startsWith(SealKey::Marker), qPrintable(name));
    }

    // Another computer derives the same keys: it merges, and its name for the merged content
    // is the one the first computer finds equal.
    LinesMerge other("z");
    newComputer(&other, &m_snippets);
    QCOMPARE(statusOfRunWith(strong), QStringLiteral("Synchronization successful."));
    QCOMPARE(other.content, QByteArray("a\nb\nz"));
    newComputer(&m_history, &m_snippets);
    QCOMPARE(statusOfRunWith(strong), QStringLiteral("Synchronization successful."));
    QCOMPARE(m_history.content, other.content);
    SyncLog::instance().clear();
    QCOMPARE(statusOfRunWith(strong), QStringLiteral("Synchronization successful."));
    QVERIFY(logged(QStringLiteral("Online and local hash are equal")));

    LinesMerge stranger("q");
    newComputer(&stranger, &m_snippets);
    QVariantMap wrong = strong;
    wrong.insert(QLatin1String(SettingsKey::Passphrase), QStringLiteral("guess"));
    QVERIFY(statusOfRunWith(wrong).startsWith(QStringLiteral("Wrong pass phrase")));
    QVERIFY(statusOfRunWith(Sync::storedSettings()).contains(QStringLiteral("switch it on")));
    QCOMPARE(stranger.merges, 0);

    // A byte changed online: refused and told, then passed over.
    const QString newest = QDir(m_folder).entryList({"History#*"}, QDir::Files, QDir::Time)[0];
    QFile file(QDir(m_folder).filePath(newest));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QByteArray body = file.readAll();
    body[body.size() / 2] = char(body.at(body.size() / 2) ^ 0x20);
    QVERIFY(file.seek(0) && file.write(body) == body.size());
    file.close();
    LinesMerge fresh("new");
    newComputer(&fresh, &m_snippets);
    QCOMPARE(statusOfRunWith(strong),
             QStringLiteral("History.json was changed or damaged online; it is not used."));
    QVERIFY(logged(newest + QStringLiteral(" was changed or damaged")));
    QCOMPARE(statusOfRunWith(strong), QStringLiteral("Synchronization successful."));
    QCOMPARE(fresh.content, QByteArray("a\nb\nnew"));

    // Switched off again: the compatible form and plain names, and no header.
    QVariantMap off = Sync::storedSettings();
    m_sync->setSettings(off);
    m_sync->queueResyncAll();
    QCOMPARE(statusOfRunWith(off), QStringLiteral("Synchronization successful."));
    QVERIFY(!online().contains(EncryptionHeader::FileName));
    QCOMPARE(online(QStringLiteral("History#*")),
             QStringList(QStringLiteral("History#") + sha256(fresh.content) + ".json"));
}

QTEST_MAIN(TestSync)
#include "testsync.moc"
