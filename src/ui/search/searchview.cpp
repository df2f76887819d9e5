#include "ui/search/searchview.h"

#include "ui/search/searchmodel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

SearchView::SearchView(QWidget *parent) : QListView(parent)
{
    setAccessibleName(tr("Search results"));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void SearchView::setSearchModel(SearchModel *model)
{
    m_model = model;
    setModel(model);
}

void SearchView::paintEvent(QPaintEvent *event)
{
    QListView::paintEvent(event);
    if (!m_model || m_model->rowCount() > 0 || m_model->searchText().isEmpty())
        return;
    // An empty page would look like a window that failed to fill.
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("No clippings match"));
}

void SearchView::selectFirst()
{
    // Enter in the search field pastes this one: it shows as chosen.
    selectionModel()->setCurrentIndex(model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    scrollToTop();
}

QRect SearchView::menuSquare(const QModelIndex &index) const
{
    const QRect row = visualRect(index);
    return {row.right() - row.height() + 1, row.top(), row.height(), row.height()};
}

void SearchView::openHistoryMenu(const QModelIndex &index)
{
    const QModelIndex source = SearchModel::sourceIndex(index);
    emit historyMenuRequested(source, viewport()->mapToGlobal(menuSquare(index).center()));
    // The command may have changed or removed the clipping.
    m_model->update();
}

void SearchView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        // Acted on when the key is released.
        return;
    case Qt::Key_Right:
        if (m_model->isHistoryIndex(SearchModel::sourceIndex(currentIndex())))
            return;
        break;
    case Qt::Key_Escape:
        emit escapePressed();
        return;
    case Qt::Key_Up:
        if (currentIndex().row() <= 0) {
            emit upFromFirstRow();
            return;
        }
        break;
    default:
        if (!event->text().isEmpty() && event->text().at(0).isPrint() &&
            !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            emit textTyped(event->text());
            return;
        }
    }
    QListView::keyPressEvent(event);
}

void SearchView::keyReleaseEvent(QKeyEvent *event)
{
    const QModelIndex current = currentIndex();
    const int key = event->key();
    if (current.isValid() && !event->isAutoRepeat()) {
        if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
            emit activated(SearchModel::sourceIndex(current));
            return;
        }
        if (key == Qt::Key_Right && m_model->isHistoryIndex(SearchModel::sourceIndex(current))) {
            openHistoryMenu(current);
            return;
        }
    }
    QListView::keyReleaseEvent(event);
}

void SearchView::mouseMoveEvent(QMouseEvent *event)
{
    if (indexAt(event->position().toPoint()).isValid())
        return;
    QListView::mouseMoveEvent(event);
}

void SearchView::mouseReleaseEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    const QModelIndex index = indexAt(position);
    if (!index.isValid()) {
        QListView::mouseReleaseEvent(event);
        return;
    }
    const QModelIndex source = SearchModel::sourceIndex(index);
    if (m_model->isHistoryIndex(source) && menuSquare(index).contains(position))
        openHistoryMenu(index);
    else
        emit activated(source);
}

void SearchView::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The release before it has already activated the row.
    event->accept();
}
