#include "sync/encryptionheader.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <sodium.h>

namespace {

constexpr int Version = 1;
const QString Algorithm = QStringLiteral("argon2id13");
constexpr qsizetype CheckSize = 16;

bool within(quint64 value, quint64 low, quint64 high)
{
    return value >= low && value <= high;
}

} // namespace

EncryptionHeader EncryptionHeader::create()
{
    if (sodium_init() < 0)
        return {};
    EncryptionHeader header;
    header.salt.resize(crypto_pwhash_SALTBYTES);
    randombytes_buf(header.salt.data(), size_t(header.salt.size()));
    header.opsLimit = crypto_pwhash_OPSLIMIT_MODERATE;
    header.memLimit = crypto_pwhash_MEMLIMIT_MODERATE;
    return header;
}

EncryptionHeader EncryptionHeader::fromJson(const QByteArray &json, QString *error)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    EncryptionHeader header;
    header.salt = QByteArray::fromBase64(object.value(QLatin1String("salt")).toString().toLatin1());
    header.check =
        QByteArray::fromBase64(object.value(QLatin1String("check")).toString().toLatin1());
    header.opsLimit = quint64(object.value(QLatin1String("opslimit")).toInteger());
    header.memLimit = quint64(object.value(QLatin1String("memlimit")).toInteger());
    const bool ours = object.value(QLatin1String("version")).toInt() == Version &&
                      object.value(QLatin1String("kdf")).toString() == Algorithm;
    const bool sizes =
        header.salt.size() == crypto_pwhash_SALTBYTES && header.check.size() == CheckSize;
    const bool limits =
        within(header.opsLimit, crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_OPSLIMIT_SENSITIVE) &&
        within(header.memLimit, crypto_pwhash_MEMLIMIT_MIN, crypto_pwhash_MEMLIMIT_MODERATE);
    if (ours && sizes && limits)
        return header;
    if (error)
        *error = !ours    ? QStringLiteral("not a header of this version")
                 : !sizes ? QStringLiteral("salt or check of the wrong size")
                          : QStringLiteral("key derivation limits out of range");
    return {};
}

QByteArray EncryptionHeader::toJson() const
{
    const QJsonObject object{{QLatin1String("version"), Version},
                             {QLatin1String("kdf"), Algorithm},
                             {QLatin1String("opslimit"), qint64(opsLimit)},
                             {QLatin1String("memlimit"), qint64(memLimit)},
                             {QLatin1String("salt"), QString::fromLatin1(salt.toBase64())},
                             {QLatin1String("check"), QString::fromLatin1(check.toBase64())}};
    return QJsonDocument(object).toJson();
}
