#include "terminalwindow.h"

#include "targetwindow.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>

TerminalWindow::TerminalWindow(QObject *parent) : QObject(parent)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

TerminalWindow::~TerminalWindow()
{
    m_process.terminate();
    if (!m_process.waitForFinished(3000))
        m_process.kill();
}

bool TerminalWindow::isInstalled(const QString &program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

bool TerminalWindow::start(const QString &program)
{
    // cat in the terminal's own line discipline: a line arrives as the terminal sent it.
    const QString shell = QStringLiteral("exec cat > '%1'").arg(m_folder.filePath("received"));
    // xfce4-terminal as a process of its own, not a window of a running server.
    QStringList arguments =
        program == QLatin1String("xfce4-terminal")
            ? QStringList{QStringLiteral("--disable-server"), QStringLiteral("-x")}
            : QStringList{QStringLiteral("-e")};
    arguments << QStringLiteral("sh") << QStringLiteral("-c") << shell;
    m_process.start(program, arguments);
    if (!m_process.waitForStarted(10000)) {
        m_error = program + QStringLiteral(" did not start: ") + m_process.errorString();
        return false;
    }
    return activate();
}

bool TerminalWindow::activate()
{
    const bool found =
        // --all with an empty name: any visible window of the process.
        TargetWindow::xdotool({QStringLiteral("search"), QStringLiteral("--sync"),
                               QStringLiteral("--all"), QStringLiteral("--onlyvisible"),
                               QStringLiteral("--pid"), QString::number(m_process.processId()),
                               QStringLiteral("--name"), QString(),
                               QStringLiteral("windowactivate"), QStringLiteral("--sync")});
    if (!found)
        m_error = QStringLiteral("xdotool could not activate the terminal");
    // The shell has to be reading before the first key arrives.
    QTest::qWait(300);
    return found;
}

QString TerminalWindow::received() const
{
    QFile file(m_folder.filePath("received"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
