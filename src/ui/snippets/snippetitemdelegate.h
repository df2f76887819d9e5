#pragma once

#include <QStyledItemDelegate>

// A row of the snippet tree: a round badge with the first letter of the name, coloured by the
// group, the name, and the keyword and shortcut that paste it. In search results the snippets
// icon takes the badge's place.
class SnippetItemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit SnippetItemDelegate(bool searchMode = false, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // The badge colour of a group, the same on every start.
    static QColor groupColor(const QModelIndex &group);
    // What a snippet's row shows on its right in room pixels: the keyword and the shortcut, or
    // the keyword alone, always in full, when both do not fit.
    static QString keysText(const QModelIndex &snippet, const QFontMetrics &metrics, int room);

private:
    void paintBadge(QPainter *painter, const QRect &rect, const QModelIndex &index) const;

    bool m_searchMode;
};
