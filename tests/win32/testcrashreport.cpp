#include "check.h"
#include "crashreport.h"

#include <cstring>
#include <string>

// The crash test runs this program a second time as a child that installs the report and
// then dies of an access violation.
namespace {

std::string readFile(const std::wstring &path)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    char buffer[1024] = {};
    DWORD read = 0;
    ReadFile(file, buffer, sizeof buffer - 1, &read, nullptr);
    CloseHandle(file);
    return std::string(buffer, read);
}

std::wstring tempFolder()
{
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    return std::wstring(temp) + L"velmorin-crash-test-" + std::to_wstring(GetCurrentProcessId());
}

int crashChild(const std::wstring &folder)
{
    if (!CrashReport::install(folder))
        return 3;
    volatile int *nothing = nullptr;
    *nothing = 42;
    return 0;
}

void testFormat()
{
    char text[256];
    const int length = CrashReport::formatReport(0xC0000005, reinterpret_cast<void *>(0x1234), text,
                                                 int(sizeof text));
    const char *expected = "Velmorin closed unexpectedly.\r\nException code: 0xC0000005\r\n"
                           "Address: 0x0000000000001234\r\n";
    CHECK(std::strcmp(text, expected) == 0);
    CHECK(length == int(std::strlen(expected)));

    // A buffer that is too small is cut, never overrun.
    char small[12];
    const int cut = CrashReport::formatReport(0xC0000005, nullptr, small, int(sizeof small));
    CHECK(cut == 11);
    CHECK(std::strncmp(small, "Velmorin cl", 11) == 0);
}

void testChildCrashWritesReport(const wchar_t *self)
{
    const std::wstring folder = tempFolder();
    std::wstring command = L"\"" + std::wstring(self) + L"\" crash \"" + folder + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    CHECK(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                         &startup, &process));
    CHECK(WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0);
    DWORD exitCode = 0;
    GetExitCodeProcess(process.hProcess, &exitCode);
    CHECK(exitCode == 0xC0000005);

    const std::wstring report =
        folder + L"\\crash-" + std::to_wstring(process.dwProcessId) + L".txt";
    const std::string text = readFile(report);
    CHECK(text.find("Exception code: 0xC0000005") != std::string::npos);
    // A minidump beside it, starting with its signature.
    const std::wstring dump = folder + L"\\crash-" + std::to_wstring(process.dwProcessId) + L".dmp";
    CHECK(readFile(dump).compare(0, 4, "MDMP") == 0);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    DeleteFileW(report.c_str());
    DeleteFileW(dump.c_str());
    RemoveDirectoryW(folder.c_str());
}

} // namespace

int wmain(int argc, wchar_t **argv)
{
    if (argc == 3 && std::wstring(argv[1]) == L"crash")
        return crashChild(argv[2]);
    testFormat();
    testChildCrashWritesReport(argv[0]);
    return check::finish();
}
