#include "win32keyboard.h"

void Win32Keyboard::keyEvent(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags)
{
    keybd_event(virtualKey, scanCode, flags, 0);
}

std::uint32_t Win32Keyboard::scanCode(std::uint32_t virtualKey)
{
    return MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC);
}

std::int16_t Win32Keyboard::keyScan(wchar_t character)
{
    return VkKeyScanW(character);
}

unsigned Win32Keyboard::heldModifiers()
{
    const auto held = [](int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; };
    return (held(VK_SHIFT) ? 1u : 0u) | (held(VK_CONTROL) ? 2u : 0u) | (held(VK_MENU) ? 4u : 0u) |
           (held(VK_LWIN) || held(VK_RWIN) ? 8u : 0u);
}
