#include "base/settings.h"
#include "services/appservices.h"
#include "support/fakebrowser.h"
#include "support/fakegoogle.h"
#include "support/modalanswer.h"
#include "support/testprofile.h"
#include "sync/remote/syncgoogledrive.h"
#include "sync/sync.h"
#include "ui/settings/synclogdialog.h"
#include "ui/settings/syncsettingspage.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

// The sync page of the settings: choosing and leaving a target, the questions before one-way
// runs, and the pass phrase.
class TestSyncSettingsPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void localFolderAsksAndKeepsTheOldPassPhrase();
    void googleDriveConnectsAndDisconnects();

private:
    TestProfile m_profile;
    QTemporaryDir m_folder;
    FakeBrowser m_browser;
    std::unique_ptr<AppServices> m_services;
};

void TestSyncSettingsPage::initTestCase()
{
    m_profile.useInThisProcess();
    m_browser.install();
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    Settings::setValue(SettingsKey::SyncFolder, m_folder.path());
    Settings::setValue(SettingsKey::SyncTarget, QStringLiteral("LocalFolder"));
    m_services = std::make_unique<AppServices>(AppModes());
}

void TestSyncSettingsPage::localFolderAsksAndKeepsTheOldPassPhrase()
{
    // A run in the background ended before the page opened: the page still tells how.
    const QString failure = QStringLiteral("Wrong pass phrase: it does not open it.");
    emit m_services->sync()->syncStatus(SyncStatus::Failure, failure);
    SyncSettingsPage page(m_services.get());
    page.show();
    QCOMPARE(page.findChild<QLabel *>(QStringLiteral("syncStatusText"))->text(), failure);
    QSignalSpy runs(&page, &SyncSettingsPage::syncNow);
    QString question;
    const auto answer = [&question](QMessageBox::StandardButton button) {
        ModalAnswer::whenOpens([&question, button](QWidget *box) {
            question = qobject_cast<QMessageBox *>(box)->text();
            qobject_cast<QMessageBox *>(box)->button(button)->click();
        });
    };
    answer(QMessageBox::No);
    page.findChild<QPushButton *>(QStringLiteral("syncDownload"))->click();
    QVERIFY(question.startsWith(QStringLiteral("All your local content will be overwritten")));
    QCOMPARE(runs.size(), 0);
    answer(QMessageBox::Yes);
    page.findChild<QPushButton *>(QStringLiteral("syncUpload"))->click();
    QVERIFY(question.startsWith(QStringLiteral("The remote data will be overwritten")));
    QCOMPARE(runs.size(), 1);
    QCOMPARE(runs.last().first().value<SyncDirection>(), SyncDirection::ToServer);
    question.clear();
    page.findChild<QPushButton *>(QStringLiteral("syncBothWays"))->click();
    QVERIFY(question.isEmpty());
    QCOMPARE(runs.last().first().value<SyncDirection>(), SyncDirection::Both);

    // Encryption needs a pass phrase; a new one keeps the old one for files written before.
    auto *encrypt = page.findChild<QCheckBox *>(QStringLiteral("encryptData"));
    auto *passphrase = page.findChild<QLineEdit *>();
    encrypt->setChecked(true);
    QVERIFY(!page.save());
    passphrase->setText(QStringLiteral("one"));
    QVERIFY(page.save());
    QVERIFY(QSettings().value(SettingsKey::EncryptData).toBool());
    passphrase->setText(QStringLiteral("two"));
    QVERIFY(page.save());
    QCOMPARE(Settings::secret(SettingsKey::Passphrase), QStringLiteral("two"));
    QCOMPARE(Settings::secret(SettingsKey::PreviousPassphrase), QStringLiteral("one"));
    QVERIFY(!page.save());
    // Strong encryption goes with the pass phrase; switching it re-encodes what is online.
    // With no secret store here the page says where the secrets stay.
    auto *strong = page.findChild<QCheckBox *>(QStringLiteral("strongEncryption"));
    strong->setChecked(true);
    answer(QMessageBox::Ok);
    QVERIFY(page.save());
    QVERIFY2(question.contains(QStringLiteral("stay in the settings")), qPrintable(question));
    QVERIFY(QSettings().value(SettingsKey::StrongEncryption).toBool());
    encrypt->setChecked(false);
    QVERIFY(!strong->isEnabled());
    QVERIFY(page.save());
    QVERIFY(!QSettings().value(SettingsKey::StrongEncryption).toBool());

    page.findChild<QPushButton *>(QStringLiteral("stopSync"))->click();
    QCOMPARE(QSettings().value(SettingsKey::SyncTarget).toString(), QStringLiteral("None"));
    QVERIFY(QFileInfo(SyncLogDialog::defaultExportPath()).fileName().startsWith("Synclog-"));
}

void TestSyncSettingsPage::googleDriveConnectsAndDisconnects()
{
    {
        // A build without a Google client says so instead of opening a broken page.
        SyncSettingsPage page(m_services.get());
        QVERIFY(!page.findChild<QPushButton *>(QStringLiteral("useGoogleDrive"))->isEnabled());
    }
    FakeGoogle google;
    QVERIFY(google.start());
    qputenv("VELMORIN_GOOGLE_ACCOUNTS_URL", google.url().toLatin1());
    qputenv("VELMORIN_GOOGLE_API_URL", google.url().toLatin1());
    Settings::setValue(SettingsKey::GoogleClientId, FakeGoogle::ClientId);
    Settings::setValue(SettingsKey::GoogleClientSecret, FakeGoogle::ClientSecret);
    AppServices services{AppModes()};
    SyncSettingsPage page(&services);
    page.show();
    QSignalSpy runs(&page, &SyncSettingsPage::syncNow);
    google.denyNextConsent();
    page.findChild<QPushButton *>(QStringLiteral("useGoogleDrive"))->click();
    QTRY_VERIFY(!page.findChild<QLabel *>(QStringLiteral("chooseError"))->text().isEmpty());
    QVERIFY(page.findChild<QPushButton *>(QStringLiteral("useGoogleDrive"))->isVisible());
    QCOMPARE(runs.size(), 0);

    page.findChild<QPushButton *>(QStringLiteral("useGoogleDrive"))->click();
    QTRY_COMPARE(runs.size(), 1); // linked: a first run starts at once
    QVERIFY(services.googleDrive()->isValid());
    QVERIFY(page.findChild<QListWidget *>(QStringLiteral("clients"))->isVisible());
    QVERIFY(page.findChild<QLabel *>(QStringLiteral("chooseError"))->text().isEmpty());

    page.findChild<QPushButton *>(QStringLiteral("stopSync"))->click();
    QVERIFY(!services.googleDrive()->isValid());
    QVERIFY(services.googleDrive()->idToken().isEmpty());
    QVERIFY(page.findChild<QPushButton *>(QStringLiteral("useGoogleDrive"))->isVisible());
}

QTEST_MAIN(TestSyncSettingsPage)
#include "testsyncsettingspage.moc"
