#include "win32foreground.h"

#include <psapi.h>

namespace {

const char frameHost[] = "ApplicationFrameHost.exe";

struct ChildSearch
{
    DWORD hostProcess = 0;
    HWND child = nullptr;
    DWORD childProcess = 0;
};

BOOL CALLBACK findForeignChild(HWND child, LPARAM parameter)
{
    auto *search = reinterpret_cast<ChildSearch *>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(child, &process);
    if (process == search->hostProcess)
        return TRUE;
    search->child = child;
    search->childProcess = process;
    return FALSE;
}

ChildSearch hostedApplication(HWND window)
{
    ChildSearch search;
    GetWindowThreadProcessId(window, &search.hostProcess);
    EnumChildWindows(window, findForeignChild, reinterpret_cast<LPARAM>(&search));
    return search;
}

HICON windowIcon(HWND window)
{
    for (const WPARAM size : {WPARAM(ICON_BIG), WPARAM(ICON_SMALL), WPARAM(ICON_SMALL2)}) {
        if (auto icon = reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, size, 0)))
            return icon;
    }
    if (auto icon = reinterpret_cast<HICON>(GetClassLongPtrW(window, GCLP_HICON)))
        return icon;
    return reinterpret_cast<HICON>(GetClassLongPtrW(window, GCLP_HICONSM));
}

Win32Foreground::Icon pixelsOf(HICON icon)
{
    Win32Foreground::Icon result;
    ICONINFO info = {};
    if (!GetIconInfo(icon, &info))
        return result;
    BITMAP bitmap = {};
    if (info.hbmColor && GetObjectW(info.hbmColor, sizeof(bitmap), &bitmap)) {
        BITMAPINFO header = {};
        header.bmiHeader.biSize = sizeof(header.bmiHeader);
        header.bmiHeader.biWidth = bitmap.bmWidth;
        header.bmiHeader.biHeight = -bitmap.bmHeight; // top row first
        header.bmiHeader.biPlanes = 1;
        header.bmiHeader.biBitCount = 32;
        header.bmiHeader.biCompression = BI_RGB;
        result.pixels.resize(size_t(bitmap.bmWidth) * size_t(bitmap.bmHeight));
        const HDC screen = GetDC(nullptr);
        if (GetDIBits(screen, info.hbmColor, 0, UINT(bitmap.bmHeight), result.pixels.data(),
                      &header, DIB_RGB_COLORS)) {
            result.width = bitmap.bmWidth;
            result.height = bitmap.bmHeight;
        } else {
            result.pixels.clear();
        }
        ReleaseDC(nullptr, screen);
    }
    if (info.hbmColor)
        DeleteObject(info.hbmColor);
    if (info.hbmMask)
        DeleteObject(info.hbmMask);
    return result;
}

} // namespace

std::string Win32Foreground::processName(DWORD processId)
{
    const HANDLE process =
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId);
    if (!process)
        return {};
    char name[256] = {};
    K32GetModuleBaseNameA(process, nullptr, name, sizeof(name));
    CloseHandle(process);
    return name;
}

std::string Win32Foreground::applicationName()
{
    return applicationName(GetForegroundWindow());
}

std::string Win32Foreground::applicationName(HWND window)
{
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    const std::string name = processName(processId);
    if (name != frameHost)
        return name;
    const ChildSearch hosted = hostedApplication(window);
    const std::string hostedName = hosted.child ? processName(hosted.childProcess) : std::string();
    return hostedName.empty() ? name : hostedName;
}

std::wstring Win32Foreground::windowClass(HWND window)
{
    wchar_t name[256] = {};
    const int length = window ? GetClassNameW(window, name, 256) : 0;
    return std::wstring(name, size_t(length > 0 ? length : 0));
}

HWND Win32Foreground::applicationWindow(HWND window)
{
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    if (processName(processId) != frameHost)
        return window;
    const ChildSearch hosted = hostedApplication(window);
    return hosted.child ? hosted.child : window;
}

Win32Foreground::Icon Win32Foreground::applicationIcon()
{
    return applicationIcon(GetForegroundWindow());
}

Win32Foreground::Icon Win32Foreground::applicationIcon(HWND window)
{
    const HICON icon = windowIcon(applicationWindow(window));
    return icon ? pixelsOf(icon) : Icon();
}
