#pragma once

#include <windows.h>

#include <cstdint>

// Synthetic key events and the layout's key lookups.
class Win32Keyboard final
{
public:
    static void keyEvent(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags);
    static std::uint32_t scanCode(std::uint32_t virtualKey);
    static std::int16_t keyScan(wchar_t character);
    // Bits of the modifiers held right now: Shift 1, Control 2, Alt 4, Windows 8.
    static unsigned heldModifiers();
};
