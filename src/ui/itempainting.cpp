#include "ui/itempainting.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionViewItem>

namespace ItemPainting {

void drawBackground(QPainter *painter, const QStyleOptionViewItem &option)
{
    QStyleOptionViewItem background = option;
    background.text.clear();
    background.icon = QIcon();
    const QWidget *widget = option.widget;
    QStyle *style = widget ? widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &background, painter, widget);
}

QColor textColor(const QStyleOptionViewItem &option)
{
    const bool selected = option.state & QStyle::State_Selected;
    return option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
}

QColor mutedTextColor(const QStyleOptionViewItem &option)
{
    QColor color = textColor(option);
    color.setAlphaF(0.6f);
    return color;
}

} // namespace ItemPainting
