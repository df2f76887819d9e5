// Takes part in the single-instance handshake the way the program does, in ways a test
// needs and the program never does on purpose:
//   runguardprobe hold               take the guard and listen, but never run the event loop
//                                    (until standard input closes)
//   runguardprobe orphan             take the guard, post a quit request, die without cleanup
//   runguardprobe wait ROUNDS MS     run the start-up handshake with a short schedule
#include "base/runguard.h"
#include "logger.h"

#include <QCoreApplication>

#include <cstdio>
#include <unistd.h>

namespace {

const QString guardKey = QStringLiteral("VelmorinRunGuard");

int hold()
{
    RunGuard guard(guardKey);
    if (!guard.tryToRun())
        return 2;
    guard.listen();
    std::printf("holding\n");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

int orphan()
{
    auto *guard = new RunGuard(guardKey); // never destroyed: the segment stays behind
    if (!guard->tryToRun())
        return 2;
    guard->notify(1);
    std::printf("orphaned\n");
    std::fflush(stdout);
    _exit(0);
}

int wait(int rounds, int delayMs)
{
    RunGuard guard(guardKey);
    const RunGuard::Start start = guard.waitToRun(rounds, std::chrono::milliseconds(delayMs));
    const bool running = start == RunGuard::Start::Running;
    std::printf("%s\n", running ? "running" : "gave up");
    std::fflush(stdout);
    return running ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    Logger::instance().installMessageHandler();
    const QStringList args = app.arguments();
    const QString mode = args.value(1);
    if (mode == QLatin1String("hold"))
        return hold();
    if (mode == QLatin1String("orphan"))
        return orphan();
    if (mode == QLatin1String("wait") && args.size() == 4)
        return wait(args.at(2).toInt(), args.at(3).toInt());
    std::fprintf(stderr, "usage: runguardprobe hold | orphan | wait ROUNDS MS\n");
    return 64;
}
