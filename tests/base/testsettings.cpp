#include "base/relativetime.h"
#include "base/settings.h"

#include <QSize>
#include <QTemporaryDir>
#include <QTest>

class TestSettings final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void defaultsAreWrittenOnceAndChoicesKept();
    void relativeTimeTexts_data();
    void relativeTimeTexts();

private:
    QTemporaryDir m_dir;
};

void TestSettings::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QCoreApplication::setOrganizationName(QStringLiteral("VelmorinTest"));
    QCoreApplication::setApplicationName(QStringLiteral("Velmorin"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
}

// The first start writes every default; later starts add only what a newer version brought
// and keep what the user chose, emptied values included.
void TestSettings::defaultsAreWrittenOnceAndChoicesKept()
{
    {
        QSettings settings;
        settings.clear();
        const int count = int(Settings::firstRunDefaults().size());
        QCOMPARE(Settings::writeDefaults(settings), count);
        QCOMPARE(settings.allKeys().size(), count);
        QVERIFY(!settings.contains(SettingsKey::SyncTarget));
        QVERIFY(!settings.contains(SettingsKey::LastSync));
        settings.setValue(SettingsKey::KeepItems, QStringLiteral("500"));
        settings.setValue(SettingsKey::Shortcut, QString()); // switched off on purpose
        settings.setValue(SettingsKey::ExcludedApplications,
                          QStringList{QStringLiteral("keepass.exe")});
        settings.remove(SettingsKey::OpenOnMouse); // a key this version adds
    }
    QSettings restarted;
    QCOMPARE(Settings::writeDefaults(restarted), 1);
    QCOMPARE(restarted.value(SettingsKey::WindowSize).toSize(), QSize(420, 520));
    QCOMPARE(restarted.value(SettingsKey::KeepItems).toString(), QStringLiteral("500"));
    QCOMPARE(restarted.value(SettingsKey::Shortcut).toString(), QString());
    QCOMPARE(restarted.value(SettingsKey::ExcludedApplications).toStringList(),
             QStringList{QStringLiteral("keepass.exe")});
    QCOMPARE(restarted.value(SettingsKey::OpenOnMouse).toBool(), true);
    QCOMPARE(Settings::writeDefaults(restarted), 0);

    QCOMPARE(Settings::releaseNotesVersion(), QString());
    Settings::setReleaseNotesVersion(Settings::currentReleaseNotesVersion());
    QCOMPARE(QSettings().value(SettingsKey::ReleaseNotesVersion).toString(), QStringLiteral("1.9"));
}

void TestSettings::relativeTimeTexts_data()
{
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("text");
    QTest::newRow("seconds") << qint64(59999) << QStringLiteral("A few seconds ago");
    QTest::newRow("a minute") << qint64(60999) << QStringLiteral("A minute ago");
    QTest::newRow("61 s") << qint64(61000) << QStringLiteral("1 minutes ago");
    QTest::newRow("an hour") << qint64(3600500) << QStringLiteral("An hour ago");
    QTest::newRow("5 h") << qint64(5 * 3600000 + 1) << QStringLiteral("5 hours ago");
    QTest::newRow("a day") << qint64(86400999) << QStringLiteral("A day ago");
    QTest::newRow("3 d") << qint64(3 * 86400000LL) << QStringLiteral("3 days ago");
}

void TestSettings::relativeTimeTexts()
{
    QFETCH(qint64, ms);
    QFETCH(QString, text);
    QCOMPARE(RelativeTime::ago(ms), text);
}

QTEST_GUILESS_MAIN(TestSettings)
#include "testsettings.moc"
