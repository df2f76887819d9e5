#include "platform/win/winsecretstore.h"

#include "platform/platform.h"
#include "win32credentials.h"

namespace {

std::wstring target(const QString &key)
{
    return (QStringLiteral("Velmorin/") + key).toStdWString();
}

bool report(bool done, unsigned long code, QString *error)
{
    if (!done && code)
        *error = QStringLiteral("Windows error %1").arg(code);
    return done;
}

} // namespace

bool WinSecretStore::read(const QString &key, QString *secret, QString *error)
{
    std::wstring value;
    unsigned long code = 0;
    if (!report(Win32Credentials::read(target(key), &value, &code), code, error))
        return false;
    *secret = QString::fromStdWString(value);
    return true;
}

bool WinSecretStore::write(const QString &key, const QString &secret, QString *error)
{
    unsigned long code = 0;
    return report(Win32Credentials::write(target(key), secret.toStdWString(), &code), code, error);
}

bool WinSecretStore::remove(const QString &key, QString *error)
{
    unsigned long code = 0;
    return report(Win32Credentials::remove(target(key), &code), code, error);
}

ISecretStore *Platform::createSecretStore()
{
    return new WinSecretStore;
}
