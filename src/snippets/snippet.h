#pragma once

#include <QChar>
#include <QDateTime>
#include <QPair>
#include <QString>
#include <QUuid>

class QStandardItem;

// The snippet records as item data of a two-level QStandardItemModel: groups at the top,
// their snippets as children. The role numbers are part of the record.
namespace Snippet {

enum Role : int {
    TextRole = Qt::UserRole + 1,
    IdRole = Qt::UserRole + 2,
    TimeRole = Qt::UserRole + 3,
    ExpanderRole = Qt::UserRole + 20,
    HideRole = Qt::UserRole + 21,
    HotkeyRole = Qt::UserRole + 22,
};

// Marks the caret in a snippet's text: one marker places it, two select what lies between.
inline constexpr QChar cursorMarker = QChar(0x205E);

QStandardItem *newGroup(const QString &title, const QUuid &id, const QDateTime &time);
QStandardItem *newSnippet(const QString &title, const QString &text, const QUuid &id,
                          const QDateTime &time);

// Where the caret goes once the text is pasted, from the first two markers: steps back from
// the end, then characters to select towards the start; (-1, 0) leaves it where it is.
QPair<int, int> caretSteps(const QString &text);

QUuid id(const QStandardItem *item);
QDateTime time(const QStandardItem *item);

} // namespace Snippet
