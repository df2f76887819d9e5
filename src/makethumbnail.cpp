#include "makethumbnail.h"

#include "clipping.h"

#include <QDebug>
#include <QDir>

MakeThumbnail::MakeThumbnail(const QUuid &id, const QString &fileName)
    : m_id(id), m_fileName(fileName)
{
    setAutoDelete(true);
}

QRect MakeThumbnail::cropRect(int width, int height)
{
    const double ratio = 1.3333333333333333;
    if (width > height * ratio) {
        const int newWidth = int(height * ratio);
        return QRect((width - newWidth) / 2, 0, newWidth, height);
    }
    const int newHeight = int(width / ratio);
    return QRect(0, (height - newHeight) / 2, width, newHeight);
}

QImage MakeThumbnail::thumbnailOf(const QImage &image)
{
    return image.copy(cropRect(image.width(), image.height()))
        .scaled(160, 120, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

void MakeThumbnail::run()
{
    const QString path = Clipping::imageFolder(m_id) + QDir::separator() + m_fileName;
    const QImage image(path);
    if (image.isNull()) {
        qWarning() << "Failed to load image" << path;
        return;
    }
    emit thumbnail(thumbnailOf(image), m_id);
}
