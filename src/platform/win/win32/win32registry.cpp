#include "win32registry.h"

#include <windows.h>

namespace {
const wchar_t runKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
const wchar_t personalizeKey[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
} // namespace

bool Win32Registry::setStartWithSystem(const std::wstring &applicationName,
                                       const std::wstring &executablePath)
{
    std::wstring command = L"\"" + executablePath + L"\"";
    for (wchar_t &character : command) {
        if (character == L'/')
            character = L'\\';
    }
    const DWORD bytes = DWORD((command.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, runKey, applicationName.c_str(), REG_SZ,
                           command.c_str(), bytes) == ERROR_SUCCESS;
}

bool Win32Registry::removeStartWithSystem(const std::wstring &applicationName)
{
    const LSTATUS status = RegDeleteKeyValueW(HKEY_CURRENT_USER, runKey, applicationName.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

std::wstring Win32Registry::startWithSystemCommand(const std::wstring &applicationName)
{
    wchar_t value[1024] = {};
    DWORD bytes = sizeof(value);
    if (RegGetValueW(HKEY_CURRENT_USER, runKey, applicationName.c_str(), RRF_RT_REG_SZ, nullptr,
                     value, &bytes) != ERROR_SUCCESS)
        return {};
    return value;
}

bool Win32Registry::appsUseDarkTheme()
{
    DWORD value = 1;
    DWORD bytes = sizeof(value);
    return RegGetValueW(HKEY_CURRENT_USER, personalizeKey, L"AppsUseLightTheme", RRF_RT_REG_DWORD,
                        nullptr, &value, &bytes) == ERROR_SUCCESS &&
           value == 0;
}
