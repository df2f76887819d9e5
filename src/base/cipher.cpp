#include "base/cipher.h"

#include <QCryptographicHash>
#include <QDebug>
#include <QRandomGenerator>
#include <QtEndian>

namespace {

enum Flag : char { CompressedFlag = 0x01, ChecksumFlag = 0x02, HashFlag = 0x04 };
constexpr char Version = 3;
constexpr int HashSize = 20;

QByteArray checksumBytes(const QByteArray &data)
{
    QByteArray bytes(2, Qt::Uninitialized);
    qToBigEndian(qChecksum(data), bytes.data());
    return bytes;
}

QByteArray sha1(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha1);
}

} // namespace

quint64 Cipher::keyFromText(const QByteArray &text)
{
    return sha1(text).toHex().left(16).toULongLong(nullptr, 16);
}

QByteArray Cipher::uncompress(const QByteArray &compressed)
{
    if (compressed.size() < 4)
        return {};
    const quint32 claimed = qFromBigEndian<quint32>(compressed.constData());
    if (claimed > quint64(compressed.size() - 4) * 1032 + 64)
        return {};
    return qUncompress(compressed);
}

quint64 Cipher::settingsKey()
{
    return keyFromText(QByteArrayLiteral("VuoriTaskuOja"));
}

void Cipher::applyKey(QByteArray &block, bool enciphering) const
{
    char chain = 0;
    for (qsizetype p = 0; p < block.size(); ++p) {
        const char keyByte = char(m_key >> (8 * (p % 8)));
        const char stored = block.at(p);
        block[p] = char(stored ^ chain ^ keyByte);
        // The chain follows the enciphered byte in both directions.
        chain = enciphering ? block.at(p) : stored;
    }
}

QByteArray Cipher::encrypt(const QByteArray &plain)
{
    if (m_key == 0) {
        qWarning() << "No key set.";
        m_lastError = NoKeySet;
        return {};
    }
    QByteArray data = plain;
    char flags = 0;
    if (m_compression != CompressNever) {
        const QByteArray compressed = qCompress(plain, 9);
        if (m_compression == CompressAlways || compressed.size() < plain.size()) {
            data = compressed;
            flags |= CompressedFlag;
        }
    }
    QByteArray integrity;
    if (m_protection == ProtectChecksum) {
        flags |= ChecksumFlag;
        integrity = checksumBytes(data);
    } else if (m_protection == ProtectHash) {
        flags |= HashFlag;
        integrity = sha1(data);
    }
    const quint8 random = m_random ? m_random() : quint8(QRandomGenerator::global()->bounded(256));
    QByteArray block = char(random) + integrity + data;
    applyKey(block, true);
    m_lastError = NoError;
    return QByteArray(1, Version) + char(flags) + block;
}

QByteArray Cipher::decrypt(const QByteArray &cipherText)
{
    if (m_key == 0) {
        qWarning() << "No key set.";
        m_lastError = NoKeySet;
        return {};
    }
    if (cipherText.isEmpty()) {
        m_lastError = UnknownVersion;
        return {};
    }
    if (cipherText.at(0) != Version) {
        qWarning() << "Invalid version or not a cyphertext.";
        m_lastError = UnknownVersion;
        return {};
    }
    const char flags = cipherText.size() > 1 ? cipherText.at(1) : char(0);
    QByteArray block = cipherText.mid(2);
    applyKey(block, false);
    QByteArray data = block.mid(1);
    const auto fails = [this] {
        m_lastError = IntegrityFailed;
        return QByteArray();
    };
    if (flags & ChecksumFlag) {
        if (data.size() < 2)
            return fails();
        const quint16 stored = qFromBigEndian<quint16>(data.constData());
        data.remove(0, 2);
        if (stored != qChecksum(data))
            return fails();
    } else if (flags & HashFlag) {
        if (data.size() < HashSize)
            return fails();
        const QByteArray stored = data.left(HashSize);
        data.remove(0, HashSize);
        if (stored != sha1(data))
            return fails();
    }
    if (flags & CompressedFlag)
        data = uncompress(data);
    m_lastError = NoError;
    return data;
}
