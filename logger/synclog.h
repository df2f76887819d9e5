#pragma once

#include <QMutex>
#include <QStringList>

#include <deque>

// The log of merge and sync decisions ("Merge clippings:", "Sync:", "Notifier:" ...), kept in
// memory so the sync-log dialog can show and export it, and echoed to the debug log.
// Safe to use from any thread.
class SyncLog final
{
public:
    static SyncLog &instance();
    static void write(const QString &line) { instance().append(line); }

    void append(const QString &line);
    QStringList lines() const;
    // Lines appended since *cursor (the total count seen so far); moves the cursor on.
    // Lines that the capacity has already pushed out are skipped.
    QStringList linesSince(qint64 *cursor) const;
    qint64 totalAppended() const;
    void clear();
    bool exportTo(const QString &path, QString *error = nullptr) const;

    void setCapacity(int capacity);

private:
    struct Line
    {
        qint64 time; // milliseconds since the epoch
        QString text;
    };

    SyncLog() = default;
    static QString stamped(const Line &line);

    mutable QMutex m_mutex;
    std::deque<Line> m_lines;
    qint64 m_total = 0;
    // Enough for the decisions of several syncs; loading a large history writes a line per
    // clipping, which need not all stay in memory.
    int m_capacity = 5000;
};
