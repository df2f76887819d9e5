#include "ui/framelesshelper.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

FramelessHelper::FramelessHelper(QWidget *window) : QObject(window), m_window(window)
{
    m_window->setMouseTracking(true);
    m_window->installEventFilter(this);
}

void FramelessHelper::addMoveHandle(QWidget *handle)
{
    handle->installEventFilter(this);
}

Qt::Edges FramelessHelper::edgesAt(const QPoint &position) const
{
    Qt::Edges edges;
    const QRect inner =
        m_window->rect().adjusted(BorderWidth, BorderWidth, -BorderWidth, -BorderWidth);
    if (position.x() < inner.left())
        edges |= Qt::LeftEdge;
    if (position.x() > inner.right())
        edges |= Qt::RightEdge;
    if (position.y() < inner.top())
        edges |= Qt::TopEdge;
    if (position.y() > inner.bottom())
        edges |= Qt::BottomEdge;
    return edges;
}

void FramelessHelper::updateCursorShape(const QPoint &position)
{
    if (m_dragging)
        return;
    const Qt::Edges edges = edgesAt(position);
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        m_window->setCursor(Qt::SizeFDiagCursor);
    else if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        m_window->setCursor(Qt::SizeBDiagCursor);
    else if (edges & (Qt::LeftEdge | Qt::RightEdge))
        m_window->setCursor(Qt::SizeHorCursor);
    else if (edges)
        m_window->setCursor(Qt::SizeVerCursor);
    else
        m_window->unsetCursor();
}

bool FramelessHelper::eventFilter(QObject *watched, QEvent *event)
{
    auto *mouse = static_cast<QMouseEvent *>(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (mouse->button() == Qt::LeftButton) {
            const Qt::Edges edges =
                watched == m_window ? edgesAt(mouse->position().toPoint()) : Qt::Edges();
            return startDrag(mouse, edges);
        }
        break;
    case QEvent::MouseMove:
        if (m_dragging)
            followMouse(mouse->globalPosition().toPoint());
        else if (watched == m_window)
            updateCursorShape(mouse->position().toPoint());
        break;
    case QEvent::MouseButtonRelease:
        m_dragging = false;
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool FramelessHelper::startDrag(QMouseEvent *event, Qt::Edges edges)
{
    QWindow *window = m_window->windowHandle();
    const bool system =
        window && (edges ? window->startSystemResize(edges) : window->startSystemMove());
    if (system)
        return true;
    m_dragging = true;
    m_dragEdges = edges;
    m_pressPosition = event->globalPosition().toPoint();
    m_pressGeometry = m_window->geometry();
    return true;
}

void FramelessHelper::followMouse(const QPoint &globalPosition)
{
    const QPoint delta = globalPosition - m_pressPosition;
    QRect geometry = m_pressGeometry;
    if (!m_dragEdges) {
        m_window->move(geometry.topLeft() + delta);
        return;
    }
    const QSize minimum = m_window->minimumSizeHint().expandedTo(QSize(160, 120));
    if (m_dragEdges & Qt::LeftEdge)
        geometry.setLeft(qMin(geometry.left() + delta.x(), geometry.right() - minimum.width()));
    if (m_dragEdges & Qt::RightEdge)
        geometry.setRight(qMax(geometry.right() + delta.x(), geometry.left() + minimum.width()));
    if (m_dragEdges & Qt::TopEdge)
        geometry.setTop(qMin(geometry.top() + delta.y(), geometry.bottom() - minimum.height()));
    if (m_dragEdges & Qt::BottomEdge)
        geometry.setBottom(qMax(geometry.bottom() + delta.y(), geometry.top() + minimum.height()));
    m_window->setGeometry(geometry);
}
