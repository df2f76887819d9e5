#pragma once

#include "platform/idesktop.h"

#include <QList>

// A desktop that records the synthetic key events sent to it and types with a US layout.
class FakeDesktop final : public IDesktop
{
    Q_OBJECT

public:
    struct KeyEvent
    {
        quint8 virtualKey;
        quint8 scanCode;
        quint32 flags;
        bool operator==(const KeyEvent &other) const
        {
            return virtualKey == other.virtualKey && scanCode == other.scanCode &&
                   flags == other.flags;
        }
    };

    using IDesktop::IDesktop;

    // A readable form of the recorded events: "+Ctrl +V -Ctrl -V".
    QString keyLog() const;
    static quint8 scanOf(quint32 virtualKey) { return quint8((virtualKey * 7) & 0x7F); }

    bool isHookInstalled(Hook hook) const override { return hooks[hook]; }
    bool installHook(Hook hook) override;
    bool removeHook(Hook hook) override;
    void keyEvent(quint8 virtualKey, quint8 scanCode, quint32 flags) override;
    quint32 scanCode(quint32 virtualKey) override { return scanOf(virtualKey); }
    qint16 keyScan(char16_t character) override;
    Qt::KeyboardModifiers heldModifiers() const override { return held; }
    QString foregroundApplicationName() override { return foregroundName; }
    QImage foregroundApplicationIcon() override { return foregroundIcon; }
    QString foregroundWindowClass() override { return foregroundClass; }
    QString clipboardOwnerName() override { return clipboardOwner; }
    // With clipboardChangesWhileRead, every reading differs from the one before, as if the
    // clipboard changed each time it was read.
    quint64 clipboardChangeCount() override
    {
        return clipboardChangesWhileRead ? ++clipboardChanges : clipboardChanges;
    }
    quint64 foregroundWindow() override { return focusedWindow; }
    bool activateWindow(quint64 window) override
    {
        activatedWindows << window;
        return window != 0;
    }
    void showInFileManager(const QString &path) override { shownPaths << path; }
    void applyStartWithSystem(bool enabled) override { startWithSystem = enabled; }
    bool isDarkTheme() override { return false; }
    QString name() const override { return QStringLiteral("Fake"); }

    QList<KeyEvent> events;
    bool hooks[2] = {false, false};
    bool refuseHooks = false;
    Qt::KeyboardModifiers held;
    QString foregroundName;
    QString foregroundClass;
    QString clipboardOwner;
    quint64 focusedWindow = 0;
    QList<quint64> activatedWindows;
    QImage foregroundIcon;
    QStringList shownPaths;
    bool startWithSystem = false;
    quint64 clipboardChanges = 0;
    bool clipboardChangesWhileRead = false;
};
