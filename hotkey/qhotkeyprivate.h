#pragma once

#include "qhotkey.h"

#include <QAbstractNativeEventFilter>
#include <QMultiHash>
#include <QObject>

// The registry of the process's hotkeys and the platform's global-shortcut service behind
// it. A combination is registered with the system when the first object adds it and released
// when the last one goes. Also the native event filter that hears the system's presses.
class QHotkeyPrivate : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    QHotkeyPrivate();
    ~QHotkeyPrivate() override;

    // The platform's registry, made on first use; tests may put their own in place first.
    static QHotkeyPrivate *instance();
    static void setInstance(QHotkeyPrivate *registry);

    QHotkey::NativeShortcut nativeShortcut(Qt::Key key, Qt::KeyboardModifiers modifiers);
    bool addShortcut(QHotkey *hotkey);
    bool removeShortcut(QHotkey *hotkey);
    int registrationCount() const { return int(m_shortcuts.uniqueKeys().size()); }

protected:
    // The platform's side. ok reports whether the key or modifiers could be mapped.
    virtual quint32 nativeKeycode(Qt::Key keycode, bool &ok) = 0;
    virtual quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool &ok) = 0;
    // On failure, error says why in the system's words.
    virtual bool registerShortcut(QHotkey::NativeShortcut shortcut, QString &error) = 0;
    virtual bool unregisterShortcut(QHotkey::NativeShortcut shortcut, QString &error) = 0;

protected slots:
    // A registered combination was pressed: every object that uses it emits activated().
    void activateShortcut(QHotkey::NativeShortcut shortcut);

private slots:
    bool addShortcutInvoked(QHotkey *hotkey);
    bool removeShortcutInvoked(QHotkey *hotkey);
    QHotkey::NativeShortcut nativeShortcutInvoked(Qt::Key key, Qt::KeyboardModifiers modifiers);

private:
    QMultiHash<QHotkey::NativeShortcut, QHotkey *> m_shortcuts;
};

// Made by the platform back end that CMake builds in.
QHotkeyPrivate *createHotkeyPrivate();
