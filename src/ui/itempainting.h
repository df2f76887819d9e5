#pragma once

#include <QColor>

class QPainter;
class QStyleOptionViewItem;

// What the program's list rows share when they paint themselves.
namespace ItemPainting {

// The row's background as the style draws it: hover and selection included.
void drawBackground(QPainter *painter, const QStyleOptionViewItem &option);
// The colour of secondary text (times, numbers, keywords) on the row as it is drawn.
QColor mutedTextColor(const QStyleOptionViewItem &option);
QColor textColor(const QStyleOptionViewItem &option);

} // namespace ItemPainting
