#include "win32credentials.h"

#include <windows.h>

#include <wincred.h>

bool Win32Credentials::write(const std::wstring &target, const std::wstring &secret,
                             unsigned long *error)
{
    std::wstring blob = secret;
    CREDENTIALW credential = {};
    credential.Type = CRED_TYPE_GENERIC;
    credential.TargetName = const_cast<wchar_t *>(target.c_str());
    credential.CredentialBlobSize = DWORD(blob.size() * sizeof(wchar_t));
    credential.CredentialBlob = reinterpret_cast<BYTE *>(blob.data());
    credential.Persist = CRED_PERSIST_LOCAL_MACHINE;
    credential.UserName = const_cast<wchar_t *>(L"Velmorin");
    const bool written = CredWriteW(&credential, 0);
    *error = written ? 0 : GetLastError();
    SecureZeroMemory(blob.data(), blob.size() * sizeof(wchar_t));
    return written;
}

bool Win32Credentials::read(const std::wstring &target, std::wstring *secret, unsigned long *error)
{
    PCREDENTIALW credential = nullptr;
    if (!CredReadW(target.c_str(), CRED_TYPE_GENERIC, 0, &credential)) {
        *error = GetLastError();
        return false;
    }
    secret->assign(reinterpret_cast<const wchar_t *>(credential->CredentialBlob),
                   credential->CredentialBlobSize / sizeof(wchar_t));
    CredFree(credential);
    *error = 0;
    return true;
}

bool Win32Credentials::remove(const std::wstring &target, unsigned long *error)
{
    if (CredDeleteW(target.c_str(), CRED_TYPE_GENERIC, 0) || GetLastError() == ERROR_NOT_FOUND) {
        *error = 0;
        return true;
    }
    *error = GetLastError();
    return false;
}
