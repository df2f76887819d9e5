#pragma once

#include <QImage>
#include <QObject>
#include <QRunnable>
#include <QUuid>

// Reads an image clipping's file back from the cache on a pool thread and makes the thumbnail
// the lists show: the whole image within 160 x 120.
class MakeThumbnail final : public QObject, public QRunnable
{
    Q_OBJECT

public:
    MakeThumbnail(const QUuid &id, const QString &fileName);

    void run() override;

    static QImage thumbnailOf(const QImage &image);

signals:
    void thumbnail(const QImage &image, const QUuid &id);

private:
    QUuid m_id;
    QString m_fileName;
};
