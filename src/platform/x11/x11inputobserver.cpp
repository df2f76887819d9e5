#include "platform/x11/x11inputobserver.h"

#include "platform/virtualkeys.h"
#include "platform/x11/x11keycodes.h"

#include <QAbstractEventDispatcher>
#include <QDebug>
#include <QSocketNotifier>

#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/keysym.h>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>

namespace {

// The buttons whose press may move the caret: left, middle, right, and the vertical wheel.
// Horizontal wheel and the extra (back/forward) buttons are not among them.
bool movesCaret(quint32 button)
{
    return button >= 1 && button <= 5;
}

bool keepsWord(xkb_keysym_t keysym)
{
    return keysym == XK_Shift_L || keysym == XK_Shift_R || keysym == XK_Caps_Lock;
}

QString composeLocale()
{
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char *value = std::getenv(name);
        if (value && *value)
            return QString::fromLocal8Bit(value);
    }
    return QStringLiteral("C");
}

} // namespace

X11InputObserver::X11InputObserver(Display *display, QObject *parent)
    : QObject(parent), m_display(display)
{
    int event = 0;
    int error = 0;
    int major = 2;
    int minor = 1;
    if (!XQueryExtension(display, "XInputExtension", &m_xiOpcode, &event, &error) ||
        XIQueryVersion(display, &major, &minor) != Success) {
        qWarning() << "The X server has no XInput 2 extension: keys typed in other "
                      "applications cannot be seen";
        m_xiOpcode = -1;
    }
    int xkbOpcode = 0;
    int xkbMajor = XkbMajorVersion;
    int xkbMinor = XkbMinorVersion;
    if (XkbQueryExtension(display, &xkbOpcode, &m_xkbEventBase, &error, &xkbMajor, &xkbMinor)) {
        const unsigned long changes = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
        XkbSelectEvents(display, XkbUseCoreKbd, changes, changes);
    }
    m_context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_x11_setup_xkb_extension(XGetXCBConnection(display), XKB_X11_MIN_MAJOR_XKB_VERSION,
                                XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                nullptr, nullptr, nullptr, nullptr);
    reloadKeymap();
    loadComposeTable();

    m_notifier = new QSocketNotifier(ConnectionNumber(display), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &X11InputObserver::processEvents);
    // Xlib may have read events into its queue while answering one of our own requests; the
    // socket then has nothing new to say, so the queue is also looked at before each wait.
    if (auto *dispatcher = QAbstractEventDispatcher::instance()) {
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] {
            if (XEventsQueued(m_display, QueuedAlready) > 0)
                processEvents();
        });
    }
}

X11InputObserver::~X11InputObserver()
{
    xkb_compose_state_unref(m_compose);
    xkb_compose_table_unref(m_composeTable);
    xkb_state_unref(m_state);
    xkb_keymap_unref(m_keymap);
    xkb_context_unref(m_context);
}

bool X11InputObserver::setObservesKeyboard(bool on)
{
    if (on && !m_keyboard)
        reloadKeymap(); // the modifiers held now; no events were seen while not observing
    m_keyboard = on;
    return selectEvents() || !on;
}

bool X11InputObserver::setObservesMouse(bool on)
{
    m_mouse = on;
    return selectEvents() || !on;
}

bool X11InputObserver::selectEvents()
{
    if (!isValid())
        return false;
    unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
    if (m_keyboard) {
        XISetMask(bits, XI_RawKeyPress);
        XISetMask(bits, XI_RawKeyRelease);
    }
    if (m_mouse)
        XISetMask(bits, XI_RawButtonPress);
    XIEventMask mask;
    mask.deviceid = XIAllMasterDevices;
    mask.mask_len = sizeof(bits);
    mask.mask = bits;
    const bool selected =
        XISelectEvents(m_display, DefaultRootWindow(m_display), &mask, 1) == Success;
    XFlush(m_display);
    return selected;
}

void X11InputObserver::processEvents()
{
    while (XPending(m_display) > 0) {
        XEvent event;
        XNextEvent(m_display, &event);
        XGenericEventCookie *cookie = &event.xcookie;
        if (event.type == GenericEvent && cookie->extension == m_xiOpcode &&
            XGetEventData(m_display, cookie)) {
            const auto *raw = static_cast<const XIRawEvent *>(cookie->data);
            if (cookie->evtype == XI_RawKeyPress || cookie->evtype == XI_RawKeyRelease)
                handleKey(quint32(raw->detail), cookie->evtype == XI_RawKeyPress);
            else if (cookie->evtype == XI_RawButtonPress)
                handleButton(quint32(raw->detail));
            XFreeEventData(m_display, cookie);
        } else if (m_xkbEventBase >= 0 && event.type == m_xkbEventBase) {
            const int kind = reinterpret_cast<const XkbAnyEvent &>(event).xkb_type;
            if (kind == XkbNewKeyboardNotify || kind == XkbMapNotify)
                reloadKeymap();
        }
    }
}

void X11InputObserver::handleKey(quint32 keycode, bool pressed)
{
    if (!m_state)
        return;
    if (!pressed) {
        xkb_state_update_key(m_state, keycode, XKB_KEY_UP);
        return;
    }
    const xkb_keysym_t keysym = xkb_state_key_get_one_sym(m_state, keycode);
    quint32 virtualKey = X11Keycodes::navigationKey(keysym);
    if (!virtualKey)
        virtualKey = X11Keycodes::virtualKey(keycode);
    const bool reported = m_keyboard && !keepsWord(keysym);
    // The key's own text, before the key changes the modifier state.
    const QString text =
        reported && !VirtualKey::isNavigation(virtualKey) ? translate(keycode, keysym) : QString();
    xkb_state_update_key(m_state, keycode, XKB_KEY_DOWN);
    if (reported)
        emit keyPressed(virtualKey, text);
}

void X11InputObserver::handleButton(quint32 button)
{
    if (m_mouse && movesCaret(button))
        emit mouseButtonPressed();
}

QString X11InputObserver::translate(quint32 keycode, quint32 keysym)
{
    char buffer[64];
    if (m_compose && xkb_compose_state_feed(m_compose, keysym) == XKB_COMPOSE_FEED_ACCEPTED) {
        switch (xkb_compose_state_get_status(m_compose)) {
        case XKB_COMPOSE_COMPOSING:
            return {}; // a dead key: nothing typed yet
        case XKB_COMPOSE_COMPOSED: {
            const int length = xkb_compose_state_get_utf8(m_compose, buffer, sizeof(buffer));
            xkb_compose_state_reset(m_compose);
            return QString::fromUtf8(buffer, qMin(length, int(sizeof(buffer)) - 1));
        }
        case XKB_COMPOSE_CANCELLED:
            xkb_compose_state_reset(m_compose);
            break;
        case XKB_COMPOSE_NOTHING:
            break;
        }
    }
    const int length = xkb_state_key_get_utf8(m_state, keycode, buffer, sizeof(buffer));
    return QString::fromUtf8(buffer, qBound(0, length, int(sizeof(buffer)) - 1));
}

void X11InputObserver::reloadKeymap()
{
    xcb_connection_t *connection = XGetXCBConnection(m_display);
    const int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
    xkb_keymap *keymap = device < 0 ? nullptr
                                    : xkb_x11_keymap_new_from_device(m_context, connection, device,
                                                                     XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (!keymap) {
        qWarning() << "Unable to read the keyboard layout from the X server";
        return;
    }
    xkb_state_unref(m_state);
    xkb_keymap_unref(m_keymap);
    m_keymap = keymap;
    m_state = xkb_x11_state_new_from_device(keymap, connection, device);
}

void X11InputObserver::loadComposeTable()
{
    const QByteArray locale = composeLocale().toLocal8Bit();
    m_composeTable = xkb_compose_table_new_from_locale(m_context, locale.constData(),
                                                       XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (!m_composeTable) {
        // Locales without a table of their own (plain "C") still get the common dead keys.
        m_composeTable = xkb_compose_table_new_from_locale(m_context, "en_US.UTF-8",
                                                           XKB_COMPOSE_COMPILE_NO_FLAGS);
    }
    if (m_composeTable)
        m_compose = xkb_compose_state_new(m_composeTable, XKB_COMPOSE_STATE_NO_FLAGS);
    else
        qWarning() << "No compose table for the locale" << locale
                   << "; dead keys are not "
                      "combined";
}
