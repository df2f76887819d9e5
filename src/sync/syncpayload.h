#pragma once

#include "sync/sealkey.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

class Cipher;

// The files that sync puts online: their names, which let computers find each other's files
// and tell old from new without an index, and their bodies, compressed and, when the user
// asks for it, encrypted under the pass phrase, or sealed under it with strong encryption.
namespace SyncPayload {

inline const QByteArray EncryptedMarker = QByteArrayLiteral("|ENCRYPTED|");

enum class Form { Sealed, Encrypted, CompressedPlain, Plain };
Form formOf(const QByteArray &body);

// "History.json" with its content hash: "History#<hash>.json".
QString modelFileName(const QString &localFileName, const QString &hash);
// The base ("History") and the hash of an online model file name; false (and the log line)
// when the name does not have exactly one ".".
bool parseModelFileName(const QString &name, QString *base, QString *hash);
// "action_<created yyyyMMddThhmmss>_<file name>"; a missing creation time counts as 2020-01-01.
QString actionFileName(const QDateTime &created, const QString &localFileName);
// "image_<image file name>".
QString imageFileName(const QString &localFileName);
// The three "_" parts of a downloaded action or image name; none (and the log line) otherwise.
QStringList downloadParts(const QString &name);
// The local file name inside an online action or image name: the parts from the third on.
QString localFileName(const QString &name);

// A model document as it goes online: compressed, then encrypted when a cipher is given.
QByteArray encodeModel(const QByteArray &document, Cipher *cipher);
// Action and image files: encrypted when a cipher is given, else as they are.
QByteArray encodeFile(const QByteArray &bytes, Cipher *cipher);
// The strong forms: compressed and sealed, or sealed, under the file's online name.
QByteArray sealModel(const QByteArray &document, const SealKey &key, const QString &name);
QByteArray sealFile(const QByteArray &bytes, const SealKey &key, const QString &name);

// The keys to read files with: the pass phrase's, the one before it (0: none), and with strong
// encryption on, the sealing key, which then admits only sealed files.
struct Keys
{
    Keys(quint64 current = 0, quint64 previous = 0) : current(current), previous(previous) {}
    quint64 current;
    quint64 previous;
    SealKey sealed;
    bool onlySealed = false;
};

enum class Result {
    Ok,
    DecryptionFailed,
    Failed,
    // Sealed, but not under this key and name: changed or damaged since it was sealed.
    Tampered,
    // Sealed while strong encryption is off here.
    SealedWithoutKey,
    // Not sealed while strong encryption admits only sealed files.
    NotSealed,
};

// A downloaded model file's document, in any of the forms; name: its online name.
QByteArray decodeModel(const QByteArray &body, const QString &name, const Keys &keys,
                       Result *result);
// A downloaded action or image file: decrypted or opened when it carries a marker.
QByteArray decodeFile(const QByteArray &body, const QString &name, const Keys &keys,
                      Result *result);

// The keys of the pass phrases stored in the settings.
Keys storedKeys();

} // namespace SyncPayload
