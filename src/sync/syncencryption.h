#pragma once

#include "sync/encryptionheader.h"
#include "sync/sealkey.h"
#include "sync/syncpayload.h"

#include <QCoreApplication>
#include <QHash>
#include <QVariantMap>

class Cipher;

// How the sync engine encodes what it puts online and reads what it finds there, by the
// settings: compressed, encrypted with the compatible cipher, or sealed with strong encryption.
// With strong encryption a run first reads (or writes) the header that every computer derives
// its key under; this class says which of those steps a run needs and keeps the keys, the
// engine makes the calls.
class SyncEncryption final
{
    Q_DECLARE_TR_FUNCTIONS(SyncEncryption)

public:
    enum class Step { Ready, DownloadHeader, UploadHeader, Failed };

    // EncryptData, StrongEncryption, Passphrase and PreviousPassphrase, as plain text.
    void configure(const QVariantMap &settings);
    bool isStrong() const { return m_strong; }

    // A run starts: whether the header is online, and whether the run re-encodes everything
    // (reading the old form once, also when strong encryption was just switched off).
    Step begin(bool headerOnline, bool reencoding);
    Step headerArrived(const QByteArray &json);
    QByteArray headerToUpload() const { return m_header.toJson(); }
    // Why the run cannot go on (Step::Failed), as the status shows it.
    QString failure() const { return m_failure; }

    // The hash online names carry for content with this plain SHA-256.
    QString nameHash(const QString &contentHash) const;
    QByteArray encodeModel(const QByteArray &document, const QString &name) const;
    QByteArray encodeFile(const QByteArray &bytes, const QString &name) const;
    // What reads downloads: while re-encoding, every form and the key files were sealed with.
    SyncPayload::Keys keys(bool reencoding) const;

private:
    Step fail(const QString &text);
    SealKey keyFor(const QString &passphrase, const EncryptionHeader &header);
    quint64 cipherKey(const QString &passphrase) const;
    // The compatible cipher for uploads; none when encryption is off or has no pass phrase.
    Cipher *compatibleCipher(Cipher &cipher) const;

    bool m_encrypt = false;
    bool m_strong = false;
    QString m_passphrase;
    QString m_previousPassphrase;
    EncryptionHeader m_header;
    // Seals what goes up; opens what comes down, but for files sealed under the pass phrase
    // before it changed, which m_openKey opens while they are re-encoded.
    SealKey m_sealKey;
    SealKey m_openKey;
    // Argon2id takes a good part of a second: each pass phrase and salt once per process.
    QHash<QByteArray, SealKey> m_derived;
    QString m_failure;
};
