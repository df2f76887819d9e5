#include "ui/annotation/annotationcanvas.h"

#include "ui/annotation/addannotationcommand.h"
#include "ui/annotation/annotationdocument.h"
#include "ui/annotation/cropcommand.h"

#include <QInputDialog>
#include <QMouseEvent>
#include <QPainter>
#include <QUndoStack>

AnnotationCanvas::AnnotationCanvas(AnnotationDocument *document, QUndoStack *undoStack,
                                   QWidget *parent)
    : QWidget(parent), m_document(document), m_undoStack(undoStack)
{
    setObjectName(QStringLiteral("annotationCanvas"));
    setCursor(Qt::CrossCursor);
    m_textSource = [this] {
        return QInputDialog::getText(this, tr("Text"), tr("Text of the box:"));
    };
    connect(document, &AnnotationDocument::changed, this, &AnnotationCanvas::onDocumentChanged);
    onDocumentChanged();
}

void AnnotationCanvas::onDocumentChanged()
{
    m_rendered = m_document->render();
    updateGeometry();
    resize(sizeHint());
    update();
}

void AnnotationCanvas::setZoom(qreal zoom)
{
    m_zoom = qBound(0.05, zoom, 8.0);
    updateGeometry();
    resize(sizeHint());
    update();
}

QSize AnnotationCanvas::sizeHint() const
{
    return (QSizeF(m_rendered.size()) * m_zoom).toSize();
}

QPointF AnnotationCanvas::toImage(const QPointF &widgetPoint) const
{
    return widgetPoint / m_zoom + QPointF(m_document->crop().topLeft());
}

void AnnotationCanvas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.scale(m_zoom, m_zoom);
    painter.drawImage(0, 0, m_rendered);
    if (!m_dragging)
        return;
    // The mark being drawn, in image coordinates shifted by the crop.
    painter.translate(-QPointF(m_document->crop().topLeft()));
    if (m_tool == CropTool) {
        painter.setPen(QPen(Qt::black, 1 / m_zoom, Qt::DashLine));
        painter.drawRect(QRectF(m_start, m_current).normalized());
    } else {
        pending(m_current).paint(&painter);
    }
}

void AnnotationCanvas::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_start = m_current = toImage(event->position());
    m_dragging = m_tool != MarkerTool && m_tool != TextTool;
    if (!m_dragging)
        finish(m_start);
}

void AnnotationCanvas::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging)
        return;
    m_current = toImage(event->position());
    update();
}

void AnnotationCanvas::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton)
        return;
    m_dragging = false;
    finish(toImage(event->position()));
}

Annotation AnnotationCanvas::pending(const QPointF &end) const
{
    static const Annotation::Kind kinds[] = {Annotation::Arrow,     Annotation::Rectangle,
                                             Annotation::Marker,    Annotation::Text,
                                             Annotation::Highlight, Annotation::Rectangle};
    Annotation mark;
    mark.kind = kinds[m_tool];
    mark.start = m_start;
    mark.end = end;
    mark.color = m_color;
    mark.width = m_width;
    return mark;
}

void AnnotationCanvas::finish(const QPointF &end)
{
    if (m_tool == CropTool) {
        const QRect crop = QRectF(m_start, end).normalized().toAlignedRect();
        if (crop.width() > 1 && crop.height() > 1)
            m_undoStack->push(new CropCommand(m_document, crop.intersected(m_document->crop())));
        update();
        return;
    }
    Annotation mark = pending(end);
    if (mark.kind == Annotation::Marker)
        mark.number = m_document->nextMarkerNumber();
    if (mark.kind == Annotation::Text) {
        mark.text = m_textSource();
        if (mark.text.isEmpty())
            return;
    }
    // A click without a drag draws no line or box.
    const bool tooSmall = (mark.kind == Annotation::Arrow || mark.kind == Annotation::Rectangle ||
                           mark.kind == Annotation::Highlight) &&
                          QLineF(mark.start, mark.end).length() < 2;
    if (!tooSmall)
        m_undoStack->push(new AddAnnotationCommand(m_document, mark));
    update();
}
