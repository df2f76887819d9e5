#pragma once

#include "../qhotkeyprivate.h"

// Global shortcuts on Windows: RegisterHotKey for the GUI thread, WM_HOTKEY picked out of the
// thread's messages by the native event filter.
class QHotkeyPrivateWin final : public QHotkeyPrivate
{
    Q_OBJECT

public:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool &ok) override;
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool &ok) override;
    bool registerShortcut(QHotkey::NativeShortcut shortcut, QString &error) override;
    bool unregisterShortcut(QHotkey::NativeShortcut shortcut, QString &error) override;
};
