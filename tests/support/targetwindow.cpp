#include "targetwindow.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QJsonDocument>
#include <QTest>

TargetWindow::TargetWindow(QObject *parent) : QObject(parent)
{
    connect(&m_process, &QProcess::readyReadStandardOutput, this,
            [this] { m_output += m_process.readAllStandardOutput(); });
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

TargetWindow::~TargetWindow()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(3000))
        m_process.kill();
}

QString TargetWindow::editorPath()
{
    return QStringLiteral(TARGET_EDITOR);
}

bool TargetWindow::start(const QString &program)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Dead keys in the editor come from Qt's compose support, which needs a UTF-8 locale.
    environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("QT_IM_MODULE"), QStringLiteral("compose"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    m_process.setProcessEnvironment(environment);
    m_process.start(program, {});
    if (!m_process.waitForStarted(10000)) {
        m_error = QStringLiteral("the target editor did not start: ") + m_process.errorString();
        return false;
    }
    if (request(QByteArray(), "READY").isNull()) {
        m_error = QStringLiteral("the target editor did not show its window");
        return false;
    }
    return activate();
}

bool TargetWindow::activate()
{
    // --all: the process and the title, not either (xdotool's default).
    const bool found =
        xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--all"),
                 QStringLiteral("--pid"), QString::number(m_process.processId()),
                 QStringLiteral("--name"), QStringLiteral("Velmorin test target"),
                 QStringLiteral("windowactivate"), QStringLiteral("--sync")});
    if (!found)
        m_error = QStringLiteral("xdotool could not activate the target window");
    return found;
}

QJsonObject TargetWindow::state()
{
    const QByteArray line = request("state", "STATE ");
    return QJsonDocument::fromJson(line).object();
}

bool TargetWindow::clear()
{
    return !request("clear", "CLEARED").isNull();
}

void TargetWindow::kill()
{
    m_process.kill();
    m_process.waitForFinished(3000);
}

bool TargetWindow::copy(const QByteArray &command)
{
    return !request(command, "COPIED").isNull();
}

QByteArray TargetWindow::request(const QByteArray &command, const QByteArray &answerPrefix)
{
    m_output.clear();
    if (!command.isEmpty())
        m_process.write(command + '\n');
    const QDeadlineTimer deadline(10000);
    while (!deadline.hasExpired()) {
        const qsizetype at = m_output.indexOf(answerPrefix);
        const qsizetype end = at < 0 ? -1 : m_output.indexOf('\n', at);
        if (end >= 0)
            return m_output.mid(at + answerPrefix.size(), end - at - answerPrefix.size());
        QTest::qWait(10);
    }
    return {};
}

bool TargetWindow::xdotool(const QStringList &arguments, QString *output)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    if (!process.waitForFinished(15000) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return false;
    if (output)
        *output = QString::fromUtf8(process.readAllStandardOutput());
    return true;
}

bool TargetWindow::press(const QStringList &keys)
{
    return xdotool(
        QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("30")} + keys);
}

bool TargetWindow::type(const QString &text)
{
    return xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"), text});
}

QRect TargetWindow::geometry(const QString &window)
{
    QString output;
    xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window}, &output);
    QHash<QString, int> values;
    for (const QString &line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        values.insert(line.section(QLatin1Char('='), 0, 0),
                      line.section(QLatin1Char('='), 1).toInt());
    return {values.value(QStringLiteral("X")), values.value(QStringLiteral("Y")),
            values.value(QStringLiteral("WIDTH")), values.value(QStringLiteral("HEIGHT"))};
}
