#pragma once

#include <QObject>
#include <QSharedMemory>
#include <QSystemSemaphore>
#include <QTimer>

#include <chrono>

// Keeps one instance per user logon; the newest launch wins. The running instance polls a
// request word in shared memory every second and quits when a new launch has set it to 1.
class RunGuard final : public QObject
{
    Q_OBJECT

public:
    explicit RunGuard(const QString &key, QObject *parent = nullptr);
    ~RunGuard() override;

    // Lower-case hex SHA-1 of the key followed by the salt.
    static QString deriveKey(const QString &key, const QString &salt);

    // True when this process now holds the segment.
    bool tryToRun();
    // The start-up handshake: up to rounds attempts, asking the holder to quit between them.
    // On success this instance listens for later launches.
    bool waitToRun(int rounds, std::chrono::milliseconds delay);

    void notify(int value);
    void listen();

public slots:
    void check();

private:
    bool readRequestWord(int *value);

    QString m_key;
    QSharedMemory m_sharedMem;
    QSystemSemaphore m_memLock;
    QTimer m_timer;
};
