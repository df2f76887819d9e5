#include "ui/history/historyitemdelegate.h"

#include "base/relativetime.h"
#include "history/clipping.h"
#include "history/historyitemmodel.h"
#include "ui/itempainting.h"

#include <QIcon>
#include <QPainter>

using namespace Clipping;

namespace {

constexpr int Margin = 6;
constexpr int MarkSize = 12;

QFont smallFont(const QStyleOptionViewItem &option)
{
    QFont font = option.font;
    font.setPointSizeF(font.pointSizeF() * 0.85);
    return font;
}

} // namespace

HistoryItemDelegate::HistoryItemDelegate(HistoryItemModel *model, QObject *parent)
    : QStyledItemDelegate(parent), m_model(model)
{}

QSize HistoryItemDelegate::sizeHint(const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    if (isImage(index.data(TypeRole).toInt()))
        return {ThumbnailWidth, ThumbnailHeight + 2 * Margin};
    return {100, qMax(option.fontMetrics.height() + 2 * Margin, 28)};
}

void HistoryItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    ItemPainting::drawBackground(painter, option);
    painter->save();
    QRect area = option.rect.adjusted(Margin, 0, -Margin, 0);
    if (m_showNumbers && index.row() < 9) {
        painter->setPen(ItemPainting::mutedTextColor(option));
        painter->setFont(smallFont(option));
        const int width = option.fontMetrics.horizontalAdvance(QLatin1Char('9')) + 4;
        painter->drawText(QRect(area.left(), area.top(), width, area.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, QString::number(index.row() + 1));
        area.setLeft(area.left() + width + 2);
    } else if (m_showNumbers) {
        area.setLeft(area.left() + option.fontMetrics.horizontalAdvance(QLatin1Char('9')) + 6);
    }

    const QPixmap icon = index.data(IconRole).value<QPixmap>();
    const QRect iconRect(area.left(), area.center().y() - 8, 16, 16);
    if (!icon.isNull())
        painter->drawPixmap(iconRect, icon);
    area.setLeft(iconRect.right() + Margin + 1);
    area.setRight(paintTrailer(painter, option, index) - Margin);

    if (isImage(index.data(TypeRole).toInt())) {
        const QRect thumbnail = paintThumbnail(painter, area, index);
        area.setLeft(thumbnail.right() + Margin + 1);
    }
    painter->setFont(option.font);
    painter->setPen(ItemPainting::textColor(option));
    const QString brief = option.fontMetrics.elidedText(index.data(BriefRole).toString(),
                                                        Qt::ElideRight, area.width());
    paintBrief(painter, option, area, brief);
    painter->restore();
}

QList<QTextLayout::FormatRange> HistoryItemDelegate::matches(const QString &text,
                                                             const QString &needle,
                                                             const QTextCharFormat &format)
{
    QList<QTextLayout::FormatRange> ranges;
    if (needle.isEmpty())
        return ranges;
    for (qsizetype at = text.indexOf(needle, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(needle, at + needle.size(), Qt::CaseInsensitive))
        ranges.append({int(at), int(needle.size()), format});
    return ranges;
}

void HistoryItemDelegate::paintBrief(QPainter *painter, const QStyleOptionViewItem &option,
                                     const QRect &area, const QString &brief) const
{
    const QString needle = m_highlight ? m_highlight() : QString();
    if (needle.isEmpty()) {
        painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter, brief);
        return;
    }
    // Dark on yellow, as a marker pen would: readable on a selected row and in the dark theme.
    QTextCharFormat marked;
    marked.setBackground(QColor(255, 214, 64));
    marked.setForeground(QColor(20, 20, 20));
    QTextLayout layout(brief, option.font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(area.width());
    layout.endLayout();
    const QPointF origin(area.left(), area.center().y() - line.height() / 2);
    layout.draw(painter, origin, matches(brief, needle, marked));
}

int HistoryItemDelegate::paintTrailer(QPainter *painter, const QStyleOptionViewItem &option,
                                      const QModelIndex &index) const
{
    const QRect area = option.rect.adjusted(Margin, 0, -Margin, 0);
    const QFont font = smallFont(option);
    const QDateTime now = m_model ? m_model->now() : QDateTime::currentDateTime();
    const QString time = RelativeTime::compact(index.data(TimeRole).toDateTime(), now);
    const int timeWidth = QFontMetrics(font).horizontalAdvance(time);
    painter->setFont(font);
    painter->setPen(ItemPainting::mutedTextColor(option));
    painter->drawText(QRect(area.right() - timeWidth, area.top(), timeWidth, area.height()),
                      Qt::AlignRight | Qt::AlignVCenter, time);
    int left = area.right() - timeWidth;
    const auto mark = [&](const char *path) {
        left -= MarkSize + 4;
        QIcon(QLatin1String(path))
            .paint(painter, QRect(left, area.center().y() - MarkSize / 2, MarkSize, MarkSize));
    };
    if (index.data(LockedRole).toBool())
        mark(":/icons/images/lock.svg");
    if (index.data(PinnedRole).toBool())
        mark(":/icons/images/pin.svg");
    return left;
}

QRect HistoryItemDelegate::paintThumbnail(QPainter *painter, const QRect &area,
                                          const QModelIndex &index) const
{
    const QRect frame(area.left(), area.center().y() - ThumbnailHeight / 2, ThumbnailWidth,
                      ThumbnailHeight);
    const QImage thumbnail = index.data(ThumbnailRole).value<QImage>();
    // Asked on every paint: a thumbnail in view stays among the ones kept in memory.
    if (m_model)
        m_model->requestThumbnail(index.data(IdRole).toUuid(), index.data(FilenameRole).toString());
    if (thumbnail.isNull()) {
        painter->fillRect(frame, QColor(128, 128, 128, 40));
        return frame;
    }
    const QSize size = thumbnail.size().scaled(frame.size(), Qt::KeepAspectRatio);
    const QRect target(frame.left(), frame.top() + (frame.height() - size.height()) / 2,
                       size.width(), size.height());
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(target, thumbnail);
    return frame;
}
