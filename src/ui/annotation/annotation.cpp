#include "ui/annotation/annotation.h"

#include <QFont>
#include <QFontMetricsF>
#include <QLineF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace {

void paintArrow(QPainter *painter, const Annotation &mark)
{
    const QLineF line(mark.start, mark.end);
    if (line.length() < 1)
        return;
    // The head grows with the line width but never past half the shaft.
    const qreal head = qMin(line.length() / 2, 6.0 + mark.width * 3.0);
    const qreal angle = std::atan2(-line.dy(), line.dx());
    const QPointF tip = mark.end;
    const QPointF left =
        tip - QPointF(std::cos(angle - M_PI / 7) * head, -std::sin(angle - M_PI / 7) * head);
    const QPointF right =
        tip - QPointF(std::cos(angle + M_PI / 7) * head, -std::sin(angle + M_PI / 7) * head);
    painter->setPen(QPen(mark.color, mark.width, Qt::SolidLine, Qt::RoundCap));
    painter->drawLine(QLineF(mark.start, (left + right) / 2));
    QPainterPath path(tip);
    path.lineTo(left);
    path.lineTo(right);
    path.closeSubpath();
    painter->fillPath(path, mark.color);
}

void paintMarker(QPainter *painter, const Annotation &mark)
{
    const qreal radius = 10.0 + mark.width * 2.0;
    painter->setPen(Qt::NoPen);
    painter->setBrush(mark.color);
    painter->drawEllipse(mark.start, radius, radius);
    QFont font = painter->font();
    font.setBold(true);
    font.setPixelSize(int(radius * 1.1));
    painter->setFont(font);
    painter->setPen(mark.color.lightness() > 150 ? Qt::black : Qt::white);
    painter->drawText(QRectF(mark.start - QPointF(radius, radius), QSizeF(radius, radius) * 2),
                      Qt::AlignCenter, QString::number(mark.number));
}

void paintText(QPainter *painter, const Annotation &mark)
{
    QFont font = painter->font();
    font.setPixelSize(12 + mark.width * 4);
    painter->setFont(font);
    const QFontMetricsF metrics(font);
    const QRectF box = metrics.boundingRect(QRectF(mark.start, QSizeF(2000, 2000)),
                                            Qt::AlignLeft | Qt::AlignTop, mark.text);
    painter->setPen(mark.color);
    painter->drawText(box, Qt::AlignLeft | Qt::AlignTop, mark.text);
}

} // namespace

void Annotation::paint(QPainter *painter) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    switch (kind) {
    case Arrow:
        paintArrow(painter, *this);
        break;
    case Rectangle:
        painter->setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(rect());
        break;
    case Highlight: {
        QColor translucent = color;
        translucent.setAlpha(90);
        painter->fillRect(rect(), translucent);
        break;
    }
    case Marker:
        paintMarker(painter, *this);
        break;
    case Text:
        paintText(painter, *this);
        break;
    }
    painter->restore();
}
