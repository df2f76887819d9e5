#include "history/historyindex.h"

#include "history/clipping.h"

#include <QStandardItemModel>

using namespace Clipping;

HistoryIndex::HistoryIndex(QStandardItemModel *model) : QObject(model), m_model(model)
{
    connect(model, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &parent, int first, int last) {
                if (!parent.isValid())
                    onRowsInserted(first, last);
            });
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex &parent, int first, int last) {
                if (!parent.isValid())
                    onRowsAboutToBeRemoved(first, last);
            });
    connect(model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &topLeft, const QModelIndex &bottomRight,
                   const QList<int> &roles) {
                if (!topLeft.parent().isValid())
                    onDataChanged(topLeft.row(), bottomRight.row(), roles);
            });
    connect(model, &QAbstractItemModel::modelReset, this, &HistoryIndex::rebuild);
    connect(model, &QAbstractItemModel::layoutChanged, this, &HistoryIndex::rebuild);
    connect(model, &QAbstractItemModel::rowsMoved, this, &HistoryIndex::rebuild);
    rebuild();
}

int HistoryIndex::firstRowWithBrief(const QString &brief) const
{
    QList<QStandardItem *> matches = m_byBrief.values(qHash(brief));
    matches.removeIf(
        [&brief](const QStandardItem *item) { return item->data(BriefRole).toString() != brief; });
    return firstRowOf(matches);
}

int HistoryIndex::firstRowWithId(const QUuid &id) const
{
    return firstRowOf(m_byId.values(id));
}

int HistoryIndex::insertionRow(bool pinned, const QDateTime &time, bool aboveEqual)
{
    if (m_order == Order::Unknown)
        m_order = rowsAreInOrder() ? Order::Sorted : Order::Unsorted;
    return m_order == Order::Sorted ? search(pinned, time, aboveEqual)
                                    : walk(pinned, time, aboveEqual);
}

bool HistoryIndex::isConsistent() const
{
    if (m_briefs.size() != m_model->rowCount() || m_byBrief.size() != m_briefs.size() ||
        m_byId.size() != m_briefs.size())
        return false;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QStandardItem *item = m_model->item(row);
        const auto brief = m_briefs.constFind(item);
        if (brief == m_briefs.constEnd() || *brief != qHash(item->data(BriefRole).toString()) ||
            !m_byBrief.contains(*brief, item) ||
            !m_byId.contains(item->data(IdRole).toUuid(), item))
            return false;
    }
    return m_order != Order::Sorted || rowsAreInOrder();
}

void HistoryIndex::add(QStandardItem *item)
{
    const size_t brief = qHash(item->data(BriefRole).toString());
    m_byBrief.insert(brief, item);
    m_byId.insert(item->data(IdRole).toUuid(), item);
    m_briefs.insert(item, brief);
}

void HistoryIndex::remove(QStandardItem *item)
{
    const auto brief = m_briefs.constFind(item);
    if (brief == m_briefs.constEnd())
        return;
    m_byBrief.remove(*brief, item);
    m_briefs.erase(brief);
    const QUuid id = item->data(IdRole).toUuid();
    if (!m_byId.remove(id, item))
        m_byId.removeValue(item); // its id was changed in place since it was indexed
}

void HistoryIndex::rebuild()
{
    m_byBrief.clear();
    m_byId.clear();
    m_briefs.clear();
    m_byBrief.reserve(m_model->rowCount());
    m_byId.reserve(m_model->rowCount());
    m_briefs.reserve(m_model->rowCount());
    for (int row = 0; row < m_model->rowCount(); ++row)
        add(m_model->item(row));
    m_order = Order::Unknown;
}

void HistoryIndex::onRowsInserted(int first, int last)
{
    for (int row = first; row <= last; ++row)
        add(m_model->item(row));
    if (!m_orderedInsert || first != last)
        m_order = Order::Unknown;
    m_orderedInsert = false;
}

void HistoryIndex::onRowsAboutToBeRemoved(int first, int last)
{
    // Removing rows keeps rows in order; rows out of order may stay so.
    for (int row = first; row <= last; ++row)
        remove(m_model->item(row));
}

void HistoryIndex::onDataChanged(int first, int last, const QList<int> &roles)
{
    const bool all = roles.isEmpty();
    if (all || roles.contains(BriefRole) || roles.contains(IdRole)) {
        for (int row = first; row <= last; ++row) {
            QStandardItem *item = m_model->item(row);
            remove(item);
            add(item);
        }
    }
    if (all || roles.contains(PinnedRole) || roles.contains(TimeRole))
        m_order = Order::Unknown;
}

int HistoryIndex::firstRowOf(const QList<QStandardItem *> &items) const
{
    int first = -1;
    for (const QStandardItem *item : items) {
        const int row = item->row();
        if (first < 0 || row < first)
            first = row;
    }
    return first;
}

bool HistoryIndex::goesAbove(bool pinned, const QDateTime &time, int row, bool aboveEqual) const
{
    const QStandardItem *item = m_model->item(row);
    const bool rowPinned = item->data(PinnedRole).toBool();
    if (pinned && !rowPinned)
        return true;
    const QDateTime rowTime = item->data(TimeRole).toDateTime();
    return rowPinned == pinned && (rowTime < time || (aboveEqual && rowTime == time));
}

bool HistoryIndex::comesBefore(int row, int other) const
{
    const QStandardItem *a = m_model->item(row);
    const QStandardItem *b = m_model->item(other);
    const bool aPinned = a->data(PinnedRole).toBool();
    const bool bPinned = b->data(PinnedRole).toBool();
    if (aPinned != bPinned)
        return aPinned;
    return a->data(TimeRole).toDateTime() > b->data(TimeRole).toDateTime();
}

int HistoryIndex::walk(bool pinned, const QDateTime &time, bool aboveEqual) const
{
    const int rows = m_model->rowCount();
    for (int row = 0; row < rows; ++row) {
        if (goesAbove(pinned, time, row, aboveEqual))
            return row;
    }
    return rows;
}

int HistoryIndex::search(bool pinned, const QDateTime &time, bool aboveEqual) const
{
    // In ordered rows goesAbove() is false up to some row and true from there on. The two
    // common answers come first: a new copy goes to the top, a file read in order goes last.
    const int rows = m_model->rowCount();
    if (rows == 0 || goesAbove(pinned, time, 0, aboveEqual))
        return 0;
    if (!goesAbove(pinned, time, rows - 1, aboveEqual))
        return rows;
    int low = 1;
    int high = rows - 1;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (goesAbove(pinned, time, middle, aboveEqual))
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

bool HistoryIndex::rowsAreInOrder() const
{
    for (int row = 1; row < m_model->rowCount(); ++row) {
        if (comesBefore(row, row - 1))
            return false;
    }
    return true;
}
