#pragma once

#include <QtGlobal>

struct _XDisplay;

// Counts the changes of the CLIPBOARD selection's owner, as XFixes reports them, on a
// connection of its own. The count is brought up to date when it is read, so two readings
// tell whether another program took the clipboard in between.
class X11ClipboardWatch final
{
public:
    X11ClipboardWatch();
    ~X11ClipboardWatch();
    X11ClipboardWatch(const X11ClipboardWatch &) = delete;
    X11ClipboardWatch &operator=(const X11ClipboardWatch &) = delete;

    bool isValid() const { return m_eventBase >= 0; }
    quint64 changeCount();

private:
    _XDisplay *m_display = nullptr;
    int m_eventBase = -1;
    quint64 m_count = 0;
};
