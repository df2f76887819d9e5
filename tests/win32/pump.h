#pragma once

#include <windows.h>

// Pumps this thread's messages for a while: hooks, message windows and the edit controls of the
// Win32 test programs run inside the pump.
inline void pump(DWORD milliseconds)
{
    for (const DWORD end = GetTickCount() + milliseconds; GetTickCount() < end; Sleep(5)) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}
