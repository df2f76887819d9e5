#pragma once

#include "base/isecretstore.h"

// The Secret Service (or KWallet) through QtKeychain, under the service name "Velmorin".
class KeychainSecretStore final : public ISecretStore
{
public:
    bool read(const QString &key, QString *secret, QString *error) override;
    bool write(const QString &key, const QString &secret, QString *error) override;
    bool remove(const QString &key, QString *error) override;
};
