#pragma once

#include "platform/idesktop.h"

struct _XDisplay;
class X11ClipboardWatch;
class X11InputObserver;

// The desktop on X11: XInput2 to observe, XTest to send keys, XFixes to follow the clipboard,
// EWMH to find the foreground
// application, XDG autostart entries and the desktop portal for the rest. Works with any
// window manager that follows EWMH, and falls back to the input focus without one.
class X11Desktop final : public IDesktop
{
    Q_OBJECT

public:
    explicit X11Desktop(QObject *parent = nullptr);
    ~X11Desktop() override;

    bool isHookInstalled(Hook hook) const override;
    bool installHook(Hook hook) override;
    bool removeHook(Hook hook) override;

    void keyEvent(quint8 virtualKey, quint8 scanCode, quint32 flags) override;
    quint32 scanCode(quint32 virtualKey) override;
    qint16 keyScan(char16_t character) override;
    Qt::KeyboardModifiers heldModifiers() const override;

    QString foregroundApplicationName() override;
    QImage foregroundApplicationIcon() override;
    QString foregroundWindowClass() override;
    QString clipboardOwnerName() override;
    quint64 clipboardChangeCount() override;
    quint64 foregroundWindow() override;
    bool activateWindow(quint64 window) override;
    void showInFileManager(const QString &path) override;
    void applyStartWithSystem(bool enabled) override;
    bool isDarkTheme() override;
    QString name() const override { return QStringLiteral("X11"); }

    X11InputObserver *observer() const { return m_observer; }

private:
    _XDisplay *m_display = nullptr;
    X11InputObserver *m_observer = nullptr;
    X11ClipboardWatch *m_clipboardWatch = nullptr;
};
