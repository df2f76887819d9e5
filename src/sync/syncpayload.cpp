#include "sync/syncpayload.h"

#include "base/cipher.h"
#include "base/settings.h"
#include "synclog.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

namespace SyncPayload {

namespace {

constexpr qint32 SnippetMagic = qint32(0xFEED0001);
constexpr qint32 HistoryMagic = qint32(0xFEED0002);

void log(const QString &line)
{
    SyncLog::write(line);
}

bool isPlainDocument(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        return false;
    const qint32 magic = qint32(document.object().value(QLatin1String("magic")).toInteger());
    return magic == SnippetMagic || magic == HistoryMagic;
}

// The bytes behind the marker, with the pass phrase's key or else the previous one.
QByteArray decrypt(const QByteArray &body, const Keys &keys)
{
    log(QStringLiteral("Sync: Decrypting the payload"));
    const QByteArray cipherText = body.mid(EncryptedMarker.size());
    Cipher cipher(keys.current);
    QByteArray plain = keys.current ? cipher.decrypt(cipherText) : QByteArray();
    if (plain.isEmpty() && keys.previous) {
        qDebug() << "Passphrase hash" << keys.previous;
        qDebug() << "Decrypt old key";
        cipher.setKey(keys.previous);
        plain = cipher.decrypt(cipherText);
    }
    if (plain.isEmpty())
        log(QStringLiteral("Sync: Decrypt failed"));
    return plain;
}

QByteArray encrypt(const QByteArray &bytes, Cipher *cipher)
{
    log(QStringLiteral("Sync: Encrypting the payload"));
    return EncryptedMarker + cipher->encrypt(bytes);
}

// A sealed body's plain bytes; the result says why there are none.
QByteArray open(const QByteArray &body, const QString &name, const Keys &keys, Result *result)
{
    QByteArray plain;
    if (!keys.sealed.isValid()) {
        log(QStringLiteral("Sync: ") + name +
            QStringLiteral(" is sealed with strong encryption, which is off here"));
        *result = Result::SealedWithoutKey;
    } else if (!keys.sealed.open(body, name, &plain)) {
        log(QStringLiteral("Sync: ") + name + QStringLiteral(" was changed or damaged"));
        *result = Result::Tampered;
    }
    return plain;
}

// Strong encryption admits nothing else: anyone who can write to the target could put
// content there otherwise.
bool refuseUnsealed(const QString &name, const Keys &keys, Result *result)
{
    if (!keys.onlySealed)
        return false;
    log(QStringLiteral("Sync: ") + name + QStringLiteral(" is not sealed; refused"));
    *result = Result::NotSealed;
    return true;
}

} // namespace

Form formOf(const QByteArray &body)
{
    if (body.startsWith(SealKey::Marker))
        return Form::Sealed;
    if (body.startsWith(EncryptedMarker))
        return Form::Encrypted;
    return isPlainDocument(body) ? Form::Plain : Form::CompressedPlain;
}

QString modelFileName(const QString &localFileName, const QString &hash)
{
    const qsizetype dot = localFileName.lastIndexOf(QLatin1Char('.'));
    return localFileName.left(dot) + QLatin1Char('#') + hash + localFileName.mid(dot);
}

bool parseModelFileName(const QString &name, QString *base, QString *hash)
{
    const QStringList parts = name.split(QLatin1Char('.'));
    if (parts.size() != 2) {
        qWarning().noquote() << "Filename has incorrect parts: " + name;
        return false;
    }
    const qsizetype mark = parts.first().indexOf(QLatin1Char('#'));
    if (base)
        *base = mark < 0 ? parts.first() : parts.first().left(mark);
    if (hash)
        *hash = mark < 0 ? QString() : parts.first().mid(mark + 1);
    return true;
}

QString actionFileName(const QDateTime &created, const QString &localFileName)
{
    const QDateTime time = created.isValid() ? created : QDateTime(QDate(2020, 1, 1), QTime(0, 0));
    return QStringLiteral("action_") + time.toString(QStringLiteral("yyyyMMdd'T'hhmmss")) +
           QLatin1Char('_') + localFileName;
}

QString imageFileName(const QString &localFileName)
{
    return QStringLiteral("image_") + localFileName;
}

QStringList downloadParts(const QString &name)
{
    const QStringList parts = name.split(QLatin1Char('_'));
    if (parts.size() != 3) {
        log(QStringLiteral("Sync: Incorrect filename format for ") + name);
        return {};
    }
    return parts;
}

QString localFileName(const QString &name)
{
    const QStringList parts = name.split(QLatin1Char('_'));
    if (parts.size() <= 2) {
        qWarning().noquote() << "File name has too few parts" << name;
        return {};
    }
    return parts.mid(2).join(QLatin1Char('_'));
}

QByteArray encodeModel(const QByteArray &document, Cipher *cipher)
{
    const QByteArray compressed = qCompress(document);
    return cipher ? encrypt(compressed, cipher) : compressed;
}

QByteArray encodeFile(const QByteArray &bytes, Cipher *cipher)
{
    return cipher ? encrypt(bytes, cipher) : bytes;
}

QByteArray sealModel(const QByteArray &document, const SealKey &key, const QString &name)
{
    return key.seal(qCompress(document), name);
}

QByteArray sealFile(const QByteArray &bytes, const SealKey &key, const QString &name)
{
    return key.seal(bytes, name);
}

QByteArray decodeModel(const QByteArray &body, const QString &name, const Keys &keys,
                       Result *result)
{
    *result = Result::Ok;
    const Form form = formOf(body);
    if (form != Form::Sealed && refuseUnsealed(name, keys, result))
        return {};
    switch (form) {
    case Form::Sealed: {
        log(QStringLiteral("Sync: Downloaded data is compressed and sealed"));
        const QByteArray compressed = open(body, name, keys, result);
        const QByteArray document =
            compressed.isEmpty() ? QByteArray() : Cipher::uncompress(compressed);
        if (*result == Result::Ok && document.isEmpty())
            *result = Result::Failed;
        return document;
    }
    case Form::Encrypted: {
        log(QStringLiteral("Sync: Downloaded data is compressed and encrypted"));
        const QByteArray compressed = decrypt(body, keys);
        const QByteArray document =
            compressed.isEmpty() ? QByteArray() : Cipher::uncompress(compressed);
        if (!compressed.isEmpty() && document.isEmpty())
            log(QStringLiteral("Sync: Uncompress after decrypt failed"));
        if (document.isEmpty())
            *result = Result::DecryptionFailed;
        return document;
    }
    case Form::Plain:
        log(QStringLiteral("Sync: Downloaded data is plain text"));
        return body;
    case Form::CompressedPlain:
        break;
    }
    log(QStringLiteral("Sync: Downloaded data is compressed plain text"));
    const QByteArray document = Cipher::uncompress(body);
    if (document.isEmpty())
        *result = Result::Failed;
    return document;
}

QByteArray decodeFile(const QByteArray &body, const QString &name, const Keys &keys, Result *result)
{
    *result = Result::Ok;
    if (body.startsWith(SealKey::Marker))
        return open(body, name, keys, result);
    if (refuseUnsealed(name, keys, result))
        return {};
    if (!body.startsWith(EncryptedMarker))
        return body;
    const QByteArray plain = decrypt(body, keys);
    if (plain.isEmpty())
        *result = Result::DecryptionFailed;
    return plain;
}

Keys storedKeys()
{
    const QString current = Settings::secret(SettingsKey::Passphrase);
    const QString previous = Settings::secret(SettingsKey::PreviousPassphrase);
    return {current.isEmpty() ? 0 : Cipher::keyFromText(current),
            previous.isEmpty() ? 0 : Cipher::keyFromText(previous)};
}

} // namespace SyncPayload
