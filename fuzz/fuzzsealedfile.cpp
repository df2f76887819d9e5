// Feeds arbitrary bytes to what strong encryption reads from the sync target: sealed model and
// image files under the right key, and the encryption header. Build with clang and
// -DVELMORIN_BUILD_FUZZ=ON, then run
//   ./fuzz/fuzzsealedfile -max_total_time=300 -max_len=65536
// The first byte chooses the reader; the rest is the body: behind the sealed marker, as it comes,
// or sealed first, as a computer with the pass phrase could make it, so that what lies behind
// the authentication (the decompression) is reached too.
#include "sync/encryptionheader.h"
#include "sync/sealkey.h"
#include "sync/syncpayload.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>

namespace {

SealKey fuzzKey()
{
    // The smallest limits: the key is made once, before the first input.
    EncryptionHeader header;
    header.salt = QByteArray(16, 's');
    header.opsLimit = 1;
    header.memLimit = 8192;
    return SealKey::derive(QStringLiteral("fuzz"), header);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const SealKey key = fuzzKey();
    if (size == 0)
        return 0;
    const QByteArray body(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    SyncPayload::Keys keys;
    keys.sealed = key;
    keys.onlySealed = true;
    SyncPayload::Result result;
    const QString name = QStringLiteral("History#0.json");
    switch (data[0] % 4) {
    case 0:
        SyncPayload::decodeModel(SealKey::Marker + body, name, keys, &result);
        break;
    case 1:
        SyncPayload::decodeFile(body, QStringLiteral("image_x_y.png"), keys, &result);
        break;
    case 2:
        SyncPayload::decodeModel(key.seal(body, name), name, keys, &result);
        break;
    default:
        EncryptionHeader::fromJson(body, nullptr);
        break;
    }
    return 0;
}
