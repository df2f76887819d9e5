// The system's secret store as the program uses it: secrets written, read back and removed, and
// moved between the settings and the store as strong encryption goes on and off. On Linux the
// test runs with a GNOME keyring of its own, on Windows with the Credential Manager.
#include "base/isecretstore.h"
#include "base/secrets.h"
#include "base/settings.h"
#include "platform/platform.h"
#include "support/testprofile.h"

#include <QSettings>
#include <QTest>

class TestSecretStore final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void storeKeepsWhatItIsGiven();
    void secretsMoveWithStrongEncryption();

private:
    bool inStore(const QString &key, QString *secret = nullptr);
    QByteArray inSettings(const char *key) const;

    TestProfile m_profile;
    ISecretStore *m_store = nullptr;
};

void TestSecretStore::initTestCase()
{
    m_profile.useInThisProcess();
    m_store = Platform::secretStore();
}

bool TestSecretStore::inStore(const QString &key, QString *secret)
{
    QString value;
    QString error;
    const bool found = m_store->read(key, &value, &error);
    if (!found && !error.isEmpty())
        qWarning().noquote() << "reading" << key << "failed:" << error;
    if (secret)
        *secret = value;
    return found;
}

QByteArray TestSecretStore::inSettings(const char *key) const
{
    return QSettings().value(QLatin1String(key)).toByteArray();
}

void TestSecretStore::storeKeepsWhatItIsGiven()
{
    const QString key = QStringLiteral("TestSecret");
    const QString text = QStringLiteral("Grüße, \U0001F511 and a long pass phrase");
    QString error;
    QVERIFY2(m_store->write(key, text, &error), qPrintable(error));
    QString secret;
    QVERIFY(inStore(key, &secret));
    QCOMPARE(secret, text);
    QVERIFY2(m_store->remove(key, &error), qPrintable(error));
    QVERIFY(!m_store->read(key, &secret, &error));
    QVERIFY2(error.isEmpty(), qPrintable(error)); // none there, and no failure
    QVERIFY2(m_store->remove(key, &error), qPrintable(error));
}

void TestSecretStore::secretsMoveWithStrongEncryption()
{
    Secrets::setStore(m_store);
    const QString passphrase = QStringLiteral("correct horse battery staple");
    Settings::setSecret(SettingsKey::Passphrase, passphrase);
    QCOMPARE(inSettings(SettingsKey::Passphrase).at(0), char(3)); // enciphered there
    QVERIFY(!inStore(QLatin1String(SettingsKey::Passphrase)));

    QSettings().setValue(SettingsKey::StrongEncryption, true);
    QString problem;
    QVERIFY2(Secrets::place(&problem), qPrintable(problem));
    QVERIFY(!inSettings(SettingsKey::Passphrase).contains(passphrase.toUtf8()));
    QString secret;
    QVERIFY(inStore(QLatin1String(SettingsKey::Passphrase), &secret));
    QCOMPARE(secret, passphrase);
    Secrets::setStore(m_store); // as a new run: nothing remembered
    QCOMPARE(Settings::secret(SettingsKey::Passphrase), passphrase);
    Settings::setSecret(SettingsKey::PreviousPassphrase, QStringLiteral("older"));
    QVERIFY(inStore(QLatin1String(SettingsKey::PreviousPassphrase)));

    QSettings().setValue(SettingsKey::StrongEncryption, false);
    QVERIFY2(Secrets::place(&problem), qPrintable(problem));
    QCOMPARE(inSettings(SettingsKey::Passphrase).at(0), char(3));
    QCOMPARE(Settings::secret(SettingsKey::Passphrase), passphrase);
    QCOMPARE(Settings::secret(SettingsKey::PreviousPassphrase), QStringLiteral("older"));
    QVERIFY(!inStore(QLatin1String(SettingsKey::Passphrase)));
    QVERIFY(!inStore(QLatin1String(SettingsKey::PreviousPassphrase)));
}

QTEST_GUILESS_MAIN(TestSecretStore)
#include "testsecretstore.moc"
