#include "ui/annotation/annotationeditor.h"

#include "ui/annotation/annotationcanvas.h"
#include "ui/annotation/annotationdocument.h"

#include <QActionGroup>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>
#include <QVBoxLayout>

AnnotationEditor::AnnotationEditor(const QImage &image, QWidget *parent)
    : QDialog(parent), m_document(new AnnotationDocument(image, this)),
      m_undoStack(new QUndoStack(this)), m_canvas(new AnnotationCanvas(m_document, m_undoStack)),
      m_scroll(new QScrollArea(this))
{
    setWindowTitle(tr("Annotate image"));
    setObjectName(QStringLiteral("annotationEditor"));
    m_scroll->setWidget(m_canvas);
    m_scroll->setAlignment(Qt::AlignCenter);
    m_scroll->setBackgroundRole(QPalette::Dark);
    createToolBar();

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &AnnotationEditor::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &AnnotationEditor::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_toolBarHost);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(buttons);
    resize(820, 620);
}

void AnnotationEditor::createToolBar()
{
    auto *bar = new QToolBar(this);
    m_toolBarHost = bar;
    auto *tools = new QActionGroup(this);
    const QList<QPair<QString, AnnotationCanvas::Tool>> entries{
        {tr("Arrow"), AnnotationCanvas::ArrowTool},
        {tr("Rectangle"), AnnotationCanvas::RectangleTool},
        {tr("Marker"), AnnotationCanvas::MarkerTool},
        {tr("Text"), AnnotationCanvas::TextTool},
        {tr("Highlight"), AnnotationCanvas::HighlightTool},
        {tr("Crop"), AnnotationCanvas::CropTool}};
    for (const auto &[name, tool] : entries) {
        QAction *action = bar->addAction(name);
        action->setCheckable(true);
        action->setChecked(tool == m_canvas->tool());
        action->setObjectName(QStringLiteral("tool%1").arg(int(tool)));
        tools->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, tool = tool] { m_canvas->setTool(tool); });
    }
    bar->addSeparator();
    m_colorButton = new QToolButton(bar);
    m_colorButton->setToolTip(tr("Colour"));
    connect(m_colorButton, &QToolButton::clicked, this, &AnnotationEditor::chooseColor);
    bar->addWidget(m_colorButton);
    showColor();
    auto *width = new QSpinBox(bar);
    width->setRange(1, 20);
    width->setValue(m_canvas->lineWidth());
    width->setToolTip(tr("Line width"));
    width->setAccessibleName(tr("Line width"));
    connect(width, &QSpinBox::valueChanged, m_canvas, &AnnotationCanvas::setLineWidth);
    bar->addWidget(width);
    bar->addSeparator();

    QAction *undo = m_undoStack->createUndoAction(this, tr("Undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction *redo = m_undoStack->createRedoAction(this, tr("Redo"));
    // Ctrl+Y as on Windows, besides the system's own redo keys; listed twice, a key would be
    // ambiguous and do nothing.
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    if (!redoKeys.contains(QKeySequence(Qt::CTRL | Qt::Key_Y)))
        redoKeys.prepend(QKeySequence(Qt::CTRL | Qt::Key_Y));
    redo->setShortcuts(redoKeys);
    undo->setObjectName(QStringLiteral("undo"));
    redo->setObjectName(QStringLiteral("redo"));
    bar->addAction(undo);
    bar->addAction(redo);
    addAction(undo);
    addAction(redo);
    bar->addSeparator();
    QAction *fit = bar->addAction(tr("Zoom to fit"), this, &AnnotationEditor::zoomToFit);
    fit->setObjectName(QStringLiteral("zoomToFit"));
    QAction *actual = bar->addAction(tr("Actual size"), this, [this] { m_canvas->setZoom(1.0); });
    actual->setObjectName(QStringLiteral("actualSize"));
}

void AnnotationEditor::chooseColor()
{
    const QColor color = QColorDialog::getColor(m_canvas->color(), this, tr("Colour"));
    if (color.isValid()) {
        m_canvas->setColor(color);
        showColor();
    }
}

void AnnotationEditor::showColor()
{
    QPixmap swatch(16, 16);
    swatch.fill(m_canvas->color());
    m_colorButton->setIcon(QIcon(swatch));
}

bool AnnotationEditor::hasUnsavedChanges() const
{
    return !m_undoStack->isClean();
}

void AnnotationEditor::zoomToFit()
{
    const QSize image = m_document->crop().size();
    const QSize room = m_scroll->viewport()->size() - QSize(4, 4);
    if (image.isEmpty() || room.isEmpty())
        return;
    m_canvas->setZoom(qMin(
        1.0, qMin(qreal(room.width()) / image.width(), qreal(room.height()) / image.height())));
}

void AnnotationEditor::save()
{
    emit saved(m_document->render());
    m_undoStack->setClean();
    accept();
}

void AnnotationEditor::reject()
{
    if (hasUnsavedChanges() && QMessageBox::question(this, QStringLiteral("Velmorin"),
                                                     tr("Discard the changes to the image?"),
                                                     QMessageBox::Yes | QMessageBox::No,
                                                     QMessageBox::No) != QMessageBox::Yes)
        return;
    QDialog::reject();
}

void AnnotationEditor::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    zoomToFit();
}
