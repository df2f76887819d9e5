#pragma once

#include <QObject>
#include <QSharedMemory>
#include <QSystemSemaphore>
#include <QTimer>

#include <chrono>

class QEventLoop;

// Keeps one instance per user logon; the newest launch wins. The running instance holds a
// shared segment whose request word a new launch sets to 1, and quits when it sees that (it
// checks every second). Launches also draw numbers from a second segment, which they keep
// attached while they wait: a waiting launch that sees a newer number leaves the hand-over to
// that one, so any burst of launches ends with exactly one instance.
class RunGuard final : public QObject
{
    Q_OBJECT

public:
    enum class Start {
        Running,    // this instance holds the guard and listens for later launches
        Superseded, // a newer launch takes over; this one leaves quietly
        Blocked,    // the running instance did not quit in time
        Cancelled,  // cancelWaiting() was called (the session ended the launch)
    };

    explicit RunGuard(const QString &key, QObject *parent = nullptr);
    ~RunGuard() override;

    // Lower-case hex SHA-1 of the key followed by the salt.
    static QString deriveKey(const QString &key, const QString &salt);

    // True when this process now holds the segment.
    bool tryToRun();
    // The start-up handshake: up to rounds attempts, asking the holder to quit between them.
    // Events are handled while it waits, so the launch can be cancelled.
    Start waitToRun(int rounds, std::chrono::milliseconds delay);

    void notify(int value);
    void listen();

public slots:
    void check();
    void cancelWaiting();

private:
    enum class Claim { Taken, Held, Superseded };

    // Callers hold the lock.
    bool createSegment();
    void drawTicket();
    bool newerLaunchWaits();
    Claim claim();
    bool readRequest(int *value);
    void writeRequest(int value);

    QString m_key;
    // Never deleted: on Unix, Qt removes a system semaphore when the object that created it
    // is destroyed, even while other processes wait on it, and those that come later would
    // make a second one. These live until the process ends; ~RunGuard() only detaches.
    QSharedMemory &m_sharedMem;
    QSharedMemory &m_launches;
    QSystemSemaphore &m_memLock;
    QTimer m_timer;
    qint32 m_ticket = 0;
    QEventLoop *m_waiting = nullptr;
    bool m_cancelled = false;
};
