// A plain Win32 program for the end-to-end run under Wine: another application, as far as
// Velmorin can tell.
//   wintarget copy TEXT      puts TEXT on the clipboard from a window in the foreground, and ends
//   wintarget edit FILE      shows a window with a focused edit control and writes what it holds
//                            to FILE (UTF-16) whenever it changes
#include "pump.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

const wchar_t *outputFile = nullptr;
HWND editControl = nullptr;

int copy(const std::wstring &text)
{
    // The copy comes from this program, so it is the foreground application while copying.
    HWND window = CreateWindowExW(0, L"STATIC", L"Win32 source", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                  200, 500, 300, 100, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(window);
    pump(500);
    const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(memory), text.c_str(), bytes);
    GlobalUnlock(memory);
    // Another clipboard user may hold it for a moment.
    for (int attempt = 0; attempt < 50; ++attempt) {
        if (OpenClipboard(nullptr)) {
            EmptyClipboard();
            const bool set = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
            CloseClipboard();
            pump(1000);
            return set ? 0 : 1;
        }
        Sleep(100);
    }
    return 1;
}

void writeText(HWND edit)
{
    std::wstring text(GetWindowTextLengthW(edit) + 1, L'\0');
    text.resize(GetWindowTextW(edit, text.data(), int(text.size())));
    if (FILE *file = _wfopen(outputFile, L"wb")) {
        std::fwrite(text.data(), sizeof(wchar_t), text.size(), file);
        std::fclose(file);
    }
}

LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
        if (HIWORD(wParam) == EN_CHANGE)
            writeText(reinterpret_cast<HWND>(lParam));
        return 0;
    case WM_SETFOCUS:
        // As editors do: the window's focus is its edit control's, also when activated again.
        SetFocus(editControl);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

int edit(const wchar_t *file)
{
    outputFile = file;
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"VelmorinTestTarget";
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    RegisterClassW(&windowClass);
    HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"Win32 target",
                                  WS_OVERLAPPEDWINDOW | WS_VISIBLE, 200, 200, 480, 240, nullptr,
                                  nullptr, windowClass.hInstance, nullptr);
    editControl = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                                  WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_AUTOVSCROLL, 10, 10,
                                  440, 170, window, nullptr, windowClass.hInstance, nullptr);
    SetForegroundWindow(window);
    SetFocus(editControl);
    writeText(editControl);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}

} // namespace

int wmain(int argc, wchar_t *argv[])
{
    if (argc == 3 && std::wstring(argv[1]) == L"copy")
        return copy(argv[2]);
    if (argc == 3 && std::wstring(argv[1]) == L"edit")
        return edit(argv[2]);
    std::fprintf(stderr, "usage: wintarget copy TEXT | wintarget edit FILE\n");
    return 2;
}
