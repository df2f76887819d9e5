#pragma once

#include <QList>
#include <QUuid>

// Which image clippings keep their thumbnail in memory: the ones shown or made most recently,
// up to a fixed number. Scrolling through a thousand images then costs no more memory than
// scrolling through a screenful; a thumbnail dropped here is made again when it is shown.
class ThumbnailBudget final
{
public:
    explicit ThumbnailBudget(int size) : m_size(size) {}

    int size() const { return m_size; }
    bool contains(const QUuid &id) const { return m_ids.contains(id); }
    // Marks the thumbnail as just used; answers the ones that no longer fit.
    QList<QUuid> use(const QUuid &id);
    void forget(const QUuid &id) { m_ids.removeOne(id); }

private:
    int m_size;
    // Least recently used first.
    QList<QUuid> m_ids;
};
