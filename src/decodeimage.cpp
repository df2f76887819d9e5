#include "decodeimage.h"

DecodeImage::DecodeImage(quint64 serial, const QByteArray &bytes) : m_serial(serial), m_bytes(bytes)
{
    setAutoDelete(true);
}

void DecodeImage::run()
{
    emit decoded(m_serial, QImage::fromData(m_bytes));
}
