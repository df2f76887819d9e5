#include "history/historyitemmodel.h"

#include "base/settings.h"
#include "base/unreadablefile.h"
#include "history/applicationrules.h"
#include "history/cleancache.h"
#include "history/clipping.h"
#include "history/clippingitem.h"
#include "history/copytocache.h"
#include "history/historyindex.h"
#include "history/historywriter.h"
#include "history/makethumbnail.h"
#include "synclog.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMimeData>
#include <QScopeGuard>
#include <QSortFilterProxyModel>
#include <QTextDocumentFragment>
#include <QThreadPool>
#include <QTimer>

#ifdef __GLIBC__
#include <malloc.h>
#endif

using namespace Clipping;

namespace {

QDateTime wholeSeconds(const QDateTime &time)
{
    const QTime clock = time.time();
    return QDateTime(time.date(), QTime(clock.hour(), clock.minute(), clock.second()),
                     time.timeSpec());
}

// Reading a large file leaves much of its passing memory in the allocator's free lists, where
// it would count against the idle program for as long as it runs. Handed back once the load's
// aftermath (views filled, the proxy's mapping made) has passed too.
void releaseFreedMemory()
{
#ifdef __GLIBC__
    QTimer::singleShot(0, [] { malloc_trim(0); });
#endif
}

QString ownCopy(const QString &text)
{
    return text.isEmpty() ? QString() : QString(text.constData(), text.size());
}

// A clipping that another part made as a plain item.
HistoryFile::Record recordOf(const QStandardItem *clipping)
{
    HistoryFile::Record record;
    record.type = clipping->data(TypeRole).toInt();
    record.brief = clipping->data(BriefRole).toString();
    record.text = clipping->data(TextRole).toString();
    record.html = clipping->data(HtmlRole).toString();
    record.time = clipping->data(TimeRole).toDateTime();
    record.id = clipping->data(IdRole).toUuid();
    record.removed = clipping->data(RemovedRole).toBool();
    record.pinned = clipping->data(PinnedRole).toBool();
    record.locked = clipping->data(LockedRole).toBool();
    record.application = clipping->data(ApplicationRole).toString();
    record.filename = clipping->data(FilenameRole).toString();
    return record;
}

// A clipping as merge decisions name it; made only when a line is written, as a load counts
// its decisions instead.
QString logText(const QStandardItem *clipping)
{
    return shortText(clipping->data(TextRole).toString());
}

} // namespace

HistoryItemModel::HistoryItemModel(const QString &path, QObject *parent)
    : QStandardItemModel(parent), m_path(path), m_proxy(new QSortFilterProxyModel(this)),
      m_index(new HistoryIndex(this)), m_writer(new HistoryWriter(this)),
      m_clock([] { return QDateTime::currentDateTime(); })
{
    setColumnCount(1);
    m_proxy->setSourceModel(this);
    m_proxy->setFilterRole(RemovedRole);
    m_proxy->setFilterFixedString(QStringLiteral("false"));
    connect(m_writer, &HistoryWriter::finished, this, &HistoryItemModel::onSaveFinished);
    reloadSettings();
}

HistoryItemModel::~HistoryItemModel()
{
    // Image tasks read files through the image plugins, which go away with the application
    // object that is destroyed next; let them finish first.
    QThreadPool::globalInstance()->waitForDone();
    m_writer->waitForDone();
}

void HistoryItemModel::setClock(std::function<QDateTime()> clock)
{
    m_clock = std::move(clock);
}

void HistoryItemModel::reloadSettings()
{
    m_limits.keepItems = Settings::keepItems();
    m_limits.ignoreLength = Settings::ignoreLength();
    m_limits.ignoreSize = Settings::ignoreSize();
    m_limits.includeImages = Settings::includeImages();
    m_excluded = ApplicationRules::names(ApplicationRules::Excluded);
}

bool HistoryItemModel::indexIsConsistent() const
{
    return m_index->isConsistent();
}

bool HistoryItemModel::addText(const QString &text, const QString &html, const QPixmap &icon,
                               const QString &application)
{
    recordApplication(application, icon);
    QStandardItem *item = newTextItem(text, html, icon, application, now());
    if (!mergeItem(item, true)) {
        delete item;
        return false;
    }
    save(true);
    return true;
}

namespace {

bool isPng(const QByteArray &bytes)
{
    return bytes.startsWith("\x89PNG\r\n\x1a\n");
}

bool isJpeg(const QByteArray &bytes)
{
    return bytes.startsWith("\xff\xd8\xff");
}

} // namespace

bool HistoryItemModel::addImage(const QUrl &source, const QImage &image, const QPixmap &icon,
                                const QString &application, const QDateTime &time,
                                const QByteArray &encoded)
{
    recordApplication(application, icon);
    QStandardItem *item = newImageItem(source, image, icon, application, time);
    QString fileName = item->data(FilenameRole).toString();
    if (source.isEmpty() && isJpeg(encoded)) {
        fileName.replace(fileName.size() - 3, 3, QStringLiteral("jpg"));
        item->setData(fileName, FilenameRole);
    }
    // Merged before its file is written, so a refused image leaves nothing in the cache.
    if (!mergeItem(item, true)) {
        delete item;
        return false;
    }
    const bool keepBytes =
        (fileName.endsWith(QLatin1String(".png"), Qt::CaseInsensitive) && isPng(encoded)) ||
        (fileName.endsWith(QLatin1String(".jpg"), Qt::CaseInsensitive) && isJpeg(encoded));
    const QUuid id = item->data(IdRole).toUuid();
    // Made from the image at hand: read back from its file, a large image is decoded twice.
    if (!image.isNull())
        setThumbnail(MakeThumbnail::thumbnailOf(image), id);
    writeToCache(id, fileName, keepBytes ? QImage() : image, keepBytes ? encoded : QByteArray(),
                 source, image.isNull());
    save(true);
    return true;
}

void HistoryItemModel::addMimeData(QMimeData *data, const QPixmap &icon, const QString &application)
{
    const auto release = qScopeGuard([data] { data->deleteLater(); });
    recordApplication(application, icon);
    const QList<QUrl> urls = data->urls();
    if (!urls.isEmpty() && !addUrls(urls, icon, application))
        return;
    const QImage image = qvariant_cast<QImage>(data->imageData());
    if (!image.isNull()) {
        // Stored as they came when they really are PNG or JPEG; anything else is encoded again.
        QByteArray encoded = data->data(QStringLiteral("image/png"));
        if (!isPng(encoded))
            encoded = data->data(QStringLiteral("image/jpeg"));
        addImage(urls.isEmpty() ? QUrl() : urls.first(), image, icon, application, now(), encoded);
    } else if (data->hasText()) {
        addText(data->text(), data->html(), icon, application);
    } else if (data->hasHtml()) {
        // Offered as HTML alone (some browsers and mail programs do): its text is read from it.
        const QString html = data->html();
        addText(QTextDocumentFragment::fromHtml(html).toPlainText(), html, icon, application);
    } else {
        qDebug() << "Unknown clipboard content:" << data->formats();
    }
}

bool HistoryItemModel::addUrls(const QList<QUrl> &urls, const QPixmap &icon,
                               const QString &application)
{
    if (urls.size() > 1) {
        qDebug() << "Too many files copied to clipboard" << urls.size();
        return false;
    }
    const QUrl &url = urls.first();
    if (!url.isLocalFile()) {
        qDebug() << "There's an url but it's not a local file" << url.path();
        return true;
    }
    static const QStringList imageSuffixes{QStringLiteral(".png"), QStringLiteral(".jpg"),
                                           QStringLiteral(".gif")};
    const QString fileName = url.fileName();
    for (const QString &suffix : imageSuffixes) {
        if (fileName.endsWith(suffix, Qt::CaseInsensitive)) {
            addImage(url, QImage(), icon, application, now());
            return false;
        }
    }
    qDebug() << "The copied file is not supported image file" << url;
    return false;
}

bool HistoryItemModel::accepts(const QStandardItem *item) const
{
    if (!m_excluded.isEmpty()) {
        const QString application = item->data(ApplicationRole).toString();
        if (m_excluded.contains(application)) {
            decided(Excluded, [&] {
                return QStringLiteral("Clipping '%1' comes from excluded application: '%2' -> "
                                      "ignored")
                    .arg(logText(item), application);
            });
            return false;
        }
    }
    const int type = item->data(TypeRole).toInt();
    if (isCleared(item))
        return true; // a mark, not content
    if (isImage(type) && !m_limits.includeImages) {
        decided(ImagesOff, [&] {
            return QStringLiteral("Adding images '%1' to history is disabled.").arg(logText(item));
        });
        return false;
    }
    if (type != TextType)
        return true;
    const qsizetype length = item->data(TextRole).toString().size();
    if (length < m_limits.ignoreLength) {
        decided(TooSmall, [&] {
            return QStringLiteral("Text '%1' too small (%2 vs %3). Ignored.")
                .arg(logText(item))
                .arg(length)
                .arg(m_limits.ignoreLength);
        });
        return false;
    }
    const qint64 largest = qint64(m_limits.ignoreSize) * 1024;
    if (length > largest) {
        ++m_tooLarge;
        decided(TooLarge, [&] {
            return QStringLiteral("Text '%1' too large (%2 vs %3). Ignored.")
                .arg(logText(item))
                .arg(length)
                .arg(largest);
        });
        return false;
    }
    return true;
}

int HistoryItemModel::duplicateRow(const QStandardItem *item) const
{
    // A cleared text has no brief left: it ends the clipping of its id.
    if (item->data(TypeRole).toInt() == TextType && !isCleared(item))
        return m_index->firstRowWithBrief(item->data(BriefRole).toString());
    return m_index->firstRowWithId(item->data(IdRole).toUuid());
}

QDateTime HistoryItemModel::now() const
{
    return wholeSeconds(m_clock());
}

QDateTime HistoryItemModel::laterThan(const QStandardItem *clipping) const
{
    // A removal or clearing must be newer than the copy it ends, or another computer that has
    // the copy would keep it; within the second of the copy that takes the next second.
    const QDateTime copied = clipping->data(TimeRole).toDateTime();
    const QDateTime time = now();
    return time > copied ? time : copied.addSecs(1);
}

bool HistoryItemModel::merge(QStandardItem *item)
{
    return mergeItem(item, false);
}

bool HistoryItemModel::mergeItem(QStandardItem *item, bool freshCopy)
{
    item->setData(wholeSeconds(item->data(TimeRole).toDateTime()), TimeRole);
    // A newer copy of a clipping replaces the older one and is merged again from the start.
    for (;;) {
        if (!accepts(item))
            return false;
        const int row = duplicateRow(item);
        if (row < 0) {
            insertClipping(item, freshCopy);
            return true;
        }
        const QStandardItem *existing = this->item(row);
        const QDateTime oldTime = existing->data(TimeRole).toDateTime();
        const QDateTime newTime = item->data(TimeRole).toDateTime();
        const auto alreadyThere = [&] {
            return QStringLiteral("The item '%1' is already in the history (pos %2)")
                .arg(logText(item))
                .arg(row);
        };
        // Copied here again within the same second, it is still the newest copy.
        if (!(oldTime < newTime || (freshCopy && oldTime == newTime))) {
            decided(AlreadyThere, alreadyThere);
            return false;
        }
        decided(Replaced, [&] {
            logMerge(alreadyThere());
            return QStringLiteral("The added item '%1' is newer so adding it again to the "
                                  "model (%2 vs %3)")
                .arg(logText(item), newTime.toString(), oldTime.toString());
        });
        item->setData(existing->data(IconRole), IconRole);
        item->setData(existing->data(ApplicationRole), ApplicationRole);
        if (!isCleared(item))
            carryOver(existing, item);
        removeRow(row);
    }
}

void HistoryItemModel::carryOver(const QStandardItem *existing, QStandardItem *item)
{
    const QString html = existing->data(HtmlRole).toString();
    setOptionalText(item, HtmlRole, html);
    item->setData(html.isEmpty() ? item->data(TextRole) : QVariant(html), ToolTipRole);
    if (!item->data(PinnedRole).toBool())
        item->setData(existing->data(PinnedRole).toBool(), PinnedRole);
    // A locked clipping copied again stays protected.
    if (!item->data(LockedRole).toBool())
        item->setData(existing->data(LockedRole).toBool(), LockedRole);
}

void HistoryItemModel::insertClipping(QStandardItem *item, bool freshCopy)
{
    trim();
    // A copy made here goes above the rows of its own second too: the newest copy is on top
    // by its row, whatever the clock's resolution.
    const int row = m_index->insertionRow(item->data(PinnedRole).toBool(),
                                          item->data(TimeRole).toDateTime(), freshCopy);
    decided(Added, [&] {
        return QStringLiteral("Item '%1' added at position %2").arg(logText(item)).arg(row);
    });
    m_index->expectOrderedInsert();
    insertRow(row, item);
}

void HistoryItemModel::trim()
{
    // A limit of 0 (or an unreadable one) keeps everything rather than emptying the history.
    int keep = qMax(m_limits.keepItems, 0);
    if (keep == 0)
        return;
    while (rowCount() >= keep) {
        if (item(keep - 1)->data(LockedRole).toBool())
            ++keep;
        else
            removeClipping(keep - 1);
    }
}

void HistoryItemModel::removeClipping(int row)
{
    const QStandardItem *clipping = item(row);
    if (!clipping)
        return;
    if (isImage(clipping->data(TypeRole).toInt()))
        removeImageFolder(clipping->data(IdRole).toUuid());
    decided(Trimmed, [&] {
        return QStringLiteral("Removing '%1' from the history").arg(logText(clipping));
    });
    removeRow(row);
}

void HistoryItemModel::clearHistory()
{
    for (int row = 0; row < rowCount(); ++row) {
        QStandardItem *clipping = item(row);
        if (clipping->data(LockedRole).toBool())
            continue;
        clipping->setData(laterThan(clipping), TimeRole);
        clipping->setData(true, RemovedRole);
        clipping->setData(false, LockedRole);
        clipping->setData(false, PinnedRole);
        clearContent(clipping);
    }
}

void HistoryItemModel::setLocked(int row, bool locked)
{
    QStandardItem *clipping = item(row);
    if (!clipping)
        return;
    clipping->setData(locked, LockedRole);
    clipping->setData(now(), TimeRole);
    save(true);
}

void HistoryItemModel::setPinned(int row, bool pinned)
{
    QStandardItem *clipping = item(row);
    if (!clipping || clipping->data(PinnedRole).toBool() == pinned)
        return;
    clipping->setData(pinned, PinnedRole);
    moveToOrderedRow(row);
    save(true);
}

void HistoryItemModel::moveToTop(int row)
{
    QStandardItem *clipping = item(row);
    if (!clipping)
        return;
    const QDateTime time = now();
    if (clipping->data(TimeRole).toDateTime() < time)
        clipping->setData(time, TimeRole);
    insertOrdered(takeRow(row).first(), true);
    save(true);
}

void HistoryItemModel::moveToOrderedRow(int row)
{
    insertOrdered(takeRow(row).first());
}

void HistoryItemModel::insertOrdered(QStandardItem *clipping, bool aboveEqual)
{
    const int target = m_index->insertionRow(clipping->data(PinnedRole).toBool(),
                                             clipping->data(TimeRole).toDateTime(), aboveEqual);
    m_index->expectOrderedInsert();
    insertRow(target, clipping);
}

QList<QStandardItem *> HistoryItemModel::takeRows(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    QList<QStandardItem *> taken;
    for (int row : std::as_const(rows)) {
        if (row >= 0 && row < rowCount())
            taken.prepend(takeRow(row).first());
    }
    return taken;
}

void HistoryItemModel::reverseOrder(QList<int> rows)
{
    const QList<QStandardItem *> clippings = takeRows(rows);
    QList<QPair<QDateTime, bool>> places;
    for (const QStandardItem *clipping : clippings)
        places.append({clipping->data(TimeRole).toDateTime(), clipping->data(PinnedRole).toBool()});
    // The last one takes the first one's place, pinned state included, and so on inwards.
    for (int i = 0; i < clippings.size(); ++i) {
        QStandardItem *clipping = clippings.at(clippings.size() - 1 - i);
        clipping->setData(places.at(i).first, TimeRole);
        clipping->setData(places.at(i).second, PinnedRole);
        insertOrdered(clipping);
    }
    if (!clippings.isEmpty())
        save(true);
}

QList<HistoryItemModel::Removal> HistoryItemModel::markRemoved(QList<int> rows)
{
    QList<Removal> removals;
    QList<QStandardItem *> removed;
    for (int row : std::as_const(rows)) {
        QStandardItem *clipping = item(row);
        if (!clipping)
            continue;
        logMerge(QStringLiteral("Item '%1' removed by the user").arg(logText(clipping)));
        removals.append({clipping->data(IdRole).toUuid(), clipping->data(PinnedRole).toBool(),
                         clipping->data(LockedRole).toBool()});
        clipping->setData(true, RemovedRole);
        clipping->setData(laterThan(clipping), TimeRole);
        clipping->setData(false, PinnedRole);
        clipping->setData(false, LockedRole);
        removed.append(clipping);
    }
    // Where its new time puts it, as on every computer that receives the removal.
    for (QStandardItem *clipping : std::as_const(removed))
        moveToOrderedRow(clipping->row());
    if (!rows.isEmpty())
        save(true);
    return removals;
}

void HistoryItemModel::restoreRemoved(const QList<Removal> &removals)
{
    for (const Removal &removal : removals) {
        QStandardItem *clipping = item(m_index->firstRowWithId(removal.id));
        if (!clipping || !clipping->data(RemovedRole).toBool())
            continue;
        logMerge(QStringLiteral("Item '%1' brought back by the user").arg(logText(clipping)));
        clipping->setData(false, RemovedRole);
        clipping->setData(laterThan(clipping), TimeRole);
        clipping->setData(removal.pinned, PinnedRole);
        clipping->setData(removal.locked, LockedRole);
        moveToOrderedRow(clipping->row());
    }
    if (!removals.isEmpty())
        save(true);
}

void HistoryItemModel::clearStyle(int row)
{
    QStandardItem *clipping = item(row);
    if (!clipping || clipping->data(HtmlRole).toString().isEmpty())
        return;
    setOptionalText(clipping, HtmlRole, QString());
    clipping->setData(clipping->data(TextRole), ToolTipRole);
    save(true);
}

QByteArray HistoryItemModel::iconPng(const QString &application, const QPixmap &icon)
{
    auto cached = m_iconPngs.constFind(application);
    if (cached != m_iconPngs.constEnd() && cached->first == icon.cacheKey())
        return cached->second;
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    icon.save(&buffer, "PNG");
    m_iconPngs.insert(application, {icon.cacheKey(), png});
    return png;
}

HistoryFile::Document HistoryItemModel::snapshot(quint64 saved)
{
    HistoryFile::Document document;
    document.revisions = ClippingItem::lastRevision();
    if (saved > 0)
        document.order.reserve(rowCount());
    else
        document.records.reserve(rowCount());
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *clipping = item(row);
        const bool ours = clipping->type() == ClippingItem::Type;
        const auto *ownItem = static_cast<const ClippingItem *>(clipping);
        if (ours && ownItem->revision() <= saved) {
            document.order.append(-qint64(ownItem->revision()));
        } else {
            if (saved > 0)
                document.order.append(document.records.size());
            document.records.append(ours ? ownItem->record() : recordOf(clipping));
        }
        const QString &application =
            ours ? ownItem->application() : document.records.constLast().application;
        // Read in place: most clippings have no icon, and asking each through its roles costs
        // a fifth of a large history's save.
        if (ours && ownItem->icon().isNull())
            continue;
        // Asked as a value first: even a null pixmap costs the platform's pixmap to make.
        const QVariant icon =
            document.icons.contains(application) ? QVariant() : clipping->data(IconRole);
        if (icon.isValid() && !icon.value<QPixmap>().isNull())
            document.icons.insert(application, iconPng(application, icon.value<QPixmap>()));
    }
    return document;
}

QByteArray HistoryItemModel::serialize()
{
    QElapsedTimer total;
    total.start();
    const HistoryFile::Document document = snapshot();
    QElapsedTimer encoding;
    encoding.start();
    const QByteArray bytes = HistoryFile::encode(document);
    qDebug() << "Profile: Serializing to JSON took " << encoding.elapsed();
    qDebug() << "Profile: Serializing history item model took " << total.elapsed();
    return bytes;
}

QStandardItem *HistoryItemModel::itemFrom(const HistoryFile::Record &record,
                                          const QHash<QString, QPixmap> &icons) const
{
    // The clipping's texts are copied out of the document: left where decoding put them, each
    // would pin the memory of the decoder's scraps around it for as long as the program runs.
    const QString text = ownCopy(record.text);
    auto *clipping = new ClippingItem;
    // A one-line text is its own brief: one string for both saves memory in large histories.
    clipping->setText(record.brief == record.text ? text : ownCopy(record.brief));
    clipping->setEditable(false);
    clipping->setData(record.id, IdRole);
    clipping->setData(record.type, TypeRole);
    clipping->setData(text, TextRole);
    setOptionalText(clipping, HtmlRole, ownCopy(record.html));
    clipping->setData(record.time, TimeRole);
    clipping->setData(record.removed, RemovedRole);
    clipping->setData(record.pinned, PinnedRole);
    clipping->setData(record.locked, LockedRole);
    clipping->setData(record.application, ApplicationRole);
    const auto icon = icons.constFind(record.application);
    if (icon != icons.constEnd())
        clipping->setData(*icon, IconRole);
    setOptionalText(clipping, FilenameRole, ownCopy(record.filename));
    return clipping;
}

int HistoryItemModel::mergeDocument(const HistoryFile::Document &document, bool makeThumbnails)
{
    QElapsedTimer timer;
    timer.start();
    QHash<QString, QPixmap> icons;
    for (auto png = document.icons.constBegin(); png != document.icons.constEnd(); ++png) {
        QPixmap icon;
        if (icon.loadFromData(png.value(), "PNG"))
            icons.insert(png.key(), icon);
    }
    QList<QStandardItem *> items;
    items.reserve(document.records.size());
    for (const HistoryFile::Record &record : document.records)
        items.append(itemFrom(record, icons));
    qDebug() << "Profile: Deserialize parsing took" << timer.elapsed();

    QElapsedTimer adding;
    adding.start();
    int kept = 0;
    for (QStandardItem *clipping : std::as_const(items)) {
        const QUuid id = clipping->data(IdRole).toUuid();
        const QString fileName = clipping->data(FilenameRole).toString();
        const bool image = isImage(clipping->data(TypeRole).toInt());
        if (!merge(clipping)) {
            delete clipping;
            continue;
        }
        ++kept;
        if (image && makeThumbnails)
            makeThumbnail(id, fileName);
    }
    qDebug() << "Profile: Deserialize adding items took" << adding.elapsed();
    trim();
    qDebug() << "Profile: Deserializing history item model took" << timer.elapsed();
    return kept;
}

void HistoryItemModel::logMerge(const QString &line)
{
    SyncLog::write(QStringLiteral("Merge clippings: ") + line);
}

QString HistoryItemModel::summary(const std::array<int, DecisionCount> &tally)
{
    static const char *const names[DecisionCount] = {"added",
                                                     "of them replacing an older copy",
                                                     "already there",
                                                     "from excluded applications",
                                                     "images while images are off",
                                                     "too small",
                                                     "too large",
                                                     "removed beyond the history's size"};
    QStringList parts;
    for (int decision = 0; decision < DecisionCount; ++decision) {
        if (tally[size_t(decision)] > 0)
            parts.append(QString::number(tally[size_t(decision)]) + QLatin1Char(' ') +
                         QLatin1String(names[decision]));
    }
    return parts.join(QStringLiteral(", "));
}

int HistoryItemModel::deserialize(const QByteArray &bytes)
{
    HistoryFile::Document document;
    if (!HistoryFile::decode(bytes, &document))
        return -1;
    m_tooLarge = 0;
    std::array<int, DecisionCount> tally{};
    m_tally = &tally;
    const int kept = mergeDocument(document, true);
    m_tally = nullptr;
    logMerge(QStringLiteral("Loaded %1 of %2 clippings from the file: %3")
                 .arg(kept)
                 .arg(document.records.size())
                 .arg(summary(tally)));
    m_droppedAtLoad = document.malformed + m_tooLarge;
    return kept;
}

void HistoryItemModel::clearRows()
{
    clear(); // also drops the column, which the views need
    setColumnCount(1);
}

void HistoryItemModel::load()
{
    QByteArray bytes;
    if (HistoryFile::read(m_path, &bytes) == HistoryFile::ReadResult::Missing)
        return;
    clearRows();
    const int count = deserialize(bytes);
    bytes.clear();
    releaseFreedMemory();
    qDebug().noquote() << "Read " << count << " history items from " << m_path;
    if (count < 0) {
        // The next save replaces the file; the copy keeps what the user had.
        emit warning(
            UnreadableFile::keep(m_path, tr("Failed to parse the clippings file: ") + m_path));
    } else if (m_droppedAtLoad > 0) {
        qWarning() << "Left out" << m_droppedAtLoad << "clippings at load";
        emit notice(tr("%n clipping(s) in the clippings file could not be taken and were left "
                       "out: larger than the size limit, or damaged.",
                       nullptr, m_droppedAtLoad));
    }
}

void HistoryItemModel::save(bool tellSync, const QByteArray &prepared)
{
    if (prepared.isEmpty()) {
        m_writer->save(m_path, snapshot(m_savedRevisions), tellSync);
    } else {
        m_savedRevisions = 0;
        m_writer->saveBytes(m_path, prepared, tellSync);
    }
}

void HistoryItemModel::finishSaves()
{
    // Twice: a save that found the file changed under it is made again, whole, as its result
    // is delivered.
    for (int pass = 0; pass < 2; ++pass) {
        m_writer->waitForDone();
        QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    }
}

void HistoryItemModel::onSaveFinished(const QString &path, int result, bool tellSync,
                                      const QString &error, quint64 revisions)
{
    if (HistoryFile::WriteResult(result) == HistoryFile::WriteResult::NeedsContent) {
        // The file is not the one the last save wrote: hand over every clipping whole.
        m_savedRevisions = 0;
        save(tellSync);
        return;
    }
    const bool written = HistoryFile::WriteResult(result) == HistoryFile::WriteResult::Written;
    if (written)
        m_savedRevisions = revisions;
    // Told once, not once per copy: a full disk fails every save until space is freed.
    const QString problem =
        written ? QString()
                : tr("Writing the clippings file failed: %1 (%2). The clippings are kept and "
                     "saved as soon as writing works again.")
                      .arg(QDir::toNativeSeparators(path), error);
    if (problem.isEmpty() != m_saveProblem.isEmpty()) {
        m_saveProblem = problem;
        emit saveProblemChanged(problem);
    }
    if (written && tellSync)
        emit syncRequested();
    emit saveFinished(written);
}

void HistoryItemModel::recordApplication(const QString &application, const QPixmap &icon)
{
    if (application.isEmpty() || m_knownApplications.contains(application))
        return;
    ApplicationRules::recordApplication(application, icon);
    m_knownApplications.insert(application);
}

void HistoryItemModel::copyToCache(const QStandardItem *item, const QImage &image,
                                   const QByteArray &bytes, const QUrl &source)
{
    writeToCache(item->data(IdRole).toUuid(), item->data(FilenameRole).toString(), image, bytes,
                 source);
}

void HistoryItemModel::writeToCache(const QUuid &id, const QString &fileName, const QImage &image,
                                    const QByteArray &bytes, const QUrl &source,
                                    bool thumbnailFromFile)
{
    auto *task = new CopyToCache(image, bytes, id, fileName, source);
    if (thumbnailFromFile) {
        connect(
            task, &CopyToCache::done, this, [this, id, fileName] { makeThumbnail(id, fileName); },
            Qt::QueuedConnection);
    }
    QThreadPool::globalInstance()->start(task);
}

void HistoryItemModel::makeThumbnail(const QUuid &id, const QString &fileName)
{
    m_thumbnailsPending.insert(id);
    auto *task = new MakeThumbnail(id, fileName);
    connect(task, &MakeThumbnail::thumbnail, this, &HistoryItemModel::setThumbnail,
            Qt::QueuedConnection);
    QThreadPool::globalInstance()->start(task);
}

void HistoryItemModel::setThumbnail(const QImage &image, const QUuid &id)
{
    const int row = m_index->firstRowWithId(id);
    if (row < 0) {
        qWarning() << "Unable to find the item for thumbnail";
        return;
    }
    m_thumbnailsPending.remove(id);
    item(row)->setData(image, ThumbnailRole);
    for (const QUuid &dropped : m_thumbnails.use(id)) {
        const int droppedRow = m_index->firstRowWithId(dropped);
        if (droppedRow >= 0)
            item(droppedRow)->setData(QVariant(), ThumbnailRole);
    }
}

void HistoryItemModel::requestThumbnail(const QUuid &id, const QString &fileName)
{
    if (m_thumbnailsPending.contains(id))
        return;
    if (m_thumbnails.contains(id))
        m_thumbnails.use(id);
    else
        makeThumbnail(id, fileName);
}

void HistoryItemModel::startCleanCache()
{
    QStringList keep;
    keep.reserve(rowCount());
    for (int row = 0; row < rowCount(); ++row)
        keep.append(idFolderName(item(row)->data(IdRole).toUuid()));
    QThreadPool::globalInstance()->start(new CleanCache(keep));
}

void HistoryItemModel::loadDemo()
{
    clearRows();
    QFile samples(QStringLiteral(":/examples/history-samples.json"));
    HistoryFile::Document document;
    if (!samples.open(QIODevice::ReadOnly) || !HistoryFile::decode(samples.readAll(), &document)) {
        qWarning() << "Unable to read the demo history";
        return;
    }
    // The samples read as copied just now, a few minutes apart, newest first.
    for (qsizetype i = 0; i < document.records.size(); ++i)
        document.records[i].time = now().addSecs(-180 * i);
    mergeDocument(document, false);
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *clipping = item(row);
        if (!isImage(clipping->data(TypeRole).toInt()))
            continue;
        QFile image(QStringLiteral(":/examples/images/") + clipping->data(FilenameRole).toString());
        if (image.open(QIODevice::ReadOnly))
            copyToCache(clipping, QImage(), image.readAll(), QUrl());
    }
}

void HistoryItemModel::fillWithGeneratedClippings(int count)
{
    static const QStringList words =
        QStringLiteral(
            "clipboard history snippet paste keyword window shortcut image text rich sync folder "
            "drive action script format merge order pinned locked application rule delay")
            .split(QLatin1Char(' '));
    clearRows();
    const QDateTime start = now();
    for (int i = count - 1; i >= 0; --i) {
        QStringList line;
        for (int word = 0; word < 4 + (i * 7) % 40; ++word)
            line.append(words.at((i + word * 3) % words.size()));
        const QString text = QStringLiteral("%1. %2").arg(i).arg(line.join(QLatin1Char(' ')));
        QStandardItem *clipping =
            newTextItem(text, QString(), QPixmap(), QStringLiteral("perftest"), start.addSecs(-i));
        if (!merge(clipping))
            delete clipping;
    }
}

QVariant HistoryItemModel::data(const QModelIndex &index, int role) const
{
    if (role != ToolTipRole || !isImage(QStandardItemModel::data(index, TypeRole).toInt()))
        return QStandardItemModel::data(index, role);
    return imageToolTip(imageFile(QStandardItemModel::data(index, IdRole).toUuid(),
                                  QStandardItemModel::data(index, FilenameRole).toString()),
                        QStandardItemModel::data(index, TextRole).toString());
}

QStringList HistoryItemModel::clippingTexts() const
{
    QStringList texts;
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *clipping = item(row);
        if (!clipping->data(Clipping::RemovedRole).toBool())
            texts.append(clipping->data(Clipping::TextRole).toString());
    }
    return texts;
}

QString HistoryItemModel::hash()
{
    return contentHash(serialize());
}

QStringList HistoryItemModel::imageNames() const
{
    QStringList names;
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *clipping = item(row);
        if (isImage(clipping->data(TypeRole).toInt()) && !clipping->data(RemovedRole).toBool())
            names.append(idFolderName(clipping->data(IdRole).toUuid()) + QLatin1Char('_') +
                         clipping->data(FilenameRole).toString());
    }
    return names;
}

void HistoryItemModel::receiveImage(const QUuid &id, const QString &fileName,
                                    const QByteArray &bytes)
{
    writeToCache(id, fileName, QImage(), bytes, QUrl());
}

bool HistoryItemModel::merge(const QByteArray &downloaded, QByteArray &output,
                             SyncDirection direction)
{
    const int rowsBefore = rowCount();
    int kept = 0;
    if (!downloaded.isEmpty()) {
        HistoryFile::Document document;
        if (!HistoryFile::decode(downloaded, &document)) {
            output.clear();
            return false;
        }
        // A download from the server replaces what is here, as the user confirmed.
        if (direction == SyncDirection::FromServer)
            clearRows();
        kept = mergeDocument(document, true);
    }
    output = serialize();
    const bool changed = kept > 0 || rowCount() != rowsBefore;
    if (changed)
        save(false, output);
    return changed;
}
