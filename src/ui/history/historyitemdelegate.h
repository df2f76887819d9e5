#pragma once

#include <QStyledItemDelegate>
#include <QTextLayout>

#include <functional>

class HistoryItemModel;

// One clipping as a row of the history list: its quick-paste number, the application's icon,
// the brief elided to the row (or the thumbnail and label of an image), pinned and locked marks
// and how long ago it was copied.
class HistoryItemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // model: asked for thumbnails that are not in memory.
    explicit HistoryItemDelegate(HistoryItemModel *model, QObject *parent = nullptr);

    // The first nine rows show the digit that pastes them (with Alt).
    void setShowNumbers(bool show) { m_showNumbers = show; }
    // Where the brief holds this text (in any case), it is marked.
    void setHighlight(std::function<QString()> text) { m_highlight = std::move(text); }

    // Where text holds the (lower-case) needle, as ranges to mark.
    static QList<QTextLayout::FormatRange> matches(const QString &text, const QString &needle,
                                                   const QTextCharFormat &format);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    static constexpr int ThumbnailWidth = 80;
    static constexpr int ThumbnailHeight = 60;

private:
    // Draws the right-hand column (marks and time) and answers where it begins.
    int paintTrailer(QPainter *painter, const QStyleOptionViewItem &option,
                     const QModelIndex &index) const;
    QRect paintThumbnail(QPainter *painter, const QRect &area, const QModelIndex &index) const;
    void paintBrief(QPainter *painter, const QStyleOptionViewItem &option, const QRect &area,
                    const QString &brief) const;

    HistoryItemModel *m_model;
    bool m_showNumbers = true;
    std::function<QString()> m_highlight;
};
