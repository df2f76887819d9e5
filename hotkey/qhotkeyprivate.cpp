#include "qhotkeyprivate.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

namespace {
QPointer<QHotkeyPrivate> &current()
{
    static QPointer<QHotkeyPrivate> registry;
    return registry;
}
} // namespace

QHotkeyPrivate::QHotkeyPrivate()
{
    if (auto *application = QCoreApplication::instance()) {
        moveToThread(application->thread());
        application->installNativeEventFilter(this);
    }
}

QHotkeyPrivate::~QHotkeyPrivate()
{
    if (!m_shortcuts.isEmpty())
        qCWarning(logQHotkey) << "QHotkeyPrivate destroyed with registered shortcuts!";
    if (auto *application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

QHotkeyPrivate *QHotkeyPrivate::instance()
{
    if (!current()) {
        current() = createHotkeyPrivate();
        // Gone with the application object, after the windows that own the hotkeys.
        current()->setParent(QCoreApplication::instance());
    }
    return current();
}

void QHotkeyPrivate::setInstance(QHotkeyPrivate *registry)
{
    current() = registry;
}

QHotkey::NativeShortcut QHotkeyPrivate::nativeShortcut(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (QThread::currentThread() == thread())
        return nativeShortcutInvoked(key, modifiers);
    QHotkey::NativeShortcut shortcut;
    QMetaObject::invokeMethod(this, "nativeShortcutInvoked", Qt::BlockingQueuedConnection,
                              Q_RETURN_ARG(QHotkey::NativeShortcut, shortcut), Q_ARG(Qt::Key, key),
                              Q_ARG(Qt::KeyboardModifiers, modifiers));
    return shortcut;
}

bool QHotkeyPrivate::addShortcut(QHotkey *hotkey)
{
    if (QThread::currentThread() == thread())
        return addShortcutInvoked(hotkey);
    bool added = false;
    QMetaObject::invokeMethod(this, "addShortcutInvoked", Qt::BlockingQueuedConnection,
                              Q_RETURN_ARG(bool, added), Q_ARG(QHotkey *, hotkey));
    return added;
}

bool QHotkeyPrivate::removeShortcut(QHotkey *hotkey)
{
    if (QThread::currentThread() == thread())
        return removeShortcutInvoked(hotkey);
    bool removed = false;
    QMetaObject::invokeMethod(this, "removeShortcutInvoked", Qt::BlockingQueuedConnection,
                              Q_RETURN_ARG(bool, removed), Q_ARG(QHotkey *, hotkey));
    return removed;
}

void QHotkeyPrivate::activateShortcut(QHotkey::NativeShortcut shortcut)
{
    const QList<QHotkey *> hotkeys = m_shortcuts.values(shortcut);
    for (QHotkey *hotkey : hotkeys)
        emit hotkey->activated();
}

bool QHotkeyPrivate::addShortcutInvoked(QHotkey *hotkey)
{
    const QHotkey::NativeShortcut shortcut = hotkey->m_native;
    if (!m_shortcuts.contains(shortcut)) {
        QString error;
        if (!registerShortcut(shortcut, error)) {
            qCWarning(logQHotkey).noquote() << "Failed to register hotkey. Error:" << error;
            return false;
        }
    }
    m_shortcuts.insert(shortcut, hotkey);
    hotkey->m_registered = true;
    emit hotkey->registeredChanged(true);
    return true;
}

bool QHotkeyPrivate::removeShortcutInvoked(QHotkey *hotkey)
{
    const QHotkey::NativeShortcut shortcut = hotkey->m_native;
    if (m_shortcuts.remove(shortcut, hotkey) == 0)
        return false;
    hotkey->m_registered = false;
    emit hotkey->registeredChanged(false);
    if (m_shortcuts.contains(shortcut))
        return true; // another object still uses the registration
    QString error;
    if (!unregisterShortcut(shortcut, error)) {
        qCWarning(logQHotkey).noquote() << "Failed to unregister hotkey. Error:" << error;
        return false;
    }
    return true;
}

QHotkey::NativeShortcut QHotkeyPrivate::nativeShortcutInvoked(Qt::Key key,
                                                              Qt::KeyboardModifiers modifiers)
{
    bool keyOk = false;
    bool modifiersOk = false;
    const quint32 nativeKey = nativeKeycode(key, keyOk);
    const quint32 nativeMods = nativeModifiers(modifiers, modifiersOk);
    if (!keyOk || !modifiersOk)
        return {};
    return {nativeKey, nativeMods};
}
