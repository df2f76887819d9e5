#include "synclog.h"

#include <QDateTime>
#include <QDebug>
#include <QSaveFile>

SyncLog &SyncLog::instance()
{
    static SyncLog *log = new SyncLog;
    return *log;
}

QString SyncLog::stamped(const Line &line)
{
    return QDateTime::fromMSecsSinceEpoch(line.time).toString(
               QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz ")) +
           line.text;
}

void SyncLog::append(const QString &line)
{
    // The time is turned into local time only when the line is read: merging a large history
    // writes a line per clipping, and local time is costly to work out.
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    {
        QMutexLocker locker(&m_mutex);
        m_lines.push_back({now, line});
        ++m_total;
        while (int(m_lines.size()) > m_capacity)
            m_lines.pop_front();
    }
    qDebug().noquote() << line;
}

QStringList SyncLog::lines() const
{
    QMutexLocker locker(&m_mutex);
    QStringList lines;
    lines.reserve(qsizetype(m_lines.size()));
    for (const Line &line : m_lines)
        lines.append(stamped(line));
    return lines;
}

QStringList SyncLog::linesSince(qint64 *cursor) const
{
    QMutexLocker locker(&m_mutex);
    const qint64 firstKept = m_total - qint64(m_lines.size());
    const qint64 from = std::max(*cursor, firstKept) - firstKept;
    *cursor = m_total;
    QStringList lines;
    for (auto line = m_lines.begin() + from; line != m_lines.end(); ++line)
        lines.append(stamped(*line));
    return lines;
}

qint64 SyncLog::totalAppended() const
{
    QMutexLocker locker(&m_mutex);
    return m_total;
}

void SyncLog::clear()
{
    QMutexLocker locker(&m_mutex);
    m_lines.clear();
}

bool SyncLog::exportTo(const QString &path, QString *error) const
{
    QSaveFile file(path);
    QByteArray bytes;
    for (const QString &line : lines())
        bytes += line.toUtf8() + '\n';
    // Unbuffered: a short write on a full disk must show before the commit.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Unbuffered) ||
        file.write(bytes) != bytes.size()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

void SyncLog::setCapacity(int capacity)
{
    QMutexLocker locker(&m_mutex);
    m_capacity = std::max(1, capacity);
    while (int(m_lines.size()) > m_capacity)
        m_lines.pop_front();
}
