#include "qhotkeyprivatex11.h"

#include <QGuiApplication>

#include <X11/Xlib.h>
#include <X11/keysym.h>
#include <cstdlib>
#include <xcb/xcb.h>

QHotkeyPrivate *createHotkeyPrivate()
{
    return new QHotkeyPrivateX11;
}

namespace {

// Lock (Caps Lock) and Mod2 (Num Lock) must not decide whether a shortcut fires.
constexpr quint16 ignoredVariants[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                       XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
constexpr quint16 usedModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

struct KeysymEntry
{
    Qt::Key key;
    quint32 keysym;
};

constexpr KeysymEntry specialKeys[] = {
    {Qt::Key_Escape, XK_Escape},
    {Qt::Key_Tab, XK_Tab},
    {Qt::Key_Backtab, XK_Tab},
    {Qt::Key_Backspace, XK_BackSpace},
    {Qt::Key_Return, XK_Return},
    {Qt::Key_Enter, XK_KP_Enter},
    {Qt::Key_Insert, XK_Insert},
    {Qt::Key_Delete, XK_Delete},
    {Qt::Key_Pause, XK_Pause},
    {Qt::Key_Print, XK_Print},
    {Qt::Key_Clear, XK_Clear},
    {Qt::Key_Home, XK_Home},
    {Qt::Key_End, XK_End},
    {Qt::Key_Left, XK_Left},
    {Qt::Key_Up, XK_Up},
    {Qt::Key_Right, XK_Right},
    {Qt::Key_Down, XK_Down},
    {Qt::Key_PageUp, XK_Prior},
    {Qt::Key_PageDown, XK_Next},
    {Qt::Key_CapsLock, XK_Caps_Lock},
    {Qt::Key_NumLock, XK_Num_Lock},
    {Qt::Key_ScrollLock, XK_Scroll_Lock},
    {Qt::Key_Menu, XK_Menu},
    {Qt::Key_Help, XK_Help},
    {Qt::Key_Mode_switch, XK_Mode_switch},
    {Qt::Key_Select, XK_Select},
    {Qt::Key_Cancel, XK_Cancel},
    {Qt::Key_Execute, XK_Execute},
};

QString errorText(const xcb_generic_error_t *error)
{
    if (error->error_code == XCB_ACCESS)
        return QStringLiteral("BadAccess: another program holds this key combination");
    return QStringLiteral("X error %1").arg(error->error_code);
}

} // namespace

QHotkeyPrivateX11::QHotkeyPrivateX11()
{
    if (auto *x11 =
            qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr) {
        m_display = x11->display();
        m_connection = x11->connection();
    }
    if (m_connection)
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
}

quint32 QHotkeyPrivateX11::keysym(Qt::Key key)
{
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return XK_F1 + quint32(key - Qt::Key_F1);
    // Latin-1 keys are their own keysyms; Qt names letters by their capitals.
    if (key >= Qt::Key_Space && key <= Qt::Key_ydiaeresis) {
        if (key >= Qt::Key_A && key <= Qt::Key_Z)
            return quint32(key) + ('a' - 'A');
        return quint32(key);
    }
    if (key <= 0xFFFF)
        return 0x01000000 | quint32(key); // Unicode keysyms
    for (const KeysymEntry &entry : specialKeys) {
        if (entry.key == key)
            return entry.keysym;
    }
    return 0;
}

quint32 QHotkeyPrivateX11::nativeKeycode(Qt::Key keycode, bool &ok)
{
    const quint32 symbol = keysym(keycode);
    const quint32 native = (m_display && symbol) ? XKeysymToKeycode(m_display, symbol) : 0;
    ok = native != 0;
    return native;
}

quint32 QHotkeyPrivateX11::nativeModifiers(Qt::KeyboardModifiers modifiers, bool &ok)
{
    quint32 native = 0;
    if (modifiers & Qt::ShiftModifier)
        native |= XCB_MOD_MASK_SHIFT;
    if (modifiers & Qt::ControlModifier)
        native |= XCB_MOD_MASK_CONTROL;
    if (modifiers & Qt::AltModifier)
        native |= XCB_MOD_MASK_1;
    if (modifiers & Qt::MetaModifier)
        native |= XCB_MOD_MASK_4;
    ok = true;
    return native;
}

bool QHotkeyPrivateX11::registerShortcut(QHotkey::NativeShortcut shortcut, QString &error)
{
    if (!m_connection) {
        error = QStringLiteral("not connected to an X server");
        return false;
    }
    for (const quint16 variant : ignoredVariants) {
        const xcb_void_cookie_t cookie = xcb_grab_key_checked(
            m_connection, 1, m_root, quint16(shortcut.modifier | variant),
            xcb_keycode_t(shortcut.key), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        if (xcb_generic_error_t *failure = xcb_request_check(m_connection, cookie)) {
            error = errorText(failure);
            free(failure);
            QString ignored;
            unregisterShortcut(shortcut, ignored);
            return false;
        }
    }
    return true;
}

bool QHotkeyPrivateX11::unregisterShortcut(QHotkey::NativeShortcut shortcut, QString &error)
{
    if (!m_connection) {
        error = QStringLiteral("not connected to an X server");
        return false;
    }
    bool released = true;
    for (const quint16 variant : ignoredVariants) {
        const xcb_void_cookie_t cookie =
            xcb_ungrab_key_checked(m_connection, xcb_keycode_t(shortcut.key), m_root,
                                   quint16(shortcut.modifier | variant));
        if (xcb_generic_error_t *failure = xcb_request_check(m_connection, cookie)) {
            error = errorText(failure);
            free(failure);
            released = false;
        }
    }
    return released;
}

bool QHotkeyPrivateX11::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != XCB_KEY_PRESS)
        return false;
    const auto *press = static_cast<const xcb_key_press_event_t *>(message);
    if (press->event != m_root)
        return false;
    activateShortcut({press->detail, quint32(press->state & usedModifiers)});
    return false;
}
