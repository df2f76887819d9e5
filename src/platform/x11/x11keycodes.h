#pragma once

#include <cstdint>

// Windows virtual keys for X key codes, by the key's position on a PC keyboard (X servers
// with evdev key codes, which is every current one). Windows itself maps letter and
// punctuation keys by layout; here a key keeps the virtual key of its US position, which is
// all the key logic needs: a key code maps to a virtual key and back to the same key code.
namespace X11Keycodes {
// 0 for key codes without a virtual key.
std::uint32_t virtualKey(std::uint32_t keycode);
// 0 for virtual keys without a key code. The generic Shift, Control and Alt keys map to the
// left-hand keys.
std::uint32_t keycode(std::uint32_t virtualKey);
// The navigation virtual key a keysym stands for (keypad keys without Num Lock included),
// or 0.
std::uint32_t navigationKey(std::uint32_t keysym);
} // namespace X11Keycodes
