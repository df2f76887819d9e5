#include "actions/scriptwatchdog.h"

#include <QDebug>
#include <QJSEngine>

#include <chrono>

ScriptWatchdog::ScriptWatchdog(QJSEngine *engine, int limitMs)
    : m_engine(engine), m_thread([this, limitMs] { watch(limitMs); })
{}

ScriptWatchdog::~ScriptWatchdog()
{
    disarm();
    m_thread.join();
}

bool ScriptWatchdog::fired() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_fired;
}

void ScriptWatchdog::disarm()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_engine = nullptr;
    }
    m_wake.notify_one();
}

void ScriptWatchdog::watch(int limitMs)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const bool disarmed = m_wake.wait_for(lock, std::chrono::milliseconds(limitMs),
                                          [this] { return m_engine == nullptr; });
    if (disarmed)
        return;
    // Thread-safe by the engine's contract; the lock keeps the engine alive meanwhile.
    m_engine->setInterrupted(true);
    m_fired = true;
    qWarning() << "Stopped a script that ran longer than" << limitMs << "ms";
}
