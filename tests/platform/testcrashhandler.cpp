#include "platform/crashhandler.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

// A process that dies of a fatal signal leaves a report, and still dies of that signal.
class TestCrashHandler final : public QObject
{
    Q_OBJECT

private slots:
    void fatalSignalsLeaveAReport_data();
    void fatalSignalsLeaveAReport();
};

void TestCrashHandler::fatalSignalsLeaveAReport_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGSEGV") << int(SIGSEGV);
    QTest::newRow("SIGABRT (a fatal Qt message)") << int(SIGABRT);
}

void TestCrashHandler::fatalSignalsLeaveAReport()
{
    QFETCH(int, signal);
    QTemporaryDir data;
    QProcess probe;
    probe.start(QStringLiteral(CRASH_PROBE), {data.path(), QString::number(signal)});
    QVERIFY(probe.waitForFinished(30000));
    QCOMPARE(probe.readAllStandardOutput(), QByteArray("armed\n"));
    QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
    QCOMPARE(probe.exitCode(), signal);

    const QDir folder(CrashHandler::reportFolder(data.path()));
    const QStringList reports = folder.entryList({QStringLiteral("crash-*.txt")}, QDir::Files);
    QCOMPARE(reports.size(), 1);
    QFile file(folder.filePath(reports.first()));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.startsWith("Velmorin closed unexpectedly.\nSignal: " + QByteArray::number(signal) +
                            '\n'));
    QVERIFY2(text.contains("crashprobe"), "the backtrace names the crashed program");
}

QTEST_GUILESS_MAIN(TestCrashHandler)
#include "testcrashhandler.moc"
