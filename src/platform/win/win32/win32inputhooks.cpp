#include "win32inputhooks.h"

#include "virtualkeys.h"

#include <cstring>

namespace {

constexpr UINT deliverMessage = WM_APP + 0x56;
constexpr unsigned ringSize = 1024; // a power of two

HHOOK hooks[2] = {nullptr, nullptr};
HWND messageWindow = nullptr;
Win32InputHooks::Handler handler = nullptr;
void *handlerContext = nullptr;
Win32InputHooks::Translator translator = nullptr;

// The ring is written by the callbacks and read by the message window, both on the thread
// that installed the hooks, so it needs no lock.
Win32InputRecord ring[ringSize];
unsigned ringRead = 0;
unsigned ringWrite = 0;
unsigned dropped = 0;

struct PendingDeadKey
{
    UINT virtualKey = 0; // 0: none
    UINT scanCode = 0;
    BYTE state[256] = {};
} pendingDeadKey;

constexpr int modifierKeys[] = {0x10, 0xA0, 0xA1, 0x11, 0xA2, 0xA3,
                                0x12, 0xA4, 0xA5, 0x5C, 0x5B, 0x14};

// The mouse messages that may move the caret: left, right, middle button down and the wheel
// (bits 0, 3, 6 and 9 above WM_LBUTTONDOWN); the X buttons are not among them.
bool movesCaret(WPARAM message)
{
    constexpr unsigned mask = 585;
    return message >= WM_LBUTTONDOWN && message <= WM_MOUSEWHEEL &&
           (mask >> (message - WM_LBUTTONDOWN)) & 1;
}

void push(const Win32InputRecord &record)
{
    if (ringWrite - ringRead >= ringSize) {
        ++dropped;
        return;
    }
    const bool wasEmpty = ringWrite == ringRead;
    ring[ringWrite % ringSize] = record;
    ++ringWrite;
    if (wasEmpty && messageWindow)
        PostMessageW(messageWindow, deliverMessage, 0, 0);
}

LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == deliverMessage) {
        Win32InputHooks::deliverPending();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool ensureMessageWindow()
{
    if (messageWindow)
        return true;
    const HINSTANCE module = GetModuleHandleW(nullptr);
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = windowProc;
    windowClass.hInstance = module;
    windowClass.lpszClassName = L"VelmorinInputHooks";
    RegisterClassW(&windowClass); // fails harmlessly when already registered
    messageWindow = CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                    nullptr, module, nullptr);
    return messageWindow != nullptr;
}

int WINAPI systemToUnicode(UINT virtualKey, UINT scanCode, const BYTE *state, LPWSTR buffer,
                           int size, UINT flags)
{
    return ToUnicode(virtualKey, scanCode, state, buffer, size, flags);
}

} // namespace

bool Win32InputHooks::install(Hook hook)
{
    if (hooks[hook])
        return true;
    if (!ensureMessageWindow())
        return false;
    hooks[hook] = SetWindowsHookExW(hook == Keyboard ? WH_KEYBOARD_LL : WH_MOUSE_LL,
                                    hook == Keyboard ? keyboardProc : mouseProc,
                                    GetModuleHandleW(nullptr), 0);
    return hooks[hook] != nullptr;
}

bool Win32InputHooks::remove(Hook hook)
{
    if (!hooks[hook])
        return true;
    const bool removed = UnhookWindowsHookEx(hooks[hook]) != 0;
    hooks[hook] = nullptr;
    return removed;
}

bool Win32InputHooks::isInstalled(Hook hook)
{
    return hooks[hook] != nullptr;
}

void Win32InputHooks::setHandler(Handler newHandler, void *context)
{
    handler = newHandler;
    handlerContext = context;
}

void Win32InputHooks::setTranslator(Translator newTranslator)
{
    translator = newTranslator;
}

int Win32InputHooks::translate(UINT virtualKey, UINT scanCode, const BYTE *state, wchar_t *text)
{
    const Translator toUnicode = translator ? translator : systemToUnicode;
    std::memset(text, 0, 10 * sizeof(wchar_t));
    const int result = toUnicode(virtualKey, scanCode, state, text, 10, 0);
    if (result == -1) {
        // The first call left the dead key in the layout; the second takes it out again, so
        // the application still gets it from its own translation.
        toUnicode(virtualKey, scanCode, state, text, 10, 0);
        pendingDeadKey.virtualKey = virtualKey;
        pendingDeadKey.scanCode = scanCode;
        std::memcpy(pendingDeadKey.state, state, sizeof(pendingDeadKey.state));
        std::memset(text, 0, 10 * sizeof(wchar_t));
        return 0;
    }
    if (result < 1)
        return 0;
    if (pendingDeadKey.virtualKey) {
        // Puts the dead key back, as if this program had never translated the keys.
        wchar_t scratch[10] = {};
        toUnicode(pendingDeadKey.virtualKey, pendingDeadKey.scanCode, pendingDeadKey.state, scratch,
                  10, 0);
        pendingDeadKey.virtualKey = 0;
    }
    return result > 10 ? 10 : result;
}

void Win32InputHooks::readModifierState(BYTE *state)
{
    std::memset(state, 0, 256);
    for (const int key : modifierKeys)
        state[key] = BYTE(GetKeyState(key) & 0xFF);
}

LRESULT CALLBACK Win32InputHooks::keyboardProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION && (wParam == WM_KEYDOWN || wParam == WM_SYSKEYDOWN)) {
        const auto *event = reinterpret_cast<const KBDLLHOOKSTRUCT *>(lParam);
        const auto virtualKey = std::uint32_t(event->vkCode);
        if (!VirtualKey::keepsWord(virtualKey)) {
            Win32InputRecord record;
            record.virtualKey = virtualKey;
            if (!VirtualKey::isNavigation(virtualKey)) {
                BYTE state[256];
                readModifierState(state);
                record.length =
                    std::uint8_t(translate(virtualKey, event->scanCode, state, record.text));
            }
            push(record);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK Win32InputHooks::mouseProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION && movesCaret(wParam)) {
        Win32InputRecord record;
        record.kind = Win32InputRecord::Button;
        push(record);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

unsigned Win32InputHooks::droppedRecords()
{
    return dropped;
}

void Win32InputHooks::deliverPending()
{
    while (ringRead != ringWrite) {
        const Win32InputRecord record = ring[ringRead % ringSize];
        ++ringRead;
        if (handler)
            handler(record, handlerContext);
    }
}
