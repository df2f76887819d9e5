#include "qhotkeyprivatewin.h"

#include "win32hotkeys.h"
#include "winkeymap.h"

QHotkeyPrivate *createHotkeyPrivate()
{
    return new QHotkeyPrivateWin;
}

namespace {
short keyScan(wchar_t character)
{
    return VkKeyScanW(character);
}
} // namespace

bool QHotkeyPrivateWin::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "windows_generic_MSG" && eventType != "windows_dispatcher_MSG")
        return false;
    unsigned modifiers = 0;
    unsigned key = 0;
    if (Win32Hotkeys::isHotkey(*static_cast<const MSG *>(message), modifiers, key))
        activateShortcut({key, modifiers});
    return false;
}

quint32 QHotkeyPrivateWin::nativeKeycode(Qt::Key keycode, bool &ok)
{
    return WinKeyMap::virtualKey(keycode, keyScan, ok);
}

quint32 QHotkeyPrivateWin::nativeModifiers(Qt::KeyboardModifiers modifiers, bool &ok)
{
    ok = true;
    return WinKeyMap::modifiers(modifiers);
}

bool QHotkeyPrivateWin::registerShortcut(QHotkey::NativeShortcut shortcut, QString &error)
{
    std::wstring text;
    const int id = WinKeyMap::hotkeyId(shortcut.key, shortcut.modifier);
    if (Win32Hotkeys::registerHotkey(id, shortcut.modifier, shortcut.key, text))
        return true;
    error = QString::fromStdWString(text);
    return false;
}

bool QHotkeyPrivateWin::unregisterShortcut(QHotkey::NativeShortcut shortcut, QString &error)
{
    std::wstring text;
    const int id = WinKeyMap::hotkeyId(shortcut.key, shortcut.modifier);
    if (Win32Hotkeys::unregisterHotkey(id, text))
        return true;
    error = QString::fromStdWString(text);
    return false;
}
