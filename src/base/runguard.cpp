#include "base/runguard.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDebug>
#include <QEventLoop>

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
    : QObject(parent), m_key(key),
      m_sharedMem(*new QSharedMemory(deriveKey(key, QStringLiteral("_sharedmemKey")))),
      m_launches(*new QSharedMemory(deriveKey(key, QStringLiteral("_launchesKey")))),
      m_memLock(*new QSystemSemaphore(deriveKey(key, QStringLiteral("_memLockKey")), 1,
                                      QSystemSemaphore::Open))
{}

RunGuard::~RunGuard()
{
    m_timer.stop();
    SegmentLock lock(m_memLock);
    if (m_sharedMem.isAttached())
        m_sharedMem.detach();
    if (m_launches.isAttached())
        m_launches.detach();
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
    return createSegment();
}

bool RunGuard::createSegment()
{
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

RunGuard::Start RunGuard::waitToRun(int rounds, std::chrono::milliseconds delay)
{
    {
        SegmentLock lock(m_memLock);
        drawTicket();
    }
    for (int round = 0; round < rounds && !m_cancelled; ++round) {
        switch (claim()) {
        case Claim::Held:
            qDebug() << "Launched new instance successfully";
            listen();
            return Start::Running;
        case Claim::Superseded:
            qDebug() << "A newer launch takes over; leaving it to that one";
            return Start::Superseded;
        case Claim::Taken:
            break;
        }
        qDebug() << "Another instance is running. Waiting for it to quit...";
        notify(1);
        QEventLoop pause;
        m_waiting = &pause;
        QTimer::singleShot(delay, &pause, &QEventLoop::quit);
        if (!m_cancelled)
            pause.exec();
        m_waiting = nullptr;
    }
    // Left in place, the request would end the running instance after this launch is gone.
    SegmentLock lock(m_memLock);
    if (!newerLaunchWaits() && m_sharedMem.attach()) {
        writeRequest(0);
        m_sharedMem.detach();
    }
    return m_cancelled ? Start::Cancelled : Start::Blocked;
}

void RunGuard::cancelWaiting()
{
    m_cancelled = true;
    if (m_waiting)
        m_waiting->quit();
}

void RunGuard::drawTicket()
{
    if (!m_launches.create(sizeof m_ticket) && !m_launches.attach()) {
        qWarning() << "Unable to attach to the launch counter:" << m_launches.errorString();
        return;
    }
    qint32 newest = 0;
    std::memcpy(&newest, m_launches.constData(), sizeof newest);
    m_ticket = newest + 1;
    std::memcpy(m_launches.data(), &m_ticket, sizeof m_ticket);
}

bool RunGuard::newerLaunchWaits()
{
    if (!m_launches.isAttached())
        return false;
    qint32 newest = 0;
    std::memcpy(&newest, m_launches.constData(), sizeof newest);
    return newest > m_ticket;
}

RunGuard::Claim RunGuard::claim()
{
    // One lock for both, so that a launch drawing its number after this check finds the
    // segment held and asks this one to quit.
    SegmentLock lock(m_memLock);
    if (newerLaunchWaits())
        return Claim::Superseded;
    if (!createSegment())
        return Claim::Taken;
    m_launches.detach();
    return Claim::Held;
}

void RunGuard::notify(int value)
{
    SegmentLock lock(m_memLock);
    const bool wasAttached = m_sharedMem.isAttached();
    if (!wasAttached && !m_sharedMem.attach(QSharedMemory::ReadWrite)) {
        qWarning() << "Unable to attach to the shared memory.";
        return;
    }
    writeRequest(value);
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
    SegmentLock lock(m_memLock);
    int value = 0;
    if (m_sharedMem.isAttached() && readRequest(&value) && value == 1) {
        qDebug() << "Another instance launched";
        QCoreApplication::quit();
    }
}

bool RunGuard::readRequest(int *value)
{
    if (!m_sharedMem.lock()) {
        qWarning() << "Unable to lock to the shared memory.";
        return false;
    }
    std::memcpy(value, m_sharedMem.constData(), sizeof *value);
    m_sharedMem.unlock();
    return true;
}

void RunGuard::writeRequest(int value)
{
    if (!m_sharedMem.lock()) {
        qWarning() << "Unable to lock to the shared memory.";
        return;
    }
    std::memcpy(m_sharedMem.data(), &value, sizeof value);
    m_sharedMem.unlock();
}
