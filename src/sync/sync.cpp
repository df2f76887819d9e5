#include "sync/sync.h"

#include "actions/actionfiles.h"
#include "base/cipher.h"
#include "base/settings.h"
#include "history/clipping.h"
#include "sync/syncnone.h"
#include "synclog.h"

#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QMultiMap>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>
#include <QTimer>

#include <algorithm>

namespace {

const QString ActionsEntry = QStringLiteral("actions");
const QString ResyncEntry = QStringLiteral("resync");
const QString ActionPrefix = QStringLiteral("action_");
const QString ImagePrefix = QStringLiteral("image_");
const QString TimestampFormat = QStringLiteral("yyyyMMdd'T'hhmmss");

void log(const QString &line)
{
    SyncLog::write(line);
}

QString nowText()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
}

// History and snippet versions, as against action and image files.
bool isModelFile(const QString &onlineName)
{
    return !onlineName.startsWith(ActionPrefix) && !onlineName.startsWith(ImagePrefix);
}

// "History#<hash>.json" belongs to "History.json".
QString localModelName(const QString &onlineName)
{
    QString base;
    SyncPayload::parseModelFileName(onlineName, &base, nullptr);
    return base + onlineName.mid(onlineName.lastIndexOf(QLatin1Char('.')));
}

SyncEntry entryFor(int operation, const QString &file, ISyncMerge *merge = nullptr,
                   SyncDirection direction = SyncDirection::Both)
{
    SyncEntry entry;
    entry.operation = operation;
    entry.file = file;
    entry.onlineName = file;
    entry.merge = merge;
    entry.direction = direction;
    return entry;
}

struct OnlineAction
{
    QString name;
    QDateTime stamp;
};

QDateTime actionCreated(const QJsonObject &action)
{
    const QDateTime created =
        QDateTime::fromString(action.value(QLatin1String("created")).toString(), Qt::ISODate);
    return created.isValid() ? created : QDateTime(QDate(2020, 1, 1), QTime(0, 0));
}

} // namespace

Sync::Sync(QObject *parent)
    : QObject(parent), m_queueTimer(new QTimer(this)), m_reactTimer(new QTimer(this)),
      m_none(new SyncNone(this))
{
    m_queueTimer->setSingleShot(true);
    m_queueTimer->setInterval(QueueDelayMs);
    connect(m_queueTimer, &QTimer::timeout, this, &Sync::handleQueue);
    m_reactTimer->setSingleShot(true);
    m_reactTimer->setInterval(1000);
    connect(m_reactTimer, &QTimer::timeout, this, [this] { setNotifierReacts(true); });
    connectTarget(m_none);
    setSettings(storedSettings());
    connect(this, &Sync::syncStatus, this,
            [this](SyncStatus, const QString &text) { m_lastStatusText = text; });
}

Sync::~Sync() = default;

void Sync::addTarget(const QString &settingName, ISyncTarget *target)
{
    m_targets.insert(settingName, target);
    connectTarget(target);
}

void Sync::setNotifier(ISyncNotifier *notifier)
{
    m_notifier = notifier;
    connect(notifier, &ISyncNotifier::dataUpdated, this, &Sync::onDataUpdated);
    connect(this, &Sync::contentUploaded, notifier, &ISyncNotifier::notify);
}

void Sync::setNotifierReacts(bool react)
{
    if (m_notifier)
        m_notifier->setReact(react);
}

void Sync::connectTarget(ISyncTarget *target)
{
    connect(target, &ISyncTarget::initialized, this, &Sync::initialized);
    connect(target, &ISyncTarget::filesListed, this, &Sync::onFilesListed);
    connect(target, &ISyncTarget::downloaded, this, &Sync::onDownloaded);
    connect(target, &ISyncTarget::uploaded, this, &Sync::onUploaded);
    connect(target, &ISyncTarget::removed, this, &Sync::onRemoved);
    connect(target, &ISyncTarget::listFailed, this, [this] {
        m_inFlight = false;
        m_listRequested = false;
        log(QStringLiteral("Sync: Failed to read the file list"));
        fail(tr("Synchronization failed."));
    });
    connect(target, &ISyncTarget::downloadFailed, this, [this](int kind, const SyncEntry &e) {
        m_inFlight = false;
        log(QStringLiteral("Sync: Download failed for ") + e.onlineName);
        if (kind == Resync)
            handleQueue();
        else
            fail(tr("Synchronization failed."));
    });
    connect(target, &ISyncTarget::uploadFailed, this, [this](int kind, const SyncEntry &e) {
        m_inFlight = false;
        log((kind == ResyncUpload ? QStringLiteral("Sync: Resync upload failed for ")
                                  : QStringLiteral("Sync: Upload failed for ")) +
            e.file);
        fail(tr("Synchronization failed."));
    });
    connect(target, &ISyncTarget::removeFailed, this, [this](const SyncEntry &e) {
        m_inFlight = false;
        log(QStringLiteral("Sync: Unable to delete ") + e.onlineName);
        fail(tr("Synchronization failed."));
    });
}

void Sync::setModels(ISyncMerge *history, ISyncMerge *snippets)
{
    m_history = history;
    m_snippets = snippets;
}

QVariantMap Sync::storedSettings()
{
    QVariantMap values;
    for (const char *key :
         {SettingsKey::SyncHistory, SettingsKey::SyncSnippets, SettingsKey::SyncActions,
          SettingsKey::EncryptData, SettingsKey::StrongEncryption, SettingsKey::SyncFolder})
        values.insert(QLatin1String(key), Settings::value(QLatin1String(key)));
    for (const char *key : {SettingsKey::Passphrase, SettingsKey::PreviousPassphrase})
        values.insert(QLatin1String(key), Settings::secret(key));
    return values;
}

void Sync::setSettings(const QVariantMap &values)
{
    m_settings = values;
    m_encryption.configure(values);
}

bool Sync::setting(const char *key) const
{
    return m_settings.value(QLatin1String(key)).toBool();
}

ISyncTarget *Sync::activeTarget() const
{
    return m_targets.value(activeTargetName(), m_none);
}

QString Sync::activeTargetName() const
{
    return Settings::value(SettingsKey::SyncTarget).toString();
}

void Sync::connectNotifier()
{
    if (!m_notifier)
        return;
    if (activeTarget()->isValid())
        m_notifier->connectTarget(activeTargetName());
    else
        m_notifier->close();
}

QString Sync::actionsFolder()
{
    return ActionFiles::userFolder();
}

QString Sync::imagePath(const QString &imageName)
{
    const QUuid id = QUuid::fromString(imageName.section(QLatin1Char('_'), 0, 0));
    return Clipping::imageFile(id, imageName.section(QLatin1Char('_'), 1));
}

QStringList Sync::queuedFiles() const
{
    QStringList files;
    for (const SyncEntry &entry : m_queue)
        files.append(entry.file);
    return files;
}

bool Sync::isQueueTimerActive() const
{
    return m_queueTimer->isActive();
}

void Sync::sync(int content, ISyncMerge *merge, SyncDirection direction)
{
    if (m_off)
        return;
    if (!merge && (content == History || content == Snippets)) {
        log(QStringLiteral("Sync: No content to merge for %1").arg(content));
        return;
    }
    if (content == History) {
        if (setting(SettingsKey::SyncHistory))
            enqueue(entryFor(SyncFile, HistoryFile, merge, direction));
    } else if (content == Snippets) {
        if (setting(SettingsKey::SyncSnippets))
            enqueue(entryFor(SyncFile, SnippetsFile, merge, direction));
    } else {
        log(QStringLiteral("Unknown sync file: %1").arg(content));
    }
}

void Sync::syncAll(SyncDirection direction)
{
    if (m_off)
        return;
    log(QStringLiteral("Sync all: %1").arg(int(direction)));
    sync(History, m_history, direction);
    sync(Snippets, m_snippets, direction);
    if (setting(SettingsKey::SyncActions))
        enqueue(entryFor(CompareActions, ActionsEntry, nullptr, direction));
    m_queueTimer->stop();
    handleQueue();
}

void Sync::syncActions()
{
    if (!m_off && setting(SettingsKey::SyncActions))
        enqueue(entryFor(CompareActions, ActionsEntry));
}

void Sync::queueResyncAll()
{
    if (!m_off)
        enqueue(entryFor(ResyncAll, ResyncEntry));
}

void Sync::enqueue(const SyncEntry &entry)
{
    for (SyncEntry &queued : m_queue) {
        if (queued.file != entry.file)
            continue;
        qDebug().noquote() << "The file" << entry.file << "is already in the sync queue";
        // A one-way run the user asked for is not turned into a two-way one by a change that
        // happened to be queued first.
        if (entry.direction != SyncDirection::Both)
            queued.direction = entry.direction;
        // A burst of changes runs once, after its last change.
        m_queueTimer->start(QueueDelayMs);
        return;
    }
    m_queue.append(entry);
    m_queueTimer->start(QueueDelayMs);
}

void Sync::handleQueue()
{
    QElapsedTimer elapsed;
    elapsed.start();
    ISyncTarget *target = activeTarget();
    if (target->hasPendingAnswers())
        return; // the answer goes on with the queue
    if (m_inFlight) {
        // The target dropped the call without an answer: that run ended there.
        qDebug() << "Sync: the last request got no answer";
        m_inFlight = false;
        m_listRequested = false;
        m_online.clear();
    }
    if (!target->isValid()) {
        qWarning() << "No valid sync available";
        log(QStringLiteral("No valid sync available"));
        m_queue.clear();
        m_online.clear();
        m_listRequested = false;
        return;
    }
    m_reactTimer->stop();
    setNotifierReacts(false);
    qDebug() << "handleQueue: queue size:" << m_queue.size() << "online count: " << m_online.size();
    if (m_online.isEmpty() && !m_queue.isEmpty()) {
        if (!m_listRequested) {
            m_listRequested = true;
            m_inFlight = true;
            target->listFiles();
            log(QStringLiteral("Sync: Reading file list"));
        }
        return;
    }
    if (m_queue.isEmpty()) {
        endRun(true);
    } else if (!m_encryptionReady) {
        prepareEncryption();
    } else {
        emit syncStatus(SyncStatus::Running, tr("Synchronizing..."));
        const SyncEntry entry = m_queue.takeFirst();
        qDebug() << "handleQueue: current operation:" << entry.operation << "file:" << entry.file
                 << "direction:" << int(entry.direction);
        dispatch(entry);
    }
    qDebug().noquote() << "Profile: Handling sync queue took " +
                              QString::number(elapsed.elapsed()) + "seconds";
}

void Sync::dispatch(SyncEntry entry)
{
    switch (entry.operation) {
    case SyncFile:
        syncFile(entry);
        return;
    case DownloadImage:
        startDownload(ImageDownload, entry);
        return;
    case DownloadAction:
        startDownload(ActionDownload, entry);
        return;
    case UploadImage:
        uploadFile(entry, imagePath(entry.file.mid(ImagePrefix.size())));
        return;
    case UploadAction:
        uploadFile(entry,
                   actionsFolder() + QLatin1Char('/') + SyncPayload::localFileName(entry.file));
        return;
    case DeleteFile:
        deleteFile(entry);
        return;
    case CompareActions:
        compareActions(entry.direction);
        break;
    case ResyncAll:
        resyncAll();
        break;
    case ResyncDownload:
        if (isNewestOrNoModel(entry.file)) {
            startDownload(Resync, entry);
            return;
        }
        // This run put a newer version online, encoded as it is now; written again, the
        // older one would pass for the newest.
        log(QStringLiteral("Sync: Resync skipped for ") + entry.file +
            QStringLiteral(": a newer version is online"));
        if (isRenaming()) {
            deleteFile(entry);
            return;
        }
        break;
    default:
        log(QStringLiteral("Unknown operation %1").arg(entry.operation));
        break;
    }
    handleQueue();
}

void Sync::prepareEncryption()
{
    takeEncryptionStep(
        m_encryption.begin(m_online.contains(EncryptionHeader::FileName), isReencoding()));
}

bool Sync::isRenaming() const
{
    // Strong encryption going on or off renames the model files; the versions before the
    // newest would keep the old names and form, which show which contents are equal.
    return m_encryption.isStrong() || m_online.contains(EncryptionHeader::FileName);
}

bool Sync::isReencoding() const
{
    return std::any_of(m_queue.cbegin(), m_queue.cend(), [](const SyncEntry &entry) {
        return entry.operation == ResyncAll || entry.operation == ResyncDownload;
    });
}

void Sync::takeEncryptionStep(SyncEncryption::Step step)
{
    const SyncEntry header = entryFor(SyncFile, EncryptionHeader::FileName);
    switch (step) {
    case SyncEncryption::Step::Ready:
        m_encryptionReady = true;
        handleQueue();
        return;
    case SyncEncryption::Step::DownloadHeader:
        startDownload(HeaderDownload, header);
        return;
    case SyncEncryption::Step::UploadHeader:
        log(QStringLiteral("Sync: Writing the encryption header"));
        startUpload(HeaderUpload, header, m_encryption.headerToUpload());
        return;
    case SyncEncryption::Step::Failed:
        log(QStringLiteral("Sync: ") + m_encryption.failure());
        fail(m_encryption.failure());
        return;
    }
}

void Sync::endRun(bool success, const QString &failure)
{
    m_online.clear();
    m_listRequested = false;
    m_encryptionReady = false;
    if (success) {
        m_queueTimer->stop();
        QTimer::singleShot(0, this, [this] {
            Settings::setValue(SettingsKey::LastSync, QDateTime::currentDateTime());
            Settings::setValue(SettingsKey::SyncStatus, int(SyncStatus::Success));
            emit syncStatus(SyncStatus::Success, tr("Synchronization successful."));
        });
    } else {
        // What is still queued stays for the next run, which a change here (queued anew or
        // not), news from another computer or the user starts.
        Settings::setValue(SettingsKey::SyncStatus, int(SyncStatus::Failure));
        emit syncStatus(SyncStatus::Failure, failure);
    }
    m_reactTimer->start();
}

void Sync::fail(const QString &text)
{
    endRun(false, text);
}

void Sync::startDownload(int kind, const SyncEntry &entry)
{
    m_inFlight = true;
    activeTarget()->download(kind, entry);
}

void Sync::startUpload(int kind, const SyncEntry &entry, const QByteArray &bytes)
{
    m_inFlight = true;
    activeTarget()->upload(kind, entry, bytes);
}

QList<OnlineFile> Sync::onlineVersions(const QString &localName) const
{
    const QStringList parts = localName.split(QLatin1Char('.'));
    if (parts.size() != 2) {
        log(QStringLiteral("Filename has incorrect parts: ") + localName);
        return {};
    }
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(parts.first()) + QStringLiteral("(#.+)?\\.") +
        QRegularExpression::escape(parts.last())));
    QList<OnlineFile> versions;
    for (const OnlineFile &file : m_online) {
        if (!pattern.match(file.name).hasMatch())
            continue;
        qDebug() << "Found match" << file.name << "when looking for" << localName;
        versions.append(file);
    }
    std::stable_sort(
        versions.begin(), versions.end(),
        [](const OnlineFile &a, const OnlineFile &b) { return a.created < b.created; });
    return versions;
}

QString Sync::newestOnlineFile(const QString &localName) const
{
    QList<OnlineFile> versions = onlineVersions(localName);
    // A version found unreadable is passed over for good, even when its time says it is the
    // newest (a computer whose clock runs ahead wrote it).
    versions.removeIf([this](const OnlineFile &file) {
        return m_unreadable.contains(file.name) || m_undecryptable.contains(file.name);
    });
    if (versions.isEmpty())
        return {};
    qDebug() << "Selected" << versions.last().name << "(" << versions.last().created;
    return versions.last().name;
}

bool Sync::isNewestOrNoModel(const QString &onlineName) const
{
    if (!isModelFile(onlineName))
        return true;
    return newestOnlineFile(localModelName(onlineName)) == onlineName;
}

void Sync::syncFile(const SyncEntry &entry)
{
    m_undecryptable.clear();
    const QString online = newestOnlineFile(entry.file);
    if (online.isEmpty() || entry.direction == SyncDirection::ToServer) {
        mergeAndUpload(entry, QByteArray());
        return;
    }
    const QString localHash = m_encryption.nameHash(entry.merge->hash());
    QString onlineHash;
    SyncPayload::parseModelFileName(online, nullptr, &onlineHash);
    if (entry.direction != SyncDirection::FromServer && localHash == onlineHash) {
        log(QStringLiteral("Sync: ") + entry.file +
            QStringLiteral(": Online and local hash are equal (") + localHash +
            QStringLiteral("). No need to do anything"));
        finishModelSync(entry);
        handleQueue();
        return;
    }
    qDebug() << entry.file << "localHash" << localHash << "onlineHash" << onlineHash
             << "last download id" << entry.merge->lastDownloadId;
    // A one-way download always fetches: the user asked for the online content.
    if (entry.direction == SyncDirection::Both && online == entry.merge->lastDownloadId) {
        log(QStringLiteral("Sync: The online file ") + online +
            QStringLiteral(" is the same as local so no need to download it again."));
        mergeAndUpload(entry, QByteArray());
        return;
    }
    m_hashBeforeMerge = localHash;
    SyncEntry download = entry;
    download.onlineName = online;
    startDownload(ModelDownload, download);
}

void Sync::mergeAndUpload(const SyncEntry &entry, const QByteArray &downloaded)
{
    log(QStringLiteral("Sync: Merging content for ") + entry.file);
    QByteArray merged;
    const bool changed = entry.merge->merge(downloaded, merged, entry.direction);
    if (merged.isEmpty()) {
        log(QStringLiteral("Sync: Merge failed for ") + entry.file);
        fail(tr("Synchronization failed."));
        return;
    }
    log(QStringLiteral("Sync: Merge succeeded for ") + entry.file);
    const QString mergedHash = ISyncMerge::contentHash(merged);
    const QString name = SyncPayload::modelFileName(entry.file, m_encryption.nameHash(mergedHash));
    const QString lastSynced = m_syncedHashes.value(entry.merge);
    m_syncedHashes.insert(entry.merge, mergedHash);
    // Nothing goes up when the online copy holds exactly the merged content, or when it brought
    // nothing new to content that had not changed here since it was last synced: writing it
    // again would only make the other computer write its own form back, and so on forever.
    const bool onlineHoldsAll = !downloaded.isEmpty() && name == entry.onlineName;
    const bool nothingNew = !downloaded.isEmpty() && !changed && m_hashBeforeMerge == lastSynced;
    if (onlineHoldsAll || nothingNew || entry.direction == SyncDirection::FromServer) {
        if (!downloaded.isEmpty())
            entry.merge->lastDownloadId = entry.onlineName;
        finishModelSync(entry);
        handleQueue();
        return;
    }
    entry.merge->lastDownloadId = name;
    SyncEntry upload = entry;
    upload.file = name;
    startUpload(ModelUpload, upload, m_encryption.encodeModel(merged, name));
}

void Sync::finishModelSync(const SyncEntry &entry)
{
    if (entry.merge && entry.merge == m_history && m_imageNames)
        syncImages(m_imageNames(), entry.direction);
}

void Sync::cleanup(const QString &uploadedName)
{
    const QStringList parts = uploadedName.split(QLatin1Char('.'));
    if (parts.size() != 2) {
        log(QStringLiteral("Filename has incorrect parts: ") + uploadedName);
        return;
    }
    const QString base = parts.first().section(QLatin1Char('#'), 0, 0);
    const QList<OnlineFile> versions = onlineVersions(base + QLatin1Char('.') + parts.last());
    if (versions.size() <= 20)
        return;
    const QString count = QString::number(versions.size());
    for (int i = 0; i < 10; ++i) {
        const QString &name = versions.at(i).name;
        log(QStringLiteral("Sync: Cleanup for ") + base + QStringLiteral(" (") + count +
            QStringLiteral(") ") + name);
        enqueue(entryFor(DeleteFile, name));
    }
}

void Sync::uploadFile(const SyncEntry &entry, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        log(QStringLiteral("Unable to open file ") + path);
        fail(tr("Synchronization failed."));
        return;
    }
    startUpload(FileUpload, entry, m_encryption.encodeFile(file.readAll(), entry.file));
}

void Sync::deleteFile(const SyncEntry &entry)
{
    if (!m_online.contains(entry.file)) {
        log(QStringLiteral("Sync: Unable to delete ") + entry.file +
            QStringLiteral(". File not found."));
        handleQueue();
        return;
    }
    m_inFlight = true;
    SyncEntry removal = entry;
    removal.onlineName = entry.file;
    activeTarget()->remove(removal);
}

void Sync::compareActions(SyncDirection direction)
{
    QMap<QString, QDateTime> local;
    const QMap<QString, QJsonObject> files = ActionFiles::scanFolder(actionsFolder());
    for (auto file = files.constBegin(); file != files.constEnd(); ++file) {
        // A file that cannot be read is not offered; a good copy online replaces it.
        if (!file.value().value(QLatin1String("unreadable")).toBool())
            local.insert(QFileInfo(file.key()).fileName(), actionCreated(file.value()));
    }

    QMultiMap<QString, OnlineAction> online;
    for (const OnlineFile &file : std::as_const(m_online)) {
        const QStringList parts = file.name.split(QLatin1Char('_'));
        if (!file.name.startsWith(ActionPrefix) || parts.size() < 3)
            continue;
        online.insert(SyncPayload::localFileName(file.name),
                      {file.name, QDateTime::fromString(parts.at(1), TimestampFormat)});
    }

    bool removedLocal = false;
    for (auto action = local.constBegin(); action != local.constEnd(); ++action) {
        const QString &fileName = action.key();
        const QString mine = SyncPayload::actionFileName(action.value(), fileName);
        const QList<OnlineAction> versions = online.values(fileName);
        const bool same = std::any_of(versions.begin(), versions.end(),
                                      [&mine](const OnlineAction &v) { return v.name == mine; });
        if (same) {
            log(QStringLiteral("Sync: online has the same action file: ") + fileName);
            continue;
        }
        if (versions.isEmpty()) {
            if (direction == SyncDirection::FromServer) {
                log(QStringLiteral("Sync: missing from online: ") + fileName +
                    QStringLiteral(" -> Remove local"));
                removedLocal |= QFile::remove(actionsFolder() + QLatin1Char('/') + fileName);
            } else {
                log(QStringLiteral("Sync: online doesn't have the action file: ") + fileName);
                enqueue(entryFor(UploadAction, mine));
            }
            continue;
        }
        if (direction == SyncDirection::FromServer)
            continue; // the pass over the online files downloads it
        const auto newest = std::max_element(
            versions.begin(), versions.end(),
            [](const OnlineAction &a, const OnlineAction &b) { return a.stamp < b.stamp; });
        if (direction == SyncDirection::Both && newest->stamp > action.value()) {
            log(QStringLiteral("Sync: online has the newer action file: ") + fileName);
            enqueue(entryFor(DownloadAction, newest->name));
            continue;
        }
        log(QStringLiteral("Sync: online doesn't have the most recent action file: ") + fileName);
        enqueue(entryFor(UploadAction, mine));
        for (const OnlineAction &old : versions) {
            log(QStringLiteral(
                    "Sync: online has old version of the action which will be deleted: ") +
                old.name);
            enqueue(entryFor(DeleteFile, old.name));
        }
    }

    for (const QString &fileName : online.uniqueKeys()) {
        const QList<OnlineAction> versions = online.values(fileName);
        const auto newest = std::max_element(
            versions.begin(), versions.end(),
            [](const OnlineAction &a, const OnlineAction &b) { return a.stamp < b.stamp; });
        if (direction == SyncDirection::FromServer) {
            log(QStringLiteral("Sync: Downloading online: ") + newest->name);
            enqueue(entryFor(DownloadAction, newest->name));
        } else if (!local.contains(fileName) && direction == SyncDirection::Both) {
            log(QStringLiteral("Sync: Downloading new from online: ") + newest->name);
            enqueue(entryFor(DownloadAction, newest->name));
        } else if (!local.contains(fileName)) {
            for (const OnlineAction &version : versions) {
                log(QStringLiteral("Sync: Missing locally -> delete: ") + version.name);
                enqueue(entryFor(DeleteFile, version.name));
            }
        }
    }
    if (removedLocal)
        emit actionsChanged();
}

void Sync::syncImages(const QStringList &imageNames, SyncDirection direction)
{
    qDebug() << "Syncing images: " << imageNames;
    const QSet<QString> listed(imageNames.begin(), imageNames.end());
    for (const QString &name : imageNames) {
        const QString online = SyncPayload::imageFileName(name);
        const bool isOnline = m_online.contains(online);
        const bool isLocal = QFileInfo::exists(imagePath(name));
        if (isOnline && !isLocal && direction != SyncDirection::ToServer) {
            log(QStringLiteral("Sync: New online image: ") + name);
            enqueue(entryFor(DownloadImage, online));
        } else if (!isOnline && isLocal && direction != SyncDirection::FromServer) {
            log(QStringLiteral("Sync: New local image: ") + name);
            enqueue(entryFor(UploadImage, online));
        }
    }
    // A download from the server leaves what is online alone.
    if (direction == SyncDirection::FromServer)
        return;
    for (const OnlineFile &file : std::as_const(m_online)) {
        if (file.name.startsWith(ImagePrefix) &&
            !listed.contains(file.name.section(QLatin1Char('_'), 1))) {
            log(QStringLiteral("Sync: Old online image: ") + file.name);
            enqueue(entryFor(DeleteFile, file.name));
        }
    }
}

void Sync::resyncAll()
{
    // Only the newest version of each model file: rewriting an older one would make it the
    // newest by its time, and every computer would go back to it.
    const bool renaming = isRenaming();
    const auto queueVersions = [this, renaming](const QString &localName) {
        const QString newest = newestOnlineFile(localName);
        if (!newest.isEmpty())
            enqueue(entryFor(ResyncDownload, newest));
        for (const OnlineFile &version : onlineVersions(localName)) {
            if (renaming && version.name != newest)
                enqueue(entryFor(DeleteFile, version.name));
        }
    };
    if (setting(SettingsKey::SyncHistory))
        queueVersions(HistoryFile);
    if (setting(SettingsKey::SyncSnippets))
        queueVersions(SnippetsFile);
    for (const OnlineFile &file : std::as_const(m_online)) {
        if ((file.name.startsWith(ImagePrefix) && setting(SettingsKey::SyncHistory)) ||
            (file.name.startsWith(ActionPrefix) && setting(SettingsKey::SyncActions)))
            enqueue(entryFor(ResyncDownload, file.name));
    }
    // Switched off: once everything is re-encoded, nothing online is sealed any more.
    if (!m_encryption.isStrong() && m_online.contains(EncryptionHeader::FileName))
        enqueue(entryFor(DeleteFile, EncryptionHeader::FileName));
}

void Sync::initialized(bool success)
{
    emit syncInitialized(success);
    if (success)
        connectNotifier();
}

void Sync::onFilesListed(const QList<OnlineFile> &files)
{
    m_inFlight = false;
    m_listRequested = false;
    log(QStringLiteral("Sync: File list received."));
    for (const OnlineFile &file : files) {
        if (!file.name.isEmpty())
            log(QStringLiteral("Sync: Found file: ") + file.name + QStringLiteral(" (") +
                file.created + QLatin1Char(')'));
        m_online.insert(file.name, file);
    }
    handleQueue();
}

void Sync::onDownloaded(int kind, const SyncEntry &entry, const QByteArray &bytes)
{
    m_inFlight = false;
    if (kind >= ActionDownload && kind <= ModelDownload)
        log(QStringLiteral("Sync: Download finished for ") + entry.onlineName);
    switch (kind) {
    case ActionDownload:
    case ImageDownload:
        receiveFile(kind, entry, bytes);
        return;
    case ModelDownload:
        onModelDownloaded(entry, bytes);
        return;
    case Resync:
        resyncUpload(entry, bytes);
        return;
    case HeaderDownload:
        takeEncryptionStep(m_encryption.headerArrived(bytes));
        return;
    default:
        log(QStringLiteral("Unknown download callback"));
        handleQueue();
    }
}

void Sync::onModelDownloaded(const SyncEntry &entry, const QByteArray &body)
{
    SyncPayload::Result result;
    const QByteArray document =
        SyncPayload::decodeModel(body, entry.onlineName, m_encryption.keys(false), &result);
    switch (result) {
    case SyncPayload::Result::Tampered:
        // Refused, and passed over from now on: the next run goes on with the versions before.
        m_unreadable.insert(entry.onlineName);
        [[fallthrough]];
    case SyncPayload::Result::SealedWithoutKey:
    case SyncPayload::Result::NotSealed:
        failDecoding(result, entry.onlineName);
        return;
    case SyncPayload::Result::Ok:
        // Only a version that decrypted tells that the pass phrase is right. Newer encrypted
        // versions above a plain one may carry a pass phrase this computer does not have.
        if (body.startsWith(SyncPayload::EncryptedMarker))
            passOverDamagedVersions();
        if (m_undecryptable.isEmpty())
            mergeAndUpload(entry, document);
        else
            failDecryption(entry.file);
        return;
    case SyncPayload::Result::Failed:
        // Unreadable with any pass phrase: passed over for good, even when its time says it is
        // the newest (a computer whose clock runs ahead wrote it).
        log(QStringLiteral("Sync: Unreadable online file ") + entry.onlineName);
        m_unreadable.insert(entry.onlineName);
        break;
    case SyncPayload::Result::DecryptionFailed:
        // A wrong pass phrase, or a damaged file (a copy cut short): the versions before it
        // tell which.
        m_undecryptable.insert(entry.onlineName);
        break;
    }
    tryVersionBefore(entry);
}

void Sync::tryVersionBefore(const SyncEntry &entry)
{
    const QString before = newestOnlineFile(entry.file);
    if (!before.isEmpty()) {
        log(QStringLiteral("Sync: Trying the version before it: ") + before);
        SyncEntry download = entry;
        download.onlineName = before;
        startDownload(ModelDownload, download);
    } else if (!m_undecryptable.isEmpty()) {
        failDecryption(entry.file);
    } else {
        // Nothing online can be read: the local content becomes the newest version.
        mergeAndUpload(entry, QByteArray());
    }
}

void Sync::failDecoding(SyncPayload::Result result, const QString &onlineName)
{
    // The status line names the file as the user knows it: "History.json", "Tool.json".
    const QString name = isModelFile(onlineName) ? localModelName(onlineName)
                                                 : SyncPayload::localFileName(onlineName);
    switch (result) {
    case SyncPayload::Result::Tampered:
        fail(tr("%1 was changed or damaged online; it is not used.").arg(name));
        return;
    case SyncPayload::Result::SealedWithoutKey:
        fail(tr("The files online use strong encryption: switch it on in the sync settings."));
        return;
    case SyncPayload::Result::NotSealed:
        fail(tr("%1 is not sealed: another computer syncs without strong encryption.").arg(name));
        return;
    default:
        fail(tr("Decryption failed."));
        return;
    }
}

void Sync::failDecryption(const QString &file)
{
    log(QStringLiteral("Sync: No online version of ") + file +
        QStringLiteral(" decrypts with the pass phrase"));
    fail(tr("Decryption failed."));
}

void Sync::passOverDamagedVersions()
{
    // An older version decrypted with the same keys, so the pass phrase is right and the newer
    // ones are damaged.
    for (const QString &name : std::as_const(m_undecryptable)) {
        log(QStringLiteral("Sync: Damaged online file passed over: ") + name);
        m_unreadable.insert(name);
    }
    m_undecryptable.clear();
}

void Sync::receiveFile(int kind, const SyncEntry &entry, const QByteArray &body)
{
    SyncPayload::Result result;
    const QByteArray bytes =
        SyncPayload::decodeFile(body, entry.onlineName, m_encryption.keys(false), &result);
    if (result != SyncPayload::Result::Ok) {
        failDecoding(result, entry.onlineName);
        return;
    }
    const QStringList parts = SyncPayload::downloadParts(entry.onlineName);
    if (!parts.isEmpty() && kind == ActionDownload)
        writeAction(parts.at(2), bytes);
    else if (!parts.isEmpty())
        emit imageDownloaded(QUuid::fromString(parts.at(1)), parts.at(2), bytes);
    handleQueue();
}

void Sync::writeAction(const QString &fileName, const QByteArray &bytes)
{
    QDir().mkpath(actionsFolder());
    const QString path = actionsFolder() + QLatin1Char('/') + fileName;
    QSaveFile file(path);
    // Unbuffered: a short write on a full disk must show before the commit.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        file.write(bytes) == bytes.size() && file.commit())
        emit actionsChanged();
    else
        log(path + QStringLiteral(" cannot be opened for writing."));
}

void Sync::resyncUpload(const SyncEntry &entry, const QByteArray &body)
{
    const QString &name = entry.onlineName;
    log(QStringLiteral("Sync: Resync download finished for ") + name);
    const bool model = isModelFile(name);
    SyncPayload::Result result;
    const SyncPayload::Keys keys = m_encryption.keys(true);
    const QByteArray plain = model ? SyncPayload::decodeModel(body, name, keys, &result)
                                   : SyncPayload::decodeFile(body, name, keys, &result);
    if (result != SyncPayload::Result::Ok) {
        // Left as it is: unreadable with either pass phrase, it would only get worse.
        log(QStringLiteral("Sync: Resync skipped for ") + name);
        handleQueue();
        return;
    }
    SyncEntry upload = entry;
    upload.file = name;
    if (model) {
        // The name's hash changes with strong encryption going on or off.
        upload.file = SyncPayload::modelFileName(
            localModelName(name), m_encryption.nameHash(ISyncMerge::contentHash(plain)));
        if (upload.file != name)
            enqueue(entryFor(DeleteFile, name));
    }
    startUpload(ResyncUpload, upload,
                model ? m_encryption.encodeModel(plain, upload.file)
                      : m_encryption.encodeFile(plain, upload.file));
}

void Sync::onUploaded(int kind, const SyncEntry &entry)
{
    m_inFlight = false;
    const QString &name = entry.onlineName;
    switch (kind) {
    case FileUpload:
        log(QStringLiteral("Sync: Upload finished for ") + name);
        m_online.insert(name, OnlineFile{name, name, nowText()});
        break;
    case ResyncUpload:
        log(QStringLiteral("Sync: Resync upload finished for ") + name);
        if (!m_online.contains(name))
            m_online.insert(name, OnlineFile{name, name, nowText()});
        break;
    case HeaderUpload:
        log(QStringLiteral("Sync: Encryption header written"));
        m_online.insert(name, OnlineFile{name, name, nowText()});
        m_encryptionReady = true;
        break;
    case ModelUpload:
        log(QStringLiteral("Sync: Upload finished for ") + name);
        m_online.insert(name, OnlineFile{name, name, nowText()});
        emit contentUploaded(localModelName(name));
        cleanup(name);
        finishModelSync(entry);
        break;
    default:
        log(QStringLiteral("Unknown upload callback"));
        break;
    }
    handleQueue();
}

void Sync::onRemoved(const SyncEntry &entry)
{
    m_inFlight = false;
    log(QStringLiteral("Sync: Deleted ") + entry.onlineName);
    m_online.remove(entry.onlineName);
    handleQueue();
}

void Sync::onDataUpdated(const QString &content)
{
    if (content == HistoryFile)
        sync(History, m_history, SyncDirection::Both);
    else if (content == SnippetsFile)
        sync(Snippets, m_snippets, SyncDirection::Both);
    else
        log(QStringLiteral("Unknown data content:") + content);
}
