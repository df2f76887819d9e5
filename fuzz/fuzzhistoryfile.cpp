// Feeds arbitrary bytes to the history model as if they were a history file or a download from
// another computer. Build with clang and -DVELMORIN_BUILD_FUZZ=ON, then run for example
//   ./fuzz/fuzzhistoryfile -max_total_time=300 -max_len=65536 corpus/
#include "base/settings.h"
#include "history/historyitemmodel.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QThreadPool>

#include <cstddef>
#include <cstdint>

namespace {

HistoryItemModel *g_model = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    static QGuiApplication app(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    Settings::setRunOverrides({{SettingsKey::KeepItems, QStringLiteral("50")},
                               {SettingsKey::IgnoreLength, QStringLiteral("1")},
                               {SettingsKey::IgnoreSize, QStringLiteral("64")},
                               {SettingsKey::IncludeImages, true}});
    g_model = new HistoryItemModel(data.filePath(QStringLiteral("History.json")));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    g_model->clear();
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    if (g_model->deserialize(bytes) >= 0) {
        // Whatever was taken in must write out as a history that reads back. (Not always to
        // the same rows: merging and trimming run again on the way in.)
        const QByteArray written = g_model->serialize();
        g_model->clear();
        if (g_model->deserialize(written) < 0)
            __builtin_trap();
    }
    if (!g_model->indexIsConsistent())
        __builtin_trap();
    // Thumbnail tasks must not outlive the input (nor the application at exit).
    QThreadPool::globalInstance()->waitForDone();
    return 0;
}
