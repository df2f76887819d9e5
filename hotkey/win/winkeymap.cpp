#include "winkeymap.h"

namespace {

struct KeyEntry
{
    Qt::Key key;
    quint32 virtualKey;
};

constexpr KeyEntry specialKeys[] = {
    {Qt::Key_Escape, 27},      {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},      {Qt::Key_Backspace, 8},
    {Qt::Key_Return, 13},      {Qt::Key_Enter, 13},
    {Qt::Key_Insert, 45},      {Qt::Key_Delete, 46},
    {Qt::Key_Pause, 19},       {Qt::Key_Print, 42},
    {Qt::Key_Printer, 42},     {Qt::Key_Clear, 12},
    {Qt::Key_Home, 36},        {Qt::Key_End, 35},
    {Qt::Key_Left, 37},        {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},       {Qt::Key_Down, 40},
    {Qt::Key_PageUp, 33},      {Qt::Key_PageDown, 34},
    {Qt::Key_CapsLock, 20},    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145}, {Qt::Key_Menu, 93},
    {Qt::Key_Help, 47},        {Qt::Key_Forward, 167},
    {Qt::Key_Stop, 169},       {Qt::Key_Refresh, 168},
    {Qt::Key_VolumeDown, 174}, {Qt::Key_VolumeMute, 173},
    {Qt::Key_VolumeUp, 175},   {Qt::Key_MediaPlay, 179},
    {Qt::Key_MediaStop, 178},  {Qt::Key_MediaPrevious, 177},
    {Qt::Key_MediaNext, 176},  {Qt::Key_HomePage, 172},
    {Qt::Key_Favorites, 171},  {Qt::Key_Search, 170},
    {Qt::Key_LaunchMail, 180}, {Qt::Key_LaunchMedia, 181},
    {Qt::Key_Launch0, 182},    {Qt::Key_Launch1, 183},
    {Qt::Key_Touroku, 148},    {Qt::Key_Massyo, 147},
    {Qt::Key_Mode_switch, 31}, {Qt::Key_Select, 41},
    {Qt::Key_Cancel, 3},       {Qt::Key_Execute, 43},
    {Qt::Key_Sleep, 95},       {Qt::Key_Play, 250},
};

} // namespace

namespace WinKeyMap {

quint32 virtualKey(Qt::Key key, KeyScan keyScan, bool &ok)
{
    ok = true;
    if (key <= 0xFFFF) {
        const short scanned = keyScan(wchar_t(key));
        if (scanned != -1)
            return quint32(scanned) & 0xFF;
        if (key == Qt::Key_Period)
            return 110; // the keypad's decimal key
        return quint32(key) & 0xFF;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return 112 + quint32(key - Qt::Key_F1);
    for (const KeyEntry &entry : specialKeys) {
        if (entry.key == key)
            return entry.virtualKey;
    }
    ok = false;
    return 0;
}

quint32 modifiers(Qt::KeyboardModifiers modifiers)
{
    quint32 native = 0;
    if (modifiers & Qt::AltModifier)
        native |= 1;
    if (modifiers & Qt::ControlModifier)
        native |= 2;
    if (modifiers & Qt::ShiftModifier)
        native |= 4;
    if (modifiers & Qt::MetaModifier)
        native |= 8;
    return native;
}

int hotkeyId(quint32 virtualKey, quint32 modifiers)
{
    return int((((modifiers << 8) ^ virtualKey) & 0xFFF) | 0x7000);
}

} // namespace WinKeyMap
