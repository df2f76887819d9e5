#pragma once

#include <QString>

// Synthetic keyboard events sent to whatever application has the focus. Keys are Windows
// virtual-key codes; modifiers are KeyModifier bits (Alt 1, Control 2, Shift 4, Windows 8).
namespace KeySender {

// The modifiers go down before the key and are released before it as well.
void sendKey(quint32 virtualKey, bool down, quint32 modifiers);
void tapKey(quint32 virtualKey, quint32 modifiers);
// Press and release of the key that types the character, with the modifiers it needs added.
void tapCharacter(QChar character, quint32 modifiers);
// Types the text's UTF-8 bytes one by one, so only 7-bit characters come out right.
void typeText(const QString &text);

} // namespace KeySender
