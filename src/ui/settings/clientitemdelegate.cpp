#include "ui/settings/clientitemdelegate.h"

#include "base/relativetime.h"

#include <QApplication>
#include <QDateTime>
#include <QIcon>
#include <QPainter>

namespace {

constexpr int IconSize = 32;
constexpr int IconLeft = 10;
constexpr int TextLeft = IconLeft + IconSize + 10;
constexpr int RowHeight = 48;
const QColor SecondaryColor(QStringLiteral("#AAAAAA"));

} // namespace

QString ClientItemDelegate::iconPath(const QString &type)
{
    if (type == QLatin1String("Windows"))
        return QStringLiteral(":/icons/images/ic_windows.svg");
    if (type == QLatin1String("Mac"))
        return QStringLiteral(":/icons/images/ic_apple.svg");
    if (type == QLatin1String("Android"))
        return QStringLiteral(":/icons/images/ic_android.svg");
    return QStringLiteral(":/icons/images/ic_linux.svg");
}

void ClientItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    background.icon = QIcon();
    QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

    painter->save();
    const QRect row = option.rect;
    const QRect iconRect(row.left() + IconLeft, row.top() + (row.height() - IconSize) / 2, IconSize,
                         IconSize);
    QIcon(iconPath(index.data(TypeRole).toString())).paint(painter, iconRect);

    const QRect text = row.adjusted(TextLeft, 4, -8, -4);
    const QColor primary = option.state & QStyle::State_Selected
                               ? option.palette.color(QPalette::HighlightedText)
                               : option.palette.color(QPalette::Text);
    painter->setPen(primary);
    painter->drawText(text.adjusted(0, 0, 0, -text.height() / 2), Qt::AlignLeft | Qt::AlignBottom,
                      option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(),
                                                    Qt::ElideRight, text.width()));
    const QDateTime time = QDateTime::fromString(index.data(TimeRole).toString(), Qt::ISODate);
    const QString ago =
        time.isValid() ? RelativeTime::ago(time.msecsTo(QDateTime::currentDateTime())) : QString();
    painter->setPen(SecondaryColor);
    painter->drawText(text.adjusted(0, text.height() / 2, 0, 0), Qt::AlignLeft | Qt::AlignTop, ago);
    painter->restore();
}

QSize ClientItemDelegate::sizeHint(const QStyleOptionViewItem &option,
                                   const QModelIndex &index) const
{
    Q_UNUSED(index)
    return QSize(option.rect.width(), RowHeight);
}
