#pragma once

#include "sync/isyncnotifier.h"
#include "sync/isynctarget.h"
#include "sync/syncencryption.h"
#include "sync/syncpayload.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QUuid>
#include <QVariantMap>

#include <functional>
#include <memory>

class Cipher;
class QTimer;
class SyncNone;

enum class SyncStatus { Running = 0, Success = 1, Failure = 3 };

// Keeps the history, the snippets, the actions and the history's images equal between this
// computer and the sync target. Changes are queued and worked off one at a time, a few seconds
// after the last of a burst; the models are reached only through ISyncMerge, and action and
// image files travel as opaque files.
class Sync final : public QObject
{
    Q_OBJECT

public:
    enum Operation {
        SyncFile = 0,
        DownloadImage = 1,
        DownloadAction = 2,
        UploadImage = 4,
        UploadAction = 5,
        DeleteFile = 6,
        CompareActions = 7,
        ResyncAll = 8,
        ResyncDownload = 9,
    };
    enum DownloadKind {
        ActionDownload = 0,
        ImageDownload = 1,
        ModelDownload = 2,
        Resync = 3,
        HeaderDownload = 4,
    };
    enum UploadKind { FileUpload = 0, ResyncUpload = 1, ModelUpload = 2, HeaderUpload = 3 };
    enum Content { History = 0, Snippets = 1 };

    static constexpr int QueueDelayMs = 5000;
    static inline const QString HistoryFile = QStringLiteral("History.json");
    static inline const QString SnippetsFile = QStringLiteral("Snippets.json");

    explicit Sync(QObject *parent = nullptr);
    ~Sync() override;

    void setModels(ISyncMerge *history, ISyncMerge *snippets);
    // A demonstration never touches what the user keeps online. (A performance test syncs all
    // but its generated history, which its settings leave out.)
    void setDemonstration(bool demonstration) { m_off = demonstration; }
    // The image file names ("{id}_file.png") that the history's clippings refer to.
    void setImageNames(std::function<QStringList()> imageNames) { m_imageNames = imageNames; }

    // The values a run reads: SyncHistory, SyncSnippets, SyncActions, EncryptData,
    // StrongEncryption, Passphrase, PreviousPassphrase (both as plain text) and SyncFolder.
    void setSettings(const QVariantMap &values);
    static QVariantMap storedSettings();

    void sync(int content, ISyncMerge *merge, SyncDirection direction);
    void syncAll(SyncDirection direction);
    // Queues the comparison of the action files.
    void syncActions();
    // Queues the re-encoding of everything online, after the encryption settings changed.
    void queueResyncAll();
    void syncImages(const QStringList &imageNames, SyncDirection direction);

    // A target the SyncTarget setting can choose by its name ("LocalFolder", "GoogleDrive").
    void addTarget(const QString &settingName, ISyncTarget *target);
    // Where news of other computers' uploads comes from and this computer's go to.
    void setNotifier(ISyncNotifier *notifier);
    // The target that SyncTarget chooses; one that does nothing when it names none known.
    ISyncTarget *activeTarget() const;
    QString activeTargetName() const;
    // Starts listening for news from other computers when the target is usable.
    void connectNotifier();

    // What the last run ended with, for a page that opens later: empty before the first.
    QString lastStatusText() const { return m_lastStatusText; }

    QStringList queuedFiles() const;
    bool isQueueTimerActive() const;

    // Where the two kinds of opaque files live.
    static QString actionsFolder();
    static QString imagePath(const QString &imageName);

public slots:
    void handleQueue();
    void initialized(bool success);

signals:
    void syncStatus(SyncStatus status, const QString &text);
    void contentUploaded(const QString &content);
    void syncInitialized(bool success);
    // An image came from another computer: the clipping's id and its cache file name.
    void imageDownloaded(const QUuid &id, const QString &fileName, const QByteArray &bytes);
    // Action files were written or deleted by a sync.
    void actionsChanged();

private:
    void connectTarget(ISyncTarget *target);
    void setNotifierReacts(bool react);
    void enqueue(const SyncEntry &entry);
    void dispatch(SyncEntry entry);
    void endRun(bool success, const QString &failure = QString());
    // Reads or writes the strong encryption header, when the run needs it, before the queue.
    void prepareEncryption();
    void takeEncryptionStep(SyncEncryption::Step step);
    bool isReencoding() const;
    // A re-encoding deletes the old versions of the model files instead of keeping them.
    bool isRenaming() const;
    void fail(const QString &text);
    void startDownload(int kind, const SyncEntry &entry);
    void startUpload(int kind, const SyncEntry &entry, const QByteArray &bytes);

    QString newestOnlineFile(const QString &localName) const;
    // False for a version of a model file that a newer one has replaced.
    bool isNewestOrNoModel(const QString &onlineName) const;
    QList<OnlineFile> onlineVersions(const QString &localName) const;
    void syncFile(const SyncEntry &entry);
    void mergeAndUpload(const SyncEntry &entry, const QByteArray &downloaded);
    void finishModelSync(const SyncEntry &entry);
    void cleanup(const QString &uploadedName);
    void uploadFile(const SyncEntry &entry, const QString &path);
    void deleteFile(const SyncEntry &entry);
    void compareActions(SyncDirection direction);
    void resyncAll();

    void onFilesListed(const QList<OnlineFile> &files);
    void onDownloaded(int kind, const SyncEntry &entry, const QByteArray &bytes);
    void onUploaded(int kind, const SyncEntry &entry);
    void onRemoved(const SyncEntry &entry);
    void onDataUpdated(const QString &content);
    void onModelDownloaded(const SyncEntry &entry, const QByteArray &body);
    void passOverDamagedVersions();
    // The newest version that is left, or the local content alone when none is.
    void tryVersionBefore(const SyncEntry &entry);
    void failDecryption(const QString &file);
    // A downloaded action or image file, decrypted when it needs to be.
    void receiveFile(int kind, const SyncEntry &entry, const QByteArray &body);
    void writeAction(const QString &fileName, const QByteArray &bytes);
    void resyncUpload(const SyncEntry &entry, const QByteArray &body);

    bool setting(const char *key) const;
    // Tells the user what a download that did not decode means.
    void failDecoding(SyncPayload::Result result, const QString &name);

    QList<SyncEntry> m_queue;
    QMap<QString, OnlineFile> m_online;
    // Online versions passed over for good: unreadable, or damaged while an older one decrypts.
    QSet<QString> m_unreadable;
    // Versions of the model file under way that did not decrypt.
    QSet<QString> m_undecryptable;
    bool m_listRequested = false;
    // A call of the target is under way; its answer goes on with the queue.
    bool m_inFlight = false;
    bool m_off = false;
    QTimer *m_queueTimer;
    // Lets the notifier react to folder changes again a second after a run.
    QTimer *m_reactTimer;
    QVariantMap m_settings;
    QString m_lastStatusText;
    SyncEncryption m_encryption;
    // The header of this run has been read or written (or none is needed).
    bool m_encryptionReady = false;
    ISyncMerge *m_history = nullptr;
    ISyncMerge *m_snippets = nullptr;
    std::function<QStringList()> m_imageNames;
    // Per content: the hash it had when it was last merged or put online, and the hash before
    // the merge under way. Together they tell a download that differs from the local content
    // only in form (the order of clippings copied within the same second) from news.
    QHash<ISyncMerge *, QString> m_syncedHashes;
    QString m_hashBeforeMerge;
    QHash<QString, ISyncTarget *> m_targets;
    SyncNone *m_none;
    ISyncNotifier *m_notifier = nullptr;
};
