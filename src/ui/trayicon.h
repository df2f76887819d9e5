#pragma once

#include <QSystemTrayIcon>

// The tray icon: a click toggles the paste window; the context menu offers Show, Settings, the
// actions to run on the clipboard, and Quit.
class TrayIcon final : public QSystemTrayIcon
{
    Q_OBJECT

public:
    explicit TrayIcon(QObject *parent = nullptr);

    // The tool tip tells how many clippings the history holds.
    void setClippingCount(int count);

signals:
    void toggleRequested();
    void showRequested();
    void settingsRequested();
    void monitorRequested();
    void releaseNotesRequested();
    void quitRequested();
    void runActionRequested(const QString &path, const QString &title);

private:
    void onActivated(QSystemTrayIcon::ActivationReason reason);
    void showContextMenu();
};
