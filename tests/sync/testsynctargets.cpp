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
