// A full sync of a 10,000-clipping history through a shared folder, both ways, plain and
// encrypted: the time of each run and the bytes written, and what the cipher's own level-9
// compression of the already compressed payload costs. The floor: the history's bytes
// compressed and written to a folder, and read back, uncompressed and parsed, without the
// engine. Run from a release build:
//   QT_QPA_PLATFORM=offscreen ./bench/benchsync [count]
#include "base/cipher.h"
#include "base/settings.h"
#include "history/historyitemmodel.h"
#include "sync/sync.h"
#include "sync/synclocalfolder.h"
#include "sync/syncpayload.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <cstdio>

namespace {

qint64 folderBytes(const QString &folder)
{
    qint64 bytes = 0;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files))
        bytes += file.size();
    return bytes;
}

// One run of the engine over the history, to its end; milliseconds.
qint64 timedRun(HistoryItemModel *history, bool encrypt)
{
    Sync sync;
    SyncLocalFolder folder;
    sync.addTarget(ISyncTarget::LocalFolderSetting, &folder);
    QVariantMap values = Sync::storedSettings();
    values.insert(QLatin1String(SettingsKey::EncryptData), encrypt);
    values.insert(QLatin1String(SettingsKey::Passphrase), QStringLiteral("a long pass phrase"));
    sync.setSettings(values);
    sync.setModels(history, nullptr);
    QSignalSpy status(&sync, &Sync::syncStatus);
    QElapsedTimer timer;
    timer.start();
    sync.syncAll(SyncDirection::Both);
    while (status.isEmpty() || status.last().first().value<SyncStatus>() == SyncStatus::Running)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return timer.elapsed();
}

void runBoth(int count, bool encrypt, const QString &root)
{
    const QString folder =
        root + (encrypt ? QStringLiteral("/encrypted") : QStringLiteral("/plain"));
    QDir().mkpath(folder);
    QSettings().setValue(SettingsKey::SyncFolder, folder);
    HistoryItemModel here(root + QStringLiteral("/here.json"));
    here.fillWithGeneratedClippings(count);
    HistoryItemModel there(root + QStringLiteral("/there.json"));
    const qint64 up = timedRun(&here, encrypt);
    const qint64 written = folderBytes(folder);
    const qint64 down = timedRun(&there, encrypt);
    here.finishSaves();
    there.finishSaves();
    std::printf("%-9s upload %5lld ms, %8lld bytes written; download and merge %5lld ms (%d "
                "clippings arrived)\n",
                encrypt ? "encrypted" : "plain", static_cast<long long>(up),
                static_cast<long long>(written), static_cast<long long>(down), there.rowCount());
}

void cipherCompression(int count, const QString &root)
{
    HistoryItemModel history(root + QStringLiteral("/cipher.json"));
    history.fillWithGeneratedClippings(count);
    const QByteArray compressed = qCompress(history.serialize());
    for (auto mode : {Cipher::CompressNever, Cipher::CompressAuto}) {
        Cipher cipher(Cipher::keyFromText(QStringLiteral("a long pass phrase")));
        cipher.setCompressionMode(mode);
        QElapsedTimer timer;
        timer.start();
        const QByteArray sealed = cipher.encrypt(compressed);
        std::printf("cipher on the %lld-byte payload, %s: %lld ms, %lld bytes\n",
                    static_cast<long long>(compressed.size()),
                    mode == Cipher::CompressNever ? "no compression" : "level-9 compression",
                    static_cast<long long>(timer.elapsed()), static_cast<long long>(sealed.size()));
    }
}

void floorFigures(int count, const QString &root)
{
    HistoryItemModel history(root + QStringLiteral("/floor.json"));
    history.fillWithGeneratedClippings(count);
    const QByteArray document = history.serialize();
    const QString path = root + QStringLiteral("/floor/History.json");
    QDir().mkpath(QFileInfo(path).path());
    QElapsedTimer timer;
    timer.start();
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(qCompress(document)) < 0)
        return;
    out.close();
    const qint64 up = timer.restart();
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly))
        return;
    const QJsonDocument parsed = QJsonDocument::fromJson(qUncompress(in.readAll()));
    const qint64 down = timer.elapsed();
    std::printf("floor     compress and write %5lld ms; read, uncompress and parse %5lld ms (%s)\n",
                static_cast<long long>(up), static_cast<long long>(down),
                parsed.isObject() ? "parsed" : "NOT PARSED");
}

void quiet(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type >= QtWarningMsg)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir root;
    qputenv("XDG_CONFIG_HOME", root.filePath(QStringLiteral("config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", root.filePath(QStringLiteral("data")).toLocal8Bit());
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("benchsync"));
    qInstallMessageHandler(quiet);
    const int count = argc > 1 ? QByteArray(argv[1]).toInt() : 10000;
    QSettings settings;
    Settings::writeDefaults(settings);
    settings.setValue(SettingsKey::KeepItems, QStringLiteral("0"));
    settings.setValue(SettingsKey::SyncTarget, QStringLiteral("LocalFolder"));
    settings.setValue(SettingsKey::SyncSnippets, false);
    settings.setValue(SettingsKey::SyncActions, false);
    std::printf("A full sync of %d clippings through a shared folder\n", count);
    runBoth(count, false, root.path());
    runBoth(count, true, root.path());
    floorFigures(count, root.path());
    cipherCompression(count, root.path());
    return 0;
}
