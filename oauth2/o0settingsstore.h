#pragma once

#include "o0abstractstore.h"

#include <QByteArray>

#include <functional>

// Keeps each token at the top level of the application settings, as every other key,
// enciphered: the tokens give access to the user's data and must not be readable from the
// settings file at a glance.
class O0SettingsStore final : public O0AbstractStore
{
    Q_OBJECT

public:
    using Encipher = std::function<QByteArray(const QString &)>;
    using Decipher = std::function<QString(const QByteArray &)>;

    O0SettingsStore(Encipher encipher, Decipher decipher, QObject *parent = nullptr);

    // Moves the keys that an earlier version kept in a group of their own to the top level,
    // once; a key already at the top level wins.
    static void moveFromGroup(const QString &group);

    QString value(const QString &key, const QString &defaultValue = QString()) override;
    void setValue(const QString &key, const QString &value) override;

private:
    Encipher m_encipher;
    Decipher m_decipher;
};
