#pragma once

#include "ui/annotation/annotation.h"

#include <QImage>
#include <QWidget>

class AnnotationDocument;
class QUndoStack;

// Shows the document at the chosen zoom and turns drags into marks: press where a mark
// starts, release where it ends. Clicks place markers and text boxes. Every mark goes on the
// undo stack.
class AnnotationCanvas final : public QWidget
{
    Q_OBJECT

public:
    enum Tool { ArrowTool, RectangleTool, MarkerTool, TextTool, HighlightTool, CropTool };

    AnnotationCanvas(AnnotationDocument *document, QUndoStack *undoStack,
                     QWidget *parent = nullptr);

    void setTool(Tool tool) { m_tool = tool; }
    Tool tool() const { return m_tool; }
    void setColor(const QColor &color) { m_color = color; }
    QColor color() const { return m_color; }
    void setLineWidth(int width) { m_width = width; }
    int lineWidth() const { return m_width; }
    void setZoom(qreal zoom);
    qreal zoom() const { return m_zoom; }
    // Asks for a text box's text; tests answer without a dialog.
    void setTextSource(std::function<QString()> source) { m_textSource = std::move(source); }

    // The image point under a point of the widget.
    QPointF toImage(const QPointF &widgetPoint) const;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void onDocumentChanged();
    void finish(const QPointF &end);
    Annotation pending(const QPointF &end) const;

    AnnotationDocument *m_document;
    QUndoStack *m_undoStack;
    QImage m_rendered;
    Tool m_tool = ArrowTool;
    QColor m_color = Qt::red;
    int m_width = 3;
    qreal m_zoom = 1.0;
    bool m_dragging = false;
    QPointF m_start;
    QPointF m_current;
    std::function<QString()> m_textSource;
};
