#pragma once

#include <QObject>

struct _XDisplay;
class QSocketNotifier;

// Follows the window manager's active window (_NET_ACTIVE_WINDOW on the root window), on a
// connection of its own, and says when another window comes to the front.
class X11ForegroundWatch final : public QObject
{
    Q_OBJECT

public:
    explicit X11ForegroundWatch(QObject *parent = nullptr);
    ~X11ForegroundWatch() override;

signals:
    void changed();

private:
    void processEvents();

    _XDisplay *m_display = nullptr;
    unsigned long m_activeWindowAtom = 0;
    QSocketNotifier *m_notifier = nullptr;
};
