// The Windows keyboard hook callback as the system calls it: state, translation and the post
// into the ring, timed per call, beside the floor of a hook that translates each key with the
// system's calls alone (GetKeyboardState, ToUnicode, CallNextHookEx). Run under Wine its
// figures are indicative only:
//   wine build-windows/app/benchwin32hook.exe
#include "win32inputhooks.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

unsigned delivered = 0;
void count(const Win32InputRecord &, void *)
{
    ++delivered;
}

constexpr int total = 10000;

struct Spread
{
    double median;
    double ninetyNinth;
    double worst;
};

// Times hook(event) for each press, in microseconds; between(i) runs outside the clock.
template <typename Hook, typename Between> Spread timed(Hook hook, Between between)
{
    const DWORD keys[] = {'A', 'V', 'C', 'D', 'E', VK_SPACE, VK_BACK, 'F', VK_OEM_7, VK_LEFT};
    std::vector<double> durations;
    durations.reserve(total);
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    for (int i = 0; i < total; ++i) {
        KBDLLHOOKSTRUCT event = {};
        event.vkCode = keys[i % (sizeof(keys) / sizeof(keys[0]))];
        event.scanCode = MapVirtualKeyW(event.vkCode, MAPVK_VK_TO_VSC);
        LARGE_INTEGER start;
        LARGE_INTEGER end;
        QueryPerformanceCounter(&start);
        hook(event);
        QueryPerformanceCounter(&end);
        durations.push_back(double(end.QuadPart - start.QuadPart) * 1e6 /
                            double(frequency.QuadPart));
        between(i);
    }
    std::sort(durations.begin(), durations.end());
    const auto at = [&](double share) { return durations[size_t(share * (total - 1))]; };
    return {at(0.5), at(0.99), durations.back()};
}

} // namespace

int wmain()
{
    Win32InputHooks::setHandler(count, nullptr);
    if (!Win32InputHooks::install(Win32InputHooks::Keyboard)) {
        std::printf("the keyboard hook could not be installed\n");
        return 1;
    }
    const Spread hook = timed(
        [](KBDLLHOOKSTRUCT &event) {
            Win32InputHooks::keyboardProc(HC_ACTION, WM_KEYDOWN, LPARAM(&event));
        },
        [](int i) {
            if (i % 100 == 99)
                Win32InputHooks::deliverPending();
        });
    Win32InputHooks::deliverPending();
    Win32InputHooks::remove(Win32InputHooks::Keyboard);
    std::printf("Win32 hook callback over %d presses: median %.1f us, 99th percentile %.1f us, "
                "worst %.1f us; %u delivered, %u dropped\n",
                total, hook.median, hook.ninetyNinth, hook.worst, delivered,
                Win32InputHooks::droppedRecords());
    const Spread floor = timed(
        [](KBDLLHOOKSTRUCT &event) {
            BYTE state[256];
            wchar_t text[10];
            GetKeyboardState(state);
            ToUnicode(event.vkCode, event.scanCode, state, text, 10, 0);
            CallNextHookEx(nullptr, HC_ACTION, WM_KEYDOWN, LPARAM(&event));
        },
        [](int) {});
    std::printf("floor, the system's calls alone: median %.1f us, 99th percentile %.1f us, "
                "worst %.1f us\n",
                floor.median, floor.ninetyNinth, floor.worst);
    return 0;
}
