#include "framemaskcheck.h"

#include <QTcpSocket>

namespace {

// Bytes of a header with the extended length its second byte announces, mask key excluded.
int headerSize(unsigned char second)
{
    const int length = second & 0x7f;
    return length == 126 ? 4 : length == 127 ? 10 : 2;
}

quint64 payloadSize(const std::array<unsigned char, 10> &header)
{
    const int length = header[1] & 0x7f;
    if (length < 126)
        return quint64(length);
    quint64 size = 0;
    for (int i = 2; i < (length == 126 ? 4 : 10); ++i)
        size = size << 8 | header[size_t(i)];
    return size;
}

QString tooEarly()
{
    return QStringLiteral("Sent frames before the handshake was answered");
}

} // namespace

FrameMaskCheck::FrameMaskCheck(QTcpSocket *socket) : QObject(socket), m_socket(socket)
{
    connect(socket, &QTcpSocket::readyRead, this, &FrameMaskCheck::beforeRead);
}

void FrameMaskCheck::startFrames()
{
    // A client must wait for the handshake's answer before it sends frames; bytes that came
    // with its request would leave the stream's frame boundaries unknown.
    m_frames = true;
    m_left = m_socket->bytesAvailable();
    if (m_left > 0) {
        emit violated(tooEarly());
        return;
    }
    // Connected now, it runs after the websocket's own reader on each arrival.
    connect(m_socket, &QTcpSocket::readyRead, this, &FrameMaskCheck::afterRead);
}

void FrameMaskCheck::beforeRead()
{
    const qint64 available = m_socket->bytesAvailable();
    if (!m_frames) {
        // The request ends with an empty line; anything after it came too early.
        const QByteArray request = m_socket->peek(available);
        const qsizetype end = request.indexOf("\r\n\r\n");
        if (end >= 0 && end + 4 < request.size())
            emit violated(tooEarly());
        return;
    }
    const qint64 arrived = available - m_left;
    const QByteArray buffered = m_socket->peek(available);
    if (arrived > 0 && !follow(buffered.constData() + (available - arrived), arrived))
        emit violated(QStringLiteral("Sent an unmasked frame"));
}

void FrameMaskCheck::afterRead()
{
    m_left = m_socket->bytesAvailable();
}

bool FrameMaskCheck::follow(const char *data, qint64 size)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(data);
    for (qint64 at = 0; at < size;) {
        if (m_skip > 0) {
            const quint64 step = qMin(m_skip, quint64(size - at));
            m_skip -= step;
            at += qint64(step);
            continue;
        }
        m_header[size_t(m_headerSize++)] = bytes[at++];
        if (m_headerSize < 2 || m_headerSize < headerSize(m_header[1]))
            continue;
        if (!(m_header[1] & 0x80))
            return false;
        m_skip = 4 + payloadSize(m_header);
        m_headerSize = 0;
    }
    return true;
}
