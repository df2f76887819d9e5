#pragma once

#include "o0abstractstore.h"

// Keeps the Google tokens as the program's other secrets: in the system's secret store with
// strong encryption on, enciphered in the settings otherwise (see Secrets).
class TokenStore final : public O0AbstractStore
{
    Q_OBJECT

public:
    using O0AbstractStore::O0AbstractStore;

    QString value(const QString &key, const QString &defaultValue = QString()) override;
    void setValue(const QString &key, const QString &value) override;
};
