#include "platform/keysender.h"

#include "platform/idesktop.h"
#include "platform/platform.h"
#include "platform/virtualkeys.h"

namespace {

quint8 scanFor(quint32 virtualKey, bool down)
{
    const quint32 scan = Platform::desktop()->scanCode(virtualKey);
    return quint8(down ? scan : scan | 0x80);
}

void sendModifier(quint32 virtualKey, bool down)
{
    Platform::desktop()->keyEvent(quint8(virtualKey), scanFor(virtualKey, down),
                                  down ? 0 : KeyEventFlag::KeyUp);
}

// Modifiers a VkKeyScanW result asks for. AltGr characters need both Alt and Control.
quint32 modifiersOf(qint16 keyScan)
{
    quint32 modifiers = 0;
    if (keyScan & KeyScanBit::Shift)
        modifiers |= KeyModifier::Shift;
    if (keyScan & KeyScanBit::Alt) {
        modifiers |= KeyModifier::Alt;
        if (keyScan & KeyScanBit::Control)
            modifiers |= KeyModifier::Control;
    } else if (keyScan & KeyScanBit::Control) {
        modifiers |= KeyModifier::Control;
    }
    return modifiers;
}

bool isAsciiUpper(uint code)
{
    return code >= 'A' && code <= 'Z';
}

void typeByte(quint8 byte)
{
    IDesktop *desktop = Platform::desktop();
    const qint16 keyScan = desktop->keyScan(char16_t(byte));
    const bool shift = (keyScan & KeyScanBit::Shift) || isAsciiUpper(byte);
    const bool control = keyScan & KeyScanBit::Control;
    const bool alt = keyScan & KeyScanBit::Alt;
    const quint32 key = quint32(keyScan) & 0xFF;

    const auto modifiers = [&](bool down) {
        if (alt)
            sendModifier(VirtualKey::Alt, down);
        if (control)
            sendModifier(VirtualKey::Control, down);
        if (shift)
            sendModifier(VirtualKey::Shift, down);
    };
    modifiers(true);
    desktop->keyEvent(quint8(key), scanFor(key, true), 0);
    modifiers(false);
    desktop->keyEvent(quint8(key), scanFor(key, false), KeyEventFlag::KeyUp);
}

} // namespace

namespace KeySender {

void sendKey(quint32 virtualKey, bool down, quint32 modifiers)
{
    IDesktop *desktop = Platform::desktop();
    if (modifiers & KeyModifier::Windows) {
        const quint32 flags = KeyEventFlag::ExtendedKey | (down ? 0 : KeyEventFlag::KeyUp);
        desktop->keyEvent(quint8(VirtualKey::LeftWindows), scanFor(VirtualKey::LeftWindows, down),
                          flags);
    }
    if (modifiers & KeyModifier::Alt)
        sendModifier(VirtualKey::Alt, down);
    if (modifiers & KeyModifier::Control)
        sendModifier(VirtualKey::Control, down);
    if (modifiers & KeyModifier::Shift)
        sendModifier(VirtualKey::Shift, down);

    const quint32 key = virtualKey & 0xFF;
    quint32 flags = down ? 0 : KeyEventFlag::KeyUp;
    if (VirtualKey::isExtended(key))
        flags |= KeyEventFlag::ExtendedKey;
    desktop->keyEvent(quint8(key), scanFor(key, down), flags);
}

void tapKey(quint32 virtualKey, quint32 modifiers)
{
    sendKey(virtualKey, true, modifiers);
    sendKey(virtualKey, false, modifiers);
}

void tapCharacter(QChar character, quint32 modifiers)
{
    const qint16 keyScan = Platform::desktop()->keyScan(character.unicode());
    modifiers |= modifiersOf(keyScan);
    if (isAsciiUpper(character.unicode()))
        modifiers |= KeyModifier::Shift;
    const quint32 key = quint32(keyScan) & 0xFF;
    sendKey(key, true, modifiers);
    sendKey(key, false, modifiers);
}

void typeText(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    for (const char byte : bytes)
        typeByte(quint8(byte));
}

} // namespace KeySender
