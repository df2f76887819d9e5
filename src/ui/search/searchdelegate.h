#pragma once

#include <QStyledItemDelegate>

class SearchModel;

// Paints a result as its source row looks on its own page: a clipping by the history list's
// delegate, a snippet by the snippet list's delegate in its search form.
class SearchDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    SearchDelegate(SearchModel *model, QStyledItemDelegate *historyDelegate,
                   QStyledItemDelegate *snippetDelegate, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QStyledItemDelegate *delegateFor(const QModelIndex &source) const;

    SearchModel *m_model;
    QStyledItemDelegate *m_history;
    QStyledItemDelegate *m_snippet;
};
