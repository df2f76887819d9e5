#include "ui/annotation/annotationdocument.h"

#include <QPainter>

AnnotationDocument::AnnotationDocument(const QImage &image, QObject *parent)
    : QObject(parent), m_original(image.convertToFormat(QImage::Format_ARGB32_Premultiplied)),
      m_crop(image.rect())
{}

int AnnotationDocument::nextMarkerNumber() const
{
    int highest = 0;
    for (const Annotation &annotation : m_annotations) {
        if (annotation.kind == Annotation::Marker)
            highest = qMax(highest, annotation.number);
    }
    return highest + 1;
}

void AnnotationDocument::append(const Annotation &annotation)
{
    m_annotations.append(annotation);
    emit changed();
}

void AnnotationDocument::removeLast()
{
    if (m_annotations.isEmpty())
        return;
    m_annotations.removeLast();
    emit changed();
}

void AnnotationDocument::setCrop(const QRect &crop)
{
    m_crop = crop.intersected(m_original.rect());
    emit changed();
}

QImage AnnotationDocument::render() const
{
    QImage image = m_original;
    QPainter painter(&image);
    for (const Annotation &annotation : m_annotations)
        annotation.paint(&painter);
    painter.end();
    return image.copy(m_crop);
}
