#pragma once

#include <QObject>

#include <array>

class QTcpSocket;

// Ends a connection whose client sends an unmasked frame, which websockets forbid and Qt's
// server accepts. It reads the byte stream beside the websocket that consumes it: it looks at
// what has arrived before the websocket reads and notes what the websocket left afterwards, so
// it sees every byte once without taking any.
class FrameMaskCheck final : public QObject
{
    Q_OBJECT

public:
    // Attach before the socket goes to the websocket server, so that it sees arrivals first.
    explicit FrameMaskCheck(QTcpSocket *socket);

    // The handshake is done: frames follow. Call where the upgraded connection is handed out,
    // after the websocket has begun to read the socket.
    void startFrames();
    bool hasStartedFrames() const { return m_frames; }

signals:
    void violated(const QString &reason);

private:
    void beforeRead();
    void afterRead();
    // Follows frame headers through newly arrived bytes; false at an unmasked frame.
    bool follow(const char *data, qint64 size);

    QTcpSocket *m_socket;
    bool m_frames = false;
    // What the readers left in the socket's buffer when the last arrival was handled.
    qint64 m_left = 0;
    std::array<unsigned char, 10> m_header{};
    int m_headerSize = 0;
    quint64 m_skip = 0; // mask key and payload of the current frame still to pass
};
