#include "runguard.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDebug>
#include <QThread>

#include <cstring>

namespace {

constexpr int segmentSize = 8;

// Brackets every access to the segment; the semaphore serialises it between processes.
class SegmentLock final
{
public:
    explicit SegmentLock(QSystemSemaphore &semaphore) : m_semaphore(semaphore)
    {
        m_semaphore.acquire();
    }
    ~SegmentLock() { m_semaphore.release(); }
    SegmentLock(const SegmentLock &) = delete;
    SegmentLock &operator=(const SegmentLock &) = delete;

private:
    QSystemSemaphore &m_semaphore;
};

} // namespace

RunGuard::RunGuard(const QString &key, QObject *parent)
    : QObject(parent), m_key(key), m_sharedMem(deriveKey(key, QStringLiteral("_sharedmemKey"))),
      m_memLock(deriveKey(key, QStringLiteral("_memLockKey")), 1, QSystemSemaphore::Open)
{}

RunGuard::~RunGuard()
{
    m_timer.stop();
    SegmentLock lock(m_memLock);
    if (m_sharedMem.isAttached())
        m_sharedMem.detach();
}

QString RunGuard::deriveKey(const QString &key, const QString &salt)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(key.toUtf8());
    hash.addData(salt.toUtf8());
    return QString::fromLatin1(hash.result().toHex());
}

bool RunGuard::tryToRun()
{
    SegmentLock lock(m_memLock);
    // A segment left behind by a killed instance has no process attached, but System V keeps
    // it, and a new key file can land on the same key. Attaching and detaching again removes
    // such a segment; one that a live instance holds stays.
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (m_sharedMem.create(segmentSize, QSharedMemory::ReadWrite))
            return true;
        if (m_sharedMem.error() != QSharedMemory::AlreadyExists || !m_sharedMem.attach())
            return false;
        m_sharedMem.detach();
    }
    return false;
}

bool RunGuard::waitToRun(int rounds, std::chrono::milliseconds delay)
{
    for (int round = 0; round < rounds; ++round) {
        if (tryToRun()) {
            qDebug() << "Launched new instance successfully";
            listen();
            return true;
        }
        qDebug() << "Another instance is running. Waiting for it to quit...";
        notify(1);
        QThread::msleep(std::chrono::milliseconds(delay).count());
    }
    return false;
}

void RunGuard::notify(int value)
{
    SegmentLock lock(m_memLock);
    const bool wasAttached = m_sharedMem.isAttached();
    if (!wasAttached && !m_sharedMem.attach(QSharedMemory::ReadWrite)) {
        qWarning() << "Unable to attach to the shared memory.";
        return;
    }
    if (m_sharedMem.lock()) {
        std::memcpy(m_sharedMem.data(), &value, sizeof value);
        m_sharedMem.unlock();
    } else {
        qWarning() << "Unable to lock to the shared memory.";
    }
    if (!wasAttached)
        m_sharedMem.detach();
}

void RunGuard::listen()
{
    // A request left over from an earlier handshake must not make this instance quit.
    notify(0);
    connect(&m_timer, &QTimer::timeout, this, &RunGuard::check, Qt::UniqueConnection);
    m_timer.start(1000);
}

void RunGuard::check()
{
    int value = 0;
    if (readRequestWord(&value) && value == 1) {
        qDebug() << "Another instance launched";
        QCoreApplication::quit();
    }
}

bool RunGuard::readRequestWord(int *value)
{
    SegmentLock lock(m_memLock);
    const bool wasAttached = m_sharedMem.isAttached();
    if (!wasAttached && !m_sharedMem.attach(QSharedMemory::ReadOnly))
        return false;
    const bool locked = m_sharedMem.lock();
    if (locked) {
        std::memcpy(value, m_sharedMem.constData(), sizeof *value);
        m_sharedMem.unlock();
    } else {
        qWarning() << "Unable to lock to the shared memory.";
    }
    if (!wasAttached)
        m_sharedMem.detach();
    return locked;
}
