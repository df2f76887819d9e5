#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>

class QMouseEvent;
class QWidget;

// Moving and resizing a window without a frame: its edges resize it, and its empty parts
// (and any widget named as a handle) move it. The window manager does the work where it can;
// otherwise the helper follows the mouse itself.
class FramelessHelper final : public QObject
{
    Q_OBJECT

public:
    explicit FramelessHelper(QWidget *window);

    void addMoveHandle(QWidget *handle);
    // The resize cursor for a mouse position in window coordinates, or the normal one.
    void updateCursorShape(const QPoint &position);
    Qt::Edges edgesAt(const QPoint &position) const;

    static constexpr int BorderWidth = 6;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool startDrag(QMouseEvent *event, Qt::Edges edges);
    void followMouse(const QPoint &globalPosition);

    QWidget *m_window;
    Qt::Edges m_dragEdges;
    bool m_dragging = false;
    QPoint m_pressPosition;
    QRect m_pressGeometry;
};
