#pragma once

#include <QObject>
#include <QString>

struct _XDisplay;
struct xkb_context;
struct xkb_keymap;
struct xkb_state;
struct xkb_compose_table;
struct xkb_compose_state;
class QSocketNotifier;

// Keys and mouse buttons pressed anywhere on the X display, seen as XInput2 raw events on the
// root window. Keys are translated with xkbcommon, whose state follows every raw key event,
// and with the locale's compose table, so a dead accent and a letter give one character while
// the focused application still receives both keys untouched.
class X11InputObserver final : public QObject
{
    Q_OBJECT

public:
    // display: a connection of the observer's own, so its events never mix with Qt's.
    explicit X11InputObserver(_XDisplay *display, QObject *parent = nullptr);
    ~X11InputObserver() override;

    bool isValid() const { return m_xiOpcode >= 0 && m_keymap; }
    bool observesKeyboard() const { return m_keyboard; }
    bool observesMouse() const { return m_mouse; }
    bool setObservesKeyboard(bool on);
    bool setObservesMouse(bool on);

    // One raw key event: translates a press and reports it. Public for the benchmark.
    void handleKey(quint32 keycode, bool pressed);
    void handleButton(quint32 button);

    // Reads the keymap and modifier state from the server again (it changes with the layout).
    void reloadKeymap();

signals:
    void keyPressed(quint32 virtualKey, const QString &text);
    void mouseButtonPressed();

private:
    void processEvents();
    bool selectEvents();
    QString translate(quint32 keycode, quint32 keysym);
    void loadComposeTable();

    _XDisplay *m_display;
    int m_xiOpcode = -1;
    int m_xkbEventBase = -1;
    bool m_keyboard = false;
    bool m_mouse = false;
    xkb_context *m_context = nullptr;
    xkb_keymap *m_keymap = nullptr;
    xkb_state *m_state = nullptr;
    xkb_compose_table *m_composeTable = nullptr;
    xkb_compose_state *m_compose = nullptr;
    QSocketNotifier *m_notifier = nullptr;
};
