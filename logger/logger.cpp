#include "logger.h"

#include "consoleengine.h"

#include <algorithm>
#include <cstdlib>

namespace {

LogLevel levelOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return LogLevel::Debug;
    case QtInfoMsg:
        return LogLevel::Info;
    case QtWarningMsg:
        return LogLevel::Warning;
    case QtCriticalMsg:
        return LogLevel::Critical;
    case QtFatalMsg:
        return LogLevel::Fatal;
    }
    return LogLevel::Debug;
}

void messageHandler(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    Logger::instance().write(levelOf(type), message);
    if (type == QtFatalMsg)
        std::abort();
}

} // namespace

Logger &Logger::instance()
{
    // Never destroyed: objects torn down at exit may still log.
    static Logger *logger = new Logger;
    return *logger;
}

Logger::Logger() : m_clock([] { return QTime::currentTime(); })
{
    // Messages written before start-up has chosen the engines still reach the console.
    m_engines.push_back(std::make_unique<ConsoleEngine>(QStringLiteral("DEFAULT")));
}

QString Logger::label(LogLevel level)
{
    switch (level) {
    case LogLevel::Debug:
        return QStringLiteral("DEBUG");
    case LogLevel::Info:
        return QStringLiteral("INFO");
    case LogLevel::Warning:
        return QStringLiteral("Warning");
    case LogLevel::Error:
        return QStringLiteral("Error");
    case LogLevel::Critical:
        return QStringLiteral("Critical");
    case LogLevel::Fatal:
        return QStringLiteral("!!FATAL!!");
    case LogLevel::Trace:
        return QStringLiteral("Trace");
    }
    return QString();
}

QByteArray Logger::format(const QTime &time, LogLevel level, const QStringList &parts)
{
    const QString header = QLatin1Char('[') + time.toString(QStringLiteral("hh:mm:ss.zzz")) +
                           QStringLiteral("] [") + label(level) + QStringLiteral("] ");
    const QString indent(header.size(), QLatin1Char(' '));

    QString text = header + parts.value(0) + QLatin1Char('\n');
    for (qsizetype i = 1; i < parts.size(); ++i) {
        if (!parts.at(i).isNull())
            text += indent + parts.at(i) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

void Logger::addEngine(std::unique_ptr<ILogEngine> engine)
{
    QMutexLocker locker(&m_mutex);
    removeEngine(engine->name());
    m_engines.push_back(std::move(engine));
}

bool Logger::removeEngine(const QString &name)
{
    QMutexLocker locker(&m_mutex);
    const auto it = std::find_if(m_engines.begin(), m_engines.end(),
                                 [&name](const auto &engine) { return engine->name() == name; });
    if (it == m_engines.end())
        return false;
    m_engines.erase(it);
    return true;
}

QStringList Logger::engineNames() const
{
    QMutexLocker locker(&m_mutex);
    QStringList names;
    for (const auto &engine : m_engines)
        names << engine->name();
    return names;
}

void Logger::write(LogLevel level, const QStringList &parts)
{
    QMutexLocker locker(&m_mutex);
    const QByteArray formatted = format(m_clock(), level, parts);
    for (const auto &engine : m_engines)
        engine->write(level, formatted);
}

void Logger::installMessageHandler()
{
    qInstallMessageHandler(messageHandler);
}

void Logger::setClock(Clock clock)
{
    QMutexLocker locker(&m_mutex);
    m_clock = std::move(clock);
}
