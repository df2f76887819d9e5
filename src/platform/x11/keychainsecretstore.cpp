#include "platform/x11/keychainsecretstore.h"

#include "platform/platform.h"

#include <QEventLoop>

#include <qt6keychain/keychain.h>

namespace {

const QString Service = QStringLiteral("Velmorin");

// QtKeychain answers by a signal; the callers need the answer now. A store that is not running
// answers at once, an unlocked one within milliseconds, so the wait is short; user input waits
// meanwhile.
QKeychain::Error runJob(QKeychain::Job &job, const QString &key, QString *error)
{
    job.setAutoDelete(false);
    job.setKey(key);
    QEventLoop loop;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (job.error() != QKeychain::NoError && job.error() != QKeychain::EntryNotFound)
        *error = job.errorString();
    return job.error();
}

} // namespace

bool KeychainSecretStore::read(const QString &key, QString *secret, QString *error)
{
    QKeychain::ReadPasswordJob job(Service);
    if (runJob(job, key, error) != QKeychain::NoError)
        return false;
    *secret = job.textData();
    return true;
}

bool KeychainSecretStore::write(const QString &key, const QString &secret, QString *error)
{
    QKeychain::WritePasswordJob job(Service);
    job.setTextData(secret);
    return runJob(job, key, error) == QKeychain::NoError;
}

bool KeychainSecretStore::remove(const QString &key, QString *error)
{
    QKeychain::DeletePasswordJob job(Service);
    const QKeychain::Error result = runJob(job, key, error);
    return result == QKeychain::NoError || result == QKeychain::EntryNotFound;
}

ISecretStore *Platform::createSecretStore()
{
    return new KeychainSecretStore;
}
