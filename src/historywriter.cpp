#include "historywriter.h"

#include <QDebug>
#include <QElapsedTimer>

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
    if (!job->encoded) {
        QElapsedTimer timer;
        timer.start();
        job->bytes = HistoryFile::encode(job->document, &m_encoded);
        qDebug() << "Profile: Serializing to JSON took " << timer.elapsed();
    }
    QString error;
    const HistoryFile::WriteResult result = HistoryFile::write(job->path, job->bytes, &error);
    emit finished(job->path, int(result), job->tellSync, error);
}
