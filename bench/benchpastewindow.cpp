// How fast the paste window opens over a large history, how fast search answers, and how much
// memory the program holds idle in the tray. Run on an X server with a window manager:
//   scripts/xvfb-session.sh build/bench/benchpastewindow [open|search|memory]
// Open: from the shortcut's signal to the history list painted, 10,000 clippings.
// Search: one rebuild of the results over 100,000 clippings (the 200 ms pause excluded).
// Memory: resident size of the real program, idle, with 10,000 and 100,000 text clippings and
// with 1,000 image clippings, read from /proc after start-up has settled; and the time from
// the program's start until it has read its history, beside that of an empty history.
#include "base/settings.h"
#include "history/clipping.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"
#include "input/globalshortcuts.h"
#include "services/appservices.h"
#include "support/appprocess.h"
#include "support/testprofile.h"
#include "ui/history/historyitemview.h"
#include "ui/mainwindow.h"
#include "ui/search/searchmodel.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QSettings>
#include <QSortFilterProxyModel>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

volatile qsizetype g_sink = 0; // keeps measured work from being optimised away
qint64 g_textBytes = 0;        // the texts of the last history written, in memory (UTF-16)

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

class PaintWatch final : public QObject
{
public:
    bool painted = false;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted = true;
        return false;
    }
};

// Milliseconds from show() until the watched widget is painted, over 15 openings; the first,
// which also creates the native window, is left out.
QList<double> openingTimes(QWidget *painted, const std::function<void()> &hide,
                           const std::function<void()> &show)
{
    PaintWatch watch;
    painted->installEventFilter(&watch);
    QList<double> times;
    for (int run = 0; run < 15; ++run) {
        hide();
        QTest::qWait(100);
        watch.painted = false;
        QElapsedTimer timer;
        timer.start();
        show();
        while (!watch.painted)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        times.append(timer.nsecsElapsed() / 1e6);
    }
    painted->removeEventFilter(&watch);
    times.removeFirst();
    return times;
}

void benchOpen()
{
    QSettings().setValue(QStringLiteral("KeepItems"), QStringLiteral("20000"));
    AppServices services{AppModes()};
    MainWindow window(&services);
    services.start();
    window.historyModel()->reloadSettings();
    window.historyModel()->fillWithGeneratedClippings(10000);
    const QList<double> times = openingTimes(
        window.historyView()->viewport(), [&] { window.hideWindow(); },
        [&] { emit window.shortcuts()->mainActivated(); });
    // The floor: a plain window of the same size shown until painted.
    QWidget plain;
    plain.resize(window.size());
    const QList<double> floor = openingTimes(
        &plain, [&] { plain.hide(); }, [&] { plain.show(); });
    std::printf("open with 10,000 clippings: median %.1f ms, worst %.1f ms (%lld runs); floor, a "
                "plain window shown: median %.1f ms\n",
                median(times), *std::max_element(times.cbegin(), times.cend()),
                qlonglong(times.size()), median(floor));
    services.prepareToQuit();
}

void benchSearch()
{
    QSettings().setValue(QStringLiteral("KeepItems"), QStringLiteral("200000"));
    HistoryItemModel history(QDir::temp().filePath(QStringLiteral("bench-history.json")));
    history.reloadSettings();
    history.fillWithGeneratedClippings(100000);
    QStandardItemModel snippets;
    SearchModel search(history.proxy(), &snippets);
    for (const QString &text : {QStringLiteral("zebra"), QStringLiteral("1234"),
                                QStringLiteral("pinned locked"), QStringLiteral("sync")}) {
        // A copy between two searches: the next one reads the history's rows again.
        history.setPinned(0, !history.item(0)->data(Clipping::PinnedRole).toBool());
        QList<double> times;
        for (int run = 0; run < 7; ++run) {
            search.setSearchText(text);
            QElapsedTimer timer;
            timer.start();
            search.update();
            times.append(timer.nsecsElapsed() / 1e6);
        }
        const double first = times.takeFirst();
        std::printf("search \"%s\" over 100,000 clippings: %d results, first %.1f ms, then "
                    "median %.1f ms\n",
                    qPrintable(text), search.rowCount(), first, median(times));
    }
}

// As the user sees it: from the end of the typing pause until the results are painted in the
// paste window, the first search after a copy included.
void benchSearchInWindow()
{
    QSettings().setValue(QStringLiteral("KeepItems"), QStringLiteral("200000"));
    AppServices services{AppModes()};
    MainWindow window(&services);
    services.start();
    window.historyModel()->reloadSettings();
    window.historyModel()->fillWithGeneratedClippings(100000);
    auto *search = window.findChild<SearchModel *>();
    auto *field = window.findChild<QLineEdit *>();
    auto *results = window.findChild<QListView *>(QStringLiteral("searchView"));
    emit window.shortcuts()->mainActivated();
    QTest::qWait(500);
    PaintWatch watch;
    results->viewport()->installEventFilter(&watch);
    for (const QString &text : {QStringLiteral("1234"), QStringLiteral("sync")}) {
        QList<double> times;
        for (int run = 0; run < 7; ++run) {
            if (run == 0)
                window.historyModel()->addText(QStringLiteral("a copy #%1").arg(text), QString(),
                                               QPixmap(), QStringLiteral("editor"));
            field->clear();
            QTest::qWait(300);
            field->setText(text);
            watch.painted = false;
            QElapsedTimer timer;
            timer.start();
            search->updateNow();
            while (!watch.painted)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            times.append(timer.nsecsElapsed() / 1e6);
        }
        // The floor: a plain case-insensitive scan of the same texts, with nothing made.
        const QStringList texts = window.historyModel()->clippingTexts();
        QList<double> scans;
        for (int run = 0; run < 5; ++run) {
            QElapsedTimer timer;
            timer.start();
            for (const QString &clipping : texts)
                g_sink = g_sink + clipping.contains(text, Qt::CaseInsensitive);
            scans.append(timer.nsecsElapsed() / 1e6);
        }
        const double first = times.takeFirst();
        std::printf("floor, a case-insensitive scan of the texts: median %.1f ms\n", median(scans));
        std::printf("search \"%s\" in the paste window over 100,000 clippings: %d results, "
                    "first after a copy %.1f ms, then median %.1f ms (%.1f-%.1f)\n",
                    qPrintable(text), search->rowCount(), first, median(times),
                    *std::min_element(times.cbegin(), times.cend()),
                    *std::max_element(times.cbegin(), times.cend()));
    }
    services.prepareToQuit();
}

void writeTextHistory(const QString &path, int count)
{
    g_textBytes = 0;
    HistoryFile::Document document;
    for (int i = 0; i < count; ++i) {
        HistoryFile::Record record;
        record.text = QStringLiteral("#%1 The quarterly report lists every open item with its "
                                     "owner and due date; please check section four.")
                          .arg(i);
        g_textBytes += record.text.size() * qint64(sizeof(QChar));
        record.brief = Clipping::briefOf(record.text);
        record.time = QDateTime::currentDateTime().addSecs(-i);
        record.id = QUuid::createUuid();
        record.application = QStringLiteral("editor");
        document.records.append(record);
    }
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(HistoryFile::encode(document));
}

void writeImageHistory(const QString &dataFolder, int count)
{
    g_textBytes = 0;
    HistoryFile::Document document;
    QImage image(1280, 800, QImage::Format_RGB32);
    for (int i = 0; i < count; ++i) {
        HistoryFile::Record record;
        record.type = Clipping::ImageType;
        record.id = QUuid::createUuid();
        record.filename = QStringLiteral("shot-%1.png").arg(i);
        record.text = record.brief = record.filename;
        record.time = QDateTime::currentDateTime().addSecs(-i);
        record.application = QStringLiteral("editor");
        const QString folder =
            dataFolder + QStringLiteral("/images/") + record.id.toString(QUuid::WithBraces);
        QDir().mkpath(folder);
        image.fill(QColor::fromHsv(i % 360, 120, 200));
        QPainter(&image).drawText(40, 40, record.filename);
        image.save(folder + QLatin1Char('/') + record.filename);
        document.records.append(record);
    }
    QFile file(dataFolder + QStringLiteral("/History.json"));
    if (file.open(QIODevice::WriteOnly))
        file.write(HistoryFile::encode(document));
}

void benchMemory(const char *label, int keepItems,
                 const std::function<void(const QString &)> &writeHistory)
{
    TestProfile profile;
    profile.setSetting(QStringLiteral("ReleaseNotesVersion"), QStringLiteral("1.9"));
    profile.setSetting(QStringLiteral("KeepItems"), QString::number(keepItems + 1));
    const QString data = profile.path(QStringLiteral("data/Velmorin/Velmorin"));
    QDir().mkpath(data);
    writeHistory(data);
    AppProcess velmorin(QStringLiteral(VELMORIN_BINARY), profile);
    velmorin.setEnvironmentValue(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    QElapsedTimer startUp;
    startUp.start();
    velmorin.start();
    if (!velmorin.waitForOutput(QStringLiteral("history items from"), 60000)) {
        std::printf("%s: the program did not start\n", label);
        return;
    }
    std::printf("start-up until the history is read, %s: %lld ms\n", label, startUp.elapsed());
    velmorin.waitForOutput(QStringLiteral("Registered hotkey"), 60000);
    // Loading, thumbnails and the cache clean-up settle.
    QTest::qWait(5000);
    const auto report = [&](const char *when) {
        const auto megabytes = [&](const char *field) {
            return AppProcess::procKilobytes(velmorin.processId(), QStringLiteral("smaps_rollup"),
                                             field) /
                   1024.0;
        };
        std::printf("resident memory %s, %s: %.1f MB, proportional %.1f MB (own memory %.1f MB)\n",
                    when, label, megabytes("Rss"), megabytes("Pss"), megabytes("Anonymous"));
    };
    report("idle");
    if (g_textBytes > 0)
        std::printf("floor, %s: the texts alone take %.1f MB beside the program without "
                    "clippings\n",
                    label, g_textBytes / 1048576.0);
    // A copy makes the first save, which must not keep the history a second time.
    QGuiApplication::clipboard()->setText(QStringLiteral("one more clipping"));
    if (velmorin.waitForOutput(QStringLiteral("Wrote history items"), 60000)) {
        QTest::qWait(3000);
        report("after a copy");
    }
    velmorin.terminate();
}

} // namespace

int main(int argc, char *argv[])
{
    TestProfile profile;
    profile.useInThisProcess();
    QApplication app(argc, argv);
    QSettings settings;
    Settings::writeDefaults(settings);
    const QString part = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    // For a memory profiler: benchpastewindow write-history FILE COUNT
    if (part == QLatin1String("write-history") && argc == 4) {
        writeTextHistory(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]).toInt());
        return 0;
    }
    if (part.isEmpty() || part == QLatin1String("open"))
        benchOpen();
    if (part.isEmpty() || part == QLatin1String("search")) {
        benchSearch();
        benchSearchInWindow();
    }
    if (part.isEmpty() || part == QLatin1String("memory")) {
        benchMemory("no clippings", 20, [](const QString &data) {
            writeTextHistory(data + QStringLiteral("/History.json"), 0);
        });
        benchMemory("10,000 text clippings", 10000, [](const QString &data) {
            writeTextHistory(data + QStringLiteral("/History.json"), 10000);
        });
        benchMemory("100,000 text clippings", 100000, [](const QString &data) {
            writeTextHistory(data + QStringLiteral("/History.json"), 100000);
        });
        benchMemory("1,000 image clippings", 1000,
                    [](const QString &data) { writeImageHistory(data, 1000); });
    }
    return 0;
}
