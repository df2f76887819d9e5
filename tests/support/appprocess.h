#pragma once

#include <QObject>
#include <QProcess>
#include <QStringList>

class TestProfile;

// A program started by a test, with its output collected as it comes.
class AppProcess final : public QObject
{
    Q_OBJECT

public:
    AppProcess(const QString &program, const TestProfile &profile, QObject *parent = nullptr);
    ~AppProcess() override;

    void setEnvironmentValue(const QString &name, const QString &value);
    void start(const QStringList &arguments = {});
    // Waits until the output holds text (count times); false on time-out or exit.
    bool waitForOutput(const QString &text, int timeoutMs = 15000, int count = 1);
    bool waitForExit(int timeoutMs = 15000);
    void terminate();
    void closeInput() { m_process.closeWriteChannel(); }
    void write(const QByteArray &bytes) { m_process.write(bytes); }

    QString output() const { return m_output; }
    int outputCount(const QString &text) const { return int(m_output.count(text)); }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    int exitCode() const { return m_process.exitCode(); }
    QProcess::ExitStatus exitStatus() const { return m_process.exitStatus(); }
    qint64 processId() const { return m_process.processId(); }

    // A field of /proc/PID/FILE in kB, -1 when not there: "status" has "VmRSS" and "VmHWM",
    // "smaps_rollup" "Rss" and "Anonymous" (the process's own memory).
    static long procKilobytes(qint64 pid, const QString &file, const QByteArray &field);

private:
    QProcess m_process;
    QString m_output;
};
