#include "win32hotkeys.h"

bool Win32Hotkeys::registerHotkey(int id, unsigned modifiers, unsigned virtualKey,
                                  std::wstring &error)
{
    if (RegisterHotKey(nullptr, id, modifiers, virtualKey))
        return true;
    error = lastErrorText();
    return false;
}

bool Win32Hotkeys::unregisterHotkey(int id, std::wstring &error)
{
    if (UnregisterHotKey(nullptr, id))
        return true;
    error = lastErrorText();
    return false;
}

bool Win32Hotkeys::isHotkey(const MSG &message, unsigned &modifiers, unsigned &virtualKey)
{
    if (message.message != WM_HOTKEY)
        return false;
    modifiers = LOWORD(message.lParam);
    virtualKey = HIWORD(message.lParam);
    return true;
}

std::wstring Win32Hotkeys::lastErrorText()
{
    const DWORD code = GetLastError();
    wchar_t *buffer = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<wchar_t *>(&buffer), 0, nullptr);
    std::wstring text = length ? std::wstring(buffer, length) : L"error " + std::to_wstring(code);
    if (buffer)
        LocalFree(buffer);
    while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r'))
        text.pop_back();
    return text;
}
