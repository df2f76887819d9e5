#include "platform/x11/unixsystemevents.h"

#include <QDBusConnection>
#include <QDebug>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

int g_signalPipe[2] = {-1, -1};

// Runs in signal context: only hands the signal number to the event loop.
void onSignal(int number)
{
    const char byte = char(number);
    [[maybe_unused]] const ssize_t written = ::write(g_signalPipe[1], &byte, 1);
}

} // namespace

ISystemEvents *createSystemEvents(QObject *parent)
{
    return new UnixSystemEvents(parent);
}

UnixSystemEvents::UnixSystemEvents(QObject *parent) : ISystemEvents(parent)
{
    installSignalHandlers();
    watchLogind();
}

UnixSystemEvents::~UnixSystemEvents()
{
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
}

void UnixSystemEvents::installSignalHandlers()
{
    if (g_signalPipe[0] < 0 && ::pipe2(g_signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning() << "Unable to create the signal pipe; SIGTERM will end the program at once";
        return;
    }
    m_notifier = new QSocketNotifier(g_signalPipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &UnixSystemEvents::onSignalPipeReadable);

    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

void UnixSystemEvents::watchLogind()
{
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected())
        return;
    // Qt D-Bus connects to remote signals by signature only, hence SLOT().
    const bool watching = bus.connect(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
        SLOT(onPrepareForSleep(bool)));
    if (!watching)
        qDebug() << "Unable to watch logind for resume from sleep";
}

void UnixSystemEvents::onSignalPipeReadable()
{
    char number = 0;
    while (::read(g_signalPipe[0], &number, 1) == 1) {
        qDebug() << "Received signal" << int(number) << "- quitting";
        emit terminationRequested();
    }
}

void UnixSystemEvents::onPrepareForSleep(bool start)
{
    if (!start)
        emit powerResumed();
}
