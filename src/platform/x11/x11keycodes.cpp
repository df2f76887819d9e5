#include "platform/x11/x11keycodes.h"

#include "platform/virtualkeys.h"

#include <X11/keysym.h>

#include <array>
#include <utility>

namespace {

using Pair = std::pair<std::uint32_t, std::uint32_t>;

// X key code (evdev scan code + 8) and virtual key.
constexpr Pair keyTable[] = {
    {9, 0x1B},   {10, '1'},   {11, '2'},   {12, '3'},   {13, '4'},   {14, '5'},   {15, '6'},
    {16, '7'},   {17, '8'},   {18, '9'},   {19, '0'},   {20, 0xBD},  {21, 0xBB},  {22, 0x08},
    {23, 0x09},  {24, 'Q'},   {25, 'W'},   {26, 'E'},   {27, 'R'},   {28, 'T'},   {29, 'Y'},
    {30, 'U'},   {31, 'I'},   {32, 'O'},   {33, 'P'},   {34, 0xDB},  {35, 0xDD},  {36, 0x0D},
    {37, 0xA2},  {38, 'A'},   {39, 'S'},   {40, 'D'},   {41, 'F'},   {42, 'G'},   {43, 'H'},
    {44, 'J'},   {45, 'K'},   {46, 'L'},   {47, 0xBA},  {48, 0xDE},  {49, 0xC0},  {50, 0xA0},
    {51, 0xDC},  {52, 'Z'},   {53, 'X'},   {54, 'C'},   {55, 'V'},   {56, 'B'},   {57, 'N'},
    {58, 'M'},   {59, 0xBC},  {60, 0xBE},  {61, 0xBF},  {62, 0xA1},  {63, 0x6A},  {64, 0xA4},
    {65, 0x20},  {66, 0x14},  {67, 0x70},  {68, 0x71},  {69, 0x72},  {70, 0x73},  {71, 0x74},
    {72, 0x75},  {73, 0x76},  {74, 0x77},  {75, 0x78},  {76, 0x79},  {77, 0x90},  {78, 0x91},
    {79, 0x67},  {80, 0x68},  {81, 0x69},  {82, 0x6D},  {83, 0x64},  {84, 0x65},  {85, 0x66},
    {86, 0x6B},  {87, 0x61},  {88, 0x62},  {89, 0x63},  {90, 0x60},  {91, 0x6E},  {94, 0xE2},
    {95, 0x7A},  {96, 0x7B},  {105, 0xA3}, {106, 0x6F}, {107, 0x2C}, {108, 0xA5}, {110, 0x24},
    {111, 0x26}, {112, 0x21}, {113, 0x25}, {114, 0x27}, {115, 0x23}, {116, 0x28}, {117, 0x22},
    {118, 0x2D}, {119, 0x2E}, {121, 0xAD}, {122, 0xAE}, {123, 0xAF}, {127, 0x13}, {133, 0x5B},
    {134, 0x5C}, {135, 0x5D}, {171, 0xB0}, {172, 0xB3}, {173, 0xB1}, {174, 0xB2},
};

// The generic modifier keys that the key logic sends.
constexpr Pair genericKeys[] = {
    {VirtualKey::Shift, 50},
    {VirtualKey::Control, 37},
    {VirtualKey::Alt, 64},
};

constexpr Pair navigationKeysyms[] = {
    {XK_Prior, VirtualKey::PageUp},     {XK_Next, VirtualKey::PageDown},
    {XK_End, VirtualKey::End},          {XK_Home, VirtualKey::Home},
    {XK_Left, VirtualKey::Left},        {XK_Up, VirtualKey::Up},
    {XK_Right, VirtualKey::Right},      {XK_Down, VirtualKey::Down},
    {XK_Insert, VirtualKey::Insert},    {XK_Delete, VirtualKey::Delete},
    {XK_KP_Prior, VirtualKey::PageUp},  {XK_KP_Next, VirtualKey::PageDown},
    {XK_KP_End, VirtualKey::End},       {XK_KP_Home, VirtualKey::Home},
    {XK_KP_Left, VirtualKey::Left},     {XK_KP_Up, VirtualKey::Up},
    {XK_KP_Right, VirtualKey::Right},   {XK_KP_Down, VirtualKey::Down},
    {XK_KP_Insert, VirtualKey::Insert}, {XK_KP_Delete, VirtualKey::Delete},
};

template <std::size_t N>
std::uint32_t lookUp(const Pair (&table)[N], std::uint32_t value, bool byFirst)
{
    for (const Pair &pair : table) {
        if ((byFirst ? pair.first : pair.second) == value)
            return byFirst ? pair.second : pair.first;
    }
    return 0;
}

} // namespace

namespace X11Keycodes {

std::uint32_t virtualKey(std::uint32_t keycode)
{
    return lookUp(keyTable, keycode, true);
}

std::uint32_t keycode(std::uint32_t virtualKey)
{
    if (const std::uint32_t generic = lookUp(genericKeys, virtualKey, true))
        return generic;
    return lookUp(keyTable, virtualKey, false);
}

std::uint32_t navigationKey(std::uint32_t keysym)
{
    return lookUp(navigationKeysyms, keysym, true);
}

} // namespace X11Keycodes
