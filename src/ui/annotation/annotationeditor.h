#pragma once

#include <QDialog>
#include <QImage>

class AnnotationCanvas;
class AnnotationDocument;
class QScrollArea;
class QToolButton;
class QUndoStack;

// Draws arrows, rectangles, numbered markers, text boxes and highlights on an image and crops
// it, with undo and redo. Saving hands the result on as a new image; the original stays as it
// was. Leaving with unsaved changes asks first.
class AnnotationEditor final : public QDialog
{
    Q_OBJECT

public:
    explicit AnnotationEditor(const QImage &image, QWidget *parent = nullptr);

    AnnotationDocument *document() const { return m_document; }
    AnnotationCanvas *canvas() const { return m_canvas; }
    QUndoStack *undoStack() const { return m_undoStack; }
    bool hasUnsavedChanges() const;

    void zoomToFit();
    void save();

public slots:
    void reject() override;

signals:
    void saved(const QImage &image);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void createToolBar();
    void chooseColor();
    void showColor();

    AnnotationDocument *m_document;
    QUndoStack *m_undoStack;
    AnnotationCanvas *m_canvas;
    QScrollArea *m_scroll;
    QToolButton *m_colorButton = nullptr;
    QWidget *m_toolBarHost = nullptr;
};
