#pragma once

#include <windows.h>

#include <string>

// Writes a short report and a minidump when the process dies of an unhandled exception, so the
// next start can tell the user and a developer can see where it happened. The filter runs in a
// broken process: it allocates nothing and uses only kernel calls on buffers prepared by install().
class CrashReport final
{
public:
    // Reports go to folder\crash-<process id>.txt, dumps beside them as .dmp. False when the
    // folder cannot be created.
    static bool install(const std::wstring &folder);
    static std::wstring reportPath();
    static std::wstring dumpPath();

    // The report text for an exception, as the filter writes it.
    static int formatReport(DWORD code, const void *address, char *buffer, int size);

private:
    static LONG WINAPI filter(EXCEPTION_POINTERS *pointers);
};
