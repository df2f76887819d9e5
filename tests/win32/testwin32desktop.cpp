#include "check.h"
#include "pump.h"
#include "win32foreground.h"
#include "win32hotkeys.h"
#include "win32inputhooks.h"
#include "win32keyboard.h"
#include "win32registry.h"

#include <string>
#include <vector>

// The Win32 desktop layer against the real (Wine) system: hooks see injected input, the key
// events we send arrive in order, hot keys fire, and the foreground and registry answers.
namespace {

std::vector<Win32InputRecord> records;

void collect(const Win32InputRecord &record, void *)
{
    records.push_back(record);
}

// Pumps until the expected number of events came, within a generous limit (a loaded machine
// delivers hook events late), then a little longer so that extra events would show.
template <typename Container> void pumpFor(const Container &events, size_t expected)
{
    const DWORD end = GetTickCount() + 5000;
    while (events.size() < expected && GetTickCount() < end)
        pump(20);
    pump(100);
}

void injectKey(WORD virtualKey, bool up)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    SendInput(1, &input, sizeof(input));
}

void injectMouse(DWORD flags, DWORD data = 0)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    SendInput(1, &input, sizeof(input));
}

std::wstring textOf(const Win32InputRecord &record)
{
    return std::wstring(record.text, record.length);
}

void hooksSeeInjectedKeysAndClicks()
{
    Win32InputHooks::setHandler(collect, nullptr);
    CHECK(Win32InputHooks::install(Win32InputHooks::Keyboard));
    CHECK(Win32InputHooks::install(Win32InputHooks::Mouse));
    records.clear();
    injectKey('A', false);
    injectKey('A', true);
    injectKey(VK_LSHIFT, false); // Shift does not end a word: not reported
    injectKey('B', false);
    injectKey('B', true);
    injectKey(VK_LSHIFT, true);
    injectKey(VK_LEFT, false);
    injectKey(VK_LEFT, true);
    pumpFor(records, 3);
    CHECK(records.size() == 3);
    if (records.size() == 3) {
        CHECK(records[0].virtualKey == 'A' && textOf(records[0]) == L"a");
        CHECK(records[1].virtualKey == 'B' && textOf(records[1]) == L"B");
        CHECK(records[2].virtualKey == VK_LEFT && records[2].length == 0);
    }

    records.clear();
    injectMouse(MOUSEEVENTF_LEFTDOWN);
    injectMouse(MOUSEEVENTF_LEFTUP);
    injectMouse(MOUSEEVENTF_WHEEL, DWORD(-WHEEL_DELTA));
    injectMouse(MOUSEEVENTF_XDOWN, XBUTTON1); // the back button moves no caret
    injectMouse(MOUSEEVENTF_XUP, XBUTTON1);
    pumpFor(records, 2);
    CHECK(records.size() == 2);
    for (const auto &record : records)
        CHECK(record.kind == Win32InputRecord::Button);

    CHECK(Win32InputHooks::remove(Win32InputHooks::Keyboard));
    CHECK(Win32InputHooks::remove(Win32InputHooks::Mouse));
    CHECK(!Win32InputHooks::isInstalled(Win32InputHooks::Keyboard));
    records.clear();
    injectKey('C', false);
    injectKey('C', true);
    pump(150);
    CHECK(records.empty());
}

// A layout with one dead key (0xDE, the accent) that keeps its state between calls, as
// ToUnicode does.
struct DeadKeyLayout
{
    static inline bool deadKeyPending = false;
    static inline std::vector<UINT> calls;

    static int WINAPI toUnicode(UINT virtualKey, UINT, const BYTE *, LPWSTR buffer, int, UINT)
    {
        calls.push_back(virtualKey);
        if (virtualKey == 0xDE) {
            deadKeyPending = !deadKeyPending;
            return deadKeyPending ? -1 : 1;
        }
        buffer[0] = deadKeyPending ? L'\u00e9' : L'e';
        deadKeyPending = false;
        return 1;
    }
};

void deadKeyIsPutBack()
{
    Win32InputHooks::setTranslator(DeadKeyLayout::toUnicode);
    BYTE state[256] = {};
    wchar_t text[10];
    CHECK(Win32InputHooks::translate(0xDE, 0x28, state, text) == 0);
    // The second call took the accent out of the layout again, for the application.
    CHECK(!DeadKeyLayout::deadKeyPending);
    // The application's own translation of the accent (simulated) leaves it pending...
    DeadKeyLayout::toUnicode(0xDE, 0x28, state, text, 10, 0);
    CHECK(Win32InputHooks::translate('E', 0x12, state, text) == 1);
    CHECK(text[0] == L'\u00e9');
    // ...and after our translation of the letter the accent is back for the application.
    CHECK(DeadKeyLayout::deadKeyPending);
    CHECK(DeadKeyLayout::calls == (std::vector<UINT>{0xDE, 0xDE, 0xDE, 'E', 0xDE}));
    DeadKeyLayout::calls.clear();
    DeadKeyLayout::deadKeyPending = false;
    CHECK(Win32InputHooks::translate('E', 0x12, state, text) == 1);
    CHECK(DeadKeyLayout::calls.size() == 1); // nothing to put back
    Win32InputHooks::setTranslator(nullptr);

    // The real layout: an ordinary key with and without Shift.
    Win32InputHooks::translate('Q', Win32Keyboard::scanCode('Q'), state, text);
    CHECK(text[0] == L'q');
    state[VK_SHIFT] = 0x80;
    Win32InputHooks::translate('Q', Win32Keyboard::scanCode('Q'), state, text);
    CHECK(text[0] == L'Q');
}

struct SeenKey
{
    DWORD virtualKey;
    DWORD flags;
};
std::vector<SeenKey> seenKeys;

LRESULT CALLBACK recordKeys(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION) {
        const auto *event = reinterpret_cast<const KBDLLHOOKSTRUCT *>(lParam);
        seenKeys.push_back({event->vkCode, event->flags});
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void sentKeysArriveInOrder()
{
    const HHOOK hook = SetWindowsHookExW(WH_KEYBOARD_LL, recordKeys, GetModuleHandleW(nullptr), 0);
    CHECK(hook != nullptr);
    const auto scan = [](std::uint32_t key) { return std::uint8_t(Win32Keyboard::scanCode(key)); };
    Win32Keyboard::keyEvent(VK_CONTROL, scan(VK_CONTROL), 0);
    Win32Keyboard::keyEvent('V', scan('V'), 0);
    Win32Keyboard::keyEvent(VK_CONTROL, scan(VK_CONTROL) | 0x80, KEYEVENTF_KEYUP);
    Win32Keyboard::keyEvent('V', scan('V') | 0x80, KEYEVENTF_KEYUP);
    Win32Keyboard::keyEvent(VK_DELETE, scan(VK_DELETE), KEYEVENTF_EXTENDEDKEY);
    Win32Keyboard::keyEvent(VK_DELETE, scan(VK_DELETE) | 0x80,
                            KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP);
    pumpFor(seenKeys, 6);
    UnhookWindowsHookEx(hook);
    CHECK(seenKeys.size() == 6);
    if (seenKeys.size() == 6) {
        const DWORD keys[] = {VK_CONTROL, 'V', VK_CONTROL, 'V', VK_DELETE, VK_DELETE};
        const bool up[] = {false, false, true, true, false, true};
        for (int i = 0; i < 6; ++i) {
            CHECK(seenKeys[i].virtualKey == keys[i] ||
                  (keys[i] == VK_CONTROL && seenKeys[i].virtualKey == VK_LCONTROL));
            CHECK(((seenKeys[i].flags & LLKHF_UP) != 0) == up[i]);
            CHECK(seenKeys[i].flags & LLKHF_INJECTED);
        }
        CHECK(seenKeys[4].flags & LLKHF_EXTENDED);
    }
    CHECK(Win32Keyboard::keyScan(L'A') == (0x100 | 'A'));
    CHECK((Win32Keyboard::keyScan(L'!') & 0x1FF) == (0x100 | '1'));
}

// Pressing a registered hot key is shown end to end (Ctrl+Shift+V opens the paste window).
void hotkeysAreRegisteredOnce()
{
    const unsigned modifiers = MOD_CONTROL | MOD_SHIFT;
    const int id = 0x7000 | (((modifiers << 8) ^ VK_F9) & 0xFFF);
    std::wstring error;
    CHECK(Win32Hotkeys::registerHotkey(id, modifiers, VK_F9, error));
    // The same identifier twice is refused, with the system's words for it.
    CHECK(!Win32Hotkeys::registerHotkey(id, modifiers, VK_F9, error));
    CHECK(!error.empty());
    CHECK(Win32Hotkeys::unregisterHotkey(id, error));
    CHECK(!Win32Hotkeys::unregisterHotkey(id, error));
}

HICON makeIcon(int size)
{
    std::vector<std::uint32_t> pixels(size_t(size) * size_t(size), 0xFF2E7D32u);
    ICONINFO info = {};
    info.fIcon = TRUE;
    info.hbmColor = CreateBitmap(size, size, 1, 32, pixels.data());
    info.hbmMask = CreateBitmap(size, size, 1, 1, nullptr);
    const HICON icon = CreateIconIndirect(&info);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return icon;
}

void foregroundApplicationAndIcon()
{
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"foreground", WS_OVERLAPPEDWINDOW, 10, 10, 200, 100, nullptr,
                        nullptr, GetModuleHandleW(nullptr), nullptr);
    CHECK(window != nullptr);
    const HICON icon = makeIcon(256);
    SendMessageW(window, WM_SETICON, ICON_BIG, LPARAM(icon));
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    pump(200);
    CHECK(Win32Foreground::applicationName(window) == "testwin32desktop.exe");
    CHECK(Win32Foreground::windowClass(window) == L"Static");
    CHECK(Win32Foreground::windowClass(nullptr).empty());
    CHECK(Win32Foreground::processName(GetCurrentProcessId()) == "testwin32desktop.exe");
    CHECK(Win32Foreground::processName(0xFFFFFFF0u).empty());
    const Win32Foreground::Icon found = Win32Foreground::applicationIcon(window);
    CHECK(found.width == 256 && found.height == 256);
    CHECK(found.pixels.size() == 256u * 256u);
    CHECK(!found.pixels.empty() && (found.pixels[0] & 0xFFFFFF) == 0x2E7D32);
    DestroyWindow(window);
    DestroyIcon(icon);
}

void registryValues()
{
    const std::wstring name = L"VelmorinTest";
    CHECK(Win32Registry::setStartWithSystem(name, L"C:/Program Files/Velmorin/velmorin.exe"));
    CHECK(Win32Registry::startWithSystemCommand(name) ==
          L"\"C:\\Program Files\\Velmorin\\velmorin.exe\"");
    CHECK(Win32Registry::removeStartWithSystem(name));
    CHECK(Win32Registry::startWithSystemCommand(name).empty());
    CHECK(Win32Registry::removeStartWithSystem(name)); // already gone is fine

    const wchar_t *personalize =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    RegDeleteKeyValueW(HKEY_CURRENT_USER, personalize, L"AppsUseLightTheme");
    CHECK(!Win32Registry::appsUseDarkTheme());
    for (const DWORD light : {DWORD(0), DWORD(1)}) {
        RegSetKeyValueW(HKEY_CURRENT_USER, personalize, L"AppsUseLightTheme", REG_DWORD, &light,
                        sizeof(light));
        CHECK(Win32Registry::appsUseDarkTheme() == (light == 0));
    }
    RegDeleteKeyValueW(HKEY_CURRENT_USER, personalize, L"AppsUseLightTheme");
}

} // namespace

int wmain()
{
    hooksSeeInjectedKeysAndClicks();
    deadKeyIsPutBack();
    sentKeysArriveInOrder();
    hotkeysAreRegisteredOnce();
    foregroundApplicationAndIcon();
    registryValues();
    return check::finish();
}
