#include "win32messages.h"

bool Win32Messages::isPowerResume(const MSG &msg)
{
    return msg.message == WM_POWERBROADCAST && msg.wParam == PBT_APMRESUMEAUTOMATIC;
}
