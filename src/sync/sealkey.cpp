#include "sync/sealkey.h"

#include "sync/encryptionheader.h"

#include <sodium.h>

#include <array>

namespace {

using Bytes = std::array<unsigned char, 32>;

enum Subkey : quint64 { SealSubkey = 1, NameSubkey = 2, CheckSubkey = 3 };
const char Context[crypto_kdf_CONTEXTBYTES + 1] = "Velmorin";
constexpr size_t NonceSize = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr size_t TagSize = crypto_aead_xchacha20poly1305_ietf_ABYTES;

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

QByteArray associatedData(const QString &name)
{
    return SealKey::Marker + name.toUtf8();
}

} // namespace

struct SealKey::Keys
{
    ~Keys()
    {
        sodium_memzero(seal.data(), seal.size());
        sodium_memzero(name.data(), name.size());
    }
    Bytes seal{};
    Bytes name{};
    QByteArray check;
};

SealKey SealKey::derive(const QString &passphrase, const EncryptionHeader &header)
{
    if (sodium_init() < 0 || header.salt.size() != crypto_pwhash_SALTBYTES)
        return {};
    const QByteArray text = passphrase.toUtf8();
    Bytes master{};
    if (crypto_pwhash(master.data(), master.size(), text.constData(), size_t(text.size()),
                      bytes(header.salt), header.opsLimit, size_t(header.memLimit),
                      crypto_pwhash_ALG_ARGON2ID13) != 0)
        return {};
    auto keys = std::make_shared<Keys>();
    Bytes checkKey{};
    crypto_kdf_derive_from_key(keys->seal.data(), keys->seal.size(), SealSubkey, Context,
                               master.data());
    crypto_kdf_derive_from_key(keys->name.data(), keys->name.size(), NameSubkey, Context,
                               master.data());
    crypto_kdf_derive_from_key(checkKey.data(), checkKey.size(), CheckSubkey, Context,
                               master.data());
    keys->check.resize(16);
    crypto_generichash(bytes(keys->check), size_t(keys->check.size()), checkKey.data(),
                       checkKey.size(), nullptr, 0);
    sodium_memzero(master.data(), master.size());
    sodium_memzero(checkKey.data(), checkKey.size());
    SealKey key;
    key.m_keys = std::move(keys);
    return key;
}

QByteArray SealKey::check() const
{
    return m_keys ? m_keys->check : QByteArray();
}

QString SealKey::nameHash(const QString &contentHash) const
{
    if (!m_keys)
        return {};
    const QByteArray text = contentHash.toUtf8();
    QByteArray hash(32, Qt::Uninitialized);
    crypto_generichash(bytes(hash), size_t(hash.size()), bytes(text), size_t(text.size()),
                       m_keys->name.data(), m_keys->name.size());
    return QString::fromLatin1(hash.toHex());
}

QByteArray SealKey::seal(const QByteArray &plain, const QString &name) const
{
    if (!m_keys)
        return {};
    const QByteArray data = associatedData(name);
    QByteArray sealed = Marker;
    const qsizetype start = sealed.size();
    sealed.resize(start + qsizetype(NonceSize) + plain.size() + qsizetype(TagSize));
    unsigned char *nonce = bytes(sealed) + start;
    randombytes_buf(nonce, NonceSize);
    crypto_aead_xchacha20poly1305_ietf_encrypt(
        nonce + NonceSize, nullptr, bytes(plain), size_t(plain.size()), bytes(data),
        size_t(data.size()), nullptr, nonce, m_keys->seal.data());
    return sealed;
}

bool SealKey::open(const QByteArray &sealed, const QString &name, QByteArray *plain) const
{
    const qsizetype overhead = Marker.size() + qsizetype(NonceSize + TagSize);
    if (!m_keys || sealed.size() < overhead || !sealed.startsWith(Marker))
        return false;
    const QByteArray data = associatedData(name);
    const unsigned char *nonce = bytes(sealed) + Marker.size();
    QByteArray opened(sealed.size() - overhead, Qt::Uninitialized);
    if (crypto_aead_xchacha20poly1305_ietf_decrypt(
            bytes(opened), nullptr, nullptr, nonce + NonceSize,
            size_t(sealed.size() - Marker.size()) - NonceSize, bytes(data), size_t(data.size()),
            nonce, m_keys->seal.data()) != 0)
        return false;
    *plain = opened;
    return true;
}
