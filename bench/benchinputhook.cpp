// The X11 key path that runs for every key the user types while keywords are active: the raw
// event translated with xkbcommon and handed to the input logic. Needs an X display:
//   xvfb-run -a ./bench/benchinputhook
#include "inputmanager.h"
#include "platform.h"
#include "platform/x11/x11desktop.h"
#include "platform/x11/x11inputobserver.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <vector>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    auto *desktop = qobject_cast<X11Desktop *>(Platform::desktop());
    if (!desktop || !desktop->observer() || !desktop->observer()->isValid()) {
        std::fprintf(stderr, "no X display with XInput 2: run under xvfb-run\n");
        return 1;
    }
    InputManager *input = InputManager::instance();
    input->installHooks();
    X11InputObserver *observer = desktop->observer();

    // Letters, Shift-ed letters, space, Backspace and an arrow, as typing goes.
    const quint32 keycodes[] = {38, 56, 54, 40, 26, 65, 50, 41, 22, 113};
    constexpr int count = 10000;
    std::vector<qint64> durations;
    durations.reserve(count);
    QElapsedTimer timer;
    for (int i = 0; i < count; ++i) {
        const quint32 keycode = keycodes[i % std::size(keycodes)];
        timer.start();
        observer->handleKey(keycode, true);
        durations.push_back(timer.nsecsElapsed());
        observer->handleKey(keycode, false);
        if (i % 100 == 0)
            QCoreApplication::processEvents(); // the queued word changes, as the loop would
    }
    std::sort(durations.begin(), durations.end());
    const auto at = [&](double share) { return durations[size_t(share * (count - 1))] / 1000.0; };
    std::printf("X11 key path over %d presses: median %.1f us, 99th percentile %.1f us, "
                "worst %.1f us\n",
                count, at(0.5), at(0.99), durations.back() / 1000.0);
    return 0;
}
