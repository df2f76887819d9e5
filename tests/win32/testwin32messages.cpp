#include "check.h"
#include "win32messages.h"

#include <vector>

// Messages go through a real window and a real message queue, the way the application's
// native event filter sees them.
namespace {

std::vector<MSG> deliver(UINT message, WPARAM wParam)
{
    const HWND window = CreateWindowExW(0, L"STATIC", L"power", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                        nullptr, GetModuleHandleW(nullptr), nullptr);
    CHECK(window != nullptr);
    PostMessageW(window, message, wParam, 0);
    PostMessageW(window, WM_APP, 0, 0); // marks the end of what was posted
    std::vector<MSG> received;
    MSG msg;
    while (GetMessageW(&msg, window, 0, 0) > 0) {
        if (msg.message == WM_APP)
            break;
        received.push_back(msg);
    }
    DestroyWindow(window);
    return received;
}

} // namespace

int wmain()
{
    const auto resume = deliver(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC);
    CHECK(resume.size() == 1);
    CHECK(!resume.empty() && Win32Messages::isPowerResume(resume.front()));

    // Suspending, other power events and other messages with the same parameter are not a resume.
    const auto suspend = deliver(WM_POWERBROADCAST, PBT_APMSUSPEND);
    CHECK(!suspend.empty() && !Win32Messages::isPowerResume(suspend.front()));
    const auto resumeSuspend = deliver(WM_POWERBROADCAST, PBT_APMRESUMESUSPEND);
    CHECK(!resumeSuspend.empty() && !Win32Messages::isPowerResume(resumeSuspend.front()));
    const auto other = deliver(WM_USER + 1, PBT_APMRESUMEAUTOMATIC);
    CHECK(!other.empty() && !Win32Messages::isPowerResume(other.front()));

    return check::finish();
}
