#pragma once

#include <string>

// The per-user registry values the program reads and writes.
class Win32Registry final
{
public:
    // The start-with-Windows entry under HKCU\Software\Microsoft\Windows\CurrentVersion\Run:
    // the value named after the application holds the quoted executable path.
    static bool setStartWithSystem(const std::wstring &applicationName,
                                   const std::wstring &executablePath);
    static bool removeStartWithSystem(const std::wstring &applicationName);
    static std::wstring startWithSystemCommand(const std::wstring &applicationName);

    // AppsUseLightTheme under ...\Themes\Personalize exists and is 0.
    static bool appsUseDarkTheme();
};
