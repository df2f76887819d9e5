#pragma once

#include <windows.h>

#include <string>

// System-wide hot keys, registered for the thread (no window): WM_HOTKEY arrives in the
// thread's message queue.
class Win32Hotkeys final
{
public:
    // error gets the system's text for the failure.
    static bool registerHotkey(int id, unsigned modifiers, unsigned virtualKey,
                               std::wstring &error);
    static bool unregisterHotkey(int id, std::wstring &error);
    // A WM_HOTKEY message and what it carries: lParam's low word the modifiers, high word
    // the key.
    static bool isHotkey(const MSG &message, unsigned &modifiers, unsigned &virtualKey);
    static std::wstring lastErrorText();
};
