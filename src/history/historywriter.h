#pragma once

#include "history/historyfile.h"

#include <QMutex>
#include <QObject>
#include <QThreadPool>

#include <optional>

// Encodes and writes the history file on a thread of its own, so a save costs the GUI thread
// only the copy of the rows. Saves are written in the order asked for; a save still waiting
// when a newer one comes is replaced by it, as only the newest content matters. Destroying the
// writer waits for the save under way, so quitting never cuts one short.
class HistoryWriter final : public QObject
{
    Q_OBJECT

public:
    explicit HistoryWriter(QObject *parent = nullptr);
    ~HistoryWriter() override;

    void save(const QString &path, const HistoryFile::Document &document, bool tellSync);
    void saveBytes(const QString &path, const QByteArray &bytes, bool tellSync);
    void waitForDone();

signals:
    // result is a HistoryFile::WriteResult, error the system's reason when it failed;
    // revisions those of the document saved (Document::revisions). Emitted on the writer's
    // thread; receivers on the GUI thread get it queued.
    void finished(const QString &path, int result, bool tellSync, const QString &error,
                  quint64 revisions);

private:
    struct Job
    {
        QString path;
        HistoryFile::Document document;
        QByteArray bytes;
        bool encoded = false;
        bool tellSync = false;
    };

    void queue(Job job);
    void runPending();

    QThreadPool m_pool;
    QMutex m_mutex;
    std::optional<Job> m_pending;
    // Used by one save at a time: the pool has a single thread.
    HistoryFile::Layout m_layout;
};
