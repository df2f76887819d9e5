#include "platform/crashhandler.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>

#include <csignal>
#include <cstring>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

char g_reportPath[4096] = {};
const int g_fatalSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

void writeText(int fd, const char *text)
{
    [[maybe_unused]] const ssize_t written = ::write(fd, text, std::strlen(text));
}

void writeNumber(int fd, int number)
{
    char digits[12] = {};
    int at = int(sizeof digits) - 1;
    do {
        digits[--at] = char('0' + number % 10);
        number /= 10;
    } while (number > 0 && at > 0);
    writeText(fd, digits + at);
}

// Signal context: only async-signal-safe calls, on buffers prepared at start.
void onFatalSignal(int number)
{
    const int fd = ::open(g_reportPath, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd >= 0) {
        writeText(fd, "Velmorin closed unexpectedly.\nSignal: ");
        writeNumber(fd, number);
        writeText(fd, "\nBacktrace:\n");
        void *frames[64];
        backtrace_symbols_fd(frames, backtrace(frames, 64), fd);
        ::close(fd);
    }
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

bool CrashHandler::initialise(const QString &dataFolder)
{
    const QString folder = reportFolder(dataFolder);
    const QByteArray path = QFile::encodeName(
        folder + QStringLiteral("/crash-%1.txt").arg(QCoreApplication::applicationPid()));
    if (!QDir().mkpath(folder) || path.size() >= int(sizeof g_reportPath)) {
        qWarning() << "Unable to prepare the crash report folder" << folder;
        return false;
    }
    std::memcpy(g_reportPath, path.constData(), size_t(path.size()) + 1);

    // backtrace() loads its unwinder on first use; doing that now keeps it out of the handler.
    void *frame = nullptr;
    backtrace(&frame, 1);

    struct sigaction action = {};
    action.sa_handler = onFatalSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESETHAND;
    for (const int number : g_fatalSignals)
        sigaction(number, &action, nullptr);
    return true;
}
