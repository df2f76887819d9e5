#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

class Cipher;

// The files that sync puts online: their names, which let computers find each other's files
// and tell old from new without an index, and their bodies, compressed and, when the user
// asks for it, encrypted under the pass phrase.
namespace SyncPayload {

inline const QByteArray EncryptedMarker = QByteArrayLiteral("|ENCRYPTED|");

enum class Form { Encrypted, CompressedPlain, Plain };
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

// The keys to read encrypted files with: the pass phrase's, and the one before it (0: none).
struct Keys
{
    quint64 current = 0;
    quint64 previous = 0;
};

enum class Result { Ok, DecryptionFailed, Failed };

// A downloaded model file's document, in any of the three forms.
QByteArray decodeModel(const QByteArray &body, const Keys &keys, Result *result);
// A downloaded action or image file: decrypted when it carries the marker.
QByteArray decodeFile(const QByteArray &body, const Keys &keys, Result *result);

// The keys of the pass phrases stored in the settings.
Keys storedKeys();

} // namespace SyncPayload
