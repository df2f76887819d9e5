#include "platform/x11/x11desktop.h"

#include "platform/virtualkeys.h"
#include "platform/x11/x11clipboardwatch.h"
#include "platform/x11/x11foregroundwatch.h"
#include "platform/x11/x11inputobserver.h"
#include "platform/x11/x11keycodes.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>
#include <QVector>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XRes.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

IDesktop *createDesktop(QObject *parent)
{
    return new X11Desktop(parent);
}

namespace {

// A window may vanish between the question and the answer; that is no reason to end the
// program, which is what Xlib's default handler does.
int ignoreXError(Display *, XErrorEvent *)
{
    return 0;
}

QVector<unsigned long> cardinals(Display *display, Window window, const char *property,
                                 long maxLength = 1)
{
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char *data = nullptr;
    const Atom name = XInternAtom(display, property, False);
    QVector<unsigned long> values;
    if (XGetWindowProperty(display, window, name, 0, maxLength, False, AnyPropertyType, &type,
                           &format, &count, &remaining, &data) == Success &&
        data && format == 32) {
        // Xlib hands 32-bit items out as longs.
        const auto *items = reinterpret_cast<const unsigned long *>(data);
        values = QVector<unsigned long>(items, items + count);
    }
    if (data)
        XFree(data);
    return values;
}

Window parentOf(Display *display, Window window)
{
    Window root = 0;
    Window parent = 0;
    Window *children = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(display, window, &root, &parent, &children, &count))
        return 0;
    if (children)
        XFree(children);
    return parent;
}

// The property's values on the window itself or on its nearest ancestor that carries it.
QVector<unsigned long> inheritedCardinals(Display *display, Window window, const char *property,
                                          long maxLength = 1)
{
    const Window root = DefaultRootWindow(display);
    for (; window && window != root; window = parentOf(display, window)) {
        const QVector<unsigned long> values = cardinals(display, window, property, maxLength);
        if (!values.isEmpty())
            return values;
    }
    return {};
}

// The class part of WM_CLASS on the window or its nearest ancestor: without a window manager
// the focus may rest on an inner window.
QString inheritedWindowClass(Display *display, Window window)
{
    const Window root = DefaultRootWindow(display);
    for (; window && window != root; window = parentOf(display, window)) {
        XClassHint hint{};
        if (!XGetClassHint(display, window, &hint))
            continue;
        const QString windowClass =
            hint.res_class ? QString::fromLocal8Bit(hint.res_class) : QString();
        XFree(hint.res_name);
        XFree(hint.res_class);
        return windowClass;
    }
    return {};
}

quint32 keysymOf(char16_t character)
{
    switch (character) {
    case u'\b':
        return XK_BackSpace;
    case u'\t':
        return XK_Tab;
    case u'\n':
    case u'\r':
        return XK_Return;
    case 0x1B:
        return XK_Escape;
    default:
        break;
    }
    if ((character >= 0x20 && character <= 0x7E) || (character >= 0xA0 && character <= 0xFF))
        return character;
    return 0x01000000 | character;
}

QImage largestIcon(const QVector<unsigned long> &data)
{
    // _NET_WM_ICON: width, height and the ARGB pixels, for each size the window offers.
    qsizetype best = -1;
    unsigned long bestArea = 0;
    for (qsizetype at = 0; at + 2 <= data.size();) {
        const unsigned long width = data[at];
        const unsigned long height = data[at + 1];
        const unsigned long area = width * height;
        if (width == 0 || height == 0 || width > 4096 || height > 4096 ||
            qsizetype(area) > data.size() - at - 2)
            break;
        if (area > bestArea) {
            best = at;
            bestArea = area;
        }
        at += 2 + qsizetype(area);
    }
    if (best < 0)
        return {};
    QImage icon(int(data[best]), int(data[best + 1]), QImage::Format_ARGB32);
    const unsigned long *pixels = data.constData() + best + 2;
    for (int y = 0; y < icon.height(); ++y) {
        auto *line = reinterpret_cast<quint32 *>(icon.scanLine(y));
        for (int x = 0; x < icon.width(); ++x)
            line[x] = quint32(*pixels++);
    }
    return icon;
}

QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>() && value.userType() == qMetaTypeId<QDBusVariant>())
        value = qvariant_cast<QDBusVariant>(value).variant();
    return value;
}

QString executableName(unsigned long pid)
{
    QString name =
        QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid))).fileName();
    // The program was replaced on disk while it runs.
    name.remove(QLatin1String(" (deleted)"));
    return name;
}

} // namespace

X11Desktop::X11Desktop(QObject *parent) : IDesktop(parent)
{
    XSetErrorHandler(ignoreXError);
    m_display = XOpenDisplay(nullptr);
    if (!m_display) {
        qWarning() << "Unable to open the X display: typed keys, synthetic keys and the "
                      "foreground application are not available";
        return;
    }
    m_observer = new X11InputObserver(m_display, this);
    connect(m_observer, &X11InputObserver::keyPressed, this, &IDesktop::keyPressed);
    connect(m_observer, &X11InputObserver::mouseButtonPressed, this, &IDesktop::mouseButtonPressed);
    auto *foregroundWatch = new X11ForegroundWatch(this);
    connect(foregroundWatch, &X11ForegroundWatch::changed, this,
            &IDesktop::foregroundWindowChanged);
}

X11Desktop::~X11Desktop()
{
    delete m_observer;
    delete m_clipboardWatch;
    if (m_display)
        XCloseDisplay(m_display);
}

bool X11Desktop::isHookInstalled(Hook hook) const
{
    if (!m_observer)
        return false;
    return hook == KeyboardHook ? m_observer->observesKeyboard() : m_observer->observesMouse();
}

bool X11Desktop::installHook(Hook hook)
{
    if (!m_observer || !m_observer->isValid())
        return false;
    return hook == KeyboardHook ? m_observer->setObservesKeyboard(true)
                                : m_observer->setObservesMouse(true);
}

bool X11Desktop::removeHook(Hook hook)
{
    if (!m_observer)
        return true;
    return hook == KeyboardHook ? m_observer->setObservesKeyboard(false)
                                : m_observer->setObservesMouse(false);
}

void X11Desktop::keyEvent(quint8 virtualKey, quint8, quint32 flags)
{
    const quint32 keycode = X11Keycodes::keycode(virtualKey);
    if (!m_display || !keycode)
        return;
    XTestFakeKeyEvent(m_display, keycode, (flags & KeyEventFlag::KeyUp) ? False : True,
                      CurrentTime);
    XFlush(m_display);
}

quint32 X11Desktop::scanCode(quint32 virtualKey)
{
    const quint32 keycode = X11Keycodes::keycode(virtualKey & 0xFF);
    return keycode >= 8 ? keycode - 8 : 0; // the evdev scan code
}

qint16 X11Desktop::keyScan(char16_t character)
{
    if (!m_display)
        return -1;
    // Not XKeysymToKeycode: it prefers any key that has the symbol unshifted, such as the
    // keypad's own parenthesis keys, over the main keys that have it shifted.
    const KeySym keysym = keysymOf(character);
    int minKeycode = 0;
    int maxKeycode = 0;
    XDisplayKeycodes(m_display, &minKeycode, &maxKeycode);
    for (int level = 0; level < 2; ++level) {
        for (int keycode = minKeycode; keycode <= maxKeycode; ++keycode) {
            const quint32 virtualKey = X11Keycodes::virtualKey(quint32(keycode));
            if (virtualKey && XkbKeycodeToKeysym(m_display, KeyCode(keycode), 0, level) == keysym)
                return qint16(virtualKey | (level ? quint32(KeyScanBit::Shift) : 0));
        }
    }
    return -1; // no main key, or only on a level that needs AltGr
}

Qt::KeyboardModifiers X11Desktop::heldModifiers() const
{
    if (!m_display)
        return Qt::NoModifier;
    Window root = 0;
    Window child = 0;
    int rootX = 0;
    int rootY = 0;
    int x = 0;
    int y = 0;
    unsigned int mask = 0;
    XQueryPointer(m_display, DefaultRootWindow(m_display), &root, &child, &rootX, &rootY, &x, &y,
                  &mask);
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, mask & ShiftMask);
    modifiers.setFlag(Qt::ControlModifier, mask & ControlMask);
    modifiers.setFlag(Qt::AltModifier, mask & Mod1Mask);
    modifiers.setFlag(Qt::MetaModifier, mask & Mod4Mask);
    return modifiers;
}

quint64 X11Desktop::foregroundWindow()
{
    if (!m_display)
        return 0;
    const Window root = DefaultRootWindow(m_display);
    const QVector<unsigned long> active = cardinals(m_display, root, "_NET_ACTIVE_WINDOW");
    if (!active.isEmpty() && active.first())
        return active.first();
    // No window manager: the window with the keyboard focus.
    Window focus = 0;
    int revert = 0;
    XGetInputFocus(m_display, &focus, &revert);
    return focus == PointerRoot ? 0 : focus;
}

bool X11Desktop::activateWindow(quint64 window)
{
    XWindowAttributes attributes;
    if (!m_display || !window || !XGetWindowAttributes(m_display, window, &attributes))
        return false;
    const Window root = DefaultRootWindow(m_display);
    if (cardinals(m_display, root, "_NET_ACTIVE_WINDOW").isEmpty()) {
        // No window manager to ask.
        XSetInputFocus(m_display, window, RevertToParent, CurrentTime);
    } else {
        // Source 2, a pager: window managers honour it where they would refuse an
        // application that asks for the focus on its own.
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = XInternAtom(m_display, "_NET_ACTIVE_WINDOW", False);
        event.xclient.format = 32;
        event.xclient.data.l[0] = 2;
        event.xclient.data.l[1] = CurrentTime;
        XSendEvent(m_display, root, False, SubstructureRedirectMask | SubstructureNotifyMask,
                   &event);
    }
    XFlush(m_display);
    return true;
}

quint64 X11Desktop::clipboardChangeCount()
{
    // Opened on first use: most of the program never asks.
    if (!m_clipboardWatch)
        m_clipboardWatch = new X11ClipboardWatch;
    return m_clipboardWatch->changeCount();
}

QString X11Desktop::foregroundApplicationName()
{
    if (!m_display)
        return {};
    const QVector<unsigned long> pid =
        inheritedCardinals(m_display, foregroundWindow(), "_NET_WM_PID");
    return pid.isEmpty() ? QString() : executableName(pid.first());
}

QString X11Desktop::clipboardOwnerName()
{
    if (!m_display)
        return {};
    const Window owner = XGetSelectionOwner(m_display, XInternAtom(m_display, "CLIPBOARD", False));
    if (owner == None)
        return {};
    // The owner is mostly a hidden window without _NET_WM_PID (xclip's, a toolkit's); the
    // server knows the process of every local client, as it was when it connected (a program
    // that forked since is not found by it).
    XResClientIdSpec spec{owner, XRES_CLIENT_ID_PID_MASK};
    long count = 0;
    XResClientIdValue *ids = nullptr;
    pid_t pid = -1;
    if (XResQueryClientIds(m_display, 1, &spec, &count, &ids) == Success) {
        for (long i = 0; i < count && pid < 0; ++i)
            pid = XResGetClientPid(&ids[i]);
        XResClientIdsDestroy(count, ids);
    }
    const QString name = pid < 0 ? QString() : executableName(pid);
    if (!name.isEmpty())
        return name;
    const QVector<unsigned long> property = inheritedCardinals(m_display, owner, "_NET_WM_PID");
    return property.isEmpty() ? QString() : executableName(property.first());
}

QString X11Desktop::foregroundWindowClass()
{
    return m_display ? inheritedWindowClass(m_display, foregroundWindow()) : QString();
}

QImage X11Desktop::foregroundApplicationIcon()
{
    if (!m_display)
        return {};
    return largestIcon(inheritedCardinals(m_display, foregroundWindow(), "_NET_WM_ICON", 1 << 22));
}

void X11Desktop::showInFileManager(const QString &path)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected() &&
        bus.call(call, QDBus::Block, 2000).type() == QDBusMessage::ReplyMessage)
        return;
    // No file manager that selects files: open the folder instead.
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

void X11Desktop::applyStartWithSystem(bool enabled)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                           QStringLiteral("/autostart");
    const QString path = folder + QStringLiteral("/velmorin.desktop");
    if (!enabled) {
        if (QFile::exists(path) && !QFile::remove(path))
            qWarning() << "Unable to remove the autostart entry" << path;
        return;
    }
    QDir().mkpath(folder);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qWarning() << "Unable to write the autostart entry" << path;
        return;
    }
    const QString entry =
        QStringLiteral("[Desktop Entry]\n"
                       "Type=Application\n"
                       "Name=%1\n"
                       "Exec=\"%2\"\n"
                       "Icon=velmorin\n"
                       "Terminal=false\n"
                       "X-GNOME-Autostart-enabled=true\n")
            .arg(QCoreApplication::applicationName(), QCoreApplication::applicationFilePath());
    file.write(entry.toUtf8());
    if (!file.commit())
        qWarning() << "Unable to write the autostart entry" << path;
}

bool X11Desktop::isDarkTheme()
{
    // The desktop portal's colour scheme: 1 is "prefer dark".
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    call << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        const QDBusMessage reply = bus.call(call, QDBus::Block, 500);
        if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
            return unwrapped(reply.arguments().first()).toUInt() == 1;
    }
    // GTK desktops without the portal name the theme, "Adwaita:dark" for instance.
    const QString theme = qEnvironmentVariable("GTK_THEME");
    return theme.endsWith(QLatin1String(":dark"), Qt::CaseInsensitive) ||
           theme.endsWith(QLatin1String("-dark"), Qt::CaseInsensitive);
}
