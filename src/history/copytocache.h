#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QRunnable>
#include <QUrl>
#include <QUuid>

// Writes one image clipping's file into its folder of the image cache, on a pool thread:
// the bytes as they came (PNG from the clipboard is stored as is, not encoded again), else the
// image encoded by the file name's suffix, else a copy of the local file behind the URL.
class CopyToCache final : public QObject, public QRunnable
{
    Q_OBJECT

public:
    CopyToCache(const QImage &image, const QByteArray &bytes, const QUuid &id,
                const QString &fileName, const QUrl &source,
                const QString &folderName = QStringLiteral("images"));

    void run() override;

signals:
    void done();

private:
    QString targetPath() const;
    bool writeInto(QIODevice *file, const QString &target) const;

    QImage m_image;
    QByteArray m_bytes;
    QUuid m_id;
    QString m_fileName;
    QUrl m_source;
    QString m_folderName;
};
