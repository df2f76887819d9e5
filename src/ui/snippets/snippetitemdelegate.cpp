#include "ui/snippets/snippetitemdelegate.h"

#include "snippets/snippet.h"
#include "ui/itempainting.h"

#include <QIcon>
#include <QPainter>

namespace {
constexpr int Margin = 6;
constexpr int BadgeSize = 20;
} // namespace

SnippetItemDelegate::SnippetItemDelegate(bool searchMode, QObject *parent)
    : QStyledItemDelegate(parent), m_searchMode(searchMode)
{}

QColor SnippetItemDelegate::groupColor(const QModelIndex &group)
{
    const QByteArray key = group.data(Snippet::IdRole).toString().toUtf8();
    return QColor::fromHsv(int(qHash(key, 7) % 360), 110, 190);
}

QSize SnippetItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {100, qMax(option.fontMetrics.height() + 2 * Margin, BadgeSize + 8)};
}

void SnippetItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    ItemPainting::drawBackground(painter, option);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QRect area = option.rect.adjusted(Margin, 0, -Margin, 0);
    const QRect badge(area.left(), area.center().y() - BadgeSize / 2, BadgeSize, BadgeSize);
    paintBadge(painter, badge, index);
    area.setLeft(badge.right() + Margin + 1);

    const QColor muted = ItemPainting::mutedTextColor(option);
    const bool snippet = index.parent().isValid();
    if (snippet) {
        // The title gives way first: a keyword is what the user has to type, letter for letter.
        const int room =
            area.width() - option.fontMetrics.horizontalAdvance(QStringLiteral("Mmm…")) - Margin;
        const QString trailer = keysText(index, option.fontMetrics, room);
        const int width = qMax(qMin(option.fontMetrics.horizontalAdvance(trailer), room), 0);
        painter->setPen(muted);
        painter->drawText(QRect(area.right() - width, area.top(), width, area.height()),
                          Qt::AlignRight | Qt::AlignVCenter,
                          option.fontMetrics.elidedText(trailer, Qt::ElideRight, width));
        area.setRight(area.right() - width - Margin);
    }
    QFont font = option.font;
    font.setBold(!snippet);
    painter->setFont(font);
    painter->setPen(ItemPainting::textColor(option));
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter,
                      QFontMetrics(font).elidedText(index.data(Qt::DisplayRole).toString(),
                                                    Qt::ElideRight, area.width()));
    painter->restore();
}

QString SnippetItemDelegate::keysText(const QModelIndex &snippet, const QFontMetrics &metrics,
                                      int room)
{
    const QString keyword = snippet.data(Snippet::ExpanderRole).toString();
    const QString hotkey = QKeySequence::fromString(snippet.data(Snippet::HotkeyRole).toString())
                               .toString(QKeySequence::NativeText);
    QStringList keys;
    if (!keyword.isEmpty())
        keys << keyword;
    if (!hotkey.isEmpty())
        keys << hotkey;
    const QString both = keys.join(QLatin1String("  "));
    if (metrics.horizontalAdvance(both) <= room || keyword.isEmpty())
        return both;
    return keyword; // the shortcut is in the editor
}

void SnippetItemDelegate::paintBadge(QPainter *painter, const QRect &rect,
                                     const QModelIndex &index) const
{
    if (m_searchMode) {
        QIcon(QStringLiteral(":/icons/images/setting-snippets.png")).paint(painter, rect);
        return;
    }
    const QModelIndex group = index.parent().isValid() ? index.parent() : index;
    painter->setPen(Qt::NoPen);
    painter->setBrush(groupColor(group));
    painter->drawEllipse(rect);
    const QString name = index.data(Qt::DisplayRole).toString().trimmed();
    // A whole grapheme such as an emoji, not half of a surrogate pair.
    const QString letter =
        name.isEmpty() ? QStringLiteral("?") : name.left(name.at(0).isHighSurrogate() ? 2 : 1);
    QFont font = painter->font();
    font.setBold(true);
    font.setPixelSize(BadgeSize * 11 / 20);
    painter->setFont(font);
    painter->setPen(Qt::white);
    painter->drawText(rect, Qt::AlignCenter, letter.toUpper());
}
