#pragma once

#include "base/compactmultihash.h"

#include <QDateTime>
#include <QHash>
#include <QMultiHash>
#include <QObject>
#include <QUuid>

class QStandardItem;
class QStandardItemModel;

// Lookups that merging a clipping needs, without walking every row: the rows by brief and by
// id, and where a clipping of a given pinned state and time belongs. It follows the model's own
// signals, so rows added, removed or changed by anyone stay indexed.
//
// The answers are exactly those of walking the rows from the top: the first row that matches,
// and the first row that a new clipping goes above. The walk is replaced by a binary search
// only while the rows are known to be in order (pinned first, newest first); an edit that may
// break the order (locking sets the time to now, a pin toggled in place) makes the index check
// the order again once, and use the walk for as long as the rows are out of order.
class HistoryIndex final : public QObject
{
    Q_OBJECT

public:
    explicit HistoryIndex(QStandardItemModel *model);

    // First row whose brief equals brief, or -1.
    int firstRowWithBrief(const QString &brief) const;
    // First row whose id equals id, or -1.
    int firstRowWithId(const QUuid &id) const;
    // First row that a clipping with this pinned state and time goes above; rowCount() when
    // it belongs at the end. It goes above rows of an equal time only when aboveEqual is set.
    int insertionRow(bool pinned, const QDateTime &time, bool aboveEqual = false);

    // Tells the index that the next insertion is at the row insertionRow() answered, which
    // keeps rows that are in order in order.
    void expectOrderedInsert() { m_orderedInsert = true; }

    // For tests and checks: whether the index agrees with the model row by row.
    bool isConsistent() const;

private:
    enum class Order { Unknown, Sorted, Unsorted };

    void add(QStandardItem *item);
    void remove(QStandardItem *item);
    void rebuild();
    void onRowsInserted(int first, int last);
    void onRowsAboutToBeRemoved(int first, int last);
    void onDataChanged(int first, int last, const QList<int> &roles);
    int firstRowOf(const QList<QStandardItem *> &items) const;
    bool goesAbove(bool pinned, const QDateTime &time, int row, bool aboveEqual) const;
    bool comesBefore(int row, int other) const;
    int walk(bool pinned, const QDateTime &time, bool aboveEqual) const;
    int search(bool pinned, const QDateTime &time, bool aboveEqual) const;
    bool rowsAreInOrder() const;

    QStandardItemModel *m_model;
    // The brief by its hash: a large history would otherwise keep every brief's string once
    // more in the index. Lookups compare the candidates' briefs.
    CompactMultiHash<size_t, QStandardItem *> m_byBrief;
    CompactMultiHash<QUuid, QStandardItem *> m_byId;
    // Each item's brief hash as indexed, to find it again once the brief changed. Ids are
    // not kept: a clipping's id is set when it is made, and one changed later is looked for.
    QHash<QStandardItem *, size_t> m_briefs;
    Order m_order = Order::Sorted;
    bool m_orderedInsert = false;
};
