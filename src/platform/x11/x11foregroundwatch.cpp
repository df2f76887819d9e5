#include "platform/x11/x11foregroundwatch.h"

#include <QSocketNotifier>

#include <X11/Xlib.h>

X11ForegroundWatch::X11ForegroundWatch(QObject *parent) : QObject(parent)
{
    m_display = XOpenDisplay(nullptr);
    if (!m_display)
        return;
    m_activeWindowAtom = XInternAtom(m_display, "_NET_ACTIVE_WINDOW", False);
    XSelectInput(m_display, DefaultRootWindow(m_display), PropertyChangeMask);
    XFlush(m_display);
    m_notifier = new QSocketNotifier(ConnectionNumber(m_display), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &X11ForegroundWatch::processEvents);
}

X11ForegroundWatch::~X11ForegroundWatch()
{
    delete m_notifier;
    if (m_display)
        XCloseDisplay(m_display);
}

void X11ForegroundWatch::processEvents()
{
    bool activeWindowChanged = false;
    while (XPending(m_display) > 0) {
        XEvent event;
        XNextEvent(m_display, &event);
        if (event.type == PropertyNotify && event.xproperty.atom == m_activeWindowAtom)
            activeWindowChanged = true;
    }
    // Told once for a burst: a window manager may set the property several times in a row.
    if (activeWindowChanged)
        emit changed();
}
