// The X11 key path that runs for every key the user types while keywords are active: the raw
// event translated with xkbcommon and handed to the input logic, beside xkbcommon's own
// translation of the same keys. Needs an X display:
//   xvfb-run -a ./bench/benchinputhook
#include "input/inputmanager.h"
#include "platform/platform.h"
#include "platform/x11/x11desktop.h"
#include "platform/x11/x11inputobserver.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

// Letters, Shift-ed letters, space, Backspace and an arrow, as typing goes.
const quint32 keycodes[] = {38, 56, 54, 40, 26, 65, 50, 41, 22, 113};
constexpr int count = 10000;

struct Spread
{
    double median;
    double ninetyNinth;
    double worst;
};

// Times press(keycode) for each press; release(keycode) and between(i) run outside the clock.
template <typename Press, typename Release, typename Between>
Spread timed(Press press, Release release, Between between)
{
    std::vector<qint64> durations;
    durations.reserve(count);
    QElapsedTimer timer;
    for (int i = 0; i < count; ++i) {
        const quint32 keycode = keycodes[i % std::size(keycodes)];
        timer.start();
        press(keycode);
        durations.push_back(timer.nsecsElapsed());
        release(keycode);
        between(i);
    }
    std::sort(durations.begin(), durations.end());
    const auto at = [&](double share) { return durations[size_t(share * (count - 1))] / 1000.0; };
    return {at(0.5), at(0.99), durations.back() / 1000.0};
}

// The floor: what any X11 program does with a key, xkbcommon's symbol and text for it and the
// state's update, with a keymap of the default layout.
Spread xkbcommonAlone()
{
    xkb_context *context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_keymap *keymap =
        context ? xkb_keymap_new_from_names(context, nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS)
                : nullptr;
    if (!keymap) {
        xkb_context_unref(context);
        return {-1, -1, -1};
    }
    xkb_state *state = xkb_state_new(keymap);
    volatile int sink = 0; // keeps the translation from being optimised away
    const Spread spread = timed(
        [&](quint32 keycode) {
            char buffer[64];
            sink = sink + int(xkb_state_key_get_one_sym(state, keycode)) +
                   xkb_state_key_get_utf8(state, keycode, buffer, sizeof(buffer));
            xkb_state_update_key(state, keycode, XKB_KEY_DOWN);
        },
        [&](quint32 keycode) { xkb_state_update_key(state, keycode, XKB_KEY_UP); }, [](int) {});
    xkb_state_unref(state);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return spread;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    auto *desktop = qobject_cast<X11Desktop *>(Platform::desktop());
    if (!desktop || !desktop->observer() || !desktop->observer()->isValid()) {
        std::fprintf(stderr, "no X display with XInput 2: run under xvfb-run\n");
        return 1;
    }
    auto *input = new InputManager(desktop, &application);
    input->installHooks();
    X11InputObserver *observer = desktop->observer();

    const Spread path = timed([&](quint32 keycode) { observer->handleKey(keycode, true); },
                              [&](quint32 keycode) { observer->handleKey(keycode, false); },
                              [](int i) {
                                  if (i % 100 == 0) // the queued word changes, as the loop would
                                      QCoreApplication::processEvents();
                              });
    std::printf("X11 key path over %d presses: median %.2f us, 99th percentile %.2f us, "
                "worst %.1f us\n",
                count, path.median, path.ninetyNinth, path.worst);
    const Spread floor = xkbcommonAlone();
    std::printf("floor, xkbcommon alone: median %.2f us, 99th percentile %.2f us, worst %.1f us\n",
                floor.median, floor.ninetyNinth, floor.worst);
    return 0;
}
