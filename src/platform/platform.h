#pragma once

#include <QPixmap>
#include <QString>

class IDesktop;
class ISecretStore;

// Desktop integration for the rest of the program, served by the platform's IDesktop.
namespace Platform {

// The back end, made on first use and kept until the application ends.
IDesktop *desktop();
// Replaces the back end (tests use a fake). The caller keeps ownership.
void setDesktop(IDesktop *desktop);

QString foregroundApplicationName();
quint64 clipboardChangeCount();
quint64 foregroundWindow();
bool activateWindow(quint64 window);
// The window icon of the foreground application, at most 64 x 64; null when it has none.
QPixmap foregroundApplicationIcon();
// Icons above 64 pixels in either direction become exactly 64 x 64.
QImage iconForHistory(const QImage &icon);
void showInFileManager(const QString &path);
void applyStartWithSystem(bool enabled);
bool isDarkTheme();
QString name();

// The system's secret store, made on first use and kept until the program ends.
ISecretStore *secretStore();
// Made by the back end.
ISecretStore *createSecretStore();

} // namespace Platform
