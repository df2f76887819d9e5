#pragma once

#include "ilogengine.h"
#include "loglevel.h"

#include <QRecursiveMutex>
#include <QStringList>
#include <QTime>

#include <functional>
#include <memory>
#include <vector>

// The program's one logger. Every message goes to every engine; Qt's message functions reach it
// once installMessageHandler() has run. Safe to call from any thread.
class Logger final
{
public:
    using Clock = std::function<QTime()>;

    static Logger &instance();

    static QString label(LogLevel level);
    // "[hh:mm:ss.zzz] [LABEL] first part", later non-null parts each on a line of their own,
    // indented as far as the header reaches.
    static QByteArray format(const QTime &time, LogLevel level, const QStringList &parts);

    // An engine with the same name as an existing one replaces it.
    void addEngine(std::unique_ptr<ILogEngine> engine);
    bool removeEngine(const QString &name);
    QStringList engineNames() const;

    void write(LogLevel level, const QStringList &parts);
    void write(LogLevel level, const QString &message) { write(level, QStringList{message}); }

    void installMessageHandler();
    void setClock(Clock clock);

private:
    Logger();

    mutable QRecursiveMutex m_mutex;
    std::vector<std::unique_ptr<ILogEngine>> m_engines;
    Clock m_clock;
};
