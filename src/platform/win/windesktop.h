#pragma once

#include "platform/idesktop.h"

struct Win32InputRecord;

// The desktop on Windows: low-level hooks, keybd_event, the foreground window's process and
// icon, the registry and Explorer, all through the Qt-free Win32 layer.
class WinDesktop final : public IDesktop
{
    Q_OBJECT

public:
    explicit WinDesktop(QObject *parent = nullptr);
    ~WinDesktop() override;

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
    QString name() const override { return QStringLiteral("Windows"); }

private:
    static void deliver(const Win32InputRecord &record, void *context);
};
