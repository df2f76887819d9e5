#include "o0settingsstore.h"

#include <QSettings>
#include <QStringList>
#include <QVariantMap>

O0SettingsStore::O0SettingsStore(Encipher encipher, Decipher decipher, QObject *parent)
    : O0AbstractStore(parent), m_encipher(std::move(encipher)), m_decipher(std::move(decipher))
{}

void O0SettingsStore::moveFromGroup(const QString &group)
{
    QSettings settings;
    settings.beginGroup(group);
    const QStringList keys = settings.childKeys();
    QVariantMap values;
    for (const QString &key : keys)
        values.insert(key, settings.value(key));
    settings.endGroup();
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        if (!settings.contains(value.key()))
            settings.setValue(value.key(), value.value());
    }
    settings.remove(group);
}

QString O0SettingsStore::value(const QString &key, const QString &defaultValue)
{
    const QByteArray stored = QSettings().value(key).toByteArray();
    if (stored.isEmpty())
        return defaultValue;
    return m_decipher(stored);
}

void O0SettingsStore::setValue(const QString &key, const QString &value)
{
    QSettings settings;
    if (value.isEmpty())
        settings.remove(key);
    else
        settings.setValue(key, m_encipher(value));
}
