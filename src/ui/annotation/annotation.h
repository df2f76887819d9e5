#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

class QPainter;

// One mark drawn on an image, in the image's own pixels: an arrow from start to end, a
// rectangle or a translucent highlight spanning them, a numbered marker centred on start, or
// a text box whose top left is start.
struct Annotation
{
    enum Kind { Arrow, Rectangle, Marker, Text, Highlight };

    Kind kind = Rectangle;
    QPointF start;
    QPointF end;
    QColor color = Qt::red;
    int width = 3;
    QString text;
    int number = 0;

    QRectF rect() const { return QRectF(start, end).normalized(); }
    // Draws it; the painter is in image coordinates.
    void paint(QPainter *painter) const;
};
