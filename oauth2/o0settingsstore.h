#pragma once

#include "o0abstractstore.h"

#include <QByteArray>

#include <functional>

// Keeps each token in the application settings, enciphered: the tokens give access to the
// user's data and must not be readable from the settings file at a glance.
class O0SettingsStore final : public O0AbstractStore
{
    Q_OBJECT

public:
    using Encipher = std::function<QByteArray(const QString &)>;
    using Decipher = std::function<QString(const QByteArray &)>;

    // group: the settings group the keys live in.
    O0SettingsStore(const QString &group, Encipher encipher, Decipher decipher,
                    QObject *parent = nullptr);

    QString value(const QString &key, const QString &defaultValue = QString()) override;
    void setValue(const QString &key, const QString &value) override;

private:
    QString m_group;
    Encipher m_encipher;
    Decipher m_decipher;
};
