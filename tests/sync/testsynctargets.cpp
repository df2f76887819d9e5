// The local folder and no-sync targets against real folders: what they list, write, read and
// delete, that they answer only on a later turn of the event loop, and that failures warn
// without answering.
#include "base/settings.h"
#include "support/testprofile.h"
#include "sync/synclocalfolder.h"
#include "sync/syncnone.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestSyncTargets final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void folderKeepsFilesUnderTheirOnlineNames();
    void failuresWarnWithoutAnswering();
    void askingForAFolder();
    void noSyncAnswersWithNothing();

private:
    QString writeFile(const QString &name, const QByteArray &bytes);

    TestProfile m_profile;
    QTemporaryDir m_root;
    QString m_folder;
};

void TestSyncTargets::initTestCase()
{
    m_profile.useInThisProcess();
}

void TestSyncTargets::init()
{
    m_folder = m_root.filePath(QStringLiteral("shared"));
    QDir(m_folder).removeRecursively();
    QVERIFY(QDir().mkpath(m_folder));
    QSettings().setValue(QStringLiteral("SyncFolder"), m_folder);
}

QString TestSyncTargets::writeFile(const QString &name, const QByteArray &bytes)
{
    QFile file(QDir(m_folder).filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return file.fileName();
}

void TestSyncTargets::folderKeepsFilesUnderTheirOnlineNames()
{
    SyncLocalFolder target;
    QVERIFY(target.isValid());
    QSignalSpy initialized(&target, &ISyncTarget::initialized);
    target.initialise(ISyncTarget::UseConfigured);
    QCOMPARE(initialized.count(), 0);
    QTRY_COMPARE(initialized.count(), 1);
    QVERIFY(initialized.first().first().toBool());

    QSignalSpy listed(&target, &ISyncTarget::filesListed);
    target.listFiles();
    QTRY_COMPARE(listed.count(), 1);
    auto files = listed.last().first().value<QList<OnlineFile>>();
    QCOMPARE(files.size(), 1);
    QVERIFY(files.first().name.isEmpty());

    SyncEntry entry;
    entry.file = QStringLiteral("History#abc.json");
    QSignalSpy uploaded(&target, &ISyncTarget::uploaded);
    target.upload(2, entry, "payload");
    QCOMPARE(uploaded.count(), 0);
    QTRY_COMPARE(uploaded.count(), 1);
    QCOMPARE(uploaded.first().at(0).toInt(), 2);
    const auto written = uploaded.first().at(1).value<SyncEntry>();
    QCOMPARE(written.onlineName, entry.file);

    target.listFiles();
    QTRY_COMPARE(listed.count(), 2);
    files = listed.last().first().value<QList<OnlineFile>>();
    QCOMPARE(files.size(), 2);
    const OnlineFile &file = files.first().name.isEmpty() ? files.last() : files.first();
    QCOMPARE(file.name, entry.file);
    QCOMPARE(file.id, entry.file);
    const QDateTime created = QDateTime::fromString(file.created, Qt::ISODateWithMs);
    QVERIFY(qAbs(created.secsTo(QDateTime::currentDateTime())) < 60);

    QSignalSpy downloaded(&target, &ISyncTarget::downloaded);
    target.download(1, written);
    QTRY_COMPARE(downloaded.count(), 1);
    QCOMPARE(downloaded.first().at(2).toByteArray(), QByteArray("payload"));

    // Written again: replaced, not appended.
    target.upload(2, entry, "new");
    QTRY_COMPARE(uploaded.count(), 2);
    target.download(1, written);
    QTRY_COMPARE(downloaded.count(), 2);
    QCOMPARE(downloaded.last().at(2).toByteArray(), QByteArray("new"));

    QSignalSpy removed(&target, &ISyncTarget::removed);
    target.remove(written);
    QTRY_COMPARE(removed.count(), 1);
    QVERIFY(!QFile::exists(QDir(m_folder).filePath(entry.file)));
}

void TestSyncTargets::failuresWarnWithoutAnswering()
{
    SyncLocalFolder target;
    QSignalSpy downloaded(&target, &ISyncTarget::downloaded);
    QSignalSpy removed(&target, &ISyncTarget::removed);
    SyncEntry missing;
    missing.onlineName = QStringLiteral("Snippets#gone.json");
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^Unable to open file for reading")));
    target.download(2, missing);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^Unable to remove file")));
    target.remove(missing);

    // The shared folder goes away under the program.
    QVERIFY(QDir(m_folder).removeRecursively());
    QVERIFY(!target.isValid());
    QSignalSpy listed(&target, &ISyncTarget::filesListed);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^The folder doesn't exist")));
    target.listFiles();
    QSignalSpy uploaded(&target, &ISyncTarget::uploaded);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^Unable to open file for writing")));
    SyncEntry entry;
    entry.file = QStringLiteral("History#x.json");
    target.upload(2, entry, "bytes");
    QSignalSpy initialized(&target, &ISyncTarget::initialized);
    target.initialise(ISyncTarget::UseConfigured);
    QTRY_COMPARE(initialized.count(), 1);
    QVERIFY(!initialized.first().first().toBool());
    QTest::qWait(50);
    QCOMPARE(downloaded.count() + removed.count() + listed.count() + uploaded.count(), 0);
}

void TestSyncTargets::askingForAFolder()
{
    SyncLocalFolder target;
    int asked = 0;
    QString answer = m_root.filePath(QStringLiteral("new/nested/folder"));
    target.setFolderChooser([&] {
        ++asked;
        return answer;
    });
    QSignalSpy initialized(&target, &ISyncTarget::initialized);
    target.initialise(ISyncTarget::AskIfMissing);
    QTRY_COMPARE(initialized.count(), 1);
    QCOMPARE(asked, 0);

    target.initialise(ISyncTarget::AlwaysAsk);
    QTRY_COMPARE(initialized.count(), 2);
    QCOMPARE(asked, 1);
    QVERIFY(initialized.last().first().toBool());
    QVERIFY(QDir(answer).exists());
    QCOMPARE(QSettings().value(QStringLiteral("SyncFolder")).toString(), answer);

    // Cancelled: the folder there was stays.
    answer.clear();
    target.initialise(ISyncTarget::AlwaysAsk);
    QTRY_COMPARE(initialized.count(), 3);
    QVERIFY(initialized.last().first().toBool());
    QCOMPARE(target.folder(), m_root.filePath(QStringLiteral("new/nested/folder")));
}

void TestSyncTargets::noSyncAnswersWithNothing()
{
    SyncNone target;
    QVERIFY(!target.isValid());
    QSignalSpy initialized(&target, &ISyncTarget::initialized);
    QSignalSpy listed(&target, &ISyncTarget::filesListed);
    QSignalSpy downloaded(&target, &ISyncTarget::downloaded);
    target.initialise(ISyncTarget::AlwaysAsk);
    target.listFiles();
    target.download(0, SyncEntry());
    QCOMPARE(initialized.count() + listed.count() + downloaded.count(), 0);
    QTRY_COMPARE(downloaded.count(), 1);
    QVERIFY(initialized.first().first().toBool());
    QVERIFY(listed.first().first().value<QList<OnlineFile>>().isEmpty());
    QVERIFY(downloaded.first().at(2).toByteArray().isEmpty());
}

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    TestSyncTargets test;
    return QTest::qExec(&test, argc, argv);
}

#include "testsynctargets.moc"
