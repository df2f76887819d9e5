#include "history/historywriter.h"

#include <QDebug>
#include <QElapsedTimer>

#ifdef __GLIBC__
#include <malloc.h>
#endif

HistoryWriter::HistoryWriter(QObject *parent) : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

HistoryWriter::~HistoryWriter()
{
    waitForDone();
}

void HistoryWriter::save(const QString &path, const HistoryFile::Document &document, bool tellSync)
{
    queue(Job{path, document, QByteArray(), false, tellSync});
}

void HistoryWriter::saveBytes(const QString &path, const QByteArray &bytes, bool tellSync)
{
    queue(Job{path, HistoryFile::Document(), bytes, true, tellSync});
}

void HistoryWriter::waitForDone()
{
    m_pool.waitForDone();
}

void HistoryWriter::queue(Job job)
{
    QMutexLocker locker(&m_mutex);
    const bool waiting = m_pending.has_value();
    if (waiting)
        job.tellSync = job.tellSync || m_pending->tellSync;
    m_pending = std::move(job);
    if (!waiting)
        m_pool.start([this] { runPending(); });
}

void HistoryWriter::runPending()
{
    std::optional<Job> job;
    {
        QMutexLocker locker(&m_mutex);
        job.swap(m_pending);
    }
    if (!job)
        return;
    QString error;
    HistoryFile::WriteResult result;
    if (job->encoded) {
        result = HistoryFile::write(job->path, job->bytes, &error);
        m_layout = HistoryFile::Layout(); // the file is no longer the one it describes
    } else {
        QElapsedTimer timer;
        timer.start();
        result = HistoryFile::save(job->path, job->document, &m_layout, &error);
        qDebug() << "Profile: Saving the history took" << timer.elapsed();
    }
    emit finished(job->path, int(result), job->tellSync, error, job->document.revisions);
    // Letting go of a large history's records takes a while; the next save, which may be
    // waiting already, need not wait for it. They were made where the load's freed memory was,
    // and stay counted against the idle program unless handed back.
    QThreadPool::globalInstance()->start([document = std::move(job->document)]() mutable {
        const bool large = document.records.size() > 10000;
        document = HistoryFile::Document();
#ifdef __GLIBC__
        if (large)
            malloc_trim(0);
#endif
        Q_UNUSED(large);
    });
}
