#pragma once

#include "ui/annotation/annotation.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QRect>

// The image being annotated: the original, the marks on it in the order they were made, and
// the part that is kept after cropping. Changes go through the undo commands.
class AnnotationDocument final : public QObject
{
    Q_OBJECT

public:
    explicit AnnotationDocument(const QImage &image, QObject *parent = nullptr);

    QImage original() const { return m_original; }
    QList<Annotation> annotations() const { return m_annotations; }
    QRect crop() const { return m_crop; }
    // The number the next marker gets: one more than the highest so far.
    int nextMarkerNumber() const;

    void append(const Annotation &annotation);
    void removeLast();
    void setCrop(const QRect &crop);

    // The marks on the original, cut to the crop.
    QImage render() const;

signals:
    void changed();

private:
    QImage m_original;
    QList<Annotation> m_annotations;
    QRect m_crop;
};
