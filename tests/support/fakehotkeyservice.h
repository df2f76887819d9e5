#pragma once

#include "qhotkeyprivate.h"
#include "win/winkeymap.h"

#include <QList>

// The system's global-shortcut service: keeps what is registered, refuses what it is told to,
// and presses a registered shortcut on request. Modifiers are coded as Windows codes them.
class FakeHotkeyService final : public QHotkeyPrivate
{
public:
    QList<QHotkey::NativeShortcut> registered;
    QList<quint32> refusedKeys;
    int registerCalls = 0;

    void press(quint32 key, quint32 modifiers) { activateShortcut({key, modifiers}); }
    bool nativeEventFilter(const QByteArray &, void *, qintptr *) override { return false; }

protected:
    quint32 nativeKeycode(Qt::Key key, bool &ok) override
    {
        ok = key != Qt::Key_unknown && key <= Qt::Key_Escape;
        return quint32(key);
    }
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool &ok) override
    {
        ok = true;
        return WinKeyMap::modifiers(modifiers);
    }
    bool registerShortcut(QHotkey::NativeShortcut shortcut, QString &error) override
    {
        ++registerCalls;
        if (refusedKeys.contains(shortcut.key)) {
            error = QStringLiteral("Hot key is already registered.");
            return false;
        }
        registered.append(shortcut);
        return true;
    }
    bool unregisterShortcut(QHotkey::NativeShortcut shortcut, QString &) override
    {
        return registered.removeOne(shortcut);
    }
};
