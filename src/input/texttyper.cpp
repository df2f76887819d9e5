#include "input/texttyper.h"

#include "platform/keysender.h"
#include "qhotkey.h"

#include <QDebug>
#include <QTimer>

TextTyper::TextTyper(QObject *parent)
    : QObject(parent), m_startTimer(new QTimer(this)), m_timer(new QTimer(this)),
      m_escape(new QHotkey(QKeySequence(Qt::Key_Escape), false, this))
{
    m_startTimer->setSingleShot(true);
    m_startTimer->setInterval(200);
    m_timer->setInterval(20);
    connect(m_startTimer, &QTimer::timeout, m_timer, qOverload<>(&QTimer::start));
    connect(m_timer, &QTimer::timeout, this, &TextTyper::typeNext);
    connect(m_escape, &QHotkey::activated, this, &TextTyper::stop);
}

bool TextTyper::isTyping() const
{
    return m_startTimer->isActive() || m_timer->isActive();
}

void TextTyper::start(const QString &text)
{
    m_text = text;
    m_position = 0;
    if (!m_escape->setRegistered(true))
        qWarning() << "Unable to register hotkey" << m_escape->shortcut().toString();
    m_timer->stop();
    m_startTimer->start();
}

void TextTyper::typeNext()
{
    if (m_position >= m_text.size()) {
        stop();
        return;
    }
    // A surrogate pair is one character to the keyboard.
    const int length = m_text.at(m_position).isHighSurrogate() ? 2 : 1;
    KeySender::typeText(m_text.mid(m_position, length));
    m_position += length;
}

void TextTyper::stop()
{
    const bool wasTyping = isTyping();
    m_startTimer->stop();
    m_timer->stop();
    m_escape->setRegistered(false);
    m_text.clear();
    if (wasTyping)
        emit finished();
}
