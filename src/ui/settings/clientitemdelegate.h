#pragma once

#include <QStyledItemDelegate>

// A row of the list of the user's other computers: the platform's icon, the computer's name and
// how long ago it connected.
class ClientItemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum Role { TypeRole = Qt::UserRole + 1, TimeRole };

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // The icon resource of a client type ("Windows", "Mac", "Android", "Linux").
    static QString iconPath(const QString &type);
};
