#include "crashreport.h"

#include <dbghelp.h>

namespace {

wchar_t g_reportPath[MAX_PATH * 2] = {};
wchar_t g_dumpPath[MAX_PATH * 2] = {};

int appendText(char *buffer, int at, int size, const char *text)
{
    while (*text && at < size - 1)
        buffer[at++] = *text++;
    buffer[at] = '\0';
    return at;
}

int appendHex(char *buffer, int at, int size, unsigned long long value, int digits)
{
    char hex[17] = {};
    for (int i = digits - 1; i >= 0; --i) {
        hex[i] = "0123456789ABCDEF"[value & 0xF];
        value >>= 4;
    }
    at = appendText(buffer, at, size, "0x");
    return appendText(buffer, at, size, hex);
}

} // namespace

bool CrashReport::install(const std::wstring &folder)
{
    if (!CreateDirectoryW(folder.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        return false;
    const std::wstring base = folder + L"\\crash-" + std::to_wstring(GetCurrentProcessId());
    const std::wstring path = base + L".txt";
    const std::wstring dump = base + L".dmp";
    if (dump.size() >= sizeof g_dumpPath / sizeof g_dumpPath[0])
        return false;
    lstrcpynW(g_reportPath, path.c_str(), int(path.size() + 1));
    lstrcpynW(g_dumpPath, dump.c_str(), int(dump.size() + 1));
    // dbghelp is loaded now rather than in the broken process.
    LoadLibraryW(L"dbghelp.dll");
    SetUnhandledExceptionFilter(&CrashReport::filter);
    return true;
}

std::wstring CrashReport::reportPath()
{
    return g_reportPath;
}

std::wstring CrashReport::dumpPath()
{
    return g_dumpPath;
}

int CrashReport::formatReport(DWORD code, const void *address, char *buffer, int size)
{
    int at = appendText(buffer, 0, size, "Velmorin closed unexpectedly.\r\nException code: ");
    at = appendHex(buffer, at, size, code, 8);
    at = appendText(buffer, at, size, "\r\nAddress: ");
    at = appendHex(buffer, at, size, reinterpret_cast<unsigned long long>(address), 16);
    return appendText(buffer, at, size, "\r\n");
}

LONG WINAPI CrashReport::filter(EXCEPTION_POINTERS *pointers)
{
    char text[256];
    const EXCEPTION_RECORD *record = pointers->ExceptionRecord;
    const int length =
        formatReport(record->ExceptionCode, record->ExceptionAddress, text, int(sizeof text));
    const HANDLE file = CreateFileW(g_reportPath, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        DWORD written = 0;
        WriteFile(file, text, DWORD(length), &written, nullptr);
        FlushFileBuffers(file);
        CloseHandle(file);
    }
    const HANDLE dump = CreateFileW(g_dumpPath, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (dump != INVALID_HANDLE_VALUE) {
        MINIDUMP_EXCEPTION_INFORMATION exception = {};
        exception.ThreadId = GetCurrentThreadId();
        exception.ExceptionPointers = pointers;
        exception.ClientPointers = FALSE;
        MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), dump, MiniDumpNormal,
                          &exception, nullptr, nullptr);
        CloseHandle(dump);
    }
    // End the process here: the report is written, and a debugger popping up helps no user.
    return EXCEPTION_EXECUTE_HANDLER;
}
