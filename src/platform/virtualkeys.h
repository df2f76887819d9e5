#pragma once

// Windows virtual-key codes and keybd_event flags. The key logic speaks these codes on every
// platform; the X11 back end maps them to keysyms. Qt-free, so the Win32 layer shares it.
#include <cstdint>

namespace VirtualKey {
constexpr std::uint32_t Backspace = 0x08;
constexpr std::uint32_t Tab = 0x09;
constexpr std::uint32_t Return = 0x0D;
constexpr std::uint32_t Shift = 0x10;
constexpr std::uint32_t Control = 0x11;
constexpr std::uint32_t Alt = 0x12;
constexpr std::uint32_t Pause = 0x13;
constexpr std::uint32_t CapsLock = 0x14;
constexpr std::uint32_t Escape = 0x1B;
constexpr std::uint32_t Space = 0x20;
constexpr std::uint32_t PageUp = 0x21;
constexpr std::uint32_t PageDown = 0x22;
constexpr std::uint32_t End = 0x23;
constexpr std::uint32_t Home = 0x24;
constexpr std::uint32_t Left = 0x25;
constexpr std::uint32_t Up = 0x26;
constexpr std::uint32_t Right = 0x27;
constexpr std::uint32_t Down = 0x28;
constexpr std::uint32_t PrintScreen = 0x2C;
constexpr std::uint32_t Insert = 0x2D;
constexpr std::uint32_t Delete = 0x2E;
constexpr std::uint32_t LeftWindows = 0x5B;
constexpr std::uint32_t RightWindows = 0x5C;
constexpr std::uint32_t Applications = 0x5D;
constexpr std::uint32_t F1 = 0x70;
constexpr std::uint32_t LeftShift = 0xA0;
constexpr std::uint32_t RightShift = 0xA1;
constexpr std::uint32_t LeftControl = 0xA2;
constexpr std::uint32_t RightControl = 0xA3;
constexpr std::uint32_t LeftAlt = 0xA4;
constexpr std::uint32_t RightAlt = 0xA5;

// Keys that move the caret: the word typed so far no longer stands before it.
constexpr bool isNavigation(std::uint32_t vk)
{
    return (vk >= PageUp && vk <= Down) || vk == Insert || vk == Delete;
}

// Keys whose press must not end a word even though they are seen: Shift and Caps Lock.
constexpr bool keepsWord(std::uint32_t vk)
{
    return vk == LeftShift || vk == RightShift || vk == CapsLock;
}

// Keys that keybd_event must mark as extended.
constexpr bool isExtended(std::uint32_t vk)
{
    return vk == Pause || (vk >= PageUp && vk <= Down) || vk == PrintScreen || vk == Insert ||
           vk == Delete || (vk >= LeftWindows && vk <= Applications) || vk == RightControl ||
           vk == RightAlt || (vk >= 0xA6 && vk <= 0xB4);
}
} // namespace VirtualKey

// keybd_event's dwFlags.
namespace KeyEventFlag {
constexpr std::uint32_t ExtendedKey = 0x1;
constexpr std::uint32_t KeyUp = 0x2;
} // namespace KeyEventFlag

// The modifier bits of the key-sending functions.
namespace KeyModifier {
constexpr std::uint32_t Alt = 1;
constexpr std::uint32_t Control = 2;
constexpr std::uint32_t Shift = 4;
constexpr std::uint32_t Windows = 8;
} // namespace KeyModifier

// VkKeyScanW's high-byte bits: which modifiers the character needs.
namespace KeyScanBit {
constexpr int Shift = 0x100;
constexpr int Control = 0x200;
constexpr int Alt = 0x400;
} // namespace KeyScanBit
