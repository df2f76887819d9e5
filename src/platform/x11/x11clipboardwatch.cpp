#include "platform/x11/x11clipboardwatch.h"

#include <QDebug>

#include <X11/Xlib.h>
#include <X11/extensions/Xfixes.h>

X11ClipboardWatch::X11ClipboardWatch()
{
    m_display = XOpenDisplay(nullptr);
    int errorBase = 0;
    if (!m_display || !XFixesQueryExtension(m_display, &m_eventBase, &errorBase)) {
        qWarning() << "The X server has no XFixes extension: clipboard changes made while "
                      "the clipboard is read cannot be noticed";
        m_eventBase = -1;
        return;
    }
    const Atom clipboard = XInternAtom(m_display, "CLIPBOARD", False);
    XFixesSelectSelectionInput(m_display, DefaultRootWindow(m_display), clipboard,
                               XFixesSetSelectionOwnerNotifyMask |
                                   XFixesSelectionWindowDestroyNotifyMask |
                                   XFixesSelectionClientCloseNotifyMask);
    XSync(m_display, False);
}

X11ClipboardWatch::~X11ClipboardWatch()
{
    if (m_display)
        XCloseDisplay(m_display);
}

quint64 X11ClipboardWatch::changeCount()
{
    if (!isValid())
        return 0;
    // The round trip brings in every notification the server sent before answering.
    XSync(m_display, False);
    while (XPending(m_display) > 0) {
        XEvent event;
        XNextEvent(m_display, &event);
        if (event.type == m_eventBase + XFixesSelectionNotify)
            ++m_count;
    }
    return m_count;
}
