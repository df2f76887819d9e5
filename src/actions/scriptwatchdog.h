#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

class QJSEngine;

// Stops a script that runs too long. The engine blocks the thread that runs it, so the
// interruption has to come from a thread of its own; it is disarmed before the engine goes.
class ScriptWatchdog final
{
public:
    ScriptWatchdog(QJSEngine *engine, int limitMs);
    ~ScriptWatchdog();

    ScriptWatchdog(const ScriptWatchdog &) = delete;
    ScriptWatchdog &operator=(const ScriptWatchdog &) = delete;

    // Whether the limit was reached and the engine interrupted.
    bool fired() const;
    void disarm();

private:
    void watch(int limitMs);

    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    QJSEngine *m_engine;
    bool m_fired = false;
    std::thread m_thread;
};
