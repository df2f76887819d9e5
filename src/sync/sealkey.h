#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct EncryptionHeader;

// The keys of strong encryption. One master key is derived from the pass phrase with Argon2id
// under the header's salt; from it, one key seals the files (XChaCha20-Poly1305), one hashes the
// content in online names (keyed BLAKE2b), and one gives the header's check value.
class SealKey final
{
public:
    // "|SEALED|" and a version byte start every sealed file; the old cipher's "|ENCRYPTED|"
    // never does.
    static inline const QByteArray Marker = QByteArrayLiteral("|SEALED|\x01");

    SealKey() = default;
    // Invalid when the derivation fails (libsodium unusable, or out of memory).
    static SealKey derive(const QString &passphrase, const EncryptionHeader &header);
    bool isValid() const { return bool(m_keys); }

    // What the header keeps to recognise this key: 16 bytes.
    QByteArray check() const;
    // Stands in online names for the content's plain SHA-256, so that only holders of the pass
    // phrase see which files are equal. Equal content still gives equal names.
    QString nameHash(const QString &contentHash) const;
    // Bound to the online name: the file cannot be changed, nor moved to another name, unnoticed.
    QByteArray seal(const QByteArray &plain, const QString &name) const;
    // False when the file was changed or damaged, or sealed under another key or name.
    bool open(const QByteArray &sealed, const QString &name, QByteArray *plain) const;

private:
    struct Keys;
    std::shared_ptr<const Keys> m_keys;
};
