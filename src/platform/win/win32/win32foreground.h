#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

// The application behind the foreground window. Store apps live in a window of
// ApplicationFrameHost.exe; their own process owns a child window of it, and that process is
// the one meant.
class Win32Foreground final
{
public:
    struct Icon
    {
        int width = 0;
        int height = 0;
        std::vector<std::uint32_t> pixels; // ARGB, premultiplied as the system draws it
    };

    // Executable base name in the local 8-bit code page; empty when the process cannot be
    // opened.
    static std::string applicationName();
    static std::string applicationName(HWND window);
    static Icon applicationIcon();
    static Icon applicationIcon(HWND window);

    // The window's class name, which tells terminals apart from other programs.
    static std::wstring windowClass(HWND window);

    // The base name of a process.
    static std::string processName(DWORD processId);
    // The window whose icon and process stand for the application.
    static HWND applicationWindow(HWND window);
};
