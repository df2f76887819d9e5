#include "ui/annotation/addannotationcommand.h"

#include "ui/annotation/annotationdocument.h"

#include <QCoreApplication>

AddAnnotationCommand::AddAnnotationCommand(AnnotationDocument *document,
                                           const Annotation &annotation)
    : m_document(document), m_annotation(annotation)
{
    static const char *const names[] = {
        QT_TRANSLATE_NOOP("AnnotationEditor", "Arrow"),
        QT_TRANSLATE_NOOP("AnnotationEditor", "Rectangle"),
        QT_TRANSLATE_NOOP("AnnotationEditor", "Marker"),
        QT_TRANSLATE_NOOP("AnnotationEditor", "Text"),
        QT_TRANSLATE_NOOP("AnnotationEditor", "Highlight"),
    };
    setText(QCoreApplication::translate("AnnotationEditor", names[annotation.kind]));
}

void AddAnnotationCommand::redo()
{
    m_document->append(m_annotation);
}

void AddAnnotationCommand::undo()
{
    m_document->removeLast();
}
