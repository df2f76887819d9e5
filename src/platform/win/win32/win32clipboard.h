#pragma once

#include <windows.h>

// The clipboard's change counter: GetClipboardSequenceNumber goes up with every change by
// any program, so two readings tell whether the clipboard changed in between.
class Win32Clipboard final
{
public:
    static DWORD sequenceNumber();
};
