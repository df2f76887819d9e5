#include "sync/remote/tokenstore.h"

#include "base/secrets.h"

QString TokenStore::value(const QString &key, const QString &defaultValue)
{
    const QString stored = Secrets::read(key);
    return stored.isEmpty() ? defaultValue : stored;
}

void TokenStore::setValue(const QString &key, const QString &value)
{
    Secrets::write(key, value);
}
