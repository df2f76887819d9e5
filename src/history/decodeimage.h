#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QRunnable>

// Decodes a copied image (PNG, JPEG, ...) on a pool thread: a large screenshot takes the
// better part of a second, which the user interface must not wait for. Formats the image
// cache does not keep as they came are encoded as PNG here too, so that all the slow work on
// a copied image happens in this one task.
class DecodeImage final : public QObject, public QRunnable
{
    Q_OBJECT

public:
    DecodeImage(quint64 serial, const QByteArray &bytes, bool encodePng);

    void run() override;

signals:
    // A null image when the bytes are not an image; png is empty unless it was asked for.
    void decoded(quint64 serial, const QImage &image, const QByteArray &png);

private:
    quint64 m_serial;
    QByteArray m_bytes;
    bool m_encodePng;
};
