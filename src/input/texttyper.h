#pragma once

#include <QObject>

class QHotkey;
class QTimer;

// Types a clipping key by key into the application that has the focus, for the places that
// refuse a paste. One character every 20 ms, starting 200 ms after the command so that the
// focus is back in the target; Escape, anywhere, stops it.
class TextTyper final : public QObject
{
    Q_OBJECT

public:
    explicit TextTyper(QObject *parent = nullptr);

    void start(const QString &text);
    void stop();
    bool isTyping() const;

signals:
    void finished();

private:
    void typeNext();

    QString m_text;
    int m_position = 0;
    QTimer *m_startTimer;
    QTimer *m_timer;
    QHotkey *m_escape;
};
