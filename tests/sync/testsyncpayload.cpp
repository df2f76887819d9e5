// What sync puts online, byte for byte: the cipher's format (vectors computed apart from this
// code, so that a change that breaks files already online fails here), the payload forms and
// the online names.
#include "base/cipher.h"
#include "base/isyncmerge.h"
#include "base/settings.h"
#include "support/testprofile.h"
#include "sync/encryptionheader.h"
#include "sync/syncpayload.h"

#include <QSettings>
#include <QTest>

using SyncPayload::Result;

namespace {

Cipher pinned(quint64 key, Cipher::CompressionMode compression, Cipher::ProtectionMode protection,
              quint8 random)
{
    Cipher cipher(key);
    cipher.setCompressionMode(compression);
    cipher.setProtectionMode(protection);
    cipher.setRandomSource([random] { return random; });
    return cipher;
}

// The smallest limits libsodium allows: these tests derive many keys. What sync writes uses the
// moderate ones.
EncryptionHeader quickHeader()
{
    const QByteArray salt = QByteArray(16, 's').toBase64();
    const QByteArray check = QByteArray(16, 'c').toBase64();
    return EncryptionHeader::fromJson(R"({"version": 1, "kdf": "argon2id13", "opslimit": 1,
        "memlimit": 8192, "salt": ")" + salt +
                                          R"(", "check": ")" + check + R"("})",
                                      nullptr);
}

SyncPayload::Keys sealedWith(const SealKey &key, bool onlySealed = true)
{
    SyncPayload::Keys keys;
    keys.sealed = key;
    keys.onlySealed = onlySealed;
    return keys;
}

} // namespace

class TestSyncPayload final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void encryptionIsPinnedByteForByte();
    void damagedOrForeignCipherTextIsRefused();
    void modelPayloadsInEveryForm();
    void filesAreEncryptedAsTheyAre();
    void onlineNames();
    void secretsAreStoredEnciphered();
    void encryptionHeaderRefusesWhatItDoesNotKnow_data();
    void encryptionHeaderRefusesWhatItDoesNotKnow();
    void sealedFilesOpenOnlyAsTheyWereSealed();
    void namesHideEqualityFromOthers();

private:
    TestProfile m_profile;
    const quint64 m_abc = 0xa9993e364706816aULL;
};

void TestSyncPayload::initTestCase()
{
    m_profile.useInThisProcess();
}

void TestSyncPayload::encryptionIsPinnedByteForByte()
{
    Cipher plain = pinned(m_abc, Cipher::CompressNever, Cipher::ProtectNone, 0x00);
    QCOMPARE(plain.encrypt("hi").toHex(), QByteArray("03006a83ec"));
    Cipher checksum = pinned(m_abc, Cipher::CompressNever, Cipher::ProtectChecksum, 0x5a);
    QCOMPARE(checksum.encrypt("123456789").toHex(), QByteArray("03023021493f3b369b075bedd3ad"));
    Cipher hash = pinned(0x735f118563252287ULL, Cipher::CompressNever, Cipher::ProtectHash, 0x01);
    const QByteArray hashed = hash.encryptText(QStringLiteral("Grüße"));
    QCOMPARE(hashed.toHex(),
             QByteArray("030486523e28b0cf8b4ca40aa96207267b3f7b64b1a253052898a342f8fe"));
    QCOMPARE(hash.decryptText(hashed), QStringLiteral("Grüße"));

    // Written by another zlib at level 9; read back through the cipher's own decompression.
    Cipher reader(m_abc);
    QCOMPARE(reader.decrypt(QByteArray::fromHex("0303153106417749e031814b010c746ef25a30733a6f38")),
             QByteArray("abcabcabcabcabcabcabcabcabcabcabcabcabcabcabcabc"));
    QCOMPARE(reader.lastError(), Cipher::NoError);
}

void TestSyncPayload::damagedOrForeignCipherTextIsRefused()
{
    Cipher none;
    QTest::ignoreMessage(QtWarningMsg, "No key set.");
    QVERIFY(none.encrypt("x").isEmpty());
    QCOMPARE(none.lastError(), Cipher::NoKeySet);

    Cipher cipher(m_abc);
    QVERIFY(cipher.decrypt(QByteArray()).isEmpty());
    QCOMPARE(cipher.lastError(), Cipher::UnknownVersion);
    QTest::ignoreMessage(QtWarningMsg, "Invalid version or not a cyphertext.");
    QVERIFY(cipher.decrypt(QByteArray::fromHex("02006a83ec")).isEmpty());
    QCOMPARE(cipher.lastError(), Cipher::UnknownVersion);

    for (const auto protection : {Cipher::ProtectChecksum, Cipher::ProtectHash}) {
        cipher.setProtectionMode(protection);
        QByteArray text = cipher.encrypt("the user's snippets");
        text[text.size() - 3] = char(text.at(text.size() - 3) ^ 0x10);
        QVERIFY(cipher.decrypt(text).isEmpty());
        QCOMPARE(cipher.lastError(), Cipher::IntegrityFailed);
        QVERIFY(cipher.decrypt(text.left(4)).isEmpty());
        QCOMPARE(cipher.lastError(), Cipher::IntegrityFailed);
        Cipher other(m_abc + 1);
        QVERIFY(other.decrypt(cipher.encrypt("the user's snippets")).isEmpty());
    }
}

void TestSyncPayload::modelPayloadsInEveryForm()
{
    const QByteArray document = R"({"magic": -18022398, "version": 8, "clippings": []})";
    Result result = Result::Failed;

    const QByteArray compressed = SyncPayload::encodeModel(document, nullptr);
    QCOMPARE(SyncPayload::formOf(compressed), SyncPayload::Form::CompressedPlain);
    QCOMPARE(SyncPayload::decodeModel(compressed, QString(), {}, &result), document);
    QCOMPARE(result, Result::Ok);

    Cipher cipher(Cipher::keyFromText(QStringLiteral("secret")));
    const QByteArray encrypted = SyncPayload::encodeModel(document, &cipher);
    QVERIFY(encrypted.startsWith("|ENCRYPTED|"));
    QCOMPARE(SyncPayload::decodeModel(encrypted, QString(), {cipher.key(), 0}, &result), document);
    QCOMPARE(result, Result::Ok);

    // Written by hand: taken as it is.
    QCOMPARE(SyncPayload::decodeModel(document, QString(), {}, &result), document);
    QCOMPARE(result, Result::Ok);
    const QByteArray snippets = R"({"magic": -18022399})";
    QCOMPARE(SyncPayload::formOf(snippets), SyncPayload::Form::Plain);

    // A JSON document of anything else is no plain file, and no compressed one either.
    QVERIFY(SyncPayload::decodeModel(R"({"magic": 7})", QString(), {}, &result).isEmpty());
    QCOMPARE(result, Result::Failed);
    QVERIFY(SyncPayload::decodeModel(compressed.left(compressed.size() / 2), QString(), {}, &result)
                .isEmpty());
    QCOMPARE(result, Result::Failed);
    // A length prefix of 2.6 GB ahead of five bytes: refused, not allocated.
    QVERIFY(SyncPayload::decodeModel(QByteArray::fromHex("9b0100015b"), QString(), {}, &result)
                .isEmpty());
    QCOMPARE(result, Result::Failed);
    QVERIFY(
        SyncPayload::decodeModel("|ENCRYPTED|", QString(), {cipher.key(), 0}, &result).isEmpty());
    QCOMPARE(result, Result::DecryptionFailed);
    QVERIFY(SyncPayload::decodeModel(encrypted, QString(), {}, &result).isEmpty());
    QCOMPARE(result, Result::DecryptionFailed);
}

void TestSyncPayload::filesAreEncryptedAsTheyAre()
{
    const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
    Result result = Result::Failed;
    QCOMPARE(SyncPayload::encodeFile(png, nullptr), png);
    QCOMPARE(SyncPayload::decodeFile(png, QString(), {}, &result), png);
    Cipher cipher(Cipher::keyFromText(QStringLiteral("secret")));
    const QByteArray encrypted = SyncPayload::encodeFile(png, &cipher);
    QVERIFY(encrypted.startsWith("|ENCRYPTED|"));
    QCOMPARE(SyncPayload::decodeFile(encrypted, QString(), {cipher.key(), 0}, &result), png);
    QVERIFY(
        SyncPayload::decodeFile(encrypted, QString(), {cipher.key() ^ 1, 0}, &result).isEmpty());
    QCOMPARE(result, Result::DecryptionFailed);
}

void TestSyncPayload::onlineNames()
{
    const QString hash(64, QLatin1Char('a'));
    const QString name = SyncPayload::modelFileName(QStringLiteral("History.json"), hash);
    QCOMPARE(name, QStringLiteral("History#") + hash + QStringLiteral(".json"));
    QString base;
    QString parsed;
    QVERIFY(SyncPayload::parseModelFileName(name, &base, &parsed));
    QCOMPARE(base, QStringLiteral("History"));
    QCOMPARE(parsed, hash);
    QVERIFY(SyncPayload::parseModelFileName(QStringLiteral("Snippets.json"), &base, &parsed));
    QCOMPARE(base, QStringLiteral("Snippets"));
    QVERIFY(parsed.isEmpty());
    QTest::ignoreMessage(QtWarningMsg, "Filename has incorrect parts: History#a.b.json");
    QVERIFY(!SyncPayload::parseModelFileName(QStringLiteral("History#a.b.json"), &base, &parsed));

    const QDateTime created(QDate(2026, 11, 22), QTime(10, 15, 7));
    QCOMPARE(SyncPayload::actionFileName(created, QStringLiteral("1234.json")),
             QStringLiteral("action_20261122T101507_1234.json"));
    QCOMPARE(SyncPayload::actionFileName({}, QStringLiteral("1234.json")),
             QStringLiteral("action_20200101T000000_1234.json"));
    QCOMPARE(SyncPayload::imageFileName(QStringLiteral("{id}_shot.png")),
             QStringLiteral("image_{id}_shot.png"));
    QCOMPARE(SyncPayload::downloadParts(QStringLiteral("image_{id}_shot.png")).size(), 3);
    // Strict on download: an underscore in the local name makes four parts.
    QVERIFY(
        SyncPayload::downloadParts(QStringLiteral("action_20200101T000000_my_a.json")).isEmpty());
    QCOMPARE(SyncPayload::localFileName(QStringLiteral("action_20200101T000000_my_a.json")),
             QStringLiteral("my_a.json"));
}

void TestSyncPayload::secretsAreStoredEnciphered()
{
    Settings::setSecret(SettingsKey::Passphrase, QStringLiteral("correct horse"));
    const QByteArray stored = QSettings().value(QStringLiteral("Passphrase")).toByteArray();
    QVERIFY(!stored.contains("correct horse"));
    QCOMPARE(stored.at(0), char(3));
    QCOMPARE(Cipher(Cipher::settingsKey()).decryptText(stored), QStringLiteral("correct horse"));
    QCOMPARE(Settings::secret(SettingsKey::Passphrase), QStringLiteral("correct horse"));
    QCOMPARE(SyncPayload::storedKeys().current,
             Cipher::keyFromText(QStringLiteral("correct horse")));
    QCOMPARE(SyncPayload::storedKeys().previous, quint64(0));
    Settings::setSecret(SettingsKey::Passphrase, QString());
    QVERIFY(Settings::secret(SettingsKey::Passphrase).isEmpty());
    QCOMPARE(SyncPayload::storedKeys().current, quint64(0));
}

void TestSyncPayload::encryptionHeaderRefusesWhatItDoesNotKnow_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("reason");
    QTest::newRow("as written") << QString() << QString() << QString();
    QTest::newRow("other version") << "\"version\": 1"
                                   << "\"version\": 2"
                                   << "not a header";
    QTest::newRow("other function") << "argon2id13"
                                    << "argon2i13"
                                    << "not a header";
    QTest::newRow("short salt") << "\"salt\": \""
                                << "\"salt\": \"AAAA"
                                << "of the wrong size";
    QTest::newRow("a terabyte") << "\"memlimit\": 8192"
                                << "\"memlimit\": 1099511627776"
                                << "out of range";
    QTest::newRow("no work") << "\"opslimit\": 1"
                             << "\"opslimit\": 0"
                             << "out of range";
}

void TestSyncPayload::encryptionHeaderRefusesWhatItDoesNotKnow()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, reason);
    QByteArray json = quickHeader().toJson();
    QVERIFY(!json.isEmpty());
    json.replace(from.toUtf8(), to.toUtf8());
    QString error;
    const EncryptionHeader header = EncryptionHeader::fromJson(json, &error);
    QCOMPARE(header.isValid(), reason.isEmpty());
    QVERIFY2(error.contains(reason), qPrintable(error));
    if (header.isValid())
        QCOMPARE(header.toJson(), json);
    const EncryptionHeader fresh = EncryptionHeader::create();
    QVERIFY(fresh.salt != EncryptionHeader::create().salt);
    QVERIFY(fresh.memLimit > header.memLimit);
}

void TestSyncPayload::sealedFilesOpenOnlyAsTheyWereSealed()
{
    const SealKey key = SealKey::derive(QStringLiteral("secret"), quickHeader());
    const SealKey other = SealKey::derive(QStringLiteral("Secret"), quickHeader());
    QVERIFY(key.isValid() && other.isValid());
    QCOMPARE(key.check().size(), 16);
    QVERIFY(key.check() != other.check());
    Result result = Result::Failed;

    const QByteArray document = R"({"magic": -18022398, "version": 8, "clippings": []})";
    const QString name = QStringLiteral("History#1.json");
    const QByteArray sealed = SyncPayload::sealModel(document, key, name);
    QCOMPARE(SyncPayload::formOf(sealed), SyncPayload::Form::Sealed);
    QVERIFY(sealed != SyncPayload::sealModel(document, key, name));
    QCOMPARE(SyncPayload::decodeModel(sealed, name, sealedWith(key), &result), document);
    QCOMPARE(result, Result::Ok);

    // Any change anywhere, a file cut short or grown, another key or another name: refused.
    const QByteArray image = SyncPayload::sealFile("png bytes", key, QStringLiteral("image_x"));
    QCOMPARE(SyncPayload::decodeFile(image, QStringLiteral("image_x"), sealedWith(key), &result),
             QByteArray("png bytes"));
    QList<QByteArray> changed{image.chopped(1), image + '\0'};
    for (qsizetype at = 0; at < image.size(); ++at)
        changed.append(QByteArray(image).replace(at, 1, QByteArray(1, char(image.at(at) ^ 1))));
    for (const QByteArray &body : std::as_const(changed)) {
        const QByteArray opened =
            SyncPayload::decodeFile(body, QStringLiteral("image_x"), sealedWith(key), &result);
        QVERIFY(opened.isEmpty() && result != Result::Ok);
    }
    QVERIFY(
        SyncPayload::decodeModel(sealed, QStringLiteral("History#2.json"), sealedWith(key), &result)
            .isEmpty());
    QCOMPARE(result, Result::Tampered);
    QVERIFY(SyncPayload::decodeModel(sealed, name, sealedWith(other), &result).isEmpty());
    QCOMPARE(result, Result::Tampered);

    // Without strong encryption here, a sealed file is told apart from a damaged one; with it,
    // nothing else is taken.
    QVERIFY(SyncPayload::decodeModel(sealed, name, {}, &result).isEmpty());
    QCOMPARE(result, Result::SealedWithoutKey);
    QVERIFY(
        SyncPayload::decodeModel(qCompress(document), name, sealedWith(key), &result).isEmpty());
    QCOMPARE(result, Result::NotSealed);
    QVERIFY(SyncPayload::decodeFile("png bytes", name, sealedWith(key), &result).isEmpty());
    QCOMPARE(result, Result::NotSealed);
    QCOMPARE(SyncPayload::decodeModel(qCompress(document), name, sealedWith(key, false), &result),
             document);
}

void TestSyncPayload::namesHideEqualityFromOthers()
{
    const SealKey key = SealKey::derive(QStringLiteral("secret"), quickHeader());
    EncryptionHeader otherSalt = quickHeader();
    otherSalt.salt.fill('t');
    const SealKey sameWordOtherSalt = SealKey::derive(QStringLiteral("secret"), otherSalt);
    const QString hash = ISyncMerge::contentHash("a\nb");
    const QString named = key.nameHash(hash);
    QCOMPARE(named.size(), 64);
    QCOMPARE(key.nameHash(hash), named);
    QVERIFY(named != hash);
    QVERIFY(named != key.nameHash(ISyncMerge::contentHash("a\nc")));
    QVERIFY(named != sameWordOtherSalt.nameHash(hash));
    QVERIFY(key.check() != sameWordOtherSalt.check());
}

QTEST_GUILESS_MAIN(TestSyncPayload)
#include "testsyncpayload.moc"
