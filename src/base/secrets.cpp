#include "base/secrets.h"

#include "base/cipher.h"
#include "base/isecretstore.h"
#include "base/settings.h"

#include <QDebug>
#include <QHash>
#include <QSet>
#include <QSettings>

namespace {

// What the settings hold in place of a secret that is in the secret store. No cipher text
// looks like it: those begin with their version byte, 3.
const QByteArray InStore = QByteArrayLiteral("@secret-store");
// The keys of every secret written or found, so that place() can move them all.
const QString KnownKeys = QStringLiteral("SecretKeys");

struct State
{
    ISecretStore *store = nullptr;
    // What was read from the store: each secret is asked for once, not at every sync run.
    QHash<QString, QString> cache;
    // Keys already in the settings' list: tokens are read for every request to Google.
    QSet<QString> remembered;
};

State &state()
{
    static State instance;
    return instance;
}

void remember(const QString &key)
{
    if (state().remembered.contains(key))
        return;
    state().remembered.insert(key);
    QSettings settings;
    QStringList keys = settings.value(KnownKeys).toStringList();
    if (!keys.contains(key)) {
        keys.append(key);
        settings.setValue(KnownKeys, keys);
    }
}

bool strongEncryption()
{
    return QSettings().value(QLatin1String(SettingsKey::StrongEncryption)).toBool();
}

void forgetInStore(const QString &key)
{
    QString error;
    if (state().store && !state().store->remove(key, &error))
        qWarning().noquote() << "Cannot remove" << key << "from the secret store:" << error;
}

} // namespace

void Secrets::setStore(ISecretStore *store)
{
    state() = State{store, {}, {}};
}

QString Secrets::read(const QString &key)
{
    const QByteArray stored = QSettings().value(key).toByteArray();
    if (stored.isEmpty())
        return {};
    remember(key);
    if (stored != InStore)
        return Cipher(Cipher::settingsKey()).decryptText(stored);
    State &current = state();
    if (current.cache.contains(key))
        return current.cache.value(key);
    QString secret;
    QString error = QStringLiteral("no secret store");
    if (current.store && current.store->read(key, &secret, &error)) {
        current.cache.insert(key, secret);
        return secret;
    }
    qWarning().noquote() << "Cannot read" << key << "from the secret store:" << error;
    return {};
}

void Secrets::write(const QString &key, const QString &text)
{
    QSettings settings;
    const bool wasInStore = settings.value(key).toByteArray() == InStore;
    remember(key);
    state().cache.remove(key);
    if (text.isEmpty()) {
        settings.setValue(key, QByteArray());
    } else if (strongEncryption() && state().store) {
        QString error;
        if (state().store->write(key, text, &error)) {
            settings.setValue(key, InStore);
            state().cache.insert(key, text);
            return;
        }
        qWarning().noquote() << "Cannot keep" << key
                             << "in the secret store (" + error +
                                    "); it stays in the settings, enciphered";
        settings.setValue(key, Cipher(Cipher::settingsKey()).encryptText(text));
    } else {
        settings.setValue(key, Cipher(Cipher::settingsKey()).encryptText(text));
    }
    if (wasInStore)
        forgetInStore(key);
}

bool Secrets::place(QString *problem)
{
    const bool strong = strongEncryption();
    if (strong && !state().store) {
        *problem = tr("this system has no secret store");
        return false;
    }
    bool placed = true;
    const QStringList keys = QSettings().value(KnownKeys).toStringList();
    for (const QString &key : keys) {
        const QString secret = read(key);
        if (secret.isEmpty())
            continue;
        write(key, secret);
        if (strong && QSettings().value(key).toByteArray() != InStore)
            placed = false;
    }
    if (!placed)
        *problem = tr("the secret store did not take them");
    return placed;
}
