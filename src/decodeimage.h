#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QRunnable>

// Decodes a copied image (PNG, JPEG, ...) on a pool thread: a large screenshot takes the
// better part of a second, which the user interface must not wait for.
class DecodeImage final : public QObject, public QRunnable
{
    Q_OBJECT

public:
    DecodeImage(quint64 serial, const QByteArray &bytes);

    void run() override;

signals:
    // A null image when the bytes are not an image.
    void decoded(quint64 serial, const QImage &image);

private:
    quint64 m_serial;
    QByteArray m_bytes;
};
