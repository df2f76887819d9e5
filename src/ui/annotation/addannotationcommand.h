#pragma once

#include "ui/annotation/annotation.h"

#include <QUndoCommand>

class AnnotationDocument;

// Adds one mark; undoing takes it away again.
class AddAnnotationCommand final : public QUndoCommand
{
public:
    AddAnnotationCommand(AnnotationDocument *document, const Annotation &annotation);

    void redo() override;
    void undo() override;

private:
    AnnotationDocument *m_document;
    Annotation m_annotation;
};
