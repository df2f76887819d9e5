// How much a log line costs: the file engine writes unbuffered, so every line is a system call.
// Usage: benchlogger [lines]   (default 100000)
#include "fileengine.h"
#include "logger.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>

namespace {

double microsecondsPerLine(int lines, int threads)
{
    QList<QThread *> workers;
    const int perThread = lines / threads;
    for (int t = 0; t < threads; ++t) {
        workers << QThread::create([perThread] {
            for (int i = 0; i < perThread; ++i)
                Logger::instance().write(LogLevel::Debug,
                                         {QStringLiteral("Merge clippings: Item '%1' added").arg(i),
                                          QStringLiteral("second part")});
        });
    }
    QElapsedTimer clock;
    clock.start();
    for (QThread *worker : workers)
        worker->start();
    for (QThread *worker : workers) {
        worker->wait();
        delete worker;
    }
    return double(clock.nsecsElapsed()) / 1000.0 / (perThread * threads);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const int lines = argc > 1 ? std::atoi(argv[1]) : 100000;
    QTemporaryDir dir;
    Logger &logger = Logger::instance();
    logger.removeEngine(QStringLiteral("DEFAULT"));
    logger.addEngine(
        std::make_unique<FileEngine>(QStringLiteral("file"), dir.filePath(QStringLiteral("log"))));

    for (const int threads : {1, 4}) {
        const double cost = microsecondsPerLine(lines, threads);
        std::printf("%d lines, %d thread(s): %.2f us per line\n", lines, threads, cost);
    }
    // The floor: the same number of lines of that length written unbuffered, one call each.
    QFile plain(dir.filePath(QStringLiteral("plain")));
    if (!plain.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return 1;
    const QByteArray line = "[12:00:00.000] [DEBUG] Merge clippings: Item '12345' added second "
                            "part\n";
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < lines; ++i)
        plain.write(line);
    std::printf("floor, a plain unbuffered write of such a line: %.2f us per line\n",
                double(clock.nsecsElapsed()) / 1000.0 / lines);
    return 0;
}
