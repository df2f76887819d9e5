#pragma once

#include "../qhotkeyprivate.h"

struct _XDisplay;
struct xcb_connection_t;

// Global shortcuts on X11: a passive key grab on the root window for each combination, with
// the Caps Lock and Num Lock variants grabbed too (X counts them as modifiers, the user does
// not). Presses arrive on Qt's own connection and are picked out by the native event filter.
class QHotkeyPrivateX11 final : public QHotkeyPrivate
{
    Q_OBJECT

public:
    QHotkeyPrivateX11();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

    // The keysym of a Qt key, or 0 for keys without one.
    static quint32 keysym(Qt::Key key);

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool &ok) override;
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool &ok) override;
    bool registerShortcut(QHotkey::NativeShortcut shortcut, QString &error) override;
    bool unregisterShortcut(QHotkey::NativeShortcut shortcut, QString &error) override;

private:
    _XDisplay *m_display = nullptr;
    xcb_connection_t *m_connection = nullptr;
    quint32 m_root = 0;
};
