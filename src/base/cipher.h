#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

// The cipher of sync payloads and of secrets kept in the settings: a 64-bit key, a chained
// XOR over the data with a random first byte, an optional CRC-16 or SHA-1 to detect damage,
// and optional compression. Its format (version 3) must stay byte for byte as it is, or files
// already online become unreadable. It hides content from a casual look; it is not modern
// authenticated encryption.
class Cipher final
{
public:
    enum CompressionMode { CompressAuto = 0, CompressAlways = 1, CompressNever = 2 };
    enum ProtectionMode { ProtectNone = 0, ProtectChecksum = 1, ProtectHash = 2 };
    enum Error { NoError = 0, NoKeySet = 1, UnknownVersion = 2, IntegrityFailed = 3 };

    explicit Cipher(quint64 key = 0) : m_key(key) {}

    // The first 16 hex digits of the SHA-1 of the bytes, as a number.
    static quint64 keyFromText(const QByteArray &text);
    static quint64 keyFromText(const QString &text) { return keyFromText(text.toUtf8()); }
    // The key of secrets stored in the settings.
    static quint64 settingsKey();
    // qUncompress for data from outside: a length prefix that no deflate stream of this size
    // could reach (deflate packs at most 1032:1) is refused before anything is allocated.
    static QByteArray uncompress(const QByteArray &compressed);

    quint64 key() const { return m_key; }
    void setKey(quint64 key) { m_key = key; }
    void setCompressionMode(CompressionMode mode) { m_compression = mode; }
    void setProtectionMode(ProtectionMode mode) { m_protection = mode; }
    Error lastError() const { return m_lastError; }
    // Where the random first byte comes from; tests pin it to check the format.
    void setRandomSource(std::function<quint8()> source) { m_random = std::move(source); }

    QByteArray encrypt(const QByteArray &plain);
    // Empty on failure, with lastError() telling why.
    QByteArray decrypt(const QByteArray &cipherText);
    QByteArray encryptText(const QString &plain) { return encrypt(plain.toUtf8()); }
    QString decryptText(const QByteArray &cipherText)
    {
        return QString::fromUtf8(decrypt(cipherText));
    }

private:
    void applyKey(QByteArray &block, bool enciphering) const;

    quint64 m_key;
    CompressionMode m_compression = CompressAuto;
    ProtectionMode m_protection = ProtectChecksum;
    Error m_lastError = NoError;
    std::function<quint8()> m_random;
};
