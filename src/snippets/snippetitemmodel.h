#pragma once

#include "base/isyncmerge.h"

#include <QDateTime>
#include <QHash>
#include <QMap>
#include <QStandardItemModel>
#include <QUuid>

#include <functional>

class QTimer;

// The snippet tree: groups at the top level, their snippets as children. Whatever comes in,
// from the file, an import or sync, enters group by group through mergeGroup(), where a newer
// time wins, a removal wins over everything, and nothing is deleted because it is missing.
// Every edit is timed, saved shortly after the last one of a burst, and backed up daily.
class SnippetItemModel final : public QStandardItemModel, public ISyncMerge
{
    Q_OBJECT

public:
    enum class LoadResult { Loaded, Examples, Unreadable, Rejected };

    // path: the snippet file (see SnippetFile::path()).
    explicit SnippetItemModel(const QString &path, QObject *parent = nullptr);

    QString filePath() const { return m_path; }
    void setClock(std::function<QDateTime()> clock);
    QDateTime now() const { return m_clock(); }
    // Removed groups and snippets by id, with the time of their removal.
    QHash<QUuid, QDateTime> removedItems() const { return m_removed; }

    // Reads the file; on a first start (no file, no rows, not a demonstration) the example
    // snippets instead. A file that cannot be read is kept under a name of its own, and no
    // empty tree is saved or uploaded in its place.
    LoadResult load(bool demoMode);
    void loadExamples();
    // One example file as a group item with its snippets; name is the group's untranslated name.
    QStandardItem *exampleGroup(const QString &name, const QString &content) const;
    QByteArray serialize(bool indented = false) const;
    // The number of groups and snippets read, or -1 for a document that is not ours. An import
    // ignores the document's removals and removes nothing.
    int deserialize(const QByteArray &bytes, bool ignoreRemovals);
    // Takes the group item with its snippets as children.
    void mergeGroup(QStandardItem *incoming);
    // The tree written to a file of the user's choice; false when it cannot be written.
    bool exportTo(const QString &path) const;
    // Snippets of a file merged in, its removals ignored: the number read, or -1.
    int importFrom(const QString &path);
    // Writes the file now, and the day's backup: the tree as saved, or backup when given.
    bool save(const QByteArray &backup = QByteArray());
    // Writes the file shortly after the last of a burst of edits.
    void scheduleSave();
    void finishSaves();

    // Edits made by the user; each times the item, saves and reports contentChanged().
    QModelIndex addGroup(const QString &title);
    QModelIndex addSnippet(const QModelIndex &group, const QString &title, const QString &text);
    void setTitle(const QModelIndex &index, const QString &title);
    void setSnippetData(const QModelIndex &snippet, int role, const QVariant &value);
    void removeItem(const QModelIndex &index);
    // By one row within its level; false at either end.
    bool moveItem(const QModelIndex &index, int delta);
    // The snippet goes to the end of the other group under a new id, and its old id counts as
    // removed, so that no other computer keeps it in both groups.
    QModelIndex moveToGroup(const QModelIndex &snippet, const QModelIndex &group);

    // keyword -> snippet text, of every snippet with a keyword.
    QMap<QString, QString> keywords() const;
    // The title of another snippet with this keyword, or an empty string.
    QString keywordOwner(const QString &keyword, const QModelIndex &except = QModelIndex()) const;
    // Another snippet whose keyword begins this one or is begun by it: typed without a space
    // after it, the shorter one expands first and the longer one never can. Its index, or an
    // invalid one.
    QModelIndex keywordPrefixClash(const QString &keyword,
                                   const QModelIndex &except = QModelIndex()) const;
    QStandardItem *snippetById(const QUuid &id) const;

    QString hash() override;
    bool merge(const QByteArray &downloaded, QByteArray &output, SyncDirection direction) override;

signals:
    void loaded();
    // The tree changed, by an edit, a load or sync: keywords and shortcuts follow it.
    void contentChanged();
    void syncRequested();
    void warning(const QString &message);

private:
    QStandardItem *groupById(const QUuid &id) const;
    void mergeChild(QStandardItem *group, QList<QStandardItem *> row);
    void removeListedRows();
    void markEdited(QStandardItem *item);
    void recordRemoval(QStandardItem *item);
    int itemCount() const;
    // The first snippet, other than except, whose keyword matches.
    QModelIndex firstOtherKeyword(const QModelIndex &except,
                                  const std::function<bool(const QString &)> &matches) const;
    void keepUnreadableFile(const QString &failure);
    bool mayReplaceFile() const;

    QString m_path;
    QHash<QUuid, QDateTime> m_removed;
    // The file could not be read at load; kept until the first save of a tree with content.
    bool m_fileUnreadable = false;
    QTimer *m_saveTimer;
    std::function<QDateTime()> m_clock;
};
