#pragma once

#include <QString>

// The system's store of secrets: the Secret Service or KWallet on Linux, the Credential Manager
// on Windows. Every call answers before it returns; error tells what went wrong, and is empty
// when a read finds no secret under the key.
class ISecretStore
{
public:
    virtual ~ISecretStore() = default;

    virtual bool read(const QString &key, QString *secret, QString *error) = 0;
    virtual bool write(const QString &key, const QString &secret, QString *error) = 0;
    // Succeeds also when there was nothing under the key.
    virtual bool remove(const QString &key, QString *error) = 0;
};
