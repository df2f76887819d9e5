#pragma once

#include <windows.h>

// Decoding of the window messages the program reacts to.
class Win32Messages final
{
public:
    // WM_POWERBROADCAST with PBT_APMRESUMEAUTOMATIC: the machine woke from sleep.
    static bool isPowerResume(const MSG &msg);
};
