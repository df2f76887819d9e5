#include "ui/search/searchdelegate.h"

#include "ui/search/searchmodel.h"

SearchDelegate::SearchDelegate(SearchModel *model, QStyledItemDelegate *historyDelegate,
                               QStyledItemDelegate *snippetDelegate, QObject *parent)
    : QStyledItemDelegate(parent), m_model(model), m_history(historyDelegate),
      m_snippet(snippetDelegate)
{}

QStyledItemDelegate *SearchDelegate::delegateFor(const QModelIndex &source) const
{
    return m_model->isHistoryIndex(source) ? m_history : m_snippet;
}

void SearchDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    const QModelIndex source = SearchModel::sourceIndex(index);
    delegateFor(source)->paint(painter, option, source);
}

QSize SearchDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QModelIndex source = SearchModel::sourceIndex(index);
    return delegateFor(source)->sizeHint(option, source);
}
