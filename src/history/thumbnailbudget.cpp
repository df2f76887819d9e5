#include "history/thumbnailbudget.h"

QList<QUuid> ThumbnailBudget::use(const QUuid &id)
{
    m_ids.removeOne(id);
    m_ids.append(id);
    QList<QUuid> dropped;
    while (m_ids.size() > m_size)
        dropped.append(m_ids.takeFirst());
    return dropped;
}
