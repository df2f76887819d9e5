#include "consoleengine.h"
#include "fileengine.h"
#include "logger.h"
#include "synclog.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <cstdio>

namespace {

// Collects what the logger hands its engines.
class RecordingEngine final : public ILogEngine
{
public:
    explicit RecordingEngine(QList<QPair<LogLevel, QByteArray>> *lines, const QString &name)
        : m_lines(lines), m_name(name)
    {}
    QString name() const override { return m_name; }
    void write(LogLevel level, const QByteArray &formatted) override
    {
        m_lines->append({level, formatted});
    }

private:
    QList<QPair<LogLevel, QByteArray>> *m_lines;
    QString m_name;
};

QByteArray readAll(FILE *stream)
{
    std::fflush(stream);
    std::rewind(stream);
    QByteArray bytes;
    char buffer[4096];
    size_t read = 0;
    while ((read = std::fread(buffer, 1, sizeof buffer, stream)) > 0)
        bytes.append(buffer, qsizetype(read));
    return bytes;
}

} // namespace

class TestLogger final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fileEngineWritesMultiPartMessagesByteForByte();
    void enginesAreReplaceableAndLabelEveryLevel();
    void fatalMessageIsLoggedBeforeTheProcessAborts();
    void unopenableFileLeavesTheConsoleWorking();
    void concurrentWritersNeitherTearLinesNorCrash();
    void syncLogKeepsLinesForTheDialogAndEchoesThem();

private:
    QList<QPair<LogLevel, QByteArray>> m_recorded;
};

void TestLogger::init()
{
    m_recorded.clear();
    Logger::instance().setClock([] { return QTime(9, 5, 7, 42); });
}

void TestLogger::cleanup()
{
    Logger &logger = Logger::instance();
    for (const QString &name : logger.engineNames()) {
        if (name != QLatin1String("DEFAULT"))
            logger.removeEngine(name);
    }
    qInstallMessageHandler(nullptr);
    Logger::instance().setClock([] { return QTime::currentTime(); });
}

void TestLogger::fileEngineWritesMultiPartMessagesByteForByte()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("log.txt"));
    Logger &logger = Logger::instance();
    logger.removeEngine(QStringLiteral("DEFAULT"));
    logger.addEngine(std::make_unique<FileEngine>(QStringLiteral("file"), path));
    logger.write(LogLevel::Debug, QStringList{QStringLiteral("first"), QStringLiteral("second"),
                                              QString(), QString::fromUtf8("dritte Zeile äö")});
    logger.write(LogLevel::Fatal, QStringLiteral("end"));
    // A later run appends rather than replaces.
    logger.addEngine(std::make_unique<FileEngine>(QStringLiteral("file"), path));
    logger.write(LogLevel::Warning, QStringList{QString(), QStringLiteral("x")});
    logger.addEngine(std::make_unique<ConsoleEngine>(QStringLiteral("DEFAULT")));

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray indent(23, ' ');
    const QByteArray expected = "[09:05:07.042] [DEBUG] first\n" + indent + "second\n" + indent +
                                "dritte Zeile \xc3\xa4\xc3\xb6\n"
                                "[09:05:07.042] [!!FATAL!!] end\n"
                                "[09:05:07.042] [Warning] \n" +
                                QByteArray(25, ' ') + "x\n";
    QCOMPARE(file.readAll(), expected);
}

void TestLogger::enginesAreReplaceableAndLabelEveryLevel()
{
    Logger &logger = Logger::instance();
    QList<QPair<LogLevel, QByteArray>> older;
    logger.addEngine(std::make_unique<RecordingEngine>(&older, QStringLiteral("rec")));
    // An engine of the same name takes the place of the older one.
    logger.addEngine(std::make_unique<RecordingEngine>(&m_recorded, QStringLiteral("rec")));
    QCOMPARE(logger.engineNames(), (QStringList{QStringLiteral("DEFAULT"), QStringLiteral("rec")}));
    logger.installMessageHandler();
    qDebug() << "d";
    qInfo() << "i";
    qWarning() << "w";
    qCritical() << "c";
    qInstallMessageHandler(nullptr);
    logger.write(LogLevel::Error, QStringLiteral("e"));
    logger.write(LogLevel::Trace, QStringLiteral("t"));
    QVERIFY(logger.removeEngine(QStringLiteral("rec")));
    QVERIFY(!logger.removeEngine(QStringLiteral("rec")));

    const QList<QPair<LogLevel, QByteArray>> expected = {
        {LogLevel::Debug, "[09:05:07.042] [DEBUG] d\n"},
        {LogLevel::Info, "[09:05:07.042] [INFO] i\n"},
        {LogLevel::Warning, "[09:05:07.042] [Warning] w\n"},
        {LogLevel::Critical, "[09:05:07.042] [Critical] c\n"},
        {LogLevel::Error, "[09:05:07.042] [Error] e\n"},
        {LogLevel::Trace, "[09:05:07.042] [Trace] t\n"},
    };
    QCOMPARE(m_recorded, expected);
    QVERIFY(older.isEmpty());
}

void TestLogger::fatalMessageIsLoggedBeforeTheProcessAborts()
{
    if (qEnvironmentVariableIsSet("VELMORIN_FATAL_CHILD")) {
        Logger::instance().installMessageHandler();
        qFatal("cannot go on");
        return;
    }
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("VELMORIN_FATAL_CHILD"), QStringLiteral("1"));
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("fatalMessageIsLoggedBeforeTheProcessAborts")});
    QVERIFY(child.waitForFinished(30000));
    // Windows ends an aborted process with exit code 3 rather than a crash.
    QVERIFY(child.exitStatus() == QProcess::CrashExit || child.exitCode() == 3);
    QVERIFY2(child.readAll().contains("] [!!FATAL!!] cannot go on"), "no fatal line");
}

void TestLogger::unopenableFileLeavesTheConsoleWorking()
{
    FILE *out = std::tmpfile();
    FILE *err = std::tmpfile();
    QVERIFY(out && err);
    Logger &logger = Logger::instance();
    logger.removeEngine(QStringLiteral("DEFAULT"));
    auto file = std::make_unique<FileEngine>(QStringLiteral("file"),
                                             QStringLiteral("/nonexistent-folder/log.txt"));
    QVERIFY(!file->isOpen());
    logger.addEngine(std::move(file));
    logger.addEngine(std::make_unique<ConsoleEngine>(QStringLiteral("std"), out, err));
    logger.write(LogLevel::Info, QStringLiteral("still here"));
    logger.write(LogLevel::Critical, QStringLiteral("and here"));
    logger.addEngine(std::make_unique<ConsoleEngine>(QStringLiteral("DEFAULT")));
    logger.removeEngine(QStringLiteral("std"));

    // Debug and info go to standard output, warnings and worse to standard error.
    QCOMPARE(readAll(out), QByteArray("[09:05:07.042] [INFO] still here\n"));
    QCOMPARE(readAll(err), QByteArray("[09:05:07.042] [Critical] and here\n"));
    std::fclose(out);
    std::fclose(err);
}

void TestLogger::concurrentWritersNeitherTearLinesNorCrash()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("threads.txt"));
    Logger &logger = Logger::instance();
    logger.removeEngine(QStringLiteral("DEFAULT"));
    logger.addEngine(std::make_unique<FileEngine>(QStringLiteral("file"), path));
    constexpr int writers = 4;
    constexpr int perWriter = 2000;

    QList<QThread *> threads;
    for (int w = 0; w < writers; ++w) {
        threads << QThread::create([w] {
            for (int i = 0; i < perWriter; ++i)
                Logger::instance().write(LogLevel::Debug, {QStringLiteral("w%1 %2").arg(w).arg(i),
                                                           QStringLiteral("tail")});
        });
    }
    // Engines come and go while the writers run.
    threads << QThread::create([] {
        QList<QPair<LogLevel, QByteArray>> sink;
        for (int i = 0; i < 500; ++i) {
            Logger::instance().addEngine(
                std::make_unique<RecordingEngine>(&sink, QStringLiteral("churn")));
            Logger::instance().removeEngine(QStringLiteral("churn"));
        }
    });
    for (QThread *thread : threads)
        thread->start();
    for (QThread *thread : threads) {
        QVERIFY(thread->wait(60000));
        delete thread;
    }
    logger.addEngine(std::make_unique<ConsoleEngine>(QStringLiteral("DEFAULT")));

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), writers * perWriter * 2 + 1);
    const QByteArray indent(23, ' ');
    for (qsizetype i = 0; i + 1 < lines.size(); i += 2) {
        QVERIFY(lines.at(i).startsWith("[09:05:07.042] [DEBUG] w"));
        QCOMPARE(lines.at(i + 1), indent + "tail");
    }
}

void TestLogger::syncLogKeepsLinesForTheDialogAndEchoesThem()
{
    Logger &logger = Logger::instance();
    logger.addEngine(std::make_unique<RecordingEngine>(&m_recorded, QStringLiteral("rec")));
    logger.installMessageHandler();
    SyncLog &log = SyncLog::instance();
    log.clear();
    log.setCapacity(3);

    qint64 cursor = log.totalAppended();
    SyncLog::write(QStringLiteral("Merge clippings: one"));
    SyncLog::write(QStringLiteral("Sync: two"));
    QStringList fresh = log.linesSince(&cursor);
    QCOMPARE(fresh.size(), 2);
    QVERIFY(fresh.at(0).endsWith(QLatin1String(" Merge clippings: one")));
    QVERIFY(log.linesSince(&cursor).isEmpty());

    // More lines than the capacity between two polls: the dialog gets what is still kept.
    for (int i = 0; i < 5; ++i)
        SyncLog::write(QStringLiteral("handleQueue: %1").arg(i));
    fresh = log.linesSince(&cursor);
    QCOMPARE(fresh.size(), 3);
    QVERIFY(fresh.last().endsWith(QLatin1String("handleQueue: 4")));
    QCOMPARE(log.lines(), fresh);

    QCOMPARE(m_recorded.size(), 7);
    QCOMPARE(m_recorded.at(1).second, QByteArray("[09:05:07.042] [DEBUG] Sync: two\n"));

    QTemporaryDir dir;
    const QString exported = dir.filePath(QStringLiteral("Synclog.txt"));
    QVERIFY(log.exportTo(exported));
    QFile file(exported);
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    QCOMPARE(QString::fromUtf8(file.readAll()), fresh.join(QLatin1Char('\n')) + QLatin1Char('\n'));
    QString error;
    QVERIFY(!log.exportTo(QStringLiteral("/nonexistent-folder/Synclog.txt"), &error));
    QVERIFY(!error.isEmpty());
    log.setCapacity(20000);
}

QTEST_GUILESS_MAIN(TestLogger)
#include "testlogger.moc"
