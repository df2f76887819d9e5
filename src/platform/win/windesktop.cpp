#include "platform/win/windesktop.h"

#include "win32clipboard.h"
#include "win32foreground.h"
#include "win32inputhooks.h"
#include "win32keyboard.h"
#include "win32registry.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

IDesktop *createDesktop(QObject *parent)
{
    return new WinDesktop(parent);
}

namespace {
Win32InputHooks::Hook win32Hook(IDesktop::Hook hook)
{
    return hook == IDesktop::KeyboardHook ? Win32InputHooks::Keyboard : Win32InputHooks::Mouse;
}
} // namespace

WinDesktop::WinDesktop(QObject *parent) : IDesktop(parent)
{
    Win32InputHooks::setHandler(&WinDesktop::deliver, this);
}

WinDesktop::~WinDesktop()
{
    Win32InputHooks::remove(Win32InputHooks::Keyboard);
    Win32InputHooks::remove(Win32InputHooks::Mouse);
    Win32InputHooks::setHandler(nullptr, nullptr);
}

void WinDesktop::deliver(const Win32InputRecord &record, void *context)
{
    auto *desktop = static_cast<WinDesktop *>(context);
    if (record.kind == Win32InputRecord::Button) {
        emit desktop->mouseButtonPressed();
        return;
    }
    emit desktop->keyPressed(record.virtualKey,
                             QString::fromWCharArray(record.text, record.length));
}

bool WinDesktop::isHookInstalled(Hook hook) const
{
    return Win32InputHooks::isInstalled(win32Hook(hook));
}

bool WinDesktop::installHook(Hook hook)
{
    return Win32InputHooks::install(win32Hook(hook));
}

bool WinDesktop::removeHook(Hook hook)
{
    return Win32InputHooks::remove(win32Hook(hook));
}

void WinDesktop::keyEvent(quint8 virtualKey, quint8 scanCode, quint32 flags)
{
    Win32Keyboard::keyEvent(virtualKey, scanCode, flags);
}

quint32 WinDesktop::scanCode(quint32 virtualKey)
{
    return Win32Keyboard::scanCode(virtualKey);
}

qint16 WinDesktop::keyScan(char16_t character)
{
    return Win32Keyboard::keyScan(wchar_t(character));
}

Qt::KeyboardModifiers WinDesktop::heldModifiers() const
{
    const unsigned held = Win32Keyboard::heldModifiers();
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, held & 1);
    modifiers.setFlag(Qt::ControlModifier, held & 2);
    modifiers.setFlag(Qt::AltModifier, held & 4);
    modifiers.setFlag(Qt::MetaModifier, held & 8);
    return modifiers;
}

quint64 WinDesktop::clipboardChangeCount()
{
    return Win32Clipboard::sequenceNumber();
}

quint64 WinDesktop::foregroundWindow()
{
    return quint64(reinterpret_cast<quintptr>(GetForegroundWindow()));
}

bool WinDesktop::activateWindow(quint64 window)
{
    // Windows gives the focus back to the previous window when ours hides, and refuses
    // SetForegroundWindow to a program that is not in the foreground itself.
    return window != 0;
}

QString WinDesktop::foregroundApplicationName()
{
    return QString::fromLocal8Bit(Win32Foreground::applicationName());
}

QString WinDesktop::clipboardOwnerName()
{
    const HWND owner = GetClipboardOwner();
    return owner ? QString::fromLocal8Bit(Win32Foreground::applicationName(owner)) : QString();
}

QString WinDesktop::foregroundWindowClass()
{
    return QString::fromStdWString(Win32Foreground::windowClass(GetForegroundWindow()));
}

QImage WinDesktop::foregroundApplicationIcon()
{
    const Win32Foreground::Icon icon = Win32Foreground::applicationIcon();
    if (icon.width <= 0 || icon.height <= 0)
        return {};
    QImage image(icon.width, icon.height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < icon.height; ++y) {
        memcpy(image.scanLine(y), icon.pixels.data() + size_t(y) * size_t(icon.width),
               size_t(icon.width) * sizeof(quint32));
    }
    return image;
}

void WinDesktop::showInFileManager(const QString &path)
{
    QProcess::startDetached(QStringLiteral("explorer.exe"),
                            {QStringLiteral("/select,") + QDir::toNativeSeparators(path)});
}

void WinDesktop::applyStartWithSystem(bool enabled)
{
    const std::wstring name = QCoreApplication::applicationName().toStdWString();
    if (enabled)
        Win32Registry::setStartWithSystem(name,
                                          QCoreApplication::applicationFilePath().toStdWString());
    else
        Win32Registry::removeStartWithSystem(name);
}

bool WinDesktop::isDarkTheme()
{
    return Win32Registry::appsUseDarkTheme();
}
