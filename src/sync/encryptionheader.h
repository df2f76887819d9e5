#pragma once

#include <QByteArray>
#include <QString>

// What strong encryption keeps online beside the files, in "Encryption.json": the salt and the
// Argon2id limits with which every computer derives the same key from the pass phrase, and a
// check value that tells a wrong pass phrase from a damaged file. None of it is secret.
struct EncryptionHeader
{
    static inline const QString FileName = QStringLiteral("Encryption.json");

    // A random salt and libsodium's moderate limits; the check is the key's, once derived.
    static EncryptionHeader create();
    // Invalid, with the reason in error, for anything but a header as this program writes it.
    // Limits above the moderate ones are refused: a hostile header must not make every
    // computer spend gigabytes on the derivation.
    static EncryptionHeader fromJson(const QByteArray &json, QString *error);
    QByteArray toJson() const;
    bool isValid() const { return !salt.isEmpty(); }

    QByteArray salt;
    quint64 opsLimit = 0;
    quint64 memLimit = 0;
    QByteArray check;
};
