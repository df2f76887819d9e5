#include "sync/syncencryption.h"

#include "base/cipher.h"
#include "base/settings.h"

#include <QCryptographicHash>
#include <QDebug>

void SyncEncryption::configure(const QVariantMap &settings)
{
    m_encrypt = settings.value(QLatin1String(SettingsKey::EncryptData)).toBool();
    m_strong = settings.value(QLatin1String(SettingsKey::StrongEncryption)).toBool();
    m_passphrase = settings.value(QLatin1String(SettingsKey::Passphrase)).toString();
    m_previousPassphrase =
        settings.value(QLatin1String(SettingsKey::PreviousPassphrase)).toString();
}

SyncEncryption::Step SyncEncryption::begin(bool headerOnline, bool reencoding)
{
    m_sealKey = m_openKey = SealKey();
    m_failure.clear();
    if (!m_strong)
        return headerOnline && reencoding && !m_passphrase.isEmpty() ? Step::DownloadHeader
                                                                     : Step::Ready;
    if (m_passphrase.isEmpty())
        return fail(tr("Strong encryption needs a pass phrase."));
    if (headerOnline)
        return Step::DownloadHeader;
    m_header = EncryptionHeader::create();
    m_sealKey = m_openKey = keyFor(m_passphrase, m_header);
    if (!m_sealKey.isValid())
        return fail(tr("The encryption key could not be made."));
    m_header.check = m_sealKey.check();
    return Step::UploadHeader;
}

SyncEncryption::Step SyncEncryption::headerArrived(const QByteArray &json)
{
    QString error;
    const EncryptionHeader header = EncryptionHeader::fromJson(json, &error);
    if (!header.isValid()) {
        qWarning().noquote() << "Sync: The encryption header is unreadable:" << error;
        return fail(tr("The encryption header online cannot be read."));
    }
    const SealKey key = keyFor(m_passphrase, header);
    if (key.isValid() && key.check() == header.check) {
        m_header = header;
        m_sealKey = m_openKey = key;
        return Step::Ready;
    }
    const SealKey previous =
        m_previousPassphrase.isEmpty() ? SealKey() : keyFor(m_previousPassphrase, header);
    if (!previous.isValid() || previous.check() != header.check)
        return fail(tr("Wrong pass phrase: it does not open what the other computers sealed."));
    // The pass phrase changed here: what is online opens with the one before, and goes up
    // again under a new header with the new one.
    m_openKey = previous;
    if (!m_strong)
        return Step::Ready;
    m_header = EncryptionHeader::create();
    m_sealKey = keyFor(m_passphrase, m_header);
    m_header.check = m_sealKey.check();
    return m_sealKey.isValid() ? Step::UploadHeader
                               : fail(tr("The encryption key could not be made."));
}

QString SyncEncryption::nameHash(const QString &contentHash) const
{
    return m_strong ? m_sealKey.nameHash(contentHash) : contentHash;
}

QByteArray SyncEncryption::encodeModel(const QByteArray &document, const QString &name) const
{
    if (m_strong)
        return SyncPayload::sealModel(document, m_sealKey, name);
    Cipher cipher(cipherKey(m_passphrase));
    return SyncPayload::encodeModel(document, compatibleCipher(cipher));
}

QByteArray SyncEncryption::encodeFile(const QByteArray &bytes, const QString &name) const
{
    if (m_strong)
        return SyncPayload::sealFile(bytes, m_sealKey, name);
    Cipher cipher(cipherKey(m_passphrase));
    return SyncPayload::encodeFile(bytes, compatibleCipher(cipher));
}

SyncPayload::Keys SyncEncryption::keys(bool reencoding) const
{
    SyncPayload::Keys keys(cipherKey(m_passphrase), cipherKey(m_previousPassphrase));
    keys.sealed = reencoding ? m_openKey : m_sealKey;
    keys.onlySealed = m_strong && !reencoding;
    return keys;
}

SyncEncryption::Step SyncEncryption::fail(const QString &text)
{
    m_failure = text;
    return Step::Failed;
}

SealKey SyncEncryption::keyFor(const QString &passphrase, const EncryptionHeader &header)
{
    QCryptographicHash id(QCryptographicHash::Sha256);
    id.addData(passphrase.toUtf8());
    id.addData(header.salt);
    id.addData(QByteArray::number(header.opsLimit) + ':' + QByteArray::number(header.memLimit));
    const QByteArray cacheKey = id.result();
    auto cached = m_derived.constFind(cacheKey);
    if (cached != m_derived.constEnd())
        return *cached;
    const SealKey key = SealKey::derive(passphrase, header);
    if (key.isValid())
        m_derived.insert(cacheKey, key);
    return key;
}

Cipher *SyncEncryption::compatibleCipher(Cipher &cipher) const
{
    if (!m_encrypt)
        return nullptr;
    if (!cipher.key())
        qWarning() << "Encryption is on but no pass phrase is set; uploading unencrypted";
    return cipher.key() ? &cipher : nullptr;
}

quint64 SyncEncryption::cipherKey(const QString &passphrase) const
{
    return passphrase.isEmpty() ? 0 : Cipher::keyFromText(passphrase);
}
