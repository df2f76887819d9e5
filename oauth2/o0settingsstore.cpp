#include "o0settingsstore.h"

#include <QSettings>

O0SettingsStore::O0SettingsStore(const QString &group, Encipher encipher, Decipher decipher,
                                 QObject *parent)
    : O0AbstractStore(parent), m_group(group), m_encipher(std::move(encipher)),
      m_decipher(std::move(decipher))
{}

QString O0SettingsStore::value(const QString &key, const QString &defaultValue)
{
    QSettings settings;
    settings.beginGroup(m_group);
    const QByteArray stored = settings.value(key).toByteArray();
    if (stored.isEmpty())
        return defaultValue;
    return m_decipher(stored);
}

void O0SettingsStore::setValue(const QString &key, const QString &value)
{
    QSettings settings;
    settings.beginGroup(m_group);
    if (value.isEmpty())
        settings.remove(key);
    else
        settings.setValue(key, m_encipher(value));
}
