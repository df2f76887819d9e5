#pragma once

#include <Qt>

// How Qt's keys and modifiers become the arguments of Windows' RegisterHotKey. Free of Win32
// calls (the character lookup is passed in) so the table is tested on every platform.
namespace WinKeyMap {

// VkKeyScanW's signature: virtual key in the low byte, -1 when no key types the character.
using KeyScan = short (*)(wchar_t character);

// The virtual key, or ok = false for keys without one.
quint32 virtualKey(Qt::Key key, KeyScan keyScan, bool &ok);
// MOD_ALT 1, MOD_CONTROL 2, MOD_SHIFT 4, MOD_WIN 8; the keypad flag is ignored.
quint32 modifiers(Qt::KeyboardModifiers modifiers);
// RegisterHotKey's identifier, in 0x7000 to 0x7FFF.
int hotkeyId(quint32 virtualKey, quint32 modifiers);

} // namespace WinKeyMap
