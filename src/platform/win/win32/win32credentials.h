#pragma once

#include <string>

// Secrets in the Windows Credential Manager, as generic credentials of the current user kept
// on this computer. error: the Win32 error code of a failure.
class Win32Credentials final
{
public:
    static bool write(const std::wstring &target, const std::wstring &secret, unsigned long *error);
    // False when there is none (error ERROR_NOT_FOUND, which callers need not report) or it
    // cannot be read.
    static bool read(const std::wstring &target, std::wstring *secret, unsigned long *error);
    // Succeeds also when there was none.
    static bool remove(const std::wstring &target, unsigned long *error);
};
