#include "ui/annotation/cropcommand.h"

#include "ui/annotation/annotationdocument.h"

#include <QCoreApplication>

CropCommand::CropCommand(AnnotationDocument *document, const QRect &crop)
    : m_document(document), m_crop(crop), m_previous(document->crop())
{
    setText(QCoreApplication::translate("AnnotationEditor", "Crop"));
}

void CropCommand::redo()
{
    m_document->setCrop(m_crop);
}

void CropCommand::undo()
{
    m_document->setCrop(m_previous);
}
