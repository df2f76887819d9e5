#pragma once

#include <QRect>
#include <QUndoCommand>

class AnnotationDocument;

// Keeps only a part of the image; undoing brings the previous part back.
class CropCommand final : public QUndoCommand
{
public:
    CropCommand(AnnotationDocument *document, const QRect &crop);

    void redo() override;
    void undo() override;

private:
    AnnotationDocument *m_document;
    QRect m_crop;
    QRect m_previous;
};
