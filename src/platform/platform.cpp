#include "platform/platform.h"

#include "base/isecretstore.h"
#include "platform/idesktop.h"

#include <QCoreApplication>
#include <QPointer>

#include <memory>

namespace {
QPointer<IDesktop> &current()
{
    static QPointer<IDesktop> desktop;
    return desktop;
}
} // namespace

namespace Platform {

IDesktop *desktop()
{
    if (!current())
        current() = createDesktop(QCoreApplication::instance());
    return current();
}

void setDesktop(IDesktop *desktop)
{
    current() = desktop;
}

ISecretStore *secretStore()
{
    static const std::unique_ptr<ISecretStore> store(createSecretStore());
    return store.get();
}

QString foregroundApplicationName()
{
    return desktop()->foregroundApplicationName();
}

quint64 foregroundWindow()
{
    return desktop()->foregroundWindow();
}

bool activateWindow(quint64 window)
{
    return desktop()->activateWindow(window);
}

quint64 clipboardChangeCount()
{
    return desktop()->clipboardChangeCount();
}

QPixmap foregroundApplicationIcon()
{
    const QImage icon = desktop()->foregroundApplicationIcon();
    if (icon.isNull())
        return {};
    return QPixmap::fromImage(iconForHistory(icon));
}

QImage iconForHistory(const QImage &icon)
{
    if (icon.width() <= 64 && icon.height() <= 64)
        return icon;
    return icon.scaled(64, 64, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

void showInFileManager(const QString &path)
{
    desktop()->showInFileManager(path);
}

void applyStartWithSystem(bool enabled)
{
    desktop()->applyStartWithSystem(enabled);
}

bool isDarkTheme()
{
    return desktop()->isDarkTheme();
}

QString name()
{
    return desktop()->name();
}

} // namespace Platform
