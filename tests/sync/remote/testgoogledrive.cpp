// The Google Drive target against the stand-in: listing in pages, the upload body byte for
// byte, resumable uploads of large files, rate-limited answers tried again, and failures that
// reach the engine as a failed run.
#include "base/settings.h"
#include "support/fakebrowser.h"
#include "support/fakegoogle.h"
#include "support/testprofile.h"
#include "sync/remote/notifier.h"
#include "sync/remote/syncgoogledrive.h"
#include "sync/sync.h"
#include "synclog.h"

#include <QRandomGenerator>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

// Content whose merge takes the longer of the two sides.
class TextMerge final : public ISyncMerge
{
public:
    QString hash() override { return contentHash(content); }
    bool merge(const QByteArray &downloaded, QByteArray &output, SyncDirection) override
    {
        const QByteArray before = content;
        if (downloaded.size() > content.size())
            content = downloaded;
        output = content;
        return content != before;
    }
    QByteArray content = "local";
};

SyncEntry entryNamed(const QString &name)
{
    SyncEntry entry;
    entry.file = name;
    entry.onlineName = name;
    return entry;
}

} // namespace

class TestGoogleDrive : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void listsEveryPage();
    void downloadsAndRemovesByDriveId();
    void largeFilesGoUpInResumableChunks();
    void rateLimitedAnswersAreTriedAgain();
    void failuresEndTheEngineRun();
    void newsFromAnotherComputerQueuesThatContentOnly();

private:
    std::unique_ptr<SyncGoogleDrive> linkedDrive();
    QList<OnlineFile> list(SyncGoogleDrive *drive);
    bool upload(SyncGoogleDrive *drive, const QString &name, const QByteArray &bytes);

    TestProfile m_profile;
    std::unique_ptr<FakeGoogle> m_google;
    FakeBrowser m_browser;
};

void TestGoogleDrive::initTestCase()
{
    m_profile.useInThisProcess();
    m_browser.install();
}

void TestGoogleDrive::init()
{
    QSettings().clear();
    QSettings settings;
    Settings::writeDefaults(settings);
    m_google = std::make_unique<FakeGoogle>();
    QVERIFY(m_google->start());
    qputenv("VELMORIN_GOOGLE_ACCOUNTS_URL", m_google->url().toLatin1());
    qputenv("VELMORIN_GOOGLE_API_URL", m_google->url().toLatin1());
    settings.setValue(QLatin1String(SettingsKey::GoogleClientId), FakeGoogle::ClientId);
    settings.setValue(QLatin1String(SettingsKey::GoogleClientSecret), FakeGoogle::ClientSecret);
}

std::unique_ptr<SyncGoogleDrive> TestGoogleDrive::linkedDrive()
{
    auto drive = std::make_unique<SyncGoogleDrive>();
    drive->setRetryBaseMs(5);
    QSignalSpy initialized(drive.get(), &ISyncTarget::initialized);
    drive->initialise(ISyncTarget::AskIfMissing);
    if (!initialized.wait(10000) || !initialized.first().first().toBool())
        return nullptr;
    return drive;
}

QList<OnlineFile> TestGoogleDrive::list(SyncGoogleDrive *drive)
{
    QSignalSpy listed(drive, &ISyncTarget::filesListed);
    drive->listFiles();
    if (!listed.wait(10000))
        return {};
    return listed.first().first().value<QList<OnlineFile>>();
}

bool TestGoogleDrive::upload(SyncGoogleDrive *drive, const QString &name, const QByteArray &bytes)
{
    QSignalSpy uploaded(drive, &ISyncTarget::uploaded);
    drive->upload(Sync::FileUpload, entryNamed(name), bytes);
    return uploaded.wait(20000) && uploaded.first().at(1).value<SyncEntry>().onlineName == name;
}

void TestGoogleDrive::listsEveryPage()
{
    auto drive = linkedDrive();
    QVERIFY(drive);
    QVERIFY(drive->isValid());
    const QList<OnlineFile> empty = list(drive.get());
    QCOMPARE(empty.size(), 1);
    QVERIFY(empty.first().name.isEmpty());

    for (int i = 0; i < 4; ++i)
        QVERIFY(upload(drive.get(), QStringLiteral("image_%1_a.png").arg(i), "x"));
    // The same name again replaces the file in place, so it stays as old as it was.
    const FakeGoogle::File original = m_google->files(QStringLiteral("user-1")).first();
    m_google->clearRequests();
    QVERIFY(upload(drive.get(), QStringLiteral("image_0_a.png"), "y"));
    QCOMPARE(m_google->requests(),
             QStringList{QStringLiteral("PATCH /upload/drive/v3/files/") + original.id});
    const FakeGoogle::File replaced = m_google->files(QStringLiteral("user-1")).first();
    QCOMPARE(replaced.content, QByteArray("y"));
    QCOMPARE(replaced.created, original.created);
    QCOMPARE(replaced.parents, QStringList{QStringLiteral("appDataFolder")});
    m_google->setMaxPageSize(3);
    m_google->clearRequests();
    const QList<OnlineFile> files = list(drive.get());
    QCOMPARE(m_google->requests().count(QStringLiteral("GET /drive/v3/files")), 2);
    QCOMPARE(files.size(), 5); // four names and the empty entry
    const auto first = std::find_if(files.begin(), files.end(), [](const OnlineFile &f) {
        return f.name == QLatin1String("image_0_a.png");
    });
    QVERIFY(first != files.end());
    QCOMPARE(first->id, original.id);
    QVERIFY(first->created.endsWith(QLatin1Char('Z')));
}

void TestGoogleDrive::downloadsAndRemovesByDriveId()
{
    auto drive = linkedDrive();
    QVERIFY(drive);
    const QString name = QStringLiteral("action_20250101T000000_x.json");
    QVERIFY(upload(drive.get(), name, "{\"title\":\"x\"}"));

    QSignalSpy downloaded(drive.get(), &ISyncTarget::downloaded);
    drive->download(Sync::ActionDownload, entryNamed(name));
    QVERIFY(downloaded.wait());
    QCOMPARE(downloaded.first().at(0).toInt(), int(Sync::ActionDownload));
    QCOMPARE(downloaded.first().at(2).toByteArray(), QByteArrayLiteral("{\"title\":\"x\"}"));
    const QString id = m_google->files(QStringLiteral("user-1")).first().id;
    QVERIFY(m_google->requests().contains(QStringLiteral("GET /drive/v3/files/") + id));

    QSignalSpy removed(drive.get(), &ISyncTarget::removed);
    drive->remove(entryNamed(name));
    QVERIFY(removed.wait());
    QVERIFY(m_google->files(QStringLiteral("user-1")).isEmpty());

    // A name the target has no id for fails, later, as a failure answer.
    QSignalSpy failed(drive.get(), &ISyncTarget::downloadFailed);
    drive->download(Sync::ActionDownload, entryNamed(name));
    QVERIFY(failed.isEmpty());
    QVERIFY(failed.wait());
    QVERIFY(!drive->hasPendingAnswers());
}

void TestGoogleDrive::largeFilesGoUpInResumableChunks()
{
    auto drive = linkedDrive();
    QVERIFY(drive);
    QByteArray image(6 * 1024 * 1024, Qt::Uninitialized);
    QRandomGenerator(7).fillRange(reinterpret_cast<quint32 *>(image.data()), image.size() / 4);
    m_google->clearRequests();
    // The second chunk is refused once: the upload asks where it stands and goes on.
    QVERIFY(upload(drive.get(), QStringLiteral("image_1_big.png"), image.left(5 * 1024 * 1024)));
    QCOMPARE(m_google->requests().count(QStringLiteral("PUT /upload/drive/v3/files")), 0);

    m_google->clearRequests();
    QSignalSpy uploaded(drive.get(), &ISyncTarget::uploaded);
    drive->upload(Sync::FileUpload, entryNamed(QStringLiteral("image_2_big.png")), image);
    QTRY_COMPARE(m_google->requests().count(QStringLiteral("PUT /upload/drive/v3/files")), 1);
    m_google->refuseNext(1, 503);
    QVERIFY(uploaded.wait(20000));
    QCOMPARE(m_google->requests().count(QStringLiteral("POST /upload/drive/v3/files")), 1);
    // Two chunks, one refused, one question where it stands.
    QCOMPARE(m_google->requests().count(QStringLiteral("PUT /upload/drive/v3/files")), 4);
    QCOMPARE(m_google->files(QStringLiteral("user-1")).last().content, image);

    QSignalSpy downloaded(drive.get(), &ISyncTarget::downloaded);
    drive->download(Sync::ImageDownload, entryNamed(QStringLiteral("image_2_big.png")));
    QVERIFY(downloaded.wait(20000));
    QCOMPARE(downloaded.first().at(2).toByteArray(), image);
}

void TestGoogleDrive::rateLimitedAnswersAreTriedAgain()
{
    auto drive = linkedDrive();
    QVERIFY(drive);
    m_google->clearRequests();
    m_google->refuseNext(2, 429);
    QCOMPARE(list(drive.get()).size(), 1);
    QCOMPARE(m_google->requests().size(), 3);

    m_google->refuseNext(1, 403);
    QVERIFY(upload(drive.get(), QStringLiteral("History#1.json"), "one"));

    // Past the last attempt the engine is told.
    m_google->clearRequests();
    m_google->refuseNext(SyncGoogleDrive::MaxAttempts, 429);
    QSignalSpy failed(drive.get(), &ISyncTarget::listFailed);
    drive->listFiles();
    QVERIFY(failed.wait(10000));
    QCOMPARE(m_google->requests().size(), SyncGoogleDrive::MaxAttempts);
}

void TestGoogleDrive::failuresEndTheEngineRun()
{
    QSettings().setValue(QLatin1String(SettingsKey::SyncTarget), ISyncTarget::GoogleDriveSetting);
    QSettings().setValue(QLatin1String(SettingsKey::SyncSnippets), false);
    QSettings().setValue(QLatin1String(SettingsKey::SyncActions), false);
    {
        auto linked = linkedDrive(); // leaves the tokens in the settings
        QVERIFY(linked);
    }
    Sync sync;
    SyncGoogleDrive drive;
    sync.addTarget(ISyncTarget::GoogleDriveSetting, &drive);
    drive.setRetryBaseMs(5);
    TextMerge history;
    sync.setModels(&history, nullptr);
    QVERIFY(sync.activeTarget() == &drive);
    QSignalSpy status(&sync, &Sync::syncStatus);
    const auto finalStatus = [&status] {
        for (int i = status.size() - 1; i >= 0; --i) {
            if (status.at(i).first().value<SyncStatus>() != SyncStatus::Running)
                return status.at(i).first().value<SyncStatus>();
        }
        return SyncStatus::Running;
    };
    sync.syncAll(SyncDirection::Both);
    QTRY_COMPARE_WITH_TIMEOUT(finalStatus(), SyncStatus::Success, 10000);
    QCOMPARE(m_google->files(QStringLiteral("user-1")).size(), 1);

    // A download refused past the last attempt fails the run and leaves the content alone.
    history.content = "changed here";
    status.clear();
    qint64 seen = SyncLog::instance().totalAppended();
    m_google->refuseNext(SyncGoogleDrive::MaxAttempts, 500, QStringLiteral("alt=media"));
    sync.sync(Sync::History, &history, SyncDirection::FromServer);
    QTRY_COMPARE_WITH_TIMEOUT(finalStatus(), SyncStatus::Failure, 20000);
    QVERIFY(SyncLog::instance()
                .linesSince(&seen)
                .join(QLatin1Char('\n'))
                .contains(QStringLiteral("Sync: Download failed for ") +
                          m_google->files(QStringLiteral("user-1")).first().name));
    QCOMPARE(history.content, QByteArrayLiteral("changed here"));
    QVERIFY(!sync.activeTarget()->hasPendingAnswers());

    // So does a listing that keeps failing.
    status.clear();
    m_google->refuseNext(SyncGoogleDrive::MaxAttempts, 429);
    sync.sync(Sync::History, &history, SyncDirection::Both);
    QTRY_COMPARE_WITH_TIMEOUT(finalStatus(), SyncStatus::Failure, 20000);
    QVERIFY(SyncLog::instance()
                .linesSince(&seen)
                .join(QLatin1Char('\n'))
                .contains(QStringLiteral("Sync: Failed to read the file list")));

    // And the next run, with the service well again, goes through.
    status.clear();
    sync.sync(Sync::History, &history, SyncDirection::Both);
    QTRY_COMPARE_WITH_TIMEOUT(finalStatus(), SyncStatus::Success, 20000);
    QCOMPARE(m_google->files(QStringLiteral("user-1")).size(), 2);
}

void TestGoogleDrive::newsFromAnotherComputerQueuesThatContentOnly()
{
    Sync sync;
    Notifier notifier;
    sync.setNotifier(&notifier);
    TextMerge history;
    TextMerge snippets;
    sync.setModels(&history, &snippets);
    emit notifier.dataUpdated(QStringLiteral("Snippets.json"));
    QCOMPARE(sync.queuedFiles(), QStringList{QStringLiteral("Snippets.json")});
    emit notifier.dataUpdated(QStringLiteral("Other.json"));
    emit notifier.dataUpdated(QStringLiteral("History.json"));
    QCOMPARE(sync.queuedFiles(),
             QStringList({QStringLiteral("Snippets.json"), QStringLiteral("History.json")}));
    QVERIFY(sync.isQueueTimerActive());
}

QTEST_MAIN(TestGoogleDrive)
#include "testgoogledrive.moc"
