#include "snippets/snippet.h"

#include <QStandardItem>

namespace Snippet {

QStandardItem *newGroup(const QString &title, const QUuid &id, const QDateTime &time)
{
    auto *group = new QStandardItem(title);
    group->setData(id.toString(), IdRole);
    group->setData(time, TimeRole);
    return group;
}

QStandardItem *newSnippet(const QString &title, const QString &text, const QUuid &id,
                          const QDateTime &time)
{
    QStandardItem *snippet = newGroup(title, id, time);
    snippet->setData(text, TextRole);
    snippet->setData(false, HideRole);
    snippet->setData(QString(), HotkeyRole);
    snippet->setData(QString(), ExpanderRole);
    return snippet;
}

QPair<int, int> caretSteps(const QString &text)
{
    const qsizetype first = text.indexOf(cursorMarker);
    if (first < 0)
        return {-1, 0};
    const qsizetype second = text.indexOf(cursorMarker, first + 1);
    if (second < 0)
        return {int(text.size() - first - 1), 0};
    return {int(text.size() - second - 1), int(second - first - 1)};
}

QUuid id(const QStandardItem *item)
{
    return QUuid::fromString(item->data(IdRole).toString());
}

QDateTime time(const QStandardItem *item)
{
    return item->data(TimeRole).toDateTime();
}

} // namespace Snippet
