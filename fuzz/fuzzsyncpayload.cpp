// Feeds arbitrary bytes to the sync payload decoder and to the cipher, as a hostile or damaged
// online file would reach them. Build with clang and -DVELMORIN_BUILD_FUZZ=ON, then run
//   ./fuzz/fuzzsyncpayload -max_total_time=300 -max_len=65536
// The first byte chooses between the two; the rest is the body.
#include "base/cipher.h"
#include "sync/syncpayload.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray body(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    const quint64 key = Cipher::keyFromText(QByteArrayLiteral("fuzz"));
    SyncPayload::Result result;
    switch (data[0] % 3) {
    case 0:
        SyncPayload::decodeModel(body, QString(), {key, key + 1}, &result);
        break;
    case 1:
        SyncPayload::decodeFile(SyncPayload::EncryptedMarker + body, QString(), {key, 0}, &result);
        break;
    default: {
        Cipher cipher(key);
        cipher.decrypt(body);
        break;
    }
    }
    return 0;
}
