#pragma once

#include <QImage>
#include <QObject>
#include <QString>

// The desktop as the input and paste logic sees it: keys and mouse buttons observed system
// wide, synthetic key events in the terms of Windows' keybd_event, and the desktop services
// (foreground application, autostart, theme, file manager). One back end per platform; tests
// use a fake.
class IDesktop : public QObject
{
    Q_OBJECT

public:
    enum Hook { KeyboardHook, MouseHook };

    using QObject::QObject;

    virtual bool isHookInstalled(Hook hook) const = 0;
    // False when the system refused it.
    virtual bool installHook(Hook hook) = 0;
    // False when the system refused; the hook counts as removed either way.
    virtual bool removeHook(Hook hook) = 0;

    // One synthetic key event: virtual key, scan code, ExtendedKey and KeyUp flags.
    virtual void keyEvent(quint8 virtualKey, quint8 scanCode, quint32 flags) = 0;
    // The scan code of a virtual key (MapVirtualKeyW with MAPVK_VK_TO_VSC).
    virtual quint32 scanCode(quint32 virtualKey) = 0;
    // The key and modifiers that type a character (VkKeyScanW): virtual key in the low byte,
    // KeyScanBit flags above it, -1 when no key types it.
    virtual qint16 keyScan(char16_t character) = 0;
    // Modifiers the user holds right now, read from the system rather than from events.
    virtual Qt::KeyboardModifiers heldModifiers() const = 0;

    // Executable name of the application that owns the foreground window; empty if unknown.
    virtual QString foregroundApplicationName() = 0;
    // Its window icon at the size the system has it; null when it has none.
    virtual QImage foregroundApplicationIcon() = 0;
    // The class of the foreground window (WM_CLASS on X11, the window class on Windows), which
    // tells terminals from other programs; empty if unknown.
    virtual QString foregroundWindowClass() = 0;
    // Executable name of the application that owns the clipboard's content (which need not be
    // the one in front); empty if unknown.
    virtual QString clipboardOwnerName() = 0;
    // Changes whenever the clipboard gets new content, from any program; comparing two
    // readings tells whether the clipboard changed in between.
    virtual quint64 clipboardChangeCount() = 0;
    // The window that has the focus, to give it back before pasting; 0 when unknown.
    virtual quint64 foregroundWindow() = 0;
    // Gives the focus back to a window that foregroundWindow() named; false when that fails.
    virtual bool activateWindow(quint64 window) = 0;

    virtual void showInFileManager(const QString &path) = 0;
    virtual void applyStartWithSystem(bool enabled) = 0;
    virtual bool isDarkTheme() = 0;
    virtual QString name() const = 0;

signals:
    // A key went down while the keyboard hook is installed (Shift and Caps Lock are not
    // reported). text is what the key types with the modifiers held; it is empty for dead
    // keys, keys without a character and navigation keys, which are not translated.
    void keyPressed(quint32 virtualKey, const QString &text);
    // A left, right or middle button went down, or the wheel turned.
    void mouseButtonPressed();
    // Another window came to the front. Only back ends that follow the foreground emit it.
    void foregroundWindowChanged();
};

// Made by the platform back end that CMake builds in.
IDesktop *createDesktop(QObject *parent);
