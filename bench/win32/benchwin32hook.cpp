// The Windows keyboard hook callback as the system calls it: state, translation and the post
// into the ring, timed per call. Run under Wine its figures are indicative only:
//   wine build-win32/bench/win32/benchwin32hook.exe
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
} // namespace

int wmain()
{
    Win32InputHooks::setHandler(count, nullptr);
    if (!Win32InputHooks::install(Win32InputHooks::Keyboard)) {
        std::printf("the keyboard hook could not be installed\n");
        return 1;
    }
    const DWORD keys[] = {'A', 'V', 'C', 'D', 'E', VK_SPACE, VK_BACK, 'F', VK_OEM_7, VK_LEFT};
    constexpr int total = 10000;
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
        Win32InputHooks::keyboardProc(HC_ACTION, WM_KEYDOWN, LPARAM(&event));
        QueryPerformanceCounter(&end);
        durations.push_back(double(end.QuadPart - start.QuadPart) * 1e6 /
                            double(frequency.QuadPart));
        if (i % 100 == 99)
            Win32InputHooks::deliverPending();
    }
    Win32InputHooks::deliverPending();
    Win32InputHooks::remove(Win32InputHooks::Keyboard);
    std::sort(durations.begin(), durations.end());
    const auto at = [&](double share) { return durations[size_t(share * (total - 1))]; };
    std::printf("Win32 hook callback over %d presses: median %.1f us, 99th percentile %.1f us, "
                "worst %.1f us; %u delivered, %u dropped\n",
                total, at(0.5), at(0.99), durations.back(), delivered,
                Win32InputHooks::droppedRecords());
    return 0;
}
