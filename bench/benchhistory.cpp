// How fast the history loads, saves and takes a new clipping, and what a plain linear merge
// would cost instead. Run from a release build: ./bench/benchhistory
// Log output is dropped while measuring (the sync log still records every merge line);
// BENCH_PROFILE=1 shows the model's own "Profile:" lines. One part alone: benchhistory load.
#include "base/settings.h"
#include "history/clipping.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QStandardItemModel>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace Clipping;

namespace {

const QDateTime kNow(QDate(2026, 11, 1), QTime(12, 0));

// About 200 characters of text that differ from clipping to clipping.
QString clippingText(int i)
{
    static const QString filler = QStringLiteral(
        "The quarterly report lists every open item with its owner and due date; please check "
        "the figures in section four before Friday and send corrections to the team. ");
    return QStringLiteral("#%1 ").arg(i) + filler.left(190);
}

QByteArray historyDocument(int count)
{
    HistoryFile::Document document;
    document.records.reserve(count);
    for (int i = 0; i < count; ++i) {
        HistoryFile::Record record;
        record.text = clippingText(i);
        record.brief = briefOf(record.text);
        record.time = kNow.addSecs(-i);
        record.id = QUuid::createUuid();
        record.application = i % 3 ? QStringLiteral("word.exe") : QStringLiteral("mail.exe");
        document.records.append(record);
    }
    return HistoryFile::encode(document);
}

double milliseconds(const std::function<void()> &work, int runs = 3)
{
    double best = 1e12;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, timer.nsecsElapsed() / 1e6);
    }
    return best;
}

// The merge as a plain walk over the rows: duplicate search and insertion point both linear.
void naiveMerge(QStandardItemModel &model, QStandardItem *item)
{
    const QString brief = item->data(BriefRole).toString();
    const QDateTime time = item->data(TimeRole).toDateTime();
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.item(row)->data(BriefRole).toString() == brief) {
            if (!(model.item(row)->data(TimeRole).toDateTime() < time)) {
                delete item;
                return;
            }
            model.removeRow(row);
            break;
        }
    }
    int at = model.rowCount();
    for (int row = 0; row < model.rowCount(); ++row) {
        const QStandardItem *other = model.item(row);
        if (!other->data(PinnedRole).toBool() && other->data(TimeRole).toDateTime() < time) {
            at = row;
            break;
        }
    }
    model.insertRow(at, item);
}

void loadFigures(const QString &path)
{
    for (int count : {10000, 100000}) {
        const QByteArray bytes = historyDocument(count);
        double ms = 1e12;
        for (int run = 0; run < 3; ++run) {
            HistoryItemModel model(path);
            QElapsedTimer timer;
            timer.start();
            if (model.deserialize(bytes) != count)
                std::fprintf(stderr, "load kept the wrong number of clippings\n");
            ms = std::min(ms, timer.nsecsElapsed() / 1e6);
        }
        // The floor: parsing the JSON alone, which every load does first.
        const double parse = milliseconds([&] { QJsonDocument::fromJson(bytes); });
        std::printf("load %6d clippings (%5.1f MB): %8.1f ms; floor, parsing the JSON: %8.1f ms\n",
                    count, bytes.size() / 1e6, ms, parse);
    }
}

void naiveFigures()
{
    const int count = 10000;
    const double ms = milliseconds(
        [&] {
            QStandardItemModel model;
            for (int i = 0; i < count; ++i)
                naiveMerge(model, newTextItem(clippingText(i), QString(), QPixmap(),
                                              QStringLiteral("word.exe"), kNow.addSecs(-i)));
        },
        1);
    std::printf("naive merge of %d clippings (linear search and walk): %8.1f ms\n", count, ms);
}

// A save after one new clipping, as every copy makes it, beside the floor: writing and syncing
// a file of the same size on the same disk.
void saveFigures(const QString &path)
{
    for (int count : {10000, 100000}) {
        HistoryItemModel model(path);
        model.deserialize(historyDocument(count));
        model.save(false);
        model.finishSaves(); // the first save encodes every record
        QList<double> inAll;
        QList<double> guiThread;
        QDateTime time = kNow;
        for (int run = 0; run < 7; ++run) {
            time = time.addSecs(1);
            model.merge(newTextItem(QStringLiteral("new %1 ").arg(run) + clippingText(run),
                                    QString(), QPixmap(), QString(), time));
            QElapsedTimer timer;
            timer.start();
            model.save(false);
            guiThread.append(timer.nsecsElapsed() / 1e6);
            model.finishSaves();
            inAll.append(timer.nsecsElapsed() / 1e6);
        }
        const QByteArray bytes = model.serialize();
        QList<double> floor;
        for (int run = 0; run < 7; ++run) {
            QElapsedTimer timer;
            timer.start();
            HistoryFile::write(path + QStringLiteral("-floor"), bytes);
            floor.append(timer.nsecsElapsed() / 1e6);
        }
        std::sort(inAll.begin(), inAll.end());
        std::sort(guiThread.begin(), guiThread.end());
        std::sort(floor.begin(), floor.end());
        std::printf("save after a copy, %6d clippings (%5.1f MB): median %7.1f ms (%.1f-%.1f), "
                    "GUI thread %5.1f ms; floor, writing and syncing the bytes: median %7.1f ms "
                    "(%.1f-%.1f)\n",
                    count, bytes.size() / 1e6, inAll.at(3), inAll.first(), inAll.last(),
                    guiThread.at(3), floor.at(3), floor.first(), floor.last());
    }
}

void mergeFigures(const QString &path)
{
    HistoryItemModel model(path);
    model.deserialize(historyDocument(100000));
    const int merges = 2000;
    QDateTime time = kNow;
    const double top = milliseconds(
        [&] {
            for (int i = 0; i < merges; ++i) {
                time = time.addSecs(1);
                model.merge(newTextItem(QStringLiteral("new %1 ").arg(i) + clippingText(i),
                                        QString(), QPixmap(), QString(), time));
            }
        },
        1);
    // Copies from another computer: older, so they go deep into the list.
    const double deep = milliseconds(
        [&] {
            for (int i = 0; i < merges; ++i)
                model.merge(newTextItem(QStringLiteral("synced %1 ").arg(i) + clippingText(i),
                                        QString(), QPixmap(), QString(),
                                        kNow.addSecs(-(i * 37) % 100000)));
        },
        1);
    // Copying again what is already far down the list moves it to the top.
    const double again = milliseconds(
        [&] {
            for (int i = 0; i < merges; ++i) {
                time = time.addSecs(1);
                model.merge(newTextItem(clippingText(50000 + i * 20), QString(), QPixmap(),
                                        QString(), time));
            }
        },
        1);
    // The floor: putting a row on top of a plain item model of the same size.
    QStandardItemModel plain;
    for (int i = 0; i < model.rowCount(); ++i)
        plain.appendRow(new QStandardItem(clippingText(i)));
    const double insert = milliseconds([&] {
        for (int i = 0; i < merges; ++i)
            plain.insertRow(0, new QStandardItem(clippingText(i)));
    });
    std::printf("one merge into %d rows: new copy %.3f ms, older synced copy %.3f ms, "
                "copied again %.3f ms; floor, a row put on top of a plain model %.2f us\n",
                model.rowCount(), top / merges, deep / merges, again / merges,
                insert / merges * 1000);
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTemporaryDir dir;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
        if (qEnvironmentVariableIsSet("BENCH_PROFILE") &&
            message.startsWith(QLatin1String("Profile")))
            std::fprintf(stderr, "%s\n", qPrintable(message));
    });
    Settings::setRunOverrides({{SettingsKey::KeepItems, QStringLiteral("1000000")},
                               {SettingsKey::IgnoreLength, QStringLiteral("3")},
                               {SettingsKey::IgnoreSize, QStringLiteral("4")},
                               {SettingsKey::IncludeImages, true}});
    const QString path = dir.filePath(QStringLiteral("History.json"));
    // One part alone when named: load, save, merge or naive.
    const QString only = app.arguments().value(1);
    if (only.isEmpty() || only == QLatin1String("load"))
        loadFigures(path);
    if (only.isEmpty() || only == QLatin1String("save"))
        saveFigures(path);
    if (only.isEmpty() || only == QLatin1String("merge"))
        mergeFigures(path);
    if (only.isEmpty() || only == QLatin1String("naive"))
        naiveFigures();
    return 0;
}
