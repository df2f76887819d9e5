#include "appprocess.h"

#include "testprofile.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTest>

AppProcess::AppProcess(const QString &program, const TestProfile &profile, QObject *parent)
    : QObject(parent)
{
    m_process.setProgram(program);
    m_process.setProcessEnvironment(profile.environment());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::readyRead, this,
            [this] { m_output += QString::fromUtf8(m_process.readAll()); });
}

AppProcess::~AppProcess()
{
    // Ask first, so the program cleans up its shared memory; force only a program that hangs.
    if (isRunning()) {
        m_process.terminate();
        if (!m_process.waitForFinished(3000)) {
            m_process.kill();
            m_process.waitForFinished(3000);
        }
    }
}

void AppProcess::setEnvironmentValue(const QString &name, const QString &value)
{
    QProcessEnvironment env = m_process.processEnvironment();
    env.insert(name, value);
    m_process.setProcessEnvironment(env);
}

void AppProcess::start(const QStringList &arguments)
{
    m_process.setArguments(arguments);
    m_process.start();
}

bool AppProcess::waitForOutput(const QString &text, int timeoutMs, int count)
{
    QDeadlineTimer deadline(timeoutMs);
    while (outputCount(text) < count) {
        if (deadline.hasExpired() || !isRunning())
            return outputCount(text) >= count;
        QTest::qWait(20);
    }
    return true;
}

bool AppProcess::waitForExit(int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    while (isRunning() && !deadline.hasExpired())
        QTest::qWait(20);
    m_output += QString::fromUtf8(m_process.readAll());
    return !isRunning();
}

long AppProcess::procKilobytes(qint64 pid, const QString &file, const QByteArray &field)
{
    QFile proc(QStringLiteral("/proc/%1/%2").arg(pid).arg(file));
    if (!proc.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : proc.readAll().split('\n')) {
        if (line.startsWith(field + ':'))
            return line.mid(field.size() + 1).trimmed().split(' ').first().toLong();
    }
    return -1;
}

void AppProcess::terminate()
{
    m_process.terminate();
}
