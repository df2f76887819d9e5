#include "fakedesktop.h"

#include "platform/virtualkeys.h"

namespace {
QString keyName(quint8 virtualKey)
{
    switch (virtualKey) {
    case VirtualKey::Backspace:
        return QStringLiteral("Back");
    case VirtualKey::Shift:
        return QStringLiteral("Shift");
    case VirtualKey::Control:
        return QStringLiteral("Ctrl");
    case VirtualKey::Alt:
        return QStringLiteral("Alt");
    case VirtualKey::LeftWindows:
        return QStringLiteral("Win");
    case VirtualKey::Left:
        return QStringLiteral("Left");
    case VirtualKey::Insert:
        return QStringLiteral("Insert");
    default:
        break;
    }
    if ((virtualKey >= '0' && virtualKey <= '9') || (virtualKey >= 'A' && virtualKey <= 'Z'))
        return QString(QChar(virtualKey));
    return QStringLiteral("0x%1").arg(virtualKey, 2, 16, QLatin1Char('0'));
}
} // namespace

QString FakeDesktop::keyLog() const
{
    QStringList parts;
    for (const KeyEvent &event : events) {
        const bool up = event.flags & KeyEventFlag::KeyUp;
        parts << (up ? QLatin1Char('-') : QLatin1Char('+')) + keyName(event.virtualKey);
    }
    return parts.join(QLatin1Char(' '));
}

bool FakeDesktop::installHook(Hook hook)
{
    hooks[hook] = !refuseHooks;
    return !refuseHooks;
}

bool FakeDesktop::removeHook(Hook hook)
{
    hooks[hook] = false;
    return !refuseHooks;
}

void FakeDesktop::keyEvent(quint8 virtualKey, quint8 scanCode, quint32 flags)
{
    events.append({virtualKey, scanCode, flags});
}

qint16 FakeDesktop::keyScan(char16_t character)
{
    // A US layout, plus the euro sign on AltGr+E as on many European layouts.
    if (character >= 'a' && character <= 'z')
        return qint16(character - 'a' + 'A');
    if (character >= 'A' && character <= 'Z')
        return qint16(KeyScanBit::Shift | character);
    if (character >= '0' && character <= '9')
        return qint16(character);
    switch (character) {
    case u' ':
        return VirtualKey::Space;
    case u'!':
        return qint16(KeyScanBit::Shift | '1');
    case u',':
        return 0xBC;
    case u'\u20AC':
        return qint16(KeyScanBit::Control | KeyScanBit::Alt | 'E');
    default:
        return -1;
    }
}
