// The real program under a flood of large copied images: its peak memory, how long a text
// copied during the flood takes to reach the history, and how fast it quits on SIGTERM while
// the flood goes on. The copies are made with xclip, as another program would. Run on an X
// server:
//   scripts/xvfb-session.sh build/bench/benchimageflood [seconds]
// The floors come from the same run: the memory once the program has started, and the delay
// of texts copied before the flood.
#include "history/historyfile.h"
#include "support/appprocess.h"
#include "support/testprofile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>
#include <cstdio>

namespace {

// Screenshots of 2000 to 4000 pixels across: flat areas, text-like detail and some noise, so
// that they are large and slow to decode like real ones.
QStringList writeImages(const QString &folder)
{
    QStringList paths;
    const QList<QSize> sizes{{2000, 1250}, {2560, 1600}, {3200, 2000}, {3840, 2160}, {4000, 3000}};
    QRandomGenerator random(7);
    for (const QSize &size : sizes) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(int(random.bounded(360)), 60, 230));
        QPainter painter(&image);
        for (int y = 0; y < size.height(); y += 24)
            painter.drawText(20, y, QString(200, QChar(u'a' + int(random.bounded(26)))));
        painter.end();
        for (int y = 0; y < size.height(); y += 2) {
            auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
            for (int x = 0; x < size.width(); x += 2)
                line[x] = random.generate();
        }
        // Screenshot tools offer PNG, browsers and viewers often JPEG.
        for (const char *suffix : {"png", "jpg"}) {
            paths.append(folder + QStringLiteral("/shot-%1.%2").arg(size.width()).arg(suffix));
            image.save(paths.last());
        }
    }
    return paths;
}

void copyImage(const QString &path)
{
    const QString type = path.endsWith(QLatin1String(".png")) ? QStringLiteral("image/png")
                                                              : QStringLiteral("image/jpeg");
    QProcess::execute(QStringLiteral("xclip"),
                      {QStringLiteral("-selection"), QStringLiteral("clipboard"),
                       QStringLiteral("-t"), type, QStringLiteral("-i"), path});
}

void copyText(const QString &text)
{
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard")});
    xclip.write(text.toUtf8());
    xclip.closeWriteChannel();
    xclip.waitForFinished();
}

bool historyHolds(const QString &historyFile, const QString &text)
{
    QFile file(historyFile);
    HistoryFile::Document document;
    if (!file.open(QIODevice::ReadOnly) || !HistoryFile::decode(file.readAll(), &document))
        return false;
    return std::any_of(document.records.cbegin(), document.records.cend(),
                       [&text](const HistoryFile::Record &record) { return record.text == text; });
}

struct Flood
{
    QStringList images;
    QString historyFile;
    int copies = 0;
    QList<double> textDelays;
    int textsLost = 0;
};

// Copies one text and waits for it in the history while images keep coming every
// imageInterval ms (never, when it is 0); gives up after 20 s.
void copyTextDuring(Flood &flood, int imageInterval, const QString &text)
{
    copyText(text);
    QElapsedTimer clock;
    clock.start();
    QElapsedTimer sinceImage;
    sinceImage.start();
    // Looked at every 2 ms, read only when it was written again: reading it each time would
    // take the program's processor time.
    std::pair<QDateTime, qint64> seen;
    const auto holds = [&] {
        const QFileInfo file(flood.historyFile);
        const std::pair<QDateTime, qint64> written{file.lastModified(), file.size()};
        if (written == seen)
            return false;
        seen = written;
        return historyHolds(flood.historyFile, text);
    };
    while (!holds()) {
        if (clock.elapsed() > 20000) {
            ++flood.textsLost;
            return;
        }
        if (imageInterval > 0 && sinceImage.elapsed() >= imageInterval) {
            copyImage(flood.images.at(flood.copies++ % flood.images.size()));
            sinceImage.restart();
        }
        QTest::qWait(2);
    }
    flood.textDelays.append(double(clock.nsecsElapsed()) / 1e6);
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? -1 : values.at(values.size() / 2);
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    const int seconds = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 60;
    if (QStandardPaths::findExecutable(QStringLiteral("xclip")).isEmpty()) {
        std::printf("xclip is needed to copy as another program would\n");
        return 1;
    }
    TestProfile profile;
    profile.setSetting(QStringLiteral("ReleaseNotesVersion"), QStringLiteral("1.9"));
    AppProcess velmorin(QStringLiteral(VELMORIN_BINARY), profile);
    velmorin.setEnvironmentValue(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    Flood flood;
    flood.images = writeImages(profile.path());
    flood.historyFile = profile.path(QStringLiteral("data/Velmorin/Velmorin/History.json"));
    velmorin.start();
    if (!velmorin.waitForOutput(QStringLiteral("Main thread:"), 60000)) {
        std::printf("the program did not start\n%s", qPrintable(velmorin.output()));
        return 1;
    }
    QTest::qWait(3000);
    const long startedKb =
        AppProcess::procKilobytes(velmorin.processId(), QStringLiteral("status"), "VmRSS");
    for (int i = 0; i < 5; ++i)
        copyTextDuring(flood, 0, QStringLiteral("calm text %1").arg(i));
    const QList<double> calmDelays = flood.textDelays;
    flood.textDelays.clear();

    // An image every 125 ms (eight a second), a text every two seconds.
    QElapsedTimer clock;
    clock.start();
    int text = 0;
    while (clock.elapsed() < seconds * 1000) {
        for (int i = 0; i < 16; ++i) {
            copyImage(flood.images.at(flood.copies++ % flood.images.size()));
            QTest::qWait(125);
        }
        copyTextDuring(flood, 125, QStringLiteral("flood text %1").arg(text++));
    }
    const long peakKb =
        AppProcess::procKilobytes(velmorin.processId(), QStringLiteral("status"), "VmHWM");
    const long endKb =
        AppProcess::procKilobytes(velmorin.processId(), QStringLiteral("status"), "VmRSS");

    QElapsedTimer quitting;
    quitting.start();
    velmorin.terminate();
    for (int i = 0; i < 8 && velmorin.isRunning(); ++i)
        copyImage(flood.images.at(flood.copies++ % flood.images.size()));
    const bool quit = velmorin.waitForExit(30000);

    std::printf("images copied: %d in %d s, recorded: %d; texts copied during the flood: %lld, "
                "lost: %d\n",
                flood.copies, seconds,
                velmorin.outputCount(QStringLiteral("New clipboard content")) - 5 -
                    int(flood.textDelays.size()),
                qlonglong(flood.textDelays.size() + flood.textsLost), flood.textsLost);
    std::printf("peak resident memory: %.0f MB (started: %.0f MB, after the flood: %.0f MB)\n",
                peakKb / 1024.0, startedKb / 1024.0, endKb / 1024.0);
    std::printf("text copied during the flood to the history file: median %.1f ms, worst %.1f ms "
                "(without a flood: median %.1f ms)\n",
                median(flood.textDelays),
                flood.textDelays.isEmpty()
                    ? -1.0
                    : *std::max_element(flood.textDelays.cbegin(), flood.textDelays.cend()),
                median(calmDelays));
    std::printf("SIGTERM during the flood: %s after %lld ms\n", quit ? "quit" : "still running",
                qlonglong(quitting.elapsed()));
    QProcess::execute(QStringLiteral("pkill"), {QStringLiteral("-x"), QStringLiteral("xclip")});
    return 0;
}
