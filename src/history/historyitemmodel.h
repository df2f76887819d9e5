#pragma once

#include "base/isyncmerge.h"
#include "history/historyfile.h"
#include "history/thumbnailbudget.h"

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QPixmap>
#include <QSet>
#include <QStandardItemModel>
#include <QUrl>

#include <array>
#include <functional>

class HistoryIndex;
class HistoryWriter;
class QMimeData;
class QSortFilterProxyModel;

// The clipboard history: one row per clipping, pinned clippings first, newest first. Every
// clipping, copied, read from the file or received through sync, enters through merge(), which
// decides whether it is kept, where it goes and what it replaces. One per process.
class HistoryItemModel final : public QStandardItemModel, public ISyncMerge
{
    Q_OBJECT

public:
    // path: the history file (see HistoryFile::path()).
    explicit HistoryItemModel(const QString &path, QObject *parent = nullptr);
    ~HistoryItemModel() override;

    // An image's tool tip is made when asked, from its file.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    // The texts of the history as its list shows them, newest first.
    QStringList clippingTexts() const;

    // The rows the views and search see: those not removed.
    QSortFilterProxyModel *proxy() const { return m_proxy; }
    QString filePath() const { return m_path; }
    void setClock(std::function<QDateTime()> clock);
    // To the second, as the history file keeps times: a clipping reads back exactly as it was,
    // and two computers order and hash the same history alike.
    QDateTime now() const;

    // A copied text or image; false when the merge refused it. Saved and handed to sync when
    // kept. encoded, PNG or JPEG as the clipboard offered it, is stored instead of encoding
    // the image again.
    bool addText(const QString &text, const QString &html, const QPixmap &icon,
                 const QString &application);
    bool addImage(const QUrl &source, const QImage &image, const QPixmap &icon,
                  const QString &application, const QDateTime &time,
                  const QByteArray &encoded = QByteArray());

    // Takes the item when it returns true; the caller deletes a refused one.
    bool merge(QStandardItem *item);
    void trim();
    // Removes a row for good, with its image folder.
    void removeClipping(int row);
    // Marks every unlocked clipping removed, so the clearing reaches other computers too.
    void clearHistory();
    void setLocked(int row, bool locked);
    // Moves the clipping to where clippings of its new pinned state and time belong.
    void setPinned(int row, bool pinned);
    // Pasted from the history: the newest copy now, at the top of its group, its id and image
    // kept.
    void moveToTop(int row);
    // The clippings swap times so that their order turns round; other rows stay put.
    void reverseOrder(QList<int> rows);
    // Removed by the user: hidden, and kept as a deletion mark that reaches other computers.
    // Returns what an undo needs.
    struct Removal
    {
        QUuid id;
        bool pinned = false;
        bool locked = false;
    };
    QList<Removal> markRemoved(QList<int> rows);
    // Brings removed clippings back, pinned and locked as they were. They come back as the
    // newest copies: newer than their deletion marks, so that other computers take them back
    // too.
    void restoreRemoved(const QList<Removal> &removals);
    // The clipping keeps only its plain text.
    void clearStyle(int row);
    // Makes the thumbnail of an image clipping that is about to be shown, unless it is in
    // memory or on its way; only the most recently shown thumbnails stay in memory.
    void requestThumbnail(const QUuid &id, const QString &fileName);

    QByteArray serialize();
    // Merges a history document into the model: the number of clippings kept, or -1.
    int deserialize(const QByteArray &bytes);

    void load();
    void save(bool tellSync, const QByteArray &prepared = QByteArray());
    // Waits for saves under way and delivers their results; for quitting and for tests.
    void finishSaves();

    void loadDemo();
    void fillWithGeneratedClippings(int count);
    void startCleanCache();

    // The limits and rule sets the merge uses, read again from the settings.
    void reloadSettings();
    bool indexIsConsistent() const;

    // "{id}_file.png" for every image clipping that is not removed: the files sync keeps online.
    QStringList imageNames() const;

    QString hash() override;
    bool merge(const QByteArray &downloaded, QByteArray &output, SyncDirection direction) override;

public slots:
    // A copy from the clipboard, as the clipboard listener reports it: becomes an image
    // clipping (an image, or one local image file) or a text clipping. Takes the data and
    // deletes it later.
    void addMimeData(QMimeData *data, const QPixmap &icon, const QString &application);
    void setThumbnail(const QImage &image, const QUuid &id);
    // An image file that came from another computer, for the clipping with that id.
    void receiveImage(const QUuid &id, const QString &fileName, const QByteArray &bytes);

signals:
    // Something the user must see, for a warning box titled "Velmorin".
    void warning(const QString &text);
    // The history file was written with changes that should go online.
    void syncRequested();
    void saveFinished(bool written);
    // Why the clippings cannot be saved, once when saving starts to fail; an empty text once
    // a save succeeds again.
    void saveProblemChanged(const QString &problem);
    // Something the user should hear of once, without a box.
    void notice(const QString &text);

private:
    struct Limits
    {
        int keepItems = 0;
        int ignoreLength = 0;
        int ignoreSize = 0;
        bool includeImages = false;
    };

    void clearRows();
    // False when the URLs settle it (nothing to add, or an image file added).
    bool addUrls(const QList<QUrl> &urls, const QPixmap &icon, const QString &application);
    bool accepts(const QStandardItem *item) const;
    int duplicateRow(const QStandardItem *item) const;
    // The time that ends a clipping (a removal, a clearing): now, and newer than its copy.
    QDateTime laterThan(const QStandardItem *clipping) const;
    // freshCopy: copied here just now; it goes on top of the copies of its own second.
    bool mergeItem(QStandardItem *item, bool freshCopy);
    // What a newer copy takes over from the row it replaces: html, pinned and locked.
    static void carryOver(const QStandardItem *existing, QStandardItem *item);
    void insertClipping(QStandardItem *item, bool freshCopy);
    int mergeDocument(const HistoryFile::Document &document, bool makeThumbnails);
    // What a merge did with a clipping: a line in the sync log, or while a file loads a count
    // (a line per clipping made most of the start of a large history).
    enum Decision {
        Added,
        Replaced,
        AlreadyThere,
        Excluded,
        ImagesOff,
        TooSmall,
        TooLarge,
        Trimmed,
        DecisionCount
    };
    template <typename Line> void decided(Decision decision, Line line) const
    {
        if (m_tally)
            ++(*m_tally)[decision];
        else
            logMerge(line());
    }
    static void logMerge(const QString &line);
    static QString summary(const std::array<int, DecisionCount> &tally);
    QStandardItem *itemFrom(const HistoryFile::Record &record,
                            const QHash<QString, QPixmap> &icons) const;
    // With saved set, clippings of that revision or older are named in the order by their
    // revision only, as the last save wrote them.
    HistoryFile::Document snapshot(quint64 saved = 0);
    QByteArray iconPng(const QString &application, const QPixmap &icon);
    void recordApplication(const QString &application, const QPixmap &icon);
    void copyToCache(const QStandardItem *item, const QImage &image, const QByteArray &bytes,
                     const QUrl &source);
    void writeToCache(const QUuid &id, const QString &fileName, const QImage &image,
                      const QByteArray &bytes, const QUrl &source, bool thumbnailFromFile = true);
    void makeThumbnail(const QUuid &id, const QString &fileName);
    void moveToOrderedRow(int row);
    // Inserts above the first row it goes above: pinned first, newest first.
    void insertOrdered(QStandardItem *clipping, bool aboveEqual = false);
    QList<QStandardItem *> takeRows(QList<int> rows);
    void onSaveFinished(const QString &path, int result, bool tellSync, const QString &error,
                        quint64 revisions);

    QString m_path;
    QSortFilterProxyModel *m_proxy;
    HistoryIndex *m_index;
    HistoryWriter *m_writer;
    std::function<QDateTime()> m_clock;
    Limits m_limits;
    QSet<QString> m_excluded;
    QSet<QString> m_knownApplications;
    QString m_saveProblem;
    // Every clipping of this revision or older is in the file as the last save wrote it: a
    // save hands over only the newer ones whole. 0 when the file was written otherwise.
    quint64 m_savedRevisions = 0;
    mutable int m_tooLarge = 0; // texts refused for their size since the count was reset
    std::array<int, DecisionCount> *m_tally = nullptr; // while a file loads
    int m_droppedAtLoad = 0;
    QHash<QString, QPair<qint64, QByteArray>> m_iconPngs;
    ThumbnailBudget m_thumbnails{64};
    QSet<QUuid> m_thumbnailsPending;
};
