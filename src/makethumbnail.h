#pragma once

#include <QImage>
#include <QObject>
#include <QRect>
#include <QRunnable>
#include <QUuid>

// Reads an image clipping's file back from the cache on a pool thread and makes the 160 x 120
// thumbnail the lists show: the centre cut to 4:3, scaled fast.
class MakeThumbnail final : public QObject, public QRunnable
{
    Q_OBJECT

public:
    MakeThumbnail(const QUuid &id, const QString &fileName);

    void run() override;

    // The 4:3 part of an image of this size that the thumbnail shows.
    static QRect cropRect(int width, int height);
    static QImage thumbnailOf(const QImage &image);

signals:
    void thumbnail(const QImage &image, const QUuid &id);

private:
    QUuid m_id;
    QString m_fileName;
};
