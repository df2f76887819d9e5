#include "history/decodeimage.h"

#include <QBuffer>

DecodeImage::DecodeImage(quint64 serial, const QByteArray &bytes, bool encodePng)
    : m_serial(serial), m_bytes(bytes), m_encodePng(encodePng)
{
    setAutoDelete(true);
}

void DecodeImage::run()
{
    const QImage image = QImage::fromData(m_bytes);
    m_bytes.clear(); // the encoded copy is not needed while the PNG is made
    QByteArray png;
    if (m_encodePng && !image.isNull()) {
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
    }
    emit decoded(m_serial, image, png);
}
