#include "history/makethumbnail.h"

#include "history/clipping.h"

#include <QDebug>

MakeThumbnail::MakeThumbnail(const QUuid &id, const QString &fileName)
    : m_id(id), m_fileName(fileName)
{
    setAutoDelete(true);
}

QImage MakeThumbnail::thumbnailOf(const QImage &image)
{
    // Sampled down to twice the size first, which is fast on an 8K image, then smoothed.
    const QSize size = image.size().scaled(160, 120, Qt::KeepAspectRatio);
    return image.scaled(size * 2, Qt::IgnoreAspectRatio, Qt::FastTransformation)
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void MakeThumbnail::run()
{
    const QString path = Clipping::imageFile(m_id, m_fileName);
    const QImage image(path);
    if (image.isNull()) {
        qWarning() << "Failed to load image" << path;
        return;
    }
    emit thumbnail(thumbnailOf(image), m_id);
}
