#include "searchmodel.h"

#include "snippet.h"

#include <QSortFilterProxyModel>
#include <QTimer>

SearchModel::SearchModel(QSortFilterProxyModel *history, QStandardItemModel *snippets,
                         QObject *parent)
    : QStandardItemModel(parent), m_history(history), m_snippets(snippets),
      m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    m_timer->setInterval(200);
    connect(m_timer, &QTimer::timeout, this, &SearchModel::update);
}

void SearchModel::setSearchText(const QString &text)
{
    m_text = text.trimmed().toLower();
    m_timer->stop();
    m_timer->start();
}

bool SearchModel::isHistoryIndex(const QModelIndex &source) const
{
    return source.model() == m_history;
}

QModelIndex SearchModel::sourceIndex(const QModelIndex &result)
{
    return result.data(SourceRole).value<QModelIndex>();
}

void SearchModel::update()
{
    clear();
    if (m_text.isEmpty())
        return;
    // Added in one go: one insertion for the views, however many rows match.
    QList<QStandardItem *> results;
    const int rows = m_history->rowCount();
    for (int row = 0; row < rows; ++row) {
        const QModelIndex clipping = m_history->index(row, 0);
        const QString display = clipping.data(Qt::DisplayRole).toString();
        if (display.toLower().contains(m_text))
            results.append(newResult(clipping, display));
    }
    for (int group = 0; group < m_snippets->rowCount(); ++group) {
        const QModelIndex parent = m_snippets->index(group, 0);
        for (int row = 0; row < m_snippets->rowCount(parent); ++row) {
            const QModelIndex snippet = m_snippets->index(row, 0, parent);
            const QString name = snippet.data(Qt::DisplayRole).toString();
            if (name.toLower().contains(m_text) ||
                snippet.data(Snippet::TextRole).toString().toLower().contains(m_text))
                results.append(newResult(snippet, name));
        }
    }
    if (!results.isEmpty())
        appendColumn(results);
}

void SearchModel::updateNow()
{
    if (!m_timer->isActive())
        return;
    m_timer->stop();
    update();
}

QStandardItem *SearchModel::newResult(const QModelIndex &source, const QString &display)
{
    auto *result = new QStandardItem(display);
    result->setEditable(false);
    result->setToolTip(source.data(Qt::ToolTipRole).toString());
    result->setData(QVariant::fromValue(source), SourceRole);
    return result;
}
