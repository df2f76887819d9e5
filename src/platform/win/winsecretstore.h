#pragma once

#include "base/isecretstore.h"

// The Windows Credential Manager: each secret a generic credential named "Velmorin/<key>".
class WinSecretStore final : public ISecretStore
{
public:
    bool read(const QString &key, QString *secret, QString *error) override;
    bool write(const QString &key, const QString &secret, QString *error) override;
    bool remove(const QString &key, QString *error) override;
};
