#pragma once

#include "base/isyncmerge.h"

#include <QList>
#include <QObject>
#include <QString>

// One file as a sync target lists it: its online name, the target's identifier for it, and
// when it was created there (ISO 8601 in UTC with milliseconds, so that texts sort by time).
struct OnlineFile
{
    QString name;
    QString id;
    QString created;
};

// One pending operation of the sync queue.
struct SyncEntry
{
    int operation = 0;
    // The local sync name: "History.json", "Snippets.json", an action's or image's online name.
    QString file;
    QString onlineName;
    ISyncMerge *merge = nullptr;
    SyncDirection direction = SyncDirection::Both;
};

// A remote store of sync files. Every operation answers later, by a signal on a later turn of
// the event loop, never from inside the call; a failure may not answer at all.
class ISyncTarget : public QObject
{
    Q_OBJECT

public:
    // How initialise() treats a missing configuration.
    enum InitMode { UseConfigured = 0, AskIfMissing = 1, AlwaysAsk = 2 };

    // The values of the setting that chooses the target.
    static inline const QString LocalFolderSetting = QStringLiteral("LocalFolder");
    static inline const QString GoogleDriveSetting = QStringLiteral("GoogleDrive");

    using QObject::QObject;

    virtual void initialise(InitMode mode) = 0;
    virtual bool isValid() const = 0;
    virtual void listFiles() = 0;
    // Files are named by their online names; a target whose identifiers differ keeps the
    // mapping itself. kind: what the engine does with the bytes (its download callback kind).
    virtual void download(int kind, const SyncEntry &entry) = 0;
    // Writes the bytes under entry.file; the answer carries the entry with its online name.
    virtual void upload(int kind, const SyncEntry &entry, const QByteArray &bytes) = 0;
    virtual void remove(const SyncEntry &entry) = 0;
    virtual QString name() const = 0;
    // True while an answer to an earlier call is still to come. A target that drops a failed
    // call without answering has none pending, which tells the engine the call is lost.
    virtual bool hasPendingAnswers() const { return false; }

signals:
    void initialized(bool success);
    void filesListed(const QList<OnlineFile> &files);
    void downloaded(int kind, const SyncEntry &entry, const QByteArray &bytes);
    void uploaded(int kind, const SyncEntry &entry);
    void removed(const SyncEntry &entry);
    // Failure answers, for targets that report failures.
    void listFailed();
    void downloadFailed(int kind, const SyncEntry &entry);
    void uploadFailed(int kind, const SyncEntry &entry);
    void removeFailed(const SyncEntry &entry);
};
